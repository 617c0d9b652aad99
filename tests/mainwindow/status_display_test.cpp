#include "mainwindow/status_display.h"

#include <gtest/gtest.h>

#include "platform/memory/memory_user_locale.h"

namespace tidemark {
namespace {

class StatusDisplayTest : public testing::Test {
  protected:
    StatusDisplay Of(const TidemarkItemCollection::Totals& work) {
        return DisplayOf(work, locale_);
    }
    MemoryUserLocale locale_;
};

TEST_F(StatusDisplayTest, AtRestTheTextSaysReadyOrThatTheStampIsComplete) {
    EXPECT_EQ(Of({}).text, "  Ready");
    EXPECT_EQ(Of({.stamp_complete = true}).text, "  Stamp Complete");
    EXPECT_FALSE(Of({.stamp_complete = true}).shows_progress);
}

TEST_F(StatusDisplayTest, CountingComesBeforeACompleteStamp) {
    EXPECT_EQ(Of({.counting = true, .stamp_complete = true}).text, "  Counting");
}

TEST_F(StatusDisplayTest, StampingShowsWhatRemains) {
    const StatusDisplay display = Of({.stamping = true, .counted = 1'234'567, .stamped = 567});
    EXPECT_TRUE(display.shows_progress);
    EXPECT_EQ(display.text, "  Stamping (1,234,000 items remaining)");
    EXPECT_EQ(display.progress_maximum, 1'234'567);
    EXPECT_EQ(display.progress_value, 567);
}

TEST_F(StatusDisplayTest, TheTextTurnsFromRemainingToStampedAtTheCountedTotal) {
    EXPECT_EQ(Of({.stamping = true, .counted = 10, .stamped = 9}).text,
              "  Stamping (1 items remaining)");
    EXPECT_EQ(Of({.stamping = true, .counted = 10, .stamped = 10}).text,
              "  Stamping (10 items stamped)");
}

TEST_F(StatusDisplayTest, MoreStampedThanCountedRaisesTheProgressMaximum) {
    const StatusDisplay display = Of({.stamping = true, .counted = 10, .stamped = 1'500});
    EXPECT_EQ(display.text, "  Stamping (1,500 items stamped)");
    EXPECT_EQ(display.progress_maximum, 1'500);
    EXPECT_EQ(display.progress_value, 1'500);
}

TEST_F(StatusDisplayTest, TheTaskbarShowsTheProgressBarsValuesWhileStampingOnly) {
    const auto shown = [this](const TidemarkItemCollection::Totals& work) {
        return TaskbarProgressOf(Of(work));
    };
    EXPECT_EQ(shown({.counting = true}), TaskbarProgress{});
    EXPECT_EQ(shown({.stamp_complete = true, .counted = 10, .stamped = 10}), TaskbarProgress{});
    EXPECT_EQ(shown({.stamping = true, .counted = 10, .stamped = 3}),
              (TaskbarProgress{.working = true, .done = 3, .total = 10}));
    EXPECT_EQ(shown({.stamping = true, .counted = 10, .stamped = 12}),
              (TaskbarProgress{.working = true, .done = 12, .total = 12}));
    EXPECT_EQ(shown({.stamping = true}), (TaskbarProgress{.working = true}));
}

TEST_F(StatusDisplayTest, TheLargestCountersDoNotOverflow) {
    EXPECT_EQ(Of({.stamping = true, .counted = INT32_MAX, .stamped = 0}).text,
              "  Stamping (2,147,483,647 items remaining)");
}

}  // namespace
}  // namespace tidemark
