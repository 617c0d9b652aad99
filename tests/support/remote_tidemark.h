#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "support/remote_window.h"

namespace tidemark {

// The running program, driven from outside through its windows as a user does: the controls of the
// main window by the names that the program uses for them, found by what they are.
class RemoteTidemark {
  public:
    // Starts the program with the text behind its name on the command line, and waits for its
    // window.
    RemoteTidemark(const std::string& program, const std::string& arguments);
    // The program that runs already.
    RemoteTidemark();

    [[nodiscard]] const RemoteProcess& Process() const { return *process_; }
    [[nodiscard]] RemoteWindow Main() const;
    [[nodiscard]] RemoteWindow cmdStamp() const;
    [[nodiscard]] RemoteWindow chkCreated() const;
    [[nodiscard]] RemoteListView lvwItems() const;
    [[nodiscard]] RemoteStatusBar StatusBar1() const;
    [[nodiscard]] RemoteWindow ProgressBar1() const;
    [[nodiscard]] RemoteDatePicker dtDateLastModified() const;
    [[nodiscard]] RemoteDatePicker dtTimeLastModified() const;
    [[nodiscard]] RemoteDatePicker dtDateCreated() const;
    [[nodiscard]] RemoteDatePicker dtTimeCreated() const;

    // Column texts of a row of lvwItems.
    [[nodiscard]] std::string Contains(int row) const { return lvwItems().Cell(row, 1); }
    [[nodiscard]] std::string Status(int row) const { return lvwItems().Cell(row, 2); }

    // Waits until the list has this many rows and none of them is being counted any more.
    [[nodiscard]] bool WaitForCounts(int rows, std::chrono::milliseconds limit) const;
    // Waits until a message box of the program is open; its text, or nothing after the time.
    [[nodiscard]] std::optional<std::string> WaitForBox(std::chrono::milliseconds limit) const;
    // Presses the button of the open message box that has this id (IDNO ...), and waits until the
    // box is gone.
    [[nodiscard]] bool AnswerBox(int button, std::chrono::milliseconds limit) const;

    // Opens a menu of the bar by its letter, and waits until it stands open.
    [[nodiscard]] bool OpenMenu(char menu, std::chrono::milliseconds limit) const;
    // The same, and chooses one of its items with the keyboard: they count from 0 without the
    // separators. The item's command may still be at work, or have opened something.
    [[nodiscard]] bool ChooseFromMenu(char menu, int item, std::chrono::milliseconds limit) const;
    // Whether a menu of the bar or a popup menu stands open.
    [[nodiscard]] bool MenuIsOpen() const { return Shown(L"#32768").has_value(); }
    // The program's visible top-level window of this class.
    [[nodiscard]] std::optional<RemoteWindow> Shown(const std::wstring& class_name) const;
    // The same once it is there; nothing when it does not come within the time.
    [[nodiscard]] std::optional<RemoteWindow> WaitForWindow(const std::wstring& class_name,
                                                            std::chrono::milliseconds limit) const;

  private:
    // The n-th picker of dates, or of times of day.
    [[nodiscard]] RemoteDatePicker Picker(bool of_times, int n) const;

    std::unique_ptr<RemoteProcess> process_;
    HWND main_ = nullptr;
};

}  // namespace tidemark
