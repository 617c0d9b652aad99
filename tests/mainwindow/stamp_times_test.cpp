#include "mainwindow/stamp_times.h"

#include <gtest/gtest.h>

#include "lists/fakes.h"
#include "platform/memory/memory_user_locale.h"
#include "platform/program_error.h"

namespace tidemark {
namespace {

constexpr double kMinute = 1.0 / (24 * 60);
constexpr double kFirstOfMarch2024 = 45352;

class StampTimesTest : public testing::Test {
  protected:
    MemoryUserLocale locale_;
};

TEST_F(StampTimesTest, SecondsAreDropped) {
    EXPECT_DOUBLE_EQ(
        CombineDateAndTime(locale_, {.year = 2024, .month = 3, .day = 1, .hour = 9, .second = 7},
                           {.hour = 13, .minute = 45, .second = 30}),
        kFirstOfMarch2024 + (13 * 60 + 45) * kMinute);
}

TEST_F(StampTimesTest, ADateThatTheLocaleCannotReadIsATypeMismatch) {
    locale_.SetDateSeparator("");
    try {
        static_cast<void>(CombineDateAndTime(locale_, {.year = 2024, .month = 3, .day = 1}, {}));
        FAIL() << "read a date without separators";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), error_number::kTypeMismatch);
        EXPECT_EQ(
            error.Description(),
            "\"03012024\" cannot be read as a date, so nothing can be stamped. In the regional "
            "settings of Windows, choose a short date with \"/\" or \"-\" between its parts.");
    }
}

TEST_F(StampTimesTest, ATimeThatTheLocaleCannotReadIsATypeMismatch) {
    locale_.SetTimeSeparator("");
    try {
        static_cast<void>(CombineDateAndTime(locale_, {.year = 2024, .month = 3, .day = 1},
                                             {.hour = 13, .minute = 45}));
        FAIL() << "read a time without a separator";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), error_number::kTypeMismatch);
        EXPECT_EQ(
            error.Description(),
            "\"1345\" cannot be read as a time of day, so nothing can be stamped. In the regional "
            "settings of Windows, choose a time with \":\" between hours and minutes.");
    }
}

TEST_F(StampTimesTest, TheDatePickersTimeAndTheTimePickersDateAreDropped) {
    EXPECT_DOUBLE_EQ(
        CombineDateAndTime(locale_, {.year = 2024, .month = 3, .day = 1, .hour = 23},
                           {.year = 1999, .month = 12, .day = 31, .hour = 1, .minute = 0}),
        kFirstOfMarch2024 + 60 * kMinute);
}

TEST_F(StampTimesTest, AMonthFirstLocaleReadsTheDateThatWasPicked) {
    EXPECT_DOUBLE_EQ(CombineDateAndTime(locale_, {.year = 2024, .month = 1, .day = 3}, {}),
                     kFirstOfMarch2024 - 31 - 29 + 2);
}

TEST_F(StampTimesTest, ADayFirstLocaleSwapsMonthAndDayWhereBothCanBeEither) {
    locale_.SetDateOrder(MemoryUserLocale::DateOrder::kDayFirst);
    locale_.SetDateSeparator(".");
    EXPECT_DOUBLE_EQ(CombineDateAndTime(locale_, {.year = 2024, .month = 1, .day = 3}, {}),
                     kFirstOfMarch2024);
    EXPECT_DOUBLE_EQ(CombineDateAndTime(locale_, {.year = 2024, .month = 3, .day = 31}, {}),
                     kFirstOfMarch2024 + 30);
}

TEST_F(StampTimesTest, TheTimeIsWrittenWithTheLocalesOwnSeparator) {
    locale_.SetTimeSeparator(".");
    EXPECT_DOUBLE_EQ(CombineDateAndTime(locale_, {.year = 2024, .month = 3, .day = 1},
                                        {.hour = 13, .minute = 45}),
                     kFirstOfMarch2024 + (13 * 60 + 45) * kMinute);
    locale_.SetTimeSeparator("h");
    EXPECT_DOUBLE_EQ(CombineDateAndTime(locale_, {.year = 2024, .month = 3, .day = 1},
                                        {.hour = 13, .minute = 45}),
                     kFirstOfMarch2024 + (13 * 60 + 45) * kMinute);
}

TEST_F(StampTimesTest, ATimeThatTheLocaleReadsAsADateIsATypeMismatch) {
    class DatesOnly final : public CountingLocale {
      public:
        double ReadDateTime(const std::string& text) override {
            return text.size() < 6 ? 46'000 : CountingLocale::ReadDateTime(text);
        }
    };
    DatesOnly locale;
    EXPECT_THROW((void)CombineDateAndTime(locale, {.year = 2024, .month = 3, .day = 1},
                                          {.hour = 10, .minute = 30}),
                 ProgramError);
}

class CombinedTimesTest : public testing::Test {
  protected:
    PickedTimes picked_{.last_modified_date = {.year = 2026, .month = 3, .day = 4},
                        .last_modified_time = {.hour = 1},
                        .created_date = {.year = 2026, .month = 11, .day = 22},
                        .created_time = {.hour = 13, .minute = 5}};
    CountingLocale locale_;
    StampTimes times_{locale_};
};

TEST_F(CombinedTimesTest, EachTimeIsTheDateAndTimeOfItsOwnPickers) {
    times_.Combine(picked_);
    EXPECT_DOUBLE_EQ(times_.LastModified(), kFirstOfMarch2024 + 2 * 365 + 3 + 60 * kMinute);
    EXPECT_DOUBLE_EQ(times_.Created(), kFirstOfMarch2024 + 2 * 365 + 266 + (13 * 60 + 5) * kMinute);
}

TEST_F(CombinedTimesTest, TheTextsAreReadAgainOnlyWhenAPickerChanged) {
    for (int file = 0; file < 1000; ++file) {
        times_.Combine(picked_);
    }
    EXPECT_EQ(locale_.dates_read, 4U);
    const double created = times_.Created();
    picked_.created_time.minute = 6;
    times_.Combine(picked_);
    EXPECT_EQ(locale_.dates_read, 8U);
    EXPECT_DOUBLE_EQ(times_.Created(), created + kMinute);
}

TEST_F(CombinedTimesTest, TheDescriptionNamesTheMonthOfBothTimes) {
    times_.Combine(picked_);
    EXPECT_EQ(DescribeTimes(times_, locale_),
              "Last-Modified: 4 March 2026, 1:00 AM\r\nCreated: 22 November 2026, 1:05 PM");
}

TEST_F(CombinedTimesTest, TheDescriptionTellsADateThatTheLocaleReadsTheOtherWayRound) {
    MemoryUserLocale day_first;
    day_first.SetDateOrder(MemoryUserLocale::DateOrder::kDayFirst);
    StampTimes times(day_first);
    picked_.last_modified_date = {.year = 2026, .month = 3, .day = 11};
    times.Combine(picked_);
    EXPECT_EQ(DescribeTimes(times, day_first),
              "Last-Modified: 3 November 2026, 1:00 AM\r\nCreated: 22 November 2026, 1:05 PM");
}

}  // namespace
}  // namespace tidemark
