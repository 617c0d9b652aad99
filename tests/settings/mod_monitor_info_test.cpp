#include "settings/mod_monitor_info.h"

#include <gtest/gtest.h>

#include "platform/memory/memory_screen.h"
#include "platform/program_error.h"

namespace tidemark {
namespace {

Bounds Kept(const Screen& screen, Bounds bounds) {
    KeepRectOnMonitor(screen, bounds);
    return bounds;
}

TEST(ModMonitorInfo, FallbackIsThePrimaryScreenInWholePixels) {
    MemoryScreen screen;
    EXPECT_EQ(ScreenRectFallback(screen), (Rect{0, 0, 1024, 768}));
    screen.twips_per_pixel_x = 1440.0 / 168;
    screen.twips_per_pixel_y = 1440.0 / 110;
    screen.primary = {2560, 1440};
    EXPECT_EQ(ScreenRectFallback(screen), (Rect{0, 0, 2560, 1440}));
}

TEST(ModMonitorInfo, MonitorAtPointIsTheNearestOne) {
    MemoryScreen screen;
    screen.monitors = {{0, 0, 1024, 768}, {1024, -200, 2304, 824}};
    EXPECT_EQ(MonitorRectAtPoint(screen, 10, 10), (Rect{0, 0, 1024, 768}));
    EXPECT_EQ(MonitorRectAtPoint(screen, 1024, 10), (Rect{1024, -200, 2304, 824}));
    EXPECT_EQ(MonitorRectAtPoint(screen, -500, 10), (Rect{0, 0, 1024, 768}));
    EXPECT_EQ(MonitorRectAtPoint(screen, 9999, 9999), (Rect{1024, -200, 2304, 824}));
}

TEST(ModMonitorInfo, SystemWithoutMonitorsFallsBackToThePrimaryScreen) {
    MemoryScreen screen;
    screen.monitors = {{0, 0, 4096, 4096}};
    screen.finds_monitors = false;
    EXPECT_EQ(MonitorRectAtPoint(screen, 10, 10), (Rect{0, 0, 1024, 768}));
    screen.finds_monitors = true;
    screen.describes_monitors = false;
    EXPECT_EQ(MonitorRectAtPoint(screen, 10, 10), (Rect{0, 0, 1024, 768}));
}

TEST(ModMonitorInfo, RectToBoundsKeepsTheCornerAndGivesTheSize) {
    EXPECT_EQ(RectToBounds({-10, 20, 90, 50}), (Bounds{-10, 20, 100, 30}));
    EXPECT_EQ(RectToBounds({10, 10, 5, 5}), (Bounds{10, 10, -5, -5}));
    EXPECT_THROW((void)RectToBounds({INT32_MIN, 0, 1, 0}), ProgramError);
    EXPECT_THROW((void)RectToBounds({0, -2, 0, INT32_MAX}), ProgramError);
}

TEST(ModMonitorInfo, RectangleOutsideIsMovedOntoTheMonitor) {
    const MemoryScreen screen;
    EXPECT_EQ(Kept(screen, {-50, -50, 300, 200}), (Bounds{0, 0, 300, 200}));
    EXPECT_EQ(Kept(screen, {900, 700, 300, 200}), (Bounds{724, 568, 300, 200}));
    EXPECT_EQ(Kept(screen, {5000, -5000, 300, 200}), (Bounds{724, 0, 300, 200}));
}

TEST(ModMonitorInfo, RectangleInsideStays) {
    const MemoryScreen screen;
    EXPECT_EQ(Kept(screen, {100, 100, 300, 200}), (Bounds{100, 100, 300, 200}));
    EXPECT_EQ(Kept(screen, {0, 0, 1024, 768}), (Bounds{0, 0, 1024, 768}));
}

TEST(ModMonitorInfo, RectangleLargerThanTheMonitorEndsFlushRightAndBottom) {
    const MemoryScreen screen;
    EXPECT_EQ(Kept(screen, {10, 10, 1100, 800}), (Bounds{-76, -32, 1100, 800}));
    EXPECT_EQ(Kept(screen, {-500, -500, 1100, 800}), (Bounds{-76, -32, 1100, 800}));
}

TEST(ModMonitorInfo, EachCornerHasItsOwnMonitor) {
    MemoryScreen screen;
    screen.monitors = {{0, 0, 1024, 768}, {1024, 0, 2048, 600}};
    // Top left on the first, bottom right below the second, which is the shorter one.
    EXPECT_EQ(Kept(screen, {900, 500, 300, 200}), (Bounds{900, 400, 300, 200}));
}

TEST(ModMonitorInfo, SumsBeyondThirtyTwoBitsAreAnError) {
    const MemoryScreen screen;
    for (const Bounds& bounds :
         {Bounds{INT32_MAX, 0, 1, 1}, Bounds{0, INT32_MAX, 1, 1}, Bounds{INT32_MIN, 0, -1, 1},
          Bounds{0, INT32_MIN, 1, -1}, Bounds{1, 0, INT32_MAX, 1}}) {
        Bounds changed = bounds;
        try {
            KeepRectOnMonitor(screen, changed);
            ADD_FAILURE() << bounds.left << ' ' << bounds.top;
        } catch (const ProgramError& error) {
            EXPECT_EQ(error.Number(), error_number::kOverflow);
        }
    }
}

TEST(ModMonitorInfo, CornerThatOverflowsOnlyAfterTheCorrectionIsAnError) {
    MemoryScreen screen;
    screen.monitors = {{100, 0, 1124, 768}};
    // -5 + INT32_MAX fits; moved to the monitor's left edge, 100 + INT32_MAX does not.
    Bounds bounds{-5, 0, INT32_MAX, 10};
    EXPECT_THROW(KeepRectOnMonitor(screen, bounds), ProgramError);
    screen.monitors = {{0, 0, 1024, 768}};
    EXPECT_EQ(Kept(screen, {-5, 0, INT32_MAX, 10}), (Bounds{1024 - INT32_MAX, 0, INT32_MAX, 10}));
}

}  // namespace
}  // namespace tidemark
