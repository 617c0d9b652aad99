#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "app/coloured_label.h"
#include "app/picture.h"
#include "app/splash_fade.h"
#include "platform/timer_object.h"
#include "ui/form.h"
#include "ui/gdi.h"
#include "ui/message_font.h"

namespace tidemark {

// The picture shown while the program starts, faded in and out.
class frmSplash final : public Form, private FadingWindow {
  public:
    // Sets a window's opacity; throws where the system cannot.
    using OpacitySetter = std::function<void(const Window&, std::uint8_t)>;

    // `version` is the text of the version label. The source of timers is not owned.
    frmSplash(TimerSource& timers, std::string version);
    frmSplash(TimerSource& timers, std::string version, OpacitySetter set_opacity);
    ~frmSplash() override { Destroy(); }

    // Creates the window in the middle of the screen, invisible as yet.
    void Form_Load();

    // Do nothing when the window is gone.
    void FadeIn();
    void FadeOut();

    // Current opacity; 255 also after a fade-in that failed and took the window with it.
    [[nodiscard]] std::uint8_t Alpha() const { return fade_ ? fade_->Alpha() : last_alpha_; }
    // Whether it is on its way to full opacity.
    [[nodiscard]] bool FadingIn() const { return fade_ && fade_->FadingIn(); }

    // Keeps the window above `owner` from now on.
    void StayAbove(const Window& owner);

    LRESULT OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) override;

    ColouredLabel lblVersion;
    ColouredLabel lblHint;

  private:
    // FadingWindow
    void SetOpacity(std::uint8_t alpha) override { set_opacity_(*this, alpha); }
    void Unload() override { Destroy(); }

    void OnClose() override {}  // it goes by itself
    void OnDestroy() override;

    TimerSource& timers_;
    std::string version_;
    OpacitySetter set_opacity_;
    Picture picture_;
    UniqueFont font_;
    MessageFont message_font_;
    std::unique_ptr<SplashFade> fade_;
    std::uint8_t last_alpha_ = 0;
};

}  // namespace tidemark
