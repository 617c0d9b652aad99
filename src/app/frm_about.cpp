#include "app/frm_about.h"

#include <utility>

#include "ui/topmost.h"
#include "ui/window_end.h"

namespace tidemark {
namespace {

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kExtendedStyle = WS_EX_DLGMODALFRAME;
constexpr int kMargin = 16;
constexpr int kLineHeight = 18;

// The outer place of a window with that inner size, in the middle of another one.
Bounds OuterPlace(Size inner, const Bounds& around) {
    RECT frame{0, 0, inner.width, inner.height};
    ::AdjustWindowRectEx(&frame, kStyle, /*bMenu=*/FALSE, kExtendedStyle);
    const int width = static_cast<int>(frame.right - frame.left);
    const int height = static_cast<int>(frame.bottom - frame.top);
    return {around.left + (around.width - width) / 2, around.top + (around.height - height) / 2,
            width, height};
}

}  // namespace

frmAbout::frmAbout(std::string version) : version_(std::move(version)), picture_(L"ABOUT") {}

void frmAbout::Form_Load(const Window& owner) {
    const Size picture = picture_.Extent();
    const int text_width = picture.width - 2 * kMargin;
    const Size inner{picture.width, picture.height + 2 * kLineHeight + 2 * kMargin};
    FormSpec spec;
    spec.caption = "about: tidemark";
    spec.style = kStyle;
    spec.extended_style = kExtendedStyle;
    spec.bounds = OuterPlace(inner, owner.Position());
    spec.owner = owner.Handle();
    Create(L"frmAbout", spec);
    pressed_ = false;

    font_ = MakeFont("Tahoma", 8.25);
    SetFormFont(font_.Get());
    const int top = picture.height + kMargin;
    lblVersion.Create(*this, {.text = version_, .bounds = {kMargin, top, text_width, kLineHeight}});
    lblHint.Create(*this, {.text = "Hold SHIFT at startup to reset window location.",
                           .bounds = {kMargin, top + kLineHeight, text_width, kLineHeight}});
    message_font_.Adopt(*this);

    on_key = [this](const KeyPress& press) {
        if (press.key != VK_ESCAPE && press.key != VK_RETURN) {
            return false;
        }
        Close();
        return true;
    };
}

void frmAbout::ShowUntilClosed(const Window& owner, bool topmost) {
    if (Exists()) {
        return;
    }
    const WindowEnd end(*this);
    Form_Load(owner);
    if (topmost) {
        SetTopmost(*this, true);
    }
    ShowModal(owner);
}

LRESULT frmAbout::OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_ERASEBKGND: {
            const LRESULT result = Form::OnMessage(window, message, wparam, lparam);
            picture_.Paint(reinterpret_cast<HDC>(wparam));
            return result;
        }
        case WM_LBUTTONDOWN:
            pressed_ = true;
            return 0;
        case WM_LBUTTONUP:
            if (std::exchange(pressed_, false)) {
                Close();
            }
            return 0;
        default:
            return Form::OnMessage(window, message, wparam, lparam);
    }
}

}  // namespace tidemark
