#include "mainwindow/stamp_times.h"

#include <string>

#include "engine/local_date_time.h"
#include "platform/program_error.h"
#include "platform/text.h"

namespace tidemark {
namespace {

// What the locale writes is not always what it reads: the user may choose any separator.
double Read(UserLocale& locale, const std::string& text, const char* what, const char* remedy) {
    try {
        return locale.ReadDateTime(text);
    } catch (const ProgramError& error) {
        throw ProgramError(error.Number(), "\"" + text + "\" cannot be read as a " + what +
                                               ", so nothing was stamped. In the regional settings "
                                               "of Windows, " +
                                               remedy + ".");
    }
}

}  // namespace

double CombineDateAndTime(UserLocale& locale, const PickedDateTime& date,
                          const PickedDateTime& time) {
    const std::string between = locale.DateSeparator();
    const std::string date_text = ZeroPadded(date.month, 2) + between + ZeroPadded(date.day, 2) +
                                  between + ZeroPadded(date.year, 4);
    const std::string time_text =
        ZeroPadded(time.hour, 2) + locale.TimeSeparator() + ZeroPadded(time.minute, 2);
    return Read(locale, date_text, "date",
                R"(choose a short date with "/" or "-" between its parts)") +
           Read(locale, time_text, "time of day",
                R"(choose a time with ":" between hours and minutes)");
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
