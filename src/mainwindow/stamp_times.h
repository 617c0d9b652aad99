#pragma once

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

}  // namespace tidemark
