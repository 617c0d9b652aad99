#pragma once

#include <optional>

#include "ui/control.h"
#include "ui/picked_date_time.h"

namespace tidemark {

// The local date and time now.
[[nodiscard]] PickedDateTime LocalNow();

// A picker for a date (short form, with a drop-down calendar) or for a time of day (with arrows).
class DateTimePicker : public Control {
  public:
    enum class Kind { kDate, kTime };

    void Create(ControlSite& site, Kind kind, const ControlSpec& spec);

    // What the user sees: digits typed into the picker and not taken over by it yet are taken over
    // first.
    [[nodiscard]] PickedDateTime Value() const;
    // Throws ProgramError (invalid argument) for a date or time that does not exist or that the
    // picker refuses; the value then stays as it was.
    void SetValue(const PickedDateTime& value);

    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    // They belong to the calendar while it is dropped down.
    [[nodiscard]] bool KeepsKeys() const override { return dropped_down_; }

  private:
    void TakeOverTypedDigits() const;

    bool dropped_down_ = false;
};

}  // namespace tidemark
