// What every description of a display keeps to.

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "platform/memory/memory_screen.h"
#include "platform/screen.h"

#ifdef _WIN32
#include "platform/win32/win32_screen.h"
#endif

namespace tidemark {
namespace {

struct Kind {
    const char* name;
    std::function<std::unique_ptr<Screen>()> make;
};

const Kind kKinds[] = {
    {"Memory", [] { return std::make_unique<MemoryScreen>(); }},
#ifdef _WIN32
    {"Win32", [] { return std::make_unique<Win32Screen>(); }},
#endif
};

class ScreenContract : public testing::TestWithParam<Kind> {
  protected:
    [[nodiscard]] Rect MonitorAt(Point point) const {
        const auto monitor = screen_->NearestMonitor(point);
        EXPECT_TRUE(monitor.has_value());
        const auto rect = screen_->MonitorRect(monitor.value_or(MonitorHandle{}));
        EXPECT_TRUE(rect.has_value());
        return rect.value_or(Rect{});
    }

    std::unique_ptr<Screen> screen_ = GetParam().make();
};

TEST_P(ScreenContract, PixelsAndTheScreenHaveASize) {
    EXPECT_GT(screen_->TwipsPerPixelX(), 0);
    EXPECT_GT(screen_->TwipsPerPixelY(), 0);
    EXPECT_GE(screen_->Width(), screen_->TwipsPerPixelX());
    EXPECT_GE(screen_->Height(), screen_->TwipsPerPixelY());
}

TEST_P(ScreenContract, PrimaryMonitorIsThePrimaryScreen) {
    const Rect rect = MonitorAt({0, 0});
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.top, 0);
    EXPECT_DOUBLE_EQ(rect.right * screen_->TwipsPerPixelX(), screen_->Width());
    EXPECT_DOUBLE_EQ(rect.bottom * screen_->TwipsPerPixelY(), screen_->Height());
}

TEST_P(ScreenContract, PointOutsideEveryMonitorHasANearestOne) {
    const Rect rect = MonitorAt({-1000000, -1000000});
    EXPECT_LT(rect.left, rect.right);
    EXPECT_LT(rect.top, rect.bottom);
}

TEST_P(ScreenContract, HandleOfNoMonitorHasNoRectangle) {
    EXPECT_EQ(screen_->MonitorRect(MonitorHandle{}), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenContract, testing::ValuesIn(kKinds),
                         [](const auto& kind) { return kind.param.name; });

}  // namespace
}  // namespace tidemark
