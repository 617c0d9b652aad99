#pragma once

#include <atomic>
#include <thread>

#include "platform/win32/windows.h"

namespace tidemark {

// Posts a message to this thread every few milliseconds, as a user at the keyboard does, and knows
// how long each waited until it was dispatched.
class MessageProbe {
  public:
    MessageProbe();
    ~MessageProbe();
    MessageProbe(const MessageProbe&) = delete;
    MessageProbe& operator=(const MessageProbe&) = delete;

    // Milliseconds of the longest wait since the last Forget.
    [[nodiscard]] double LongestWait() const { return longest_; }
    void Forget() { longest_ = 0; }

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wparam,
                                            LPARAM lparam);

    HWND window_ = nullptr;
    double longest_ = 0;
    std::atomic<bool> ending_ = false;
    std::thread poster_;
};

}  // namespace tidemark
