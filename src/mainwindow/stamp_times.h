#pragma once

#include <optional>
#include <string>

#include "platform/user_locale.h"
#include "ui/picked_date_time.h"

namespace tidemark {

// The local day number that a date and a time picker stand for together: the date of the one and
// the time of the other. Seconds are dropped: stamped times are whole minutes.
//
// Both parts go through text: the date is written month first and read back in the locale's own
// order, so that a day-first locale reads the third of April as the fourth of March, and takes
// month first only where the other order is no date. Throws ProgramError (type mismatch) when the
// locale cannot read one of the texts; its description names the text, the setting and what to do.
[[nodiscard]] double CombineDateAndTime(UserLocale& locale, const PickedDateTime& date,
                                        const PickedDateTime& time);

// What the four pickers show.
struct PickedTimes {
    PickedDateTime last_modified_date;
    PickedDateTime last_modified_time;
    PickedDateTime created_date;
    PickedDateTime created_time;
    friend bool operator==(const PickedTimes&, const PickedTimes&) = default;
};

// The two times that a stamp writes, as local day numbers. To read a time from text costs more than
// to stamp a file, so the texts are read again only when a picker has changed.
class StampTimes {
  public:
    // The locale must outlive this object.
    explicit StampTimes(UserLocale& locale) : locale_(locale) {}

    // Throws as CombineDateAndTime does; both times are then as they were.
    void Combine(const PickedTimes& picked);
    [[nodiscard]] double LastModified() const { return last_modified_; }
    [[nodiscard]] double Created() const { return created_; }

  private:
    UserLocale& locale_;
    std::optional<PickedTimes> picked_;
    double last_modified_ = 0;
    double created_ = 0;
};

// Both times in words, a line each, as the stamp will write them.
[[nodiscard]] std::string DescribeTimes(const StampTimes& times, UserLocale& locale);

}  // namespace tidemark
