#pragma once

#include <cstdint>
#include <memory>

#include "platform/timer_object.h"

namespace tidemark {

// What the fade does to its window.
class FadingWindow {
  public:
    // Makes the whole window as opaque as told: 0 is invisible, 255 hides what is behind it.
    // Throws when the system cannot.
    virtual void SetOpacity(std::uint8_t alpha) = 0;
    // Unloads the window; the fade may be destroyed in here.
    virtual void Unload() = 0;

  protected:
    ~FadingWindow() = default;
};

// Fades a window in and out, one step every 25 ms: in through the opacities 64, 128, 192 and 255;
// out through 223, 191, ... 31, and then unloads it. Any failure on the way unloads it at once.
class SplashFade {
  public:
    // The window, not owned, outlives the fade; so does the source of timers. The window is taken
    // to be invisible.
    SplashFade(FadingWindow& window, TimerSource& timers);
    SplashFade(const SplashFade&) = delete;
    SplashFade& operator=(const SplashFade&) = delete;

    void FadeIn() { tmrIn->SetEnabled(true); }
    void FadeOut() { tmrOut->SetEnabled(true); }

    // Current opacity. It is 255 also when fading in failed, so that nobody waits for ever.
    [[nodiscard]] std::uint8_t Alpha() const { return alpha_; }
    [[nodiscard]] bool FadingIn() const { return tmrIn->Enabled(); }

  private:
    class Ticks final : public ITimerObjectSink {
      public:
        Ticks(SplashFade& fade, void (SplashFade::*tick)()) : fade_(fade), tick_(tick) {}
        void ITimerObjectSink_Timer() override { (fade_.*tick_)(); }

      private:
        SplashFade& fade_;
        void (SplashFade::*tick_)();
    };

    void TickIn();
    void TickOut();
    void UnloadWindow();

    FadingWindow& window_;
    std::uint8_t alpha_ = 0;
    Ticks in_ticks_{*this, &SplashFade::TickIn};
    Ticks out_ticks_{*this, &SplashFade::TickOut};
    std::unique_ptr<TimerObject> tmrIn;
    std::unique_ptr<TimerObject> tmrOut;
};

}  // namespace tidemark
