#include "app/frm_splash.h"

#include <utility>

#include "ui/opacity.h"

namespace tidemark {
namespace {

// The picture's lowest band is of one colour; the labels stand there.
constexpr COLORREF kBand = RGB(0x0F, 0x41, 0x56);
constexpr COLORREF kBright = RGB(0xFD, 0xF3, 0xDF);
constexpr COLORREF kPale = RGB(0x9F, 0xD8, 0xD3);
constexpr Bounds kVersionPlace{24, 216, 392, 18};
constexpr Bounds kHintPlace{24, 236, 392, 18};

}  // namespace

frmSplash::frmSplash(TimerSource& timers, std::string version)
    : frmSplash(timers, std::move(version), &tidemark::SetOpacity) {}

frmSplash::frmSplash(TimerSource& timers, std::string version, OpacitySetter set_opacity)
    : lblVersion(kBright, kBand),
      lblHint(kPale, kBand),
      timers_(timers),
      version_(std::move(version)),
      set_opacity_(std::move(set_opacity)),
      picture_(L"SPLASH") {}

void frmSplash::Form_Load() {
    const Size size = picture_.Extent();
    FormSpec spec;
    spec.caption = "Starting tidemark clock";
    spec.style = WS_POPUP | WS_CLIPCHILDREN;
    spec.extended_style = WS_EX_TOOLWINDOW;  // no place on the task bar for a second or two
    spec.bounds = {(::GetSystemMetrics(SM_CXSCREEN) - size.width) / 2,
                   (::GetSystemMetrics(SM_CYSCREEN) - size.height) / 2, size.width, size.height};
    Create(L"frmSplash", spec);

    font_ = MakeFont("Tahoma", 8.25);
    SetFormFont(font_.Get());
    lblVersion.Create(*this, {.text = version_, .bounds = kVersionPlace});
    lblHint.Create(*this, {.text = "Hold SHIFT to reset window location.", .bounds = kHintPlace});
    message_font_.Adopt(*this);

    last_alpha_ = 0;
    fade_ = std::make_unique<SplashFade>(static_cast<FadingWindow&>(*this), timers_);
    try {
        SetOpacity(0);
    } catch (...) {
        // Without layered windows the fade's first step fails too, and takes the splash away.
    }
}

void frmSplash::FadeIn() {
    if (fade_) {
        fade_->FadeIn();
    }
}

void frmSplash::FadeOut() {
    if (fade_) {
        fade_->FadeOut();
    }
}

void frmSplash::StayAbove(const Window& owner) {
    if (Exists()) {
        ::SetWindowLongPtrW(Handle(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner.Handle()));
        // A new owner does not move the window; it is where it was made, below what came later.
        BringToFront();
    }
}

LRESULT frmSplash::OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_ERASEBKGND) {
        picture_.Paint(reinterpret_cast<HDC>(wparam));
        return TRUE;
    }
    return Form::OnMessage(window, message, wparam, lparam);
}

void frmSplash::OnDestroy() {
    // The fade may be the caller: it is made to stand that, and its timers end here.
    if (fade_) {
        last_alpha_ = fade_->Alpha();
        fade_.reset();
    }
}

}  // namespace tidemark
