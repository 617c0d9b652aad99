#include "controls/ole_dropper.h"

#include <commctrl.h>

#include "platform/win32/system_message.h"

namespace tidemark {
namespace {

constexpr wchar_t kLabelCaption[] = L"Drop files to stamp here";

LRESULT ColourLabel(HDC dc) {
    ::SetTextColor(dc, ::GetSysColor(COLOR_WINDOWTEXT));
    ::SetBkColor(dc, ::GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<LRESULT>(::GetSysColorBrush(COLOR_WINDOW));
}

}  // namespace

OLEDropper::OLEDropper() : surface_events_(*this), label_events_(*this) {}

OLEDropper::~OLEDropper() {
    // Here, not in the base: until the window is gone its messages need this part of the object.
    Destroy();
}

void OLEDropper::Create(ControlSite& site, const ControlSpec& spec) {
    HostedWindowSpec window = SpecIn(site, spec);
    window.class_name = L"TidemarkOLEDropper";
    window.style |= WS_CLIPCHILDREN;
    window.background = COLOR_WINDOW;
    Adopt(site, CreateHostedWindow(*this, window));
    try {
        CreateLabel(Handle());
        ReplaceFont(reinterpret_cast<HFONT>(::SendMessageW(window.parent, WM_GETFONT, 0, 0)),
                    false);
        surface_target_ = std::make_unique<DropTarget>(Handle(), surface_events_);
        label_target_ = std::make_unique<DropTarget>(label_, label_events_);
    } catch (...) {
        Destroy();
        throw;
    }
}

LRESULT OLEDropper::OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_SIZE:
            CentreLabel();
            return 0;
        case WM_SETFONT:
            ReplaceFont(reinterpret_cast<HFONT>(wparam), LOWORD(lparam) != 0);
            return 0;
        case WM_GETFONT:
            return ::SendMessageW(label_, WM_GETFONT, 0, 0);
        case WM_CTLCOLORSTATIC:
            return ColourLabel(reinterpret_cast<HDC>(wparam));
        case WM_DESTROY:
            label_target_.reset();
            surface_target_.reset();
            return 0;
        case WM_NCDESTROY:
            label_ = nullptr;
            break;
        default:
            break;
    }
    return ::DefWindowProcW(window, message, wparam, lparam);
}

void OLEDropper::CreateLabel(HWND surface) {
    // Without SS_NOTIFY the label would not be hit by the pointer, and drops on it would pass to
    // the surface.
    label_ = ::CreateWindowExW(0, WC_STATICW, kLabelCaption,
                               WS_CHILD | WS_VISIBLE | SS_CENTER | SS_NOPREFIX | SS_NOTIFY, 0, 0, 0,
                               0, surface, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    if (label_ == nullptr) {
        ThrowSystemError(::GetLastError(), "Creating a label");
    }
}

void OLEDropper::ReplaceFont(HFONT font, bool redraw) {
    ::SendMessageW(label_, WM_SETFONT, reinterpret_cast<WPARAM>(font), MAKELPARAM(redraw, 0));
    FitLabel();
    CentreLabel();
}

void OLEDropper::FitLabel() {
    const Window label(label_);
    const Size size = label.TextSize(label.Text());
    ::SetWindowPos(label_, nullptr, 0, 0, size.width, size.height,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void OLEDropper::CentreLabel() {
    const Size inner = ClientSize();
    const Bounds label = Window(label_).Position();
    const int left = (inner.width - label.width) / 2;
    const int top = (inner.height - label.height) / 2;
    // What cannot be laid out stays where it is.
    ::SetWindowPos(label_, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    label_events_.SetOrigin(static_cast<float>(left), static_cast<float>(top));
}

}  // namespace tidemark
