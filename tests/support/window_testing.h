#pragma once

#include <oleidl.h>

#include "platform/geometry.h"
#include "platform/win32/windows.h"

namespace tidemark {

// A plain popup window on the screen, for tests that need one to hang something on.
class TestWindow {
  public:
    explicit TestWindow(const Bounds& bounds, HWND parent = nullptr);
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow() { Destroy(); }

    [[nodiscard]] HWND Handle() const { return window_; }
    void Destroy();

  private:
    HWND window_ = nullptr;
};

// The drop target registered for a window of this process, null when there is none. Not owned.
IDropTarget* RegisteredTarget(HWND window);

}  // namespace tidemark
