#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/scripted_process.h"
#include "app/startup.h"
#include "platform/program_error.h"

namespace tidemark {

// Keeps the calls that start-up makes. Each can be made to fail a number of times, or to do
// something else besides.
class CallLog {
  public:
    void Note(const std::string& call) {
        calls.push_back(call);
        const auto plan = plans.find(call);
        if (plan != plans.end()) {
            const std::function<void()> action = plan->second;
            action();
        }
        const auto failure = failures.find(call);
        if (failure != failures.end() && failure->second-- > 0) {
            throw ProgramError(53, "Failed: " + call);
        }
    }

    // The calls that matter for the order: without the clock, the keyboard and the pump.
    [[nodiscard]] std::vector<std::string> Order() const {
        std::vector<std::string> order;
        for (const std::string& call : calls) {
            if (call != "counter" && call != "key" && call != "pump") {
                order.push_back(call);
            }
        }
        return order;
    }
    [[nodiscard]] std::ptrdiff_t CountOf(const std::string& call) const {
        return std::count(calls.begin(), calls.end(), call);
    }
    [[nodiscard]] bool Has(const std::string& call) const { return CountOf(call) > 0; }

    std::vector<std::string> calls;
    std::map<std::string, int> failures;
    std::map<std::string, std::function<void()>> plans;
};

class LoggedWindows : public LoadedWindows {
  public:
    explicit LoggedWindows(CallLog& log) : log_(log) {}
    [[nodiscard]] std::vector<std::string> Names() const override { return names_; }
    void Hide(const std::string& name) override { log_.Note("hide " + name); }
    void Unload(const std::string& name) override {
        if (std::erase(names_, name) > 0) {
            log_.Note("unload " + name);
        }
    }
    void Load(const std::string& name) {
        if (!Loaded(name)) {
            names_.push_back(name);
        }
    }
    [[nodiscard]] bool Loaded(const std::string& name) const {
        return std::find(names_.begin(), names_.end(), name) != names_.end();
    }

  private:
    CallLog& log_;
    std::vector<std::string> names_;
};

// Opaque after a number of looks at the messages.
class LoggedSplash : public StartupSplash {
  public:
    LoggedSplash(CallLog& log, LoggedWindows& windows) : log_(log), windows_(windows) {}
    void Load() override {
        log_.Note("splash load");
        windows_.Load("frmSplash");
    }
    void Show() override { log_.Note("splash show"); }
    void FadeIn() override {
        log_.Note("splash fade in");
        pumps_left = pumps_until_opaque;
    }
    [[nodiscard]] bool FadingIn() const override {
        return windows_.Loaded("frmSplash") && pumps_left > 0;
    }
    void ShowAboveMainWindow() override { log_.Note("splash above main"); }
    void SetTopmost(bool on) override { log_.Note(on ? "splash topmost" : "splash not topmost"); }
    void FadeOut() override { log_.Note("splash fade out"); }

    int pumps_until_opaque = 4;
    int pumps_left = 0;

  private:
    CallLog& log_;
    LoggedWindows& windows_;
};

class LoggedMainWindow : public StartupMainWindow {
  public:
    LoggedMainWindow(CallLog& log, LoggedWindows& windows) : log_(log), windows_(windows) {}
    void Load() override {
        log_.Note("main load");
        windows_.Load(kMainWindowName);
    }
    [[nodiscard]] bool Loaded() const override { return windows_.Loaded(kMainWindowName); }
    void InitializeDisplay() override { Need("main initialise"); }
    void LoadPosition(bool reset) override { Need(reset ? "main reset" : "main placement"); }
    [[nodiscard]] bool AlwaysOnTopChecked() const override { return always_on_top; }
    void Show() override {
        Need("main show");
        shown_ = true;
    }
    [[nodiscard]] Bounds Position() const override { return position; }
    void AddItems(const std::vector<std::string>& paths) override {
        Need("main add");
        added.insert(added.end(), paths.begin(), paths.end());
    }
    // Only ever compared.
    [[nodiscard]] const Window* MessageOwner() const override {
        return shown_ ? reinterpret_cast<const Window*>(this) : nullptr;
    }

    bool always_on_top = false;
    Bounds position{100, 50, 640, 480};
    std::vector<std::string> added;

