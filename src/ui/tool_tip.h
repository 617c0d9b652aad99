#pragma once

#include <functional>
#include <string>

#include "ui/control.h"

namespace tidemark {

class Form;

// The tip that appears while the mouse pointer rests over one of the form's controls.
class ToolTip final : public Control {
  public:
    // The tip's text, UTF-8, with CR LF between its lines; none shows no tip. It is asked for each
    // time the tip appears, and by Update.
    std::function<std::string()> text;

    void Create(Form& form);
    // Shows the tip over this control of the form.
    void AddTool(const Control& control);
    // Asks for the text again if the tip is on the screen.
    void Update();

    std::optional<LRESULT> OnNotify(NMHDR& header) override;

  private:
    HWND form_ = nullptr;
    std::wstring shown_text_;  // the system keeps a pointer to it
};

}  // namespace tidemark
