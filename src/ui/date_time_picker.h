#pragma once

#include <functional>
#include <string_view>

#include "ui/control.h"
#include "ui/picked_date_time.h"

namespace tidemark {

// The local date and time now.
[[nodiscard]] PickedDateTime LocalNow();

// A picker for a date (short form, with a drop-down calendar) or for a time of day (with arrows).
class DateTimePicker : public Control {
  public:
    enum class Kind { kDate, kTime };

    // The user changed the value.
    std::function<void()> on_change;

    void Create(ControlSite& site, Kind kind, const ControlSpec& spec);

    // What the user sees: digits typed into the picker and not taken over by it yet are taken over
    // first, which can raise the event.
    [[nodiscard]] PickedDateTime Value() const;
    // Changes the value without an event. Throws ProgramError (invalid argument) for a date or time
    // that does not exist or that the picker refuses; the value then stays as it was.
    void SetValue(const PickedDateTime& value);
    // A display format in the system's notation ("h:mm tt"); empty restores the user's own.
    void SetFormat(std::string_view format) const;

    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    // Enter and Esc belong to the calendar while it is dropped down.
    [[nodiscard]] bool KeepsKey(UINT /*key*/) const override { return dropped_down_; }

  private:
    void TakeOverTypedDigits() const;

    bool dropped_down_ = false;
    mutable bool taking_over_ = false;
};

}  // namespace tidemark
