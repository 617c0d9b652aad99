#pragma once

#include <cstddef>
#include <memory>

#include "platform/win32/windows.h"

namespace tidemark {

class WatchChain;

// A message on its way to a window that is watched.
struct WatchedMessage {
    HWND window = nullptr;
    UINT message = 0;
    WPARAM wparam = 0;
    LPARAM lparam = 0;

    // What those who watched the window before this watcher, and at last the window itself, make of
    // it; 0 once the window is gone. From inside OnWatched only.
    [[nodiscard]] LRESULT PassOn() const;

    WatchChain* chain = nullptr;
    std::size_t place = 0;  // of the watcher in the chain
};

// Sees every message of a window of this thread before the window itself gets it. Any number of
// watchers can watch one window, the last to come sees a message first; each can be stopped or
// destroyed at any time, also from inside its own OnWatched. However many there are, they take the
// place of the window's procedure once.
class WindowWatcher {
  public:
    WindowWatcher(const WindowWatcher&) = delete;
    WindowWatcher& operator=(const WindowWatcher&) = delete;

  protected:
    WindowWatcher() = default;
    virtual ~WindowWatcher();

    // Watches a window; another one than before replaces it. Throws ProgramError when it cannot be
    // watched (it is gone, or belongs to another thread).
    void Watch(HWND window);
    // Harmless when nothing is watched.
    void StopWatching();
    // Null when there is none, and from its WM_NCDESTROY on.
    [[nodiscard]] HWND Watched() const;

  private:
    friend class WatchChain;
    // Answers a message. Hands WM_NCDESTROY on in any case. Throws nothing.
    virtual LRESULT OnWatched(const WatchedMessage& message) = 0;

    std::shared_ptr<WatchChain> chain_;
};

}  // namespace tidemark
