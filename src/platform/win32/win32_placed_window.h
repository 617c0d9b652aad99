#pragma once

#include "platform/placed_window.h"
#include "platform/screen.h"
#include "platform/win32/windows.h"

namespace tidemark {

// A top-level window of the program by its handle. Owns neither the window nor the screen; both
// outlive it.
class Win32PlacedWindow : public PlacedWindow {
  public:
    Win32PlacedWindow(HWND window, const Screen& screen) : window_(window), screen_(screen) {}

    [[nodiscard]] WindowState State() const override;
    [[nodiscard]] TwipsBounds Placement() const override;
    void MoveTo(const TwipsBounds& bounds) override;

  private:
    HWND window_;
    const Screen& screen_;
};

}  // namespace tidemark
