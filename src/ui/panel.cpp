#include "ui/panel.h"

namespace tidemark {

Panel::~Panel() {
    // Here, not in the base: until the window is gone its messages need this part of the object.
    Destroy();
}

void Panel::Create(ControlSite& site, const ControlSpec& spec) {
    HostedWindowSpec window;
    window.class_name = L"TidemarkPanel";
    window.text = spec.text;
    window.style = WS_CHILD | WS_CLIPCHILDREN | spec.style | (spec.visible ? WS_VISIBLE : 0U);
    window.extended_style = WS_EX_CONTROLPARENT | spec.extended_style;
    window.bounds = spec.bounds;
    window.parent = site.SiteWindow();
    window.menu_or_id = reinterpret_cast<HMENU>(static_cast<INT_PTR>(site.Controls().NextId()));
    window.background = -1;
    form_controls_ = &site.Controls();
    Adopt(site, CreateHostedWindow(*this, window));
}

void Panel::SetBackground(COLORREF colour) {
    if (!brush_ || colour != colour_) {
        colour_ = colour;
        brush_.Reset(::CreateSolidBrush(colour));
        Invalidate();
    }
}

HBRUSH Panel::Background() const {
    return brush_ ? brush_.Get() : ::GetSysColorBrush(COLOR_3DFACE);
}

LRESULT Panel::ColourControl(HDC dc) const {
    ::SetBkColor(dc, brush_ ? colour_ : ::GetSysColor(COLOR_3DFACE));
    ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
    return reinterpret_cast<LRESULT>(Background());
}

LRESULT Panel::OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (const auto answer = form_controls_->Reflect(message, wparam, lparam)) {
        return *answer;
    }
    switch (message) {
        case WM_NOTIFY:
        case WM_COMMAND:
        case WM_DRAWITEM:
        case WM_GETFONT:
            return ::SendMessageW(::GetParent(window), message, wparam, lparam);
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORSTATIC:
            return ColourControl(reinterpret_cast<HDC>(wparam));
        case WM_ERASEBKGND: {
            RECT rect{};
            ::GetClientRect(window, &rect);
            ::FillRect(reinterpret_cast<HDC>(wparam), &rect, Background());
            return 1;
        }
        case WM_SETFOCUS:
            if (const HWND first = ::GetNextDlgTabItem(window, nullptr, FALSE)) {
                ::SetFocus(first);
            }
            return 0;
        default:
            return ::DefWindowProcW(window, message, wparam, lparam);
    }
}

}  // namespace tidemark
