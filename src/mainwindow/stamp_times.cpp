#include "mainwindow/stamp_times.h"

#include <string>

namespace tidemark {
namespace {

std::string Digits(int value, std::size_t width) {
    std::string digits = std::to_string(value);
    if (digits.size() < width) {
        digits.insert(0, width - digits.size(), '0');
    }
    return digits;
}

}  // namespace

double CombineDateAndTime(UserLocale& locale, const PickedDateTime& date,
                          const PickedDateTime& time) {
    const std::string between = locale.DateSeparator();
    const std::string date_text =
        Digits(date.month, 2) + between + Digits(date.day, 2) + between + Digits(date.year, 4);
    const std::string time_text =
        Digits(time.hour, 2) + locale.TimeSeparator() + Digits(time.minute, 2);
    return locale.ReadDateTime(date_text) + locale.ReadDateTime(time_text);
}

}  // namespace tidemark
