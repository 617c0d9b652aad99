#pragma once

#include <functional>
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

    // The user changed the value.
    std::function<void()> on_change;

    void Create(ControlSite& site, Kind kind, const ControlSpec& spec);

    // What the picker holds. Digits being typed are not part of it until they are taken over.
    [[nodiscard]] PickedDateTime Value() const;
    // Makes the value what the user sees while digits are being typed. A picker does so by itself
    // when it loses the focus; a key or a menu command can come without that.
    void TakeOverTypedDigits() const;
    // Whether digits are being typed that may be no part of the value yet.
    [[nodiscard]] bool Typing() const { return typing_; }
    // Throws ProgramError (invalid argument) for a date or time that does not exist or that the
    // picker refuses; the value then stays as it was.
    void SetValue(const PickedDateTime& value);

    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    // They belong to the calendar while it is dropped down.
    [[nodiscard]] bool KeepsKeys() const override { return dropped_down_; }

  protected:
    LRESULT OnOwnMessage(const WatchedMessage& message) override;

  private:
    bool dropped_down_ = false;
    bool typing_ = false;
};

}  // namespace tidemark
