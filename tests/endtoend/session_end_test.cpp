// The end of the user's session, and a request to close, in the middle of whatever runs a loop of
// its own: the process ends.

#include <ostream>
#include <string>

#include "endtoend/end_to_end.h"
#include "platform/win32/windows.h"
#include "support/poll_until.h"

namespace tidemark {
namespace {

struct Moment {
    const char* name;
    // Opens what then stands open; false when it does not come.
    bool (*open)(const RemoteTidemark& program);
};
std::ostream& operator<<(std::ostream& out, const Moment& moment) {
    return out << moment.name;
}

constexpr std::chrono::seconds kWait{60};

// Whether the item's command opens a dialog of the system or a window of this class.
bool OpensFromMenu(const RemoteTidemark& program, char menu, int item,
                   const wchar_t* class_name = L"#32770") {
    return program.ChooseFromMenu(menu, item, kWait) && program.WaitForWindow(class_name, kWait);
}

class SessionEnd : public EndToEnd, public testing::WithParamInterface<Moment> {
  protected:
    // Opens it, has the program told, and expects it to end with the code 0.
    void ExpectToEnd(void (*tell)(const RemoteTidemark& program)) {
        const RemoteTidemark program(ProgramPath(), Quoted(tree_.Path("a.txt")));
        ASSERT_TRUE(program.WaitForCounts(1, kWait));
        ASSERT_TRUE(PollUntil(kWait, [&] { return !program.Shown(L"frmSplash"); }));
        ASSERT_TRUE(GetParam().open(program));
        tell(program);
        EXPECT_EQ(program.Process().WaitForExit(std::chrono::seconds(20)), 0U);
    }

    RealTree tree_;
};

TEST_P(SessionEnd, EndsTheProgram) {
    tree_.MakeFile("a.txt");
    ExpectToEnd([](const RemoteTidemark& program) {
        EXPECT_EQ(program.Main().Send(WM_QUERYENDSESSION, 0, ENDSESSION_LOGOFF), TRUE);
        program.Main().Send(WM_ENDSESSION, TRUE, ENDSESSION_LOGOFF);
    });
}

TEST_P(SessionEnd, ARequestToCloseEndsTheProgramToo) {
    tree_.MakeFile("a.txt");
    ExpectToEnd([](const RemoteTidemark& program) { program.Main().Close(); });
}

INSTANTIATE_TEST_SUITE_P(
    Moments, SessionEnd,
    testing::Values(
        Moment{"MenuOfTheBar", [](const RemoteTidemark& it) { return it.OpenMenu('f', kWait); }},
        Moment{"PopupOfTheList",
               [](const RemoteTidemark& it) {
                   it.lvwItems().Select({0});
                   return PollUntil(kWait, [&] {
                       it.lvwItems().Post(WM_CONTEXTMENU,
                                          reinterpret_cast<WPARAM>(it.lvwItems().Handle()), -1);
                       return PollUntil(std::chrono::seconds(2), [&] { return it.MenuIsOpen(); });
                   });
               }},
        Moment{"MessageBox",
               [](const RemoteTidemark& it) { return OpensFromMenu(it, 'o', kReset); }},
        Moment{"FileDialog",
               [](const RemoteTidemark& it) { return OpensFromMenu(it, 'f', kAddFiles); }},
        Moment{"FolderChooser",
               [](const RemoteTidemark& it) { return OpensFromMenu(it, 'f', kAddFolder); }},
        Moment{
            "About",
            [](const RemoteTidemark& it) { return OpensFromMenu(it, 'h', kAbout, L"frmAbout"); }}),
    testing::PrintToStringParamName());

// Where the main window is there already, though nobody sees it yet.
class SessionEndUnderTheSplash : public EndToEnd {
  protected:
    static void ExpectToEnd(UINT message, WPARAM wparam) {
        const RemoteProcess process(ProgramPath(), "");
        HWND main = nullptr;
        ASSERT_TRUE(PollUntil(kWait, [&] {
            for (const RemoteWindow& window : TopLevelWindows(process)) {
                main = window.ClassName() == L"frmMain" ? window.Handle() : main;
            }
            return main != nullptr;
        }));
        ::PostMessageW(main, message, wparam, 0);
        EXPECT_EQ(process.WaitForExit(std::chrono::seconds(20)), 0U);
    }
};

TEST_F(SessionEndUnderTheSplash, EndsTheProgram) {
    ExpectToEnd(WM_ENDSESSION, TRUE);
    ExpectToEnd(WM_CLOSE, 0);
}

}  // namespace
}  // namespace tidemark
