#include "mainwindow/stamp_times.h"

#include <cmath>
#include <string>

#include "engine/local_date_time.h"
#include "platform/program_error.h"
#include "platform/text.h"

namespace tidemark {
namespace {

// What the locale writes is not always what it reads: the user may choose any separator, also one
// by which a time of day is read as a date.
double Read(UserLocale& locale, const std::string& text, bool time_of_day) {
    try {
        const double value = locale.ReadDateTime(text);
        if (time_of_day ? value >= 0 && value < 1 : value == std::floor(value)) {
            return value;
        }
    } catch (const ProgramError& error) {
        if (error.Number() != error_number::kTypeMismatch) {
            throw;
        }
    }
    throw ProgramError(
        error_number::kTypeMismatch,
        "\"" + text + "\" cannot be read as a " + (time_of_day ? "time of day" : "date") +
            ", so nothing can be stamped. In the regional settings of Windows, choose a " +
            (time_of_day ? R"(time with ":" between hours and minutes.)"
                         : R"(short date with "/" or "-" between its parts.)"));
}

}  // namespace

double CombineDateAndTime(UserLocale& locale, const PickedDateTime& date,
                          const PickedDateTime& time) {
    const std::string between = locale.DateSeparator();
    const std::string date_text = ZeroPadded(date.month, 2) + between + ZeroPadded(date.day, 2) +
                                  between + ZeroPadded(date.year, 4);
    const std::string time_text =
        ZeroPadded(time.hour, 2) + locale.TimeSeparator() + ZeroPadded(time.minute, 2);
    const double day = Read(locale, date_text, /*time_of_day=*/false);
    return day + Read(locale, time_text, /*time_of_day=*/true);
}

void StampTimes::Combine(const PickedTimes& picked) {
    if (picked_ == picked) {
        return;
    }
    const double last_modified =
        CombineDateAndTime(locale_, picked.last_modified_date, picked.last_modified_time);
    created_ = CombineDateAndTime(locale_, picked.created_date, picked.created_time);
    last_modified_ = last_modified;
    picked_ = picked;
}

std::string DescribeTimes(const StampTimes& times, UserLocale& locale) {
    const auto in_words = [&locale](double day_number) {
        const std::optional<FileTime> local = LocalFileTimeFromDayNumber(day_number);
        const std::string text = local ? locale.DateTimeText(*local) : std::string();
        return text.empty() ? "a time that no file can have" : text;
    };
    return "Last-Modified: " + in_words(times.LastModified()) +
           "\r\nCreated: " + in_words(times.Created());
}

}  // namespace tidemark
