#include "settings/mod_monitor_info.h"

#include "platform/checked_arithmetic.h"
#include "platform/program_error.h"
#include "settings/stored_text.h"

namespace tidemark {
namespace {

constexpr const char* kBeyondTheScreen = "Overflow: a rectangle is beyond the screen.";

int PixelsOf(double twips, double twips_per_pixel) {
    const auto pixels = RoundHalvesToEven(twips / twips_per_pixel);
    if (!pixels) {
        throw ProgramError(error_number::kOverflow, kBeyondTheScreen);
    }
    return *pixels;
}

}  // namespace

Rect ScreenRectFallback(const Screen& screen) {
    return {0, 0, PixelsOf(screen.Width(), screen.TwipsPerPixelX()),
            PixelsOf(screen.Height(), screen.TwipsPerPixelY())};
}

Rect MonitorRectAtPoint(const Screen& screen, int x, int y) {
    if (const auto monitor = screen.NearestMonitor({x, y})) {
        if (const auto rect = screen.MonitorRect(*monitor)) {
            return *rect;
        }
    }
    return ScreenRectFallback(screen);
}

Bounds RectToBounds(const Rect& rect) {
    return {rect.left, rect.top, CheckedSubtract(rect.right, rect.left, kBeyondTheScreen),
            CheckedSubtract(rect.bottom, rect.top, kBeyondTheScreen)};
}

void KeepRectOnMonitor(const Screen& screen, Bounds& bounds) {
    const Rect first = MonitorRectAtPoint(screen, bounds.left, bounds.top);
    const Rect last =
        MonitorRectAtPoint(screen, CheckedAdd(bounds.left, bounds.width, kBeyondTheScreen),
                           CheckedAdd(bounds.top, bounds.height, kBeyondTheScreen));
    if (bounds.left < first.left) {
        bounds.left = first.left;
    }
    if (bounds.top < first.top) {
        bounds.top = first.top;
    }
    if (CheckedAdd(bounds.left, bounds.width, kBeyondTheScreen) > last.right) {
        bounds.left = CheckedSubtract(last.right, bounds.width, kBeyondTheScreen);
    }
    if (CheckedAdd(bounds.top, bounds.height, kBeyondTheScreen) > last.bottom) {
        bounds.top = CheckedSubtract(last.bottom, bounds.height, kBeyondTheScreen);
    }
}

}  // namespace tidemark
