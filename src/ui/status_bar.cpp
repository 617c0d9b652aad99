#include "ui/status_bar.h"

#include <commctrl.h>

#include <array>

#include "platform/win32/wide_text.h"

namespace tidemark {

void StatusBar::Create(ControlSite& site, const ControlSpec& spec) {
    ControlSpec own = spec;
    own.style |= CCS_BOTTOM;
    own.text.clear();  // the control would put it into its first panel
    CreateChild(site, STATUSCLASSNAMEW, own);
    simple_text_.clear();
    panel_texts_ = {};
    SetFirstPanelWidth(0);
    SetSimple(true);
    SetSimpleText(spec.text);
}

void StatusBar::FollowForm() const {
    const int width = ClientSize().width;
    Send(WM_SIZE);
    if (ClientSize().width != width) {
        Invalidate();  // the edge at the old right end would stay in the picture
    }
}

bool StatusBar::Simple() const {
    return Send(SB_ISSIMPLE) != 0;
}

void StatusBar::SetSimple(bool simple) {
    if (simple != Simple()) {
        Send(SB_SIMPLE, simple ? TRUE : FALSE);
    }
}

void StatusBar::SetSimpleText(std::string_view text) {
    if (text != simple_text_) {
        simple_text_ = text;
        Send(SB_SETTEXTW, SB_SIMPLEID | SBT_NOBORDERS,
             reinterpret_cast<LPARAM>(WideFromUtf8(text).c_str()));
    }
}

void StatusBar::SetPanelText(std::size_t panel, std::string_view text) {
    std::string& current = panel_texts_.at(panel);
    if (text != current) {
        current = text;
        Send(SB_SETTEXTW, panel, reinterpret_cast<LPARAM>(WideFromUtf8(text).c_str()));
    }
}

void StatusBar::SetFirstPanelWidth(int width) {
    const std::array<int, 2> right_edges{width, -1};
    Send(SB_SETPARTS, right_edges.size(), reinterpret_cast<LPARAM>(right_edges.data()));
}

int StatusBar::WidthFor(std::string_view text) const {
    std::array<int, 3> borders{};  // horizontal, vertical, between panels
    Send(SB_GETBORDERS, 0, reinterpret_cast<LPARAM>(borders.data()));
    // The control keeps an edge and a margin free on both sides of a panel's text.
    const int margin = ::GetSystemMetrics(SM_CXEDGE) * 2;
    return borders[0] + TextSize(text).width + 2 * margin + borders[2];
}

Bounds StatusBar::PanelBounds(std::size_t panel) const {
    RECT rect{};
    if (Send(SB_GETRECT, panel, reinterpret_cast<LPARAM>(&rect)) == 0) {
        return {};
    }
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

}  // namespace tidemark