  private:
    void Need(const std::string& call) {
        log_.Note(call);
        if (!Loaded()) {
            throw ProgramError(91, "The main window is not loaded");
        }
    }

    bool shown_ = false;
    CallLog& log_;
    LoggedWindows& windows_;
};

class LoggedErrorsWindow : public StartupErrorsWindow {
  public:
    LoggedErrorsWindow(CallLog& log, LoggedWindows& windows) : log_(log), windows_(windows) {}
    void Load() override {
        log_.Note("errors load");
        windows_.Load("frmErrors");
    }
    [[nodiscard]] Bounds Position() const override { return {0, 0, 400, 300}; }
    void MoveTo(Point place) override {
        log_.Note("errors at " + std::to_string(place.x) + "," + std::to_string(place.y));
    }

  private:
    CallLog& log_;
    LoggedWindows& windows_;
};

class LoggedBoxes : public MessageBoxes {
  public:
    explicit LoggedBoxes(CallLog& log) : log_(log) {}
    // Answers what the test planned, in order, and then Abort.
    BoxAnswer Show(const Window* owner, const BoxRequest& request) override {
        owners.push_back(owner);
        shown.push_back(request);
        log_.Note("box " + request.caption);
        if (answers.empty()) {
            return BoxAnswer::kAbort;
        }
        const BoxAnswer answer = answers.front();
        if (answers.size() > 1) {
            answers.erase(answers.begin());
        }
        return answer;
    }

    std::vector<BoxAnswer> answers;  // the last one is given again and again
    std::vector<const Window*> owners;
    std::vector<BoxRequest> shown;

  private:
    CallLog& log_;
};

class LoggedFileSystem : public FileSystemObject {
  public:
    explicit LoggedFileSystem(CallLog& log) : log_(log) {}
    std::int32_t DriveCount() override {
        log_.Note("drives");
        return 0;
    }
    bool FileExists(const std::string& /*path*/) override { return false; }
    bool FolderExists(const std::string& /*path*/) override { return false; }
    std::string TypeName(const std::string& /*path*/) override { return {}; }

  private:
    CallLog& log_;
};

class LoggedPump : public MessagePump {
  public:
    LoggedPump(CallLog& log, LoggedSplash& splash) : log_(log), splash_(splash) {}
    void LetPendingMessagesRun() override { FAIL() << "waits ask for all that is pending"; }
    void StartSlice() override { FAIL() << "starting up is no work in slices"; }
    bool SliceIsOver() override { return true; }
    void RunPendingMessagesNow() override {
        --splash_.pumps_left;
        log_.Note("pump");
    }

  private:
    CallLog& log_;
    LoggedSplash& splash_;
};

// All that start-up works with, on a clock that moves a little with every look at it.
class StartupWorld {
  public:
    StartupWorld() {
        process.on_counter = [this] {
            log.Note("counter");
            return now += clock_step;
        };
        process.on_sleep = [this](std::uint32_t milliseconds) {
            log.Note("sleep " + std::to_string(milliseconds));
        };
        process.on_key = [this](int key) {
            EXPECT_EQ(key, virtual_key::kShift);
            log.Note("key");
            return shift_state;
        };
        process.on_error_mode = [this](std::uint32_t mode) {
            log.Note("error mode " + std::to_string(mode));
        };
    }

    bool Run() {
        return Startup({process, pump, boxes, file_system, splash, main_window, errors_window,
                        shut_down, [this] { log.Note("common controls"); },
                        [this](const std::string& name, const std::string& folder) {
                            log.Note("register " + name + " in " + folder);
                        }})
            .Run();
    }

    CallLog log;
    std::uint32_t now = 1000;
    std::uint32_t clock_step = 10;
    std::int16_t shift_state = 0;
    ScriptedProcess process;
    LoggedWindows windows{log};
    LoggedSplash splash{log, windows};
    LoggedMainWindow main_window{log, windows};
    LoggedErrorsWindow errors_window{log, windows};
    LoggedBoxes boxes{log};
    LoggedFileSystem file_system{log};
    LoggedPump pump{log, splash};
    ShutDownSequence shut_down{windows, pump, process};
};

}  // namespace tidemark
