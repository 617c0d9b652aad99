#include "settings/mod_monitor_info.h"

#include "platform/program_error.h"
#include "settings/stored_text.h"

namespace tidemark {
namespace {

[[noreturn]] void ThrowOverflow() {
    throw ProgramError(error_number::kOverflow, "Overflow: a rectangle is beyond the screen.");
}

int CheckedSum(int left, int right) {
    int sum = 0;
    if (__builtin_add_overflow(left, right, &sum)) {
        ThrowOverflow();
    }
    return sum;
}

int CheckedDifference(int left, int right) {
    int difference = 0;
    if (__builtin_sub_overflow(left, right, &difference)) {
        ThrowOverflow();
    }
    return difference;
}

int PixelsOf(double twips, double twips_per_pixel) {
    const auto pixels = RoundHalvesToEven(twips / twips_per_pixel);
    if (!pixels) {
        ThrowOverflow();
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
    return {rect.left, rect.top, CheckedDifference(rect.right, rect.left),
            CheckedDifference(rect.bottom, rect.top)};
}

void KeepRectOnMonitor(const Screen& screen, Bounds& bounds) {
    const Rect first = MonitorRectAtPoint(screen, bounds.left, bounds.top);
    const Rect last = MonitorRectAtPoint(screen, CheckedSum(bounds.left, bounds.width),
                                         CheckedSum(bounds.top, bounds.height));
    if (bounds.left < first.left) {
        bounds.left = first.left;
    }
    if (bounds.top < first.top) {
        bounds.top = first.top;
    }
    if (CheckedSum(bounds.left, bounds.width) > last.right) {
        bounds.left = CheckedDifference(last.right, bounds.width);
    }
    if (CheckedSum(bounds.top, bounds.height) > last.bottom) {
        bounds.top = CheckedDifference(last.bottom, bounds.height);
    }
}

}  // namespace tidemark
