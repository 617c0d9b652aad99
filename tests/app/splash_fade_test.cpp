#include "app/splash_fade.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include "platform/timer_queue.h"
#include "support/manual_clock.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t kStep = 25;  // milliseconds

class SplashFadeTest : public testing::Test, public FadingWindow {
  protected:
    void SetOpacity(std::uint8_t alpha) override {
        if (layered_windows_missing_) {
            throw std::runtime_error("no layered windows");
        }
        opacities_.push_back(alpha);
    }

    void Unload() override {
        ++unloaded_;
        alpha_at_unload_ = fade_->Alpha();
        if (destroyed_by_unload_) {
            fade_.reset();
        }
    }

    void Tick() {
        clock_.now += kStep;
        timers_.RunDue();
    }

    // Whether any timer is still to tick.
    [[nodiscard]] bool Ticking() const { return timers_.NextDue().has_value(); }

    void TickUntilOpaque() {
        fade_->FadeIn();
        for (int tick = 0; tick < 4; ++tick) {
            Tick();
        }
        ASSERT_EQ(fade_->Alpha(), 255);
        opacities_.clear();
    }

    ManualClock clock_;
    TimerQueue timers_{clock_};
    std::vector<int> opacities_;
    int unloaded_ = 0;
    int alpha_at_unload_ = -1;
    bool layered_windows_missing_ = false;
    bool destroyed_by_unload_ = false;
    std::unique_ptr<SplashFade> fade_ = std::make_unique<SplashFade>(*this, timers_);
};

TEST_F(SplashFadeTest, NothingMovesBeforeAFadeIsAskedFor) {
    Tick();
    EXPECT_THAT(opacities_, IsEmpty());
    EXPECT_EQ(fade_->Alpha(), 0);
    EXPECT_FALSE(Ticking());
}

TEST_F(SplashFadeTest, StepsEvery25Milliseconds) {
    const std::uint64_t start = clock_.now;
    fade_->FadeIn();
    EXPECT_EQ(timers_.NextDue(), start + 25);
    Tick();
    EXPECT_EQ(timers_.NextDue(), start + 50);
    TickUntilOpaque();
    fade_->FadeOut();
    EXPECT_EQ(timers_.NextDue(), clock_.now + 25);
}

TEST_F(SplashFadeTest, FadesInWithinFourTicksAndStops) {
    fade_->FadeIn();
    for (int tick = 0; tick < 6; ++tick) {
        Tick();
    }
    EXPECT_THAT(opacities_, ElementsAre(64, 128, 192, 255));
    EXPECT_EQ(fade_->Alpha(), 255);
    EXPECT_FALSE(fade_->FadingIn());
    EXPECT_FALSE(Ticking());
    EXPECT_EQ(unloaded_, 0);
}

TEST_F(SplashFadeTest, IsFadingInUntilItIsOpaque) {
    EXPECT_FALSE(fade_->FadingIn());
    fade_->FadeIn();
    for (int tick = 0; tick < 3; ++tick) {
        Tick();
        EXPECT_TRUE(fade_->FadingIn());
    }
    Tick();
    EXPECT_FALSE(fade_->FadingIn());
}

TEST_F(SplashFadeTest, FadesOutInSevenStepsAndUnloadsOnTheEighthTick) {
    TickUntilOpaque();
    fade_->FadeOut();
    for (int tick = 0; tick < 7; ++tick) {
        Tick();
        EXPECT_EQ(unloaded_, 0);
    }
    EXPECT_THAT(opacities_, ElementsAre(223, 191, 159, 127, 95, 63, 31));
    Tick();
    EXPECT_EQ(unloaded_, 1);
    EXPECT_EQ(opacities_.size(), 7U);
    EXPECT_EQ(fade_->Alpha(), 31);
    Tick();
    EXPECT_EQ(unloaded_, 1);
    EXPECT_FALSE(Ticking());
}

TEST_F(SplashFadeTest, AFadeInThatFailsReportsFullOpacityAndUnloads) {
    layered_windows_missing_ = true;
    fade_->FadeIn();
    Tick();
    EXPECT_EQ(fade_->Alpha(), 255);
    EXPECT_EQ(alpha_at_unload_, 255);
    EXPECT_EQ(unloaded_, 1);
    EXPECT_FALSE(fade_->FadingIn());
    Tick();
    EXPECT_EQ(unloaded_, 1);
}

TEST_F(SplashFadeTest, AFadeInThatFailsStopsAFadeOutUnderWay) {
    fade_->FadeIn();
    Tick();
    fade_->FadeOut();
    layered_windows_missing_ = true;
    Tick();
    EXPECT_FALSE(Ticking());
    EXPECT_EQ(unloaded_, 1);
}

TEST_F(SplashFadeTest, AFadeOutThatFailsUnloads) {
    TickUntilOpaque();
    layered_windows_missing_ = true;
    fade_->FadeOut();
    Tick();
    EXPECT_EQ(unloaded_, 1);
    EXPECT_FALSE(Ticking());
}

TEST_F(SplashFadeTest, MayBeDestroyedByTheWindowThatItUnloads) {
    TickUntilOpaque();
    destroyed_by_unload_ = true;
    fade_->FadeOut();
    for (int tick = 0; tick < 9; ++tick) {
        Tick();
    }
    EXPECT_EQ(unloaded_, 1);
    EXPECT_FALSE(Ticking());
}

TEST_F(SplashFadeTest, MayBeDestroyedInAFailedFadeIn) {
    destroyed_by_unload_ = true;
    layered_windows_missing_ = true;
    fade_->FadeIn();
    Tick();
    EXPECT_EQ(unloaded_, 1);
    EXPECT_EQ(fade_, nullptr);
}

}  // namespace
}  // namespace tidemark
