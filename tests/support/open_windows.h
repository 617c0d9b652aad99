#pragma once

#include <functional>
#include <string>

#include "platform/win32/windows.h"

namespace tidemark {

// The system's own windows that stand open on this thread; of several the topmost, null when there
// is none.
[[nodiscard]] HWND OpenDialog();  // a message box is one, too
[[nodiscard]] HWND OpenPopup();   // the window of a popup menu
// The menu that an open popup shows; null when none is open.
[[nodiscard]] HMENU OpenMenu();

// Presses a button of the open dialog. Only asked for: what it does comes later.
void PressInDialog(int button);

[[nodiscard]] std::wstring ClassOf(HWND window);
// The first window below one that is what is looked for, in the order of the system; null when none
// is.
[[nodiscard]] HWND FindBelow(HWND window, const std::function<bool(HWND)>& is_it);

}  // namespace tidemark
