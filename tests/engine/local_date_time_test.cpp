#include "engine/local_date_time.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace tidemark {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kTicksPerDay = 86'400 * kTicksPerSecond;

std::int64_t TicksOf(double date) {
    const auto time = LocalFileTimeFromDayNumber(date);
    EXPECT_TRUE(time.has_value());
    return time ? time->ticks : -1;
}

TEST(LocalDateTime, DayNumberZeroIsTheThirtiethOfDecember1899) {
    EXPECT_EQ(TicksOf(0), 109205 * kTicksPerDay);
    EXPECT_EQ(TicksOf(-109205), 0);
    EXPECT_EQ(TicksOf(1.5), 109206 * kTicksPerDay + kTicksPerDay / 2);
    EXPECT_EQ(TicksOf(-0.25), 109204 * kTicksPerDay + kTicksPerDay * 3 / 4);
}

TEST(LocalDateTime, WholeMinutesOfDaysFrom1980To2100AreExact) {
    constexpr int k1980 = 29221;
    constexpr int k2100 = 73051;
    // Tests are built without optimisation, where every day would take seconds. A prime, so that
    // the days tried fall everywhere in weeks and months.
    constexpr int kDayStep = 23;
    std::int64_t wrong = 0;
    for (int day = k1980; day < k2100; day += kDayStep) {
        for (int minute = 0; minute < 1440; ++minute) {
            const auto time = LocalFileTimeFromDayNumber(day + minute / 1440.0);
            const std::int64_t expected =
                (day + 109205) * kTicksPerDay + minute * 60 * kTicksPerSecond;
            wrong += time && time->ticks == expected ? 0 : 1;
        }
    }
    EXPECT_EQ(wrong, 0);
}

// A time of day may have been read as parts that were added up.
TEST(LocalDateTime, WholeSecondsAreExactHoweverTheyWereAddedUp) {
    std::int64_t wrong = 0;
    for (int day = 29221; day < 73051; day += 371) {
        for (int second = 0; second < 86'400; second += 7) {
            const double sum =
                day + (second / 3600 / 24.0 + second / 60 % 60 / 1440.0 + second % 60 / 86400.0);
            const auto time = LocalFileTimeFromDayNumber(sum);
            const std::int64_t expected = (day + 109205) * kTicksPerDay + second * kTicksPerSecond;
            wrong += time && time->ticks == expected ? 0 : 1;
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST(LocalDateTime, OtherTimesComeWithinAMicrosecond) {
    for (const double date : {44257.123456789, 36526.999999999, 60000.000000001, 2.1, -5.3}) {
        const long double exact = (static_cast<long double>(date) + 109205.0L) * 864e9L;
        EXPECT_NEAR(static_cast<double>(static_cast<long double>(TicksOf(date)) - exact), 0, 10)
            << date;
    }
}

// In the first day of file times the arithmetic is exact, so that the last step is seen alone.
TEST(LocalDateTime, PartsOfAUnitAreRoundedToTheNearest) {
    constexpr std::int64_t kStepsPerDay = std::int64_t{1} << 36;
    for (std::int64_t step = 1; step < 2000; ++step) {
        const double date = -109205 + static_cast<double>(step) / static_cast<double>(kStepsPerDay);
        // 12.57... units each; none of these ends in a half.
        const std::int64_t nearest = (step * kTicksPerDay + kStepsPerDay / 2) / kStepsPerDay;
        ASSERT_EQ(TicksOf(date), nearest) << step;
    }
}

TEST(LocalDateTime, WhatAFileTimeCannotHoldIsNothing) {
    EXPECT_FALSE(LocalFileTimeFromDayNumber(1e9).has_value());
    EXPECT_FALSE(LocalFileTimeFromDayNumber(-1e9).has_value());
    EXPECT_FALSE(LocalFileTimeFromDayNumber(std::numeric_limits<double>::infinity()).has_value());
    EXPECT_FALSE(LocalFileTimeFromDayNumber(std::nan("")).has_value());
    EXPECT_TRUE(LocalFileTimeFromDayNumber(1e7).has_value());
    EXPECT_LT(TicksOf(-200000), 0);
}

}  // namespace
}  // namespace tidemark
