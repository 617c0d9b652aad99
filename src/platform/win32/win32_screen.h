#pragma once

#include <optional>

#include "platform/screen.h"
#include "platform/win32/windows.h"

namespace tidemark {

// The functions for several monitors, found at run time by name, so that the program also starts
// where the system lacks them; null then.
struct MonitorFunctions {
    HMONITOR(WINAPI* monitor_from_point)(POINT, DWORD) = nullptr;
    BOOL(WINAPI* get_monitor_info)(HMONITOR, MONITORINFO*) = nullptr;

    // What the library exports; the system's own is user32.
    [[nodiscard]] static MonitorFunctions Of(HMODULE library);
};

// The display of the session, as it is at each call.
class Win32Screen : public Screen {
  public:
    Win32Screen() : Win32Screen(MonitorFunctions::Of(::GetModuleHandleW(L"user32.dll"))) {}
    explicit Win32Screen(const MonitorFunctions& functions) : functions_(functions) {}

    [[nodiscard]] double Width() const override;
    [[nodiscard]] double Height() const override;
    [[nodiscard]] double TwipsPerPixelX() const override;
    [[nodiscard]] double TwipsPerPixelY() const override;
    [[nodiscard]] std::optional<MonitorHandle> NearestMonitor(Point point) const override;
    [[nodiscard]] std::optional<Rect> MonitorRect(MonitorHandle monitor) const override;

  private:
    MonitorFunctions functions_;
};

}  // namespace tidemark
