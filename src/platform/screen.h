#pragma once

#include <cstdint>
#include <optional>

#include "platform/geometry.h"

namespace tidemark {

enum class MonitorHandle : std::uintptr_t {};

// The display. A twip is 1/1440 inch; how many make a pixel is the display's affair (15 on a
// standard one).
class Screen {
  public:
    virtual ~Screen() = default;

    // Size of the primary screen in twips, and of one pixel; all greater than zero.
    [[nodiscard]] virtual double Width() const = 0;
    [[nodiscard]] virtual double Height() const = 0;
    [[nodiscard]] virtual double TwipsPerPixelX() const = 0;
    [[nodiscard]] virtual double TwipsPerPixelY() const = 0;

    // The monitor at a point in pixels, or else the nearest; none when the system cannot tell or
    // has no functions for several monitors.
    [[nodiscard]] virtual std::optional<MonitorHandle> NearestMonitor(Point point) const = 0;
    // The whole monitor in pixels, with its taskbar; nothing when the system cannot tell or has no
    // functions for several monitors.
    [[nodiscard]] virtual std::optional<Rect> MonitorRect(MonitorHandle monitor) const = 0;
};

}  // namespace tidemark
