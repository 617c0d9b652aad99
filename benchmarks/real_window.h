#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/list_window_services.h"
#include "controls/ole_session.h"
#include "mainwindow/frm_main.h"
#include "platform/memory/memory_settings_store.h"
#include "platform/win32/win32_command_runner.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/win32_process.h"
#include "platform/win32/win32_screen.h"

namespace tidemark {

// Passes timers on and knows how long ticks of the long kind took: all of a count or a stamp is in
// one of them, with the messages that ran meanwhile. Nothing is added to what a tick does inside.
class WatchedTimers final : public TimerSource {
  public:
    explicit WatchedTimers(TimerSource& timers) : timers_(timers) {}

    [[nodiscard]] std::unique_ptr<TimerObject> NewTimer(TickKind kind) override;
    void HoldLongTicks() override { timers_.HoldLongTicks(); }
    void ReleaseLongTicks() noexcept override { timers_.ReleaseLongTicks(); }

    // Milliseconds spent in long ticks since the last Forget.
    [[nodiscard]] double LongTicks() const { return long_ticks_; }
    // When the last one ended.
    [[nodiscard]] double LastEnd() const { return last_end_; }
    // May be asked on any thread.
    [[nodiscard]] bool InLongTick() const { return depth_ > 0; }
    void Forget() { long_ticks_ = 0; }

  private:
    class Timer;
    void Tick(ITimerObjectSink& sink);

    TimerSource& timers_;
    std::atomic<int> depth_ = 0;
    double long_ticks_ = 0;
    double last_end_ = 0;
};

// The system as the program has it, on this thread.
class RealSystem {
  public:
    RealSystem();
    RealSystem(const RealSystem&) = delete;
    RealSystem& operator=(const RealSystem&) = delete;

    // With watched timers.
    [[nodiscard]] Platform Watched() { return PartsWith(timers_); }
    [[nodiscard]] Platform Plain() { return system_.Parts(); }
    [[nodiscard]] WatchedTimers& Timers() { return timers_; }

  private:
    [[nodiscard]] Platform PartsWith(TimerSource& timers);

    OleSession ole_;
    Win32Platform system_;
    WatchedTimers timers_;
};

// Runs the message loop until the condition holds; it is asked after each message.
void RunMessagesUntil(const std::function<bool()>& condition);
// Runs what is pending, painting included.
void RunPendingMessages();

// Answers every question with its mildest answer.
class NoBoxes final : public MessageBoxes {
  public:
    BoxAnswer Show(const Window* owner, const BoxRequest& request) override;
};

// Columns that nobody sees.
class NoColumns final : public ListColumns {
  public:
    [[nodiscard]] std::int32_t ColumnWidth(int /*column*/) const override { return 300; }
    void SetColumnWidth(int /*column*/, std::int32_t /*width*/) override {}
};

// Popups that close as soon as they would come up.
class UnshownMenus final : public PopupMenuSystem {
  public:
    UINT Track(HMENU /*menu*/, UINT /*flags*/, POINT /*point*/, HWND /*owner*/) override {
        ++opened_;
        return 0;
    }
    [[nodiscard]] int Opened() const { return opened_; }

  private:
    int opened_ = 0;
};

// What the windows with lists ask of the rest of the program. Settings are kept in memory.
class RealServices {
  public:
    // `platform` outlives what is made of the services, as these do.
    [[nodiscard]] ListWindowServices On(const Platform& platform) {
        return {.platform = platform,
                .settings = settings_,
                .command_runner = command_runner_,
                .popup_menus = popup_menus_};
    }

    [[nodiscard]] const UnshownMenus& Menus() const { return popup_menus_; }

  private:
    MemorySettingsStore settings_;
    Win32CommandRunner command_runner_;
    UnshownMenus popup_menus_;
};

// The program's own main window, shown, on the real system. Message boxes are answered at once.
class RealWindow {
  public:
    // The parts outlive the window.
    explicit RealWindow(const Platform& platform);
    ~RealWindow();
    RealWindow(const RealWindow&) = delete;
    RealWindow& operator=(const RealWindow&) = delete;

    [[nodiscard]] frmMain& Main() { return *main_; }
    [[nodiscard]] const UnshownMenus& Menus() const { return services_.Menus(); }

    // Lists the paths and waits until they are counted and the window is at rest.
    void List(const std::vector<std::string>& paths);
    // Chooses an item of the menus by its name.
    void Choose(const std::string& item);
    void WaitForRest();

  private:
    Platform platform_;
    RealServices services_;
    NoBoxes boxes_;
    Win32Screen screen_;
    Win32Process process_;
    NoColumns errors_columns_;
    std::unique_ptr<frmMain> main_;
};

}  // namespace tidemark
