#pragma once

#include "ui/control.h"
#include "ui/hosted_window.h"

namespace tidemark {

// A child window that holds controls of its form. They are the form's controls: what they report
// goes to their wrappers, menus and the rest to the form. Tab passes through it; given the focus
// itself, it hands it to its first control.
class Panel : public Control, public ControlSite, public MessageHandler {
  public:
    Panel() = default;
    ~Panel() override;

    // Throws ProgramError when the window cannot be created, and when there is one already.
    void Create(ControlSite& site, const ControlSpec& spec);

    [[nodiscard]] HWND SiteWindow() const override { return Handle(); }
    [[nodiscard]] ControlRegistry& Controls() override { return *form_controls_; }
    LRESULT OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) override;

  private:
    ControlRegistry* form_controls_ = nullptr;
};

}  // namespace tidemark
