#pragma once

#include <optional>
#include <vector>

#include "platform/screen.h"

namespace tidemark {

// A display as a test describes it. At first one monitor of 1024 x 768 pixels of 15 twips.
class MemoryScreen : public Screen {
  public:
    [[nodiscard]] double Width() const override { return primary.width * twips_per_pixel_x; }
    [[nodiscard]] double Height() const override { return primary.height * twips_per_pixel_y; }
    [[nodiscard]] double TwipsPerPixelX() const override { return twips_per_pixel_x; }
    [[nodiscard]] double TwipsPerPixelY() const override { return twips_per_pixel_y; }

    [[nodiscard]] std::optional<MonitorHandle> NearestMonitor(Point point) const override;
    [[nodiscard]] std::optional<Rect> MonitorRect(MonitorHandle monitor) const override;

    Size primary{1024, 768};
    double twips_per_pixel_x = 15;
    double twips_per_pixel_y = 15;
    std::vector<Rect> monitors{{0, 0, 1024, 768}};
    // A system that finds no monitor or cannot describe the one it found.
    bool finds_monitors = true;
    bool describes_monitors = true;
};

}  // namespace tidemark
