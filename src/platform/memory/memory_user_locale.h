#pragma once

#include <string>

#include "platform/user_locale.h"

namespace tidemark {

// A user's locale made to order. At first that of the United States.
class MemoryUserLocale final : public UserLocale {
  public:
    enum class DateOrder { kMonthFirst, kDayFirst };

    void SetThousandsSeparator(const std::string& separator) { thousands_ = separator; }
    void SetDateSeparator(const std::string& separator) { date_ = separator; }
    void SetTimeSeparator(const std::string& separator) { time_ = separator; }
    void SetDateOrder(DateOrder order) { order_ = order; }

    // ASCII and Latin-1 letters only.
    std::string LowerCase(const std::string& text) override;
    // An accented letter counts as the plain one, unless that makes two texts equal.
    std::string SortKey(const std::string& text) override;
    std::string ThousandsSeparator() override { return thousands_; }
    std::string DateSeparator() override { return date_; }
    std::string TimeSeparator() override { return time_; }
    // Reads a date (two numbers and a year), a time of day (two or three numbers joined by ":" or
    // the time separator, with "AM" or "PM" behind if need be), or both with a blank between. A
    // month above twelve makes the two numbers change places, as the system does.
    double ReadDateTime(const std::string& text) override;
    // In English.
    std::string DateTimeText(FileTime local) override;

  private:
    std::string thousands_ = ",";
    std::string date_ = "/";
    std::string time_ = ":";
    DateOrder order_ = DateOrder::kMonthFirst;
};

}  // namespace tidemark
