#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/shut_down.h"
#include "platform/file_system_object.h"
#include "platform/geometry.h"
#include "platform/message_pump.h"
#include "platform/process.h"
#include "ui/message_box.h"

namespace tidemark {

// The windows as start-up sees them. Loading a window that is loaded does nothing; what needs a
// window that is not loaded throws ProgramError, except where it says otherwise.

// A splash that is gone (its fade failed, or somebody closed it) is not missed: every operation but
// Load then does nothing.
class StartupSplash {
  public:
    virtual ~StartupSplash() = default;
    virtual void Load() = 0;  // invisible as yet
    virtual void Show() = 0;
    virtual void FadeIn() = 0;
    // Whether it is still on its way to full opacity. False when it never will be there.
    [[nodiscard]] virtual bool FadingIn() const = 0;
    virtual void ShowAboveMainWindow() = 0;  // owned by it
    virtual void SetTopmost(bool on) = 0;
    virtual void FadeOut() = 0;  // and unload
};

class StartupMainWindow {
  public:
    virtual ~StartupMainWindow() = default;
    virtual void Load() = 0;  // not shown
    [[nodiscard]] virtual bool Loaded() const = 0;
    virtual void InitializeDisplay() = 0;
    // Restores the saved placement; the default one when `reset` is set.
    virtual void LoadPosition(bool reset) = 0;
    [[nodiscard]] virtual bool AlwaysOnTopChecked() const = 0;
    virtual void Show() = 0;
    [[nodiscard]] virtual Bounds Position() const = 0;
    virtual void AddItems(const std::vector<std::string>& paths) = 0;
    // What a message stands in front of; null while there is nothing to be seen of the window.
    [[nodiscard]] virtual const Window* MessageOwner() const = 0;
};

class StartupErrorsWindow {
  public:
    virtual ~StartupErrorsWindow() = default;
    virtual void Load() = 0;  // not shown
    [[nodiscard]] virtual Bounds Position() const = 0;
    virtual void MoveTo(Point place) = 0;
};

// What start-up works with. Nothing is owned.
struct StartupParts {
    Process& process;
    MessagePump& pump;
    MessageBoxes& boxes;
    FileSystemObject& file_system;
    StartupSplash& splash;
    StartupMainWindow& main_window;
    StartupErrorsWindow& errors_window;
    ShutDownSequence& shut_down;
    std::function<void()> initialise_common_controls;
    std::function<void(const std::string& exe_name, const std::string& folder)> register_app_path;
};

// Whether the Shift key is held now. A press that is over already does not count.
[[nodiscard]] bool IsShiftDown(Process& process);

// Whether the Scripting Runtime answers.
[[nodiscard]] bool ScriptingRuntimeAvailable(FileSystemObject& file_system);

// Where a window of one size goes to be centred over another, in pixels.
[[nodiscard]] Point CentredOver(const Bounds& other, const Bounds& window);

// From the first call to the message loop, as a list of steps. A step that fails asks the user:
// Abort shuts the program down, Retry runs the step again, Ignore goes on with the next one.
class Startup {
  public:
    explicit Startup(StartupParts parts) : parts_(std::move(parts)) {}

    // Runs the steps, once. True when the main window is up and the message loop is to take over;
    // false when the program has been shut down on the way.
    [[nodiscard]] bool Run();

  private:
    enum class Road { kNext, kMissingRuntime, kDone };

    struct Step {
        Road (Startup::*run)();
        Road if_ignored = Road::kNext;
    };

    // In order; the last one is reached by the road of the missing runtime only.
    static const std::array<Step, 17> kSteps;

    Road InitialiseCommonControls();
    Road ShowSplash();
    Road WaitForFadeIn();
    Road CheckScriptingRuntime();
    Road TakeStartTime();
    Road LoadMainWindow();
    Road InitialiseMainWindow();
    Road RestorePlacement();
    Road RaiseSplash();
    Road KeepSplashOnTop();
    Road ShowMainWindow();
    Road LoadErrorsWindow();
    Road RegisterApplicationPath();
    Road AddCommandLinePaths();
    Road LingerBeforeFadeOut();
    Road FadeSplashOut();
    Road TellOfMissingRuntime();

    // Runs one step and asks about its failures until it has succeeded, or been ignored or aborted.
    Road RunStep(const Step& step);
    [[nodiscard]] BoxAnswer AskAboutCurrentError();
    [[nodiscard]] bool Ending();
    void NoteShift();

    StartupParts parts_;
    bool shift_seen_ = false;
    bool main_loaded_ = false;
    std::uint32_t start_ = 0;
};

}  // namespace tidemark
