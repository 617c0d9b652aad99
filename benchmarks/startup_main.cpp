// The program itself, started without its own waits, to measure what is left: it ends when it has
// nothing more to do. Its exit code is the milliseconds it spent waiting for the splash to fade in,
// which are a wait too.

#include <algorithm>

#include "app/application.h"
#include "benchmarks/measure.h"
#include "platform/win32/win32_process.h"

namespace tidemark {
namespace {

constexpr UINT kFailed = 255;
constexpr std::uint32_t kLongerThanAnyWait = 10'000;  // milliseconds

// A process that stops for nothing.
class HastyProcess final : public Process {
  public:
    // Read before the window is loaded, after it, and to see how long that took.
    std::uint32_t MillisecondCounter() override { return counter_ += kLongerThanAnyWait; }

    // Start-up's last wait, right before the splash goes: what comes then is the message loop.
    void SleepFor(std::uint32_t /*milliseconds*/) override {
        // A timer's message comes when there is no other left.
        ::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, EndAtRest);
        fade_in_ = last_look_ - first_look_;
    }

    // Looked at all the time while the splash fades in.
    std::int16_t KeyState(int /*virtual_key*/) override {
        if (counter_ == 0) {
            last_look_ = NowMs();
            first_look_ = first_look_ == 0 ? last_look_ : first_look_;
        }
        return 0;
    }

    std::string Arguments() override { return {}; }
    std::string ExecutableName() override { return system_.ExecutableName(); }
    std::string ExecutableFolder() override { return system_.ExecutableFolder(); }
    void ReplaceErrorMode(std::uint32_t mode) override { system_.ReplaceErrorMode(mode); }
    bool QuitWaiting() override { return system_.QuitWaiting(); }

  private:
    static void CALLBACK EndAtRest(HWND /*window*/, UINT /*message*/, UINT_PTR /*id*/,
                                   DWORD /*time*/) {
        ::ExitProcess(static_cast<UINT>(std::min(fade_in_, static_cast<double>(kFailed - 1))));
    }

    static inline double fade_in_ = 0;

    Win32Process system_;
    std::uint32_t counter_ = 0;
    double first_look_ = 0;
    double last_look_ = 0;
};

}  // namespace
}  // namespace tidemark

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, PWSTR /*arguments*/,
                    int /*show*/) {
    try {
        tidemark::HastyProcess process;
        (void)tidemark::Application(process).Run();
    } catch (...) {
    }
    return tidemark::kFailed;
}
