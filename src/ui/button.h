#pragma once

#include <functional>
#include <optional>

#include "ui/control.h"

namespace tidemark {

// A push button.
class Button : public Control {
  public:
    // Pressed with the mouse, the keyboard or by Click.
    std::function<void()> on_click;

    void Create(ControlSite& site, const ControlSpec& spec);
    // As if the user pressed it; nothing while it is disabled.
    void Click();
    // Draws the heavy border of the button that Enter presses.
    void ShowAsDefault(bool on);

    std::optional<LRESULT> OnCommand(WORD notification) override;
};

// A check box that flips when it is pressed.
class CheckBox : public Control {
  public:
    // The user changed the mark.
    std::function<void()> on_click;

    void Create(ControlSite& site, const ControlSpec& spec);
    [[nodiscard]] bool Checked() const;
    // Changes the mark without an event, and only when it differs.
    void SetChecked(bool checked);

    std::optional<LRESULT> OnCommand(WORD notification) override;
};

}  // namespace tidemark
