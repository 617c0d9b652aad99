#pragma once

#include <string>

#include "platform/geometry.h"
#include "platform/win32/windows.h"

namespace tidemark {

// Receives the messages of a window whose class is the program's own.
class MessageHandler {
  public:
    // Answers one message; the rest goes to DefWindowProcW. An exception goes to the last resort
    // and the message counts as answered with 0. The handler may destroy the window, or itself.
    virtual LRESULT OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) = 0;
    // Sees each message for this top-level window or a window inside it before it is dispatched;
    // true when that is all that is to happen with it.
    virtual bool PreTranslate(MSG& /*message*/) { return false; }

  protected:
    ~MessageHandler() = default;
};

// What a hosted window is created from.
struct HostedWindowSpec {
    const wchar_t* class_name = nullptr;  // registered on first use, with what it asks for
    std::string text;
    DWORD style = 0;
    DWORD extended_style = 0;
    Bounds bounds{CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT};
    HWND parent = nullptr;  // or the owner, for a window that is no child
    int id = 0;             // of a child, by which its parent tells it from others
    // Of the class: the same wherever its name is given.
    UINT class_style = 0;
    int background = COLOR_3DFACE;  // a system colour; -1: the handler erases
};

// Creates a window whose messages go to `handler` from WM_NCCREATE on to its last. Throws
// ProgramError with the system's code when it cannot be created.
HWND CreateHostedWindow(MessageHandler& handler, const HostedWindowSpec& spec);

// The handler of a hosted window of this thread; null for any other window.
[[nodiscard]] MessageHandler* HandlerOf(HWND window);

}  // namespace tidemark
