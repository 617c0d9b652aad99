#pragma once

#include "ui/control.h"
#include "ui/gdi.h"
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
    // Also what is behind the texts of the labels and check boxes in it.
    void SetBackground(COLORREF colour);

    [[nodiscard]] HWND SiteWindow() const override { return Handle(); }
    [[nodiscard]] ControlRegistry& Controls() override { return *form_controls_; }
    LRESULT OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) override;

  private:
    [[nodiscard]] HBRUSH Background() const;
    LRESULT ColourControl(HDC dc) const;

    ControlRegistry* form_controls_ = nullptr;
    UniqueBrush brush_;
    COLORREF colour_ = 0;  // of the brush; without one the system's colour of dialog faces holds
};

}  // namespace tidemark
