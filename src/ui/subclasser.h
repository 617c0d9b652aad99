#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/win32/windows.h"
#include "ui/window_watcher.h"

namespace tidemark {

// Delivers chosen messages of any window of this thread to WndProc before the window itself gets
// them. Any number of subclassers can watch one window; each can be stopped or destroyed at any
// time, also from inside its own WndProc and after the window is gone. It stops by itself when the
// window goes.
class Subclasser : private WindowWatcher {
  public:
    // An answer ends the message there; an empty one lets it go on to the window. WM_NCDESTROY goes
    // on in any case. An exception goes to the last resort, and the message goes on.
    std::function<std::optional<LRESULT>(HWND, UINT, WPARAM, LPARAM)> WndProc;

    // Watches these messages of the window, beside those registered before. Another window than
    // before replaces it, with its messages. Throws ProgramError when the window cannot be watched
    // (it is gone, or belongs to another thread).
    void RegisterMessages(HWND window, const std::vector<UINT>& messages);
    // Ends it all; harmless when nothing is watched.
    void StopSubclassing();

    // The watched window; null when there is none.
    [[nodiscard]] HWND SubclassedWindow() const;

  private:
    LRESULT OnWatched(const WatchedMessage& message) override;
    [[nodiscard]] bool Watches(UINT message) const;

    std::vector<UINT> messages_;
};

}  // namespace tidemark
