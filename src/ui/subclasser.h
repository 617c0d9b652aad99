#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/win32/windows.h"

namespace tidemark {

// Delivers chosen messages of any window of this thread to WndProc before the window itself gets
// them. Any number of subclassers can watch one window; each can be stopped or destroyed at any
// time, also from inside its own WndProc and after the window is gone. It stops by itself when the
// window goes.
class Subclasser {
  public:
    Subclasser();
    Subclasser(const Subclasser&) = delete;
    Subclasser& operator=(const Subclasser&) = delete;
    ~Subclasser();

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
    struct State;
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                      UINT_PTR id, DWORD_PTR data);

    std::shared_ptr<State> state_;
};

}  // namespace tidemark
