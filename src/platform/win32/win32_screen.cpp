#include "platform/win32/win32_screen.h"

#include <bit>

namespace tidemark {
namespace {

static_assert(sizeof(MONITORINFO) == 40);  // as GetMonitorInfo expects it

constexpr double kTwipsPerInch = 1440;
constexpr double kUsualPixelsPerInch = 96;

double TwipsPerPixel(int capability) {
    const HDC screen = ::GetDC(/*hWnd=*/nullptr);
    const int pixels_per_inch = screen != nullptr ? ::GetDeviceCaps(screen, capability) : 0;
    if (screen != nullptr) {
        ::ReleaseDC(/*hWnd=*/nullptr, screen);
    }
    return kTwipsPerInch / (pixels_per_inch > 0 ? pixels_per_inch : kUsualPixelsPerInch);
}

template <typename Function>
Function FunctionOf(HMODULE library, const char* name) {
    return std::bit_cast<Function>(library != nullptr ? ::GetProcAddress(library, name) : nullptr);
}

}  // namespace

MonitorFunctions MonitorFunctions::Of(HMODULE library) {
    MonitorFunctions functions;
    functions.monitor_from_point =
        FunctionOf<decltype(monitor_from_point)>(library, "MonitorFromPoint");
    // The record holds no text, so either form of the function fills it alike.
    functions.get_monitor_info = FunctionOf<decltype(get_monitor_info)>(library, "GetMonitorInfoA");
    return functions;
}

double Win32Screen::Width() const {
    return ::GetSystemMetrics(SM_CXSCREEN) * TwipsPerPixelX();
}

double Win32Screen::Height() const {
    return ::GetSystemMetrics(SM_CYSCREEN) * TwipsPerPixelY();
}

double Win32Screen::TwipsPerPixelX() const {
    return TwipsPerPixel(LOGPIXELSX);
}

double Win32Screen::TwipsPerPixelY() const {
    return TwipsPerPixel(LOGPIXELSY);
}

std::optional<MonitorHandle> Win32Screen::NearestMonitor(Point point) const {
    if (functions_.monitor_from_point == nullptr) {
        return std::nullopt;
    }
    const HMONITOR monitor =
        functions_.monitor_from_point({point.x, point.y}, MONITOR_DEFAULTTONEAREST);
    if (monitor == nullptr) {
        return std::nullopt;
    }
    return MonitorHandle{reinterpret_cast<std::uintptr_t>(monitor)};
}

std::optional<Rect> Win32Screen::MonitorRect(MonitorHandle monitor) const {
    MONITORINFO info{};
    info.cbSize = sizeof(info);
    if (functions_.get_monitor_info == nullptr ||
        !functions_.get_monitor_info(reinterpret_cast<HMONITOR>(monitor), &info)) {
        return std::nullopt;
    }
    const RECT& rect = info.rcMonitor;
    return Rect{rect.left, rect.top, rect.right, rect.bottom};
}

}  // namespace tidemark
