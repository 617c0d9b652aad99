// The pickers' date through the system's own conversion, in locales of either date order.

#include <gtest/gtest.h>

#include "mainwindow/stamp_times.h"
#include "platform/win32/win32_user_locale.h"
#include "support/on_wine.h"

namespace tidemark {
namespace {

constexpr unsigned long kEnglishUnitedStates = 0x0409;   // month first
constexpr unsigned long kEnglishUnitedKingdom = 0x0809;  // day first
constexpr unsigned long kGermanGermany = 0x0407;         // day first, between dots
constexpr unsigned long kFinnishFinland = 0x040B;        // day first, times with a dot as well
constexpr unsigned long kArabicEgypt = 0x0C01;           // marks beside its separators
constexpr unsigned long kHebrewIsrael = 0x040D;
constexpr double kFourthOfMarch2024 = 45355;  // days since 30 December 1899
constexpr double kThirdOfApril2024 = kFourthOfMarch2024 + 30;
constexpr double kFifteenthOfApril2024 = kThirdOfApril2024 + 12;
constexpr double kQuarterToTwo = (13 * 60 + 45) / 1440.0;  // in the afternoon

double Combined(unsigned long locale_id, int month, int day) {
    Win32UserLocale locale(locale_id);
    return CombineDateAndTime(locale, {.year = 2024, .month = month, .day = day},
                              {.year = 2000, .month = 1, .day = 1, .hour = 13, .minute = 45});
}

TEST(StampTimesOnWindows, AMonthFirstLocaleReadsTheDateThatWasPicked) {
    EXPECT_DOUBLE_EQ(Combined(kEnglishUnitedStates, 4, 3), kThirdOfApril2024 + kQuarterToTwo);
    EXPECT_DOUBLE_EQ(Combined(kEnglishUnitedStates, 4, 15), kFifteenthOfApril2024 + kQuarterToTwo);
}

TEST(StampTimesOnWindows, ADayFirstLocaleSwapsMonthAndDayWhereBothCanBeEither) {
    for (const unsigned long locale : {kEnglishUnitedKingdom, kGermanGermany}) {
        EXPECT_DOUBLE_EQ(Combined(locale, 4, 3), kFourthOfMarch2024 + kQuarterToTwo);
        EXPECT_DOUBLE_EQ(Combined(locale, 4, 15), kFifteenthOfApril2024 + kQuarterToTwo);
    }
}

TEST(StampTimesOnWindows, SeparatorsComeWithoutMarksOfTheDirectionOfWriting) {
    for (const unsigned long locale : {kArabicEgypt, kHebrewIsrael}) {
        const std::string separators =
            Win32UserLocale(locale).DateSeparator() + Win32UserLocale(locale).TimeSeparator();
        EXPECT_EQ(separators.find("\xE2\x80\x8E"), std::string::npos) << locale;
        EXPECT_EQ(separators.find("\xE2\x80\x8F"), std::string::npos) << locale;
        EXPECT_DOUBLE_EQ(Combined(locale, 4, 15), kFifteenthOfApril2024 + kQuarterToTwo) << locale;
    }
}

TEST(StampTimesOnWindows, ATimeIsReadThatTheLocaleWritesWithADot) {
    ASSERT_EQ(Win32UserLocale(kFinnishFinland).TimeSeparator(), ".");
    if (OnWine()) {
        GTEST_SKIP() << "Wine reads no time that is written with a dot";
    }
    EXPECT_DOUBLE_EQ(Combined(kFinnishFinland, 4, 15), kFifteenthOfApril2024 + kQuarterToTwo);
}

TEST(StampTimesOnWindows, TheMonthIsNamedInTheLocalesLanguage) {
    constexpr FileTime kFourthOfMarch2026{155'290 * 864'000'000'000 + 36'000'000'000};
    EXPECT_EQ(Win32UserLocale(kEnglishUnitedStates).DateTimeText(kFourthOfMarch2026),
              "4 March 2026, 1:00 AM");
    EXPECT_EQ(Win32UserLocale(kGermanGermany).DateTimeText(kFourthOfMarch2026),
              "4 M\xC3\xA4rz 2026, 01:00");
}

}  // namespace
}  // namespace tidemark
