#include "app/splash_fade.h"

#include "platform/program_error.h"

namespace tidemark {
namespace {

constexpr std::uint32_t kStepMilliseconds = 25;
constexpr int kOpaque = 255;
constexpr int kStepIn = 64;
constexpr int kStepOut = 32;

// The value as a byte; throws ProgramError (overflow) when it is none.
std::uint8_t ToByte(int value) {
    if (value < 0 || value > kOpaque) {
        throw ProgramError(error_number::kOverflow, "Overflow");
    }
    return static_cast<std::uint8_t>(value);
}

std::unique_ptr<TimerObject> NewStepTimer(TimerSource& timers, ITimerObjectSink& sink) {
    std::unique_ptr<TimerObject> timer = timers.NewTimer(TickKind::kBrief);
    timer->SetInterval(kStepMilliseconds);
    timer->SetSink(&sink);
    return timer;
}

}  // namespace

SplashFade::SplashFade(FadingWindow& window, TimerSource& timers)
    : window_(window),
      tmrIn(NewStepTimer(timers, in_ticks_)),
      tmrOut(NewStepTimer(timers, out_ticks_)) {}

void SplashFade::TickIn() {
    try {
        const int next = alpha_ + kStepIn;
        if (next > kOpaque) {
            alpha_ = kOpaque;
            tmrIn->SetEnabled(false);
        } else {
            alpha_ = ToByte(next);
        }
        window_.SetOpacity(alpha_);
    } catch (...) {
        alpha_ = kOpaque;
        UnloadWindow();
    }
}

void SplashFade::TickOut() {
    try {
        // The step that would lead below 0 is none any more: it ends the fade, so that the window
        // goes while a trace of it is still to be seen.
        alpha_ = ToByte(alpha_ - kStepOut);
        window_.SetOpacity(alpha_);
    } catch (...) {
        UnloadWindow();
    }
}

void SplashFade::UnloadWindow() {
    tmrIn->SetEnabled(false);
    tmrOut->SetEnabled(false);
    window_.Unload();
}

}  // namespace tidemark
