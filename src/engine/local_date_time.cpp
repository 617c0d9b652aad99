#include "engine/local_date_time.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace tidemark {
namespace {

// From 1 January 1601, where file times begin, to 30 December 1899, which is day number 0.
constexpr double kDaysBeforeDayNumbers = 109205;
constexpr double kMillisecondsPerDay = 86'400'000;
constexpr std::int64_t kTicksPerMillisecond = 10'000;

}  // namespace

std::optional<FileTime> LocalFileTimeFromDayNumber(double date) {
    // A day number holds a second of our time no closer than some three units. Adding days first
    // would spoil it further, to more than a microsecond; so days and the part of the day are
    // taken apart. Their sum in milliseconds is coarser (some twenty units) than the day number's
    // own error: the error vanishes, and what was a whole second is one again.
    const double whole_days = std::floor(date);
    const double milliseconds = (whole_days + kDaysBeforeDayNumbers) * kMillisecondsPerDay +
                                (date - whole_days) * kMillisecondsPerDay;

    // Four decimal places of a millisecond, which together with it no double can hold.
    constexpr std::int64_t kWholeLimit =
        std::numeric_limits<std::int64_t>::max() / kTicksPerMillisecond;
    constexpr auto kLimit = static_cast<double>(kWholeLimit);
    if (!(std::abs(milliseconds) < kLimit)) {
        return std::nullopt;
    }
    const double whole = std::floor(milliseconds);
    const double rest = (milliseconds - whole) * static_cast<double>(kTicksPerMillisecond);
    return FileTime{static_cast<std::int64_t>(whole) * kTicksPerMillisecond + std::llrint(rest)};
}

}  // namespace tidemark
