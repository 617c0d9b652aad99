#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/scripted_process.h"
#include "mainwindow/frm_main.h"
#include "platform/memory/memory_screen.h"
#include "platform/memory/memory_settings_store.h"
#include "platform/memory/memory_system.h"
#include "settings/fake_options_host.h"
#include "support/fake_command_runner.h"
#include "support/pump.h"
#include "ui/fake_taskbar.h"

namespace tidemark {

// Answers message boxes in the user's place and keeps what they asked.
class AnsweringBoxes : public MessageBoxes {
  public:
    BoxAnswer Show(const Window* owner, const BoxRequest& request) override {
        EXPECT_NE(owner, nullptr) << request.text;
        shown.push_back(request);
        if (on_show) {
            on_show();
        }
        return answer;
    }
    std::vector<BoxRequest> shown;
    BoxAnswer answer = BoxAnswer::kNo;
    std::function<void()> on_show;
};

// A text with a number behind it.
[[nodiscard]] std::string Numbered(const std::string& text, int number);

// The main window with real controls on a system in memory, whose clock moves only when told.
class MainWindowTest : public ::testing::Test {
  protected:
    MainWindowTest();
    ~MainWindowTest() override;

    // Makes the window anew, with these instead of the fixture's own; they outlive it.
    void MakeWindow(const Screen& screen, PopupMenuSystem& popup_menus) {
        MakeWindow(screen, popup_menus, platform_);
    }
    void MakeWindow(const Screen& screen, PopupMenuSystem& popup_menus, Platform& platform);
    // Start-up's steps up to the shown window.
    void Load(bool reset = false);
    // The same, with this many small files "C:\data\fileN.txt" in the list, counted.
    void LoadWithFiles(int count);
    // Adds a folder "C:\trees\<name>\" with this many files to the volume.
    void AddTree(const std::string& name, int files);
    // Adds paths to the list and lets their counting end.
    void List(const std::vector<std::string>& paths);

    frmMain& Main() { return *window_; }
    MenuItem& Item(const char* name) { return window_->menu[name]; }
    // Lets a menu open as the system does, then chooses an item of it.
    void Choose(const char* top, const char* name);
    void Open(const char* top);
    // Presses a key in the control that has the focus, the message loop's way.
    void Press(UINT key, UINT message = WM_KEYDOWN);
    // Lets timers run until all work is done, and then what they posted.
    void Finish();
    void SelectRow(const std::string& key, bool selected = true);
    [[nodiscard]] std::vector<std::string> RowTexts() const;
    [[nodiscard]] FileTime Written(const std::string& path) const {
        return system_.volume.TimesOf(path).written;
    }
    // Starts a stamp of one slow tree and lets it come so far that it is under way.
    void StartSlowStamp();

    MemorySystem system_;
    Platform platform_ = system_.Parts();
    AnsweringBoxes boxes_;
    MemorySettingsStore settings_;
    MemoryScreen screen_;
    ScriptedProcess process_;
    RecordedCommands commands_;
    PopupMenuSystem popup_menus_;
    std::function<void(OleDragDropSink& source, std::int16_t button)> drag_files_ = DragFiles;
    ComPtr<FakeTaskbar> taskbar_;  // none until a test makes one
    FakeListColumns errors_columns_;
    std::vector<StampErrorList> errors_shown_;
    bool errors_topmost_ = false;
    std::vector<bool> about_shown_;
    std::vector<bool> shut_downs_;
    std::function<void()> on_shut_down_;
    int closed_ = 0;
    std::unique_ptr<frmMain> window_;
};

}  // namespace tidemark
