#include "ui/panel.h"

namespace tidemark {
namespace {

// Of the panel, and behind the texts of the labels and check boxes in it.
HBRUSH Background() {
    return ::GetSysColorBrush(COLOR_3DFACE);
}

LRESULT ColourControl(HDC dc) {
    ::SetBkColor(dc, ::GetSysColor(COLOR_3DFACE));
    ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
    return reinterpret_cast<LRESULT>(Background());
}

}  // namespace

Panel::~Panel() {
    // Here, not in the base: until the window is gone its messages need this part of the object.
    Destroy();
}

void Panel::Create(ControlSite& site, const ControlSpec& spec) {
    HostedWindowSpec window = SpecIn(site, spec);
    window.class_name = L"TidemarkPanel";
    window.style |= WS_CLIPCHILDREN;
    window.extended_style |= WS_EX_CONTROLPARENT;
    window.background = -1;
    form_controls_ = &site.Controls();
    Adopt(site, CreateHostedWindow(*this, window));
}

LRESULT Panel::OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_NOTIFY:
        case WM_COMMAND:
        case WM_GETFONT:
            // The form hands them to the wrappers. Done here too, a wrapper that leaves one to the
            // parent would get it twice.
            return ::SendMessageW(::GetParent(window), message, wparam, lparam);
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORSTATIC:
            if (const auto answer = form_controls_->Reflect(message, wparam, lparam)) {
                return *answer;
            }
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
