#include "app/startup.h"

#include <cstddef>
#include <cstdlib>

#include "app/command_line.h"
#include "app/startup_messages.h"

namespace tidemark {
namespace {

// The splash stays at least this long after it has faded in, however quickly the rest loads.
constexpr std::uint32_t kSplashMilliseconds = 500;
constexpr std::uint32_t kLingerMilliseconds = 350;

}  // namespace

bool IsShiftDown(Process& process) {
    const int state = process.KeyState(virtual_key::kShift);
    return std::abs(state) > 1;
}

bool ScriptingRuntimeAvailable(FileSystemObject& file_system) {
    try {
        static_cast<void>(file_system.DriveCount());
        return true;
    } catch (...) {
        return false;
    }
}

Point CentredOver(const Bounds& other, const Bounds& window) {
    return {other.left + (other.width - window.width) / 2,
            other.top + (other.height - window.height) / 2};
}

const std::array<Startup::Step, 17> Startup::kSteps{{
    {&Startup::InitialiseCommonControls},
    {&Startup::ShowSplash},
    {&Startup::WaitForFadeIn},
    {&Startup::CheckScriptingRuntime},
    {&Startup::TakeStartTime},
    {&Startup::LoadMainWindow},
    {&Startup::InitialiseMainWindow},
    {&Startup::RestorePlacement},
    {&Startup::RaiseSplash},
    {&Startup::KeepSplashOnTop},
    {&Startup::ShowMainWindow},
    {&Startup::LoadErrorsWindow},
    {&Startup::RegisterApplicationPath},
    {&Startup::AddCommandLinePaths},
    {&Startup::LingerBeforeFadeOut},
    {&Startup::FadeSplashOut, Road::kDone},
    {&Startup::TellOfMissingRuntime, Road::kDone},
}};

bool Startup::Run() {
    std::size_t step = 0;
    while (step < kSteps.size() && !Ending()) {
        switch (RunStep(kSteps[step])) {
            case Road::kNext:
                ++step;
                break;
            case Road::kMissingRuntime:
                step = kSteps.size() - 1;
                break;
            case Road::kDone:
                step = kSteps.size();
                break;
        }
    }
    // Without a main window nothing would ever end the program.
    if (!parts_.shut_down.Begun() && !parts_.main_window.Loaded()) {
        parts_.shut_down.ShutDown(false);
    }
    return !parts_.shut_down.Begun();
}

Startup::Road Startup::RunStep(const Step& step) {
    while (!Ending()) {
        try {
            return (this->*step.run)();
        } catch (...) {
            switch (AskAboutCurrentError()) {
                case BoxAnswer::kRetry:
                    break;
                case BoxAnswer::kIgnore:
                    return step.if_ignored;
                default:
                    parts_.shut_down.ShutDown(true);
                    return Road::kDone;
            }
        }
    }
    return Road::kDone;
}

BoxAnswer Startup::AskAboutCurrentError() {
    try {
        return parts_.boxes.Show(parts_.main_window.MessageOwner(),
                                 {.text = StartupErrorText(CurrentError()),
                                  .caption = kStartupErrorCaption,
                                  .buttons = BoxButtons::kAbortRetryIgnore,
                                  .icon = BoxIcon::kInformation});
    } catch (...) {
        // The user cannot be asked; going on blindly would be worse than stopping.
        return BoxAnswer::kAbort;
    }
}

bool Startup::Ending() {
    return parts_.shut_down.Begun() || parts_.process.QuitWaiting();
}

void Startup::NoteShift() {
    if (IsShiftDown(parts_.process)) {
        shift_seen_ = true;
    }
}

// NOLINTNEXTLINE(readability-make-member-function-const): all steps in the list are of one type.
Startup::Road Startup::InitialiseCommonControls() {
    parts_.initialise_common_controls();
    return Road::kNext;
}

Startup::Road Startup::ShowSplash() {
    parts_.splash.Load();
    parts_.splash.Show();
    parts_.splash.FadeIn();
    return Road::kNext;
}

Startup::Road Startup::WaitForFadeIn() {
    while (parts_.splash.FadingIn() && !Ending()) {
        parts_.pump.RunPendingMessagesNow();
        NoteShift();
    }
    return Road::kNext;
}

Startup::Road Startup::CheckScriptingRuntime() {
    return ScriptingRuntimeAvailable(parts_.file_system) ? Road::kNext : Road::kMissingRuntime;
}

Startup::Road Startup::TakeStartTime() {
    start_ = parts_.process.MillisecondCounter();
    return Road::kNext;
}

Startup::Road Startup::LoadMainWindow() {
    do {
        NoteShift();
        if (!main_loaded_) {
            parts_.main_window.Load();
            main_loaded_ = true;
            NoteShift();
        }
        parts_.pump.RunPendingMessagesNow();
        if (parts_.process.MillisecondCounter() < start_) {
            start_ = parts_.process.MillisecondCounter();
        }
    } while (parts_.process.MillisecondCounter() - start_ < kSplashMilliseconds && !Ending());
    return Road::kNext;
}

Startup::Road Startup::InitialiseMainWindow() {
    parts_.main_window.InitializeDisplay();
    return Road::kNext;
}

Startup::Road Startup::RestorePlacement() {
    parts_.main_window.LoadPosition(shift_seen_);
    return Road::kNext;
}

Startup::Road Startup::RaiseSplash() {
    parts_.splash.ShowAboveMainWindow();
    return Road::kNext;
}

Startup::Road Startup::KeepSplashOnTop() {
    if (parts_.main_window.AlwaysOnTopChecked()) {
        parts_.splash.SetTopmost(true);
    }
    return Road::kNext;
}

Startup::Road Startup::ShowMainWindow() {
    parts_.main_window.Show();
    parts_.pump.RunPendingMessagesNow();
    // The main window came to the front when it was shown, over what it owns on some systems.
    parts_.splash.ShowAboveMainWindow();
    return Road::kNext;
}

Startup::Road Startup::LoadErrorsWindow() {
    parts_.errors_window.Load();
    parts_.errors_window.MoveTo(
        CentredOver(parts_.main_window.Position(), parts_.errors_window.Position()));
    return Road::kNext;
}

Startup::Road Startup::RegisterApplicationPath() {
    parts_.register_app_path(parts_.process.ExecutableName(), parts_.process.ExecutableFolder());
    return Road::kNext;
}

Startup::Road Startup::AddCommandLinePaths() {
    const std::vector<std::string> paths = SplitCommandLine(parts_.process.Arguments());
    if (!paths.empty()) {
        parts_.main_window.AddItems(paths);
    }
    return Road::kNext;
}

Startup::Road Startup::LingerBeforeFadeOut() {
    parts_.process.SleepFor(kLingerMilliseconds);
    return Road::kNext;
}

Startup::Road Startup::FadeSplashOut() {
    parts_.splash.FadeOut();
    return Road::kDone;
}

Startup::Road Startup::TellOfMissingRuntime() {
    parts_.boxes.Show(/*owner=*/nullptr, {.text = MissingRuntimeText(),
                                          .caption = kMissingRuntimeCaption,
                                          .buttons = BoxButtons::kOk,
                                          .icon = BoxIcon::kCritical});
    parts_.shut_down.ShutDown(false);
    return Road::kDone;
}

}  // namespace tidemark
