#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "ui/control.h"

namespace tidemark {

// A status bar along the bottom edge of a form: either one text (simple mode, as created) or two
// panels, the first of a given width, the second taking the rest.
class StatusBar : public Control {
  public:
    // The control's text is the first simple text; the bar finds its bounds itself.
    void Create(ControlSite& site, const ControlSpec& spec);
    // Places the bar again after the form's size changed.
    void FollowForm() const;

    [[nodiscard]] bool Simple() const;
    void SetSimple(bool simple);

    // The texts of both modes can be written in either one; they are written to the bar only when
    // they differ. Panels count from 0.
    void SetSimpleText(std::string_view text);
    void SetPanelText(std::size_t panel, std::string_view text);

    // Width of the first panel.
    void SetFirstPanelWidth(int width);
    // The width that the first panel needs to show a text whole in the bar's font.
    [[nodiscard]] int WidthFor(std::string_view text) const;

    // Rectangle of a panel in the bar's client area; empty when the bar cannot tell.
    [[nodiscard]] Bounds PanelBounds(std::size_t panel) const;

  private:
    // What was written last: in simple mode the bar does not give its panels' texts away.
    std::string simple_text_;
    std::array<std::string, 2> panel_texts_;
};

}  // namespace tidemark
