#include "platform/memory/memory_screen.h"

#include <algorithm>

namespace tidemark {
namespace {

double SquaredDistance(Point point, const Rect& rect) {
    const double x = static_cast<double>(point.x) - std::clamp(point.x, rect.left, rect.right - 1);
    const double y = static_cast<double>(point.y) - std::clamp(point.y, rect.top, rect.bottom - 1);
    return x * x + y * y;
}

}  // namespace

std::optional<MonitorHandle> MemoryScreen::NearestMonitor(Point point) const {
    if (!finds_monitors || monitors.empty()) {
        return std::nullopt;
    }
    const auto nearest = std::min_element(
        monitors.begin(), monitors.end(), [point](const Rect& left, const Rect& right) {
            return SquaredDistance(point, left) < SquaredDistance(point, right);
        });
    return MonitorHandle{static_cast<std::uintptr_t>(nearest - monitors.begin()) + 1};
}

std::optional<Rect> MemoryScreen::MonitorRect(MonitorHandle monitor) const {
    const auto index = static_cast<std::size_t>(monitor);
    if (!describes_monitors || index == 0 || index > monitors.size()) {
        return std::nullopt;
    }
    return monitors[index - 1];
}

}  // namespace tidemark
