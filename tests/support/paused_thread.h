#pragma once

#include "platform/win32/windows.h"

namespace tidemark {

// The thread of a window of another process, which runs only in between while this is alive. What
// is sent to the window has no answer meanwhile; what is posted waits.
class PausedThread {
  public:
    explicit PausedThread(HWND window)
        : thread_(::OpenThread(THREAD_SUSPEND_RESUME, FALSE,
                               ::GetWindowThreadProcessId(window, nullptr))) {
        ::SuspendThread(thread_);
    }
    ~PausedThread() {
        ::ResumeThread(thread_);
        ::CloseHandle(thread_);
    }
    PausedThread(const PausedThread&) = delete;
    PausedThread& operator=(const PausedThread&) = delete;

    void RunABit() const {
        ::ResumeThread(thread_);
        ::Sleep(1);
        ::SuspendThread(thread_);
    }

  private:
    HANDLE thread_;
};

}  // namespace tidemark
