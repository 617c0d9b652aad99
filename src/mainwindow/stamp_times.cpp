#include "mainwindow/stamp_times.h"

#include <string>

#include "platform/text.h"

namespace tidemark {

double CombineDateAndTime(UserLocale& locale, const PickedDateTime& date,
                          const PickedDateTime& time) {
    const std::string between = locale.DateSeparator();
    const std::string date_text = ZeroPadded(date.month, 2) + between + ZeroPadded(date.day, 2) +
                                  between + ZeroPadded(date.year, 4);
    const std::string time_text =
        ZeroPadded(time.hour, 2) + locale.TimeSeparator() + ZeroPadded(time.minute, 2);
    return locale.ReadDateTime(date_text) + locale.ReadDateTime(time_text);
}

}  // namespace tidemark
