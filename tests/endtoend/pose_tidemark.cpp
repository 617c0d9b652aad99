// Brings the running program, through its real windows, into what tools/screenshots.sh pictures.
//
// pose_tidemark COMMAND [ARGUMENT...]    (the table at the end of this file)
//
// Each command returns when what it asks for stands on the screen, with 0; else with 1.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/win32/windows.h"
#include "support/local_time.h"
#include "support/poll_until.h"
#include "support/real_tree.h"
#include "support/remote_errors_window.h"
#include "support/remote_tidemark.h"

// Needs the system's main header before it.
#include <commctrl.h>

namespace tidemark {
namespace {

constexpr std::chrono::seconds kWait{60};
constexpr const wchar_t* kSplashClass = L"frmSplash";
constexpr const wchar_t* kAboutClass = L"frmAbout";

using Arguments = std::vector<std::string>;

int Number(const std::string& text) {
    return std::atoi(text.c_str());
}

void Expect(bool came_about, const std::string& what) {
    if (!came_about) {
        throw RemoteError(what + " did not come about");
    }
}

void MoveTo(const RemoteWindow& window, const Arguments& place) {
    ::SetWindowPos(window.Handle(), nullptr, Number(place.at(0)), Number(place.at(1)),
                   Number(place.at(2)), Number(place.at(3)), SWP_NOZORDER);
}

void ClickRight(POINT at) {
    ::SetCursorPos(at.x, at.y);
    for (const DWORD flag : {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP}) {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flag;
        ::SendInput(1, &input, sizeof(input));
    }
}

// The splash, as soon as nothing shines through it. There may be no main window yet.
void Splash() {
    Expect(PollUntil(kWait,
                     [] {
                         const HWND splash = ::FindWindowW(kSplashClass, nullptr);
                         BYTE opacity = 0;
                         return splash != nullptr &&
                                ::GetLayeredWindowAttributes(splash, nullptr, &opacity, nullptr) &&
                                opacity == 255;
                     }),
           "the splash");
}

// The window alone, at a place, with widths of the list's columns that fit it and the same date at
// every run.
void Ready(const Arguments& place) {
    const RemoteTidemark program;
    Expect(PollUntil(kWait, [&] { return !program.Shown(kSplashClass); }), "the splash's end");
    MoveTo(program.Main(), place);
    const int widths[] = {230, 200, 150};
    for (std::size_t column = 0; column < 3; ++column) {
        program.lvwItems().Send(LVM_SETCOLUMNWIDTH, column, widths[column]);
    }
    const SYSTEMTIME time = LocalTime(2019, 7, 14, 13, 45);
    for (const RemoteDatePicker& picker :
         {program.dtDateLastModified(), program.dtTimeLastModified(), program.dtDateCreated(),
          program.dtTimeCreated()}) {
        picker.SetTime(time);
    }
}

void Select(const Arguments& rows) {
    std::vector<int> numbers;
    for (const std::string& row : rows) {
        numbers.push_back(Number(row));
    }
    RemoteTidemark().lvwItems().Select(numbers);
}

// Presses the right button on a row, or below all of them.
void Popup(const RemoteTidemark& program, const RemoteListView& list, const std::string& row) {
    const RemoteMemory memory(program.Process(), sizeof(RECT));
    RECT place{};
    place.left = LVIR_LABEL;
    memory.Write(0, &place, sizeof(place));
    POINT at{60, 160};
    if (list.Send(LVM_GETITEMRECT, static_cast<WPARAM>(Number(row)),
                  reinterpret_cast<LPARAM>(memory.Address())) != 0) {
        memory.Read(0, &place, sizeof(place));
        at = {place.left + 40, (place.top + place.bottom) / 2};
    }
    ::ClientToScreen(list.Handle(), &at);
    ClickRight(at);
    Expect(PollUntil(kWait, [&] { return program.MenuIsOpen(); }), "the popup menu");
}

void CloseMenu() {
    const RemoteTidemark program;
    Expect(PollUntil(kWait,
                     [&] {
                         const auto menu = program.Shown(L"#32768");
                         if (menu) {
                             program.Main().Post(WM_CANCELMODE);
                         }
                         return !menu;
                     }),
           "the menu's end");
}

void Progress(const std::string& percent) {
    const RemoteTidemark program;
    const RemoteWindow bar = program.ProgressBar1();
    Expect(PollUntil(kWait,
                     [&] {
                         const LRESULT maximum = bar.Send(PBM_GETRANGE, FALSE);
                         return bar.Visible() && maximum > 0 &&
                                bar.Send(PBM_GETPOS) * 100 >= maximum * Number(percent);
                     }),
           "that much progress");
}

void Errors(const Arguments& place) {
    const RemoteTidemark program;
    const RemoteErrorsWindow errors(program, kWait);
    MoveTo(errors, place);
    const RemoteListView list = errors.lvwErrors();
    Expect(PollUntil(kWait, [&] { return list.Rows() > 0; }), "the list of errors");
    list.Send(LVM_SETCOLUMNWIDTH, 0, 250);
    list.Send(LVM_SETCOLUMNWIDTH, 2, 280);
}

// Keeps files from being written until the program has ended. Tells on its output when they are.
void Hold(const Arguments& paths) {
    const RemoteTidemark program;
    std::vector<std::unique_ptr<LockedFile>> held;
    for (const std::string& path : paths) {
        held.push_back(std::make_unique<LockedFile>(path));
    }
    std::printf("held\n");
    std::fflush(stdout);
    Expect(program.Process().WaitForExit(kWait).has_value(), "the program's end");
}

void Close() {
    const RemoteTidemark program;
    program.Main().Close();
    Expect(program.Process().WaitForExit(kWait) == 0U, "the program's end");
}

const std::map<std::string, std::function<void(const Arguments&)>>& Commands() {
    static const std::map<std::string, std::function<void(const Arguments&)>> kCommands = {
        {"splash", [](const Arguments&) { Splash(); }},
        {"ready", Ready},  // LEFT TOP WIDTH HEIGHT
        {"counting",
         [](const Arguments&) {
             const RemoteTidemark program;
             Expect(PollUntil(kWait, [&] { return program.StatusBar1().Text() == "  Counting"; }),
                    "counting");
         }},
        {"counted",  // ROWS
         [](const Arguments& rows) {
             Expect(RemoteTidemark().WaitForCounts(Number(rows.at(0)), kWait), "the counts");
         }},
        {"select", Select},  // ROW...
        {"menu",             // LETTER
         [](const Arguments& letter) {
             Expect(RemoteTidemark().OpenMenu(letter.at(0).at(0), kWait), "the menu");
         }},
        {"choose",  // LETTER ITEM
         [](const Arguments& item) {
             Expect(RemoteTidemark().ChooseFromMenu(item.at(0).at(0), Number(item.at(1)), kWait),
                    "the choice");
         }},
        {"popup",  // ROW, or -1
         [](const Arguments& row) {
             const RemoteTidemark program;
             Popup(program, program.lvwItems(), row.at(0));
         }},
        {"errors-popup",  // ROW, or -1
         [](const Arguments& row) {
             const RemoteTidemark program;
             Popup(program, RemoteErrorsWindow(program, kWait).lvwErrors(), row.at(0));
         }},
        {"close-menu", [](const Arguments&) { CloseMenu(); }},
        {"stamp", [](const Arguments&) { RemoteTidemark().cmdStamp().Click(); }},
        {"progress", [](const Arguments& percent) { Progress(percent.at(0)); }},
        {"box",
         [](const Arguments&) {
             Expect(RemoteTidemark().WaitForBox(kWait).has_value(), "the message");
         }},
        {"answer",  // BUTTON'S ID
         [](const Arguments& button) {
             Expect(RemoteTidemark().AnswerBox(Number(button.at(0)), kWait), "the answer");
         }},
        {"status",  // TEXT
         [](const Arguments& text) {
             const RemoteTidemark program;
             Expect(
                 PollUntil(kWait, [&] { return program.StatusBar1().Text() == "  " + text.at(0); }),
                 "the status");
         }},
        {"errors", Errors},  // LEFT TOP WIDTH HEIGHT
        {"about",
         [](const Arguments&) {
             Expect(RemoteTidemark().WaitForWindow(kAboutClass, kWait).has_value(),
                    "the about window");
         }},
        {"close-about",
         [](const Arguments&) {
             const RemoteTidemark program;
             if (const auto about = program.Shown(kAboutClass)) {
                 about->Close();
             }
             Expect(PollUntil(kWait, [&] { return program.Main().Enabled(); }),
                    "the about window's end");
         }},
        {"hold", Hold},  // PATH...
        {"close", [](const Arguments&) { Close(); }},
    };
    return kCommands;
}

}  // namespace
}  // namespace tidemark

int main(int count, char** arguments) {
    const auto command =
        count > 1 ? tidemark::Commands().find(arguments[1]) : tidemark::Commands().end();
    if (command == tidemark::Commands().end()) {
        std::printf("usage: pose_tidemark COMMAND [ARGUMENT...]\n");
        return 2;
    }
    try {
        command->second({arguments + 2, arguments + count});
    } catch (const std::exception& failure) {
        std::printf("%s: %s\n", arguments[1], failure.what());
        return 1;
    }
    return 0;
}
