#pragma once

#include <string>
#include <utility>

#include "platform/win32/windows.h"
#include "support/open_windows.h"

namespace tidemark {

// While alive, the system makes no window of this class for this thread: whoever asks for one is
// told that it failed. One at a time.
class RefusedWindows {
  public:
    explicit RefusedWindows(std::wstring class_name)
        : class_name_(std::move(class_name)),
          hook_(::SetWindowsHookExW(WH_CBT, OnWindowEvent, nullptr, ::GetCurrentThreadId())) {
        Current() = this;
    }
    RefusedWindows(const RefusedWindows&) = delete;
    RefusedWindows& operator=(const RefusedWindows&) = delete;
    ~RefusedWindows() {
        ::UnhookWindowsHookEx(hook_);
        Current() = nullptr;
    }

    [[nodiscard]] int Count() const { return count_; }

  private:
    static RefusedWindows*& Current() {
        static RefusedWindows* current = nullptr;
        return current;
    }
    static LRESULT CALLBACK OnWindowEvent(int code, WPARAM window, LPARAM details) {
        if (code == HCBT_CREATEWND &&
            Current()->class_name_ == ClassOf(reinterpret_cast<HWND>(window))) {
            ++Current()->count_;
            return 1;
        }
        return ::CallNextHookEx(nullptr, code, window, details);
    }

    std::wstring class_name_;
    HHOOK hook_;
    int count_ = 0;
};

}  // namespace tidemark
