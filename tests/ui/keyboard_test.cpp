#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>
#include <vector>

#include "platform/win32/win32_message_pump.h"
#include "support/held_keys.h"
#include "support/last_resort_recorder.h"
#include "support/pump.h"
#include "support/test_form.h"
#include "ui/button.h"
#include "ui/date_time_picker.h"
#include "ui/label.h"
#include "ui/last_resort.h"
#include "ui/menu.h"
#include "ui/message_loop.h"
#include "ui/panel.h"
#include "ui/subclasser.h"
// After the system's main header.
#include <commctrl.h>

namespace tidemark {
namespace {

// A window like the program's own: a panel with a labelled picker, a check box and the default
// button, and a control after the panel.
class Keyboard : public ::testing::Test {
  protected:
    Keyboard() {
        panel_.Create(form_, {.bounds = {0, 0, 400, 60}});
        label_.Create(panel_, {.text = "Last &Modified:", .bounds = {0, 0, 80, 20}});
        picker_.Create(panel_, DateTimePicker::Kind::kDate, {.bounds = {90, 0, 100, 22}});
        check_.Create(panel_, {.text = "&Created:", .bounds = {0, 30, 80, 20}});
        stamp_.Create(panel_, {.text = "Stamp", .bounds = {200, 0, 80, 25}});
        other_.Create(form_, {.text = "other", .bounds = {0, 100, 80, 25}});
        stamp_.on_click = [this] { ++stamps_; };
        other_.on_click = [this] { ++others_; };
        form_.SetDefaultButton(&stamp_);
        form_.SetVisible(true);
        PumpPending();
        ::SetForegroundWindow(form_.Handle());
        picker_.Focus();
    }

    // Presses a key in the window that has the focus, through the message loop's own way.
    void Press(UINT key, UINT message = WM_KEYDOWN) {
        MSG press{::GetFocus(), message, key, 1, 0, {}};
        RouteMessage(press);
        PumpPending();
    }

    // The next key-down of a key that is held; true when the form takes it for itself.
    bool Hold(UINT key) {
        constexpr LPARAM kDownBefore = LPARAM{KF_REPEAT} << 16;
        MSG repeat{::GetFocus(), WM_KEYDOWN, key, kDownBefore | 1, 0, {}};
        const bool taken = form_.PreTranslate(repeat);
        PumpPending();
        return taken;
    }

    TestForm form_;
    Panel panel_;
    Label label_;
    DateTimePicker picker_;
    CheckBox check_;
    Button stamp_;
    Button other_;
    int stamps_ = 0;
    int others_ = 0;
};

TEST_F(Keyboard, TabGoesThroughThePanelInTheOrderOfCreationAndRound) {
    ASSERT_TRUE(picker_.HasFocus());
    Press(VK_TAB);
    EXPECT_TRUE(check_.HasFocus());
    Press(VK_TAB);
    EXPECT_TRUE(stamp_.HasFocus());
    Press(VK_TAB);
    EXPECT_TRUE(other_.HasFocus());
    Press(VK_TAB);
    EXPECT_TRUE(picker_.HasFocus());
}

TEST_F(Keyboard, TheHeavyBorderIsAlwaysOnTheButtonThatEnterPresses) {
    const auto has_border = [](const Button& button) {
        return (button.Style() & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    };
    for (int presses = 0; presses < 8; ++presses) {
        EXPECT_EQ(has_border(stamp_), !other_.HasFocus()) << presses;
        EXPECT_EQ(has_border(other_), other_.HasFocus()) << presses;
        Press(VK_TAB);
    }
}

TEST_F(Keyboard, ShiftTabGoesBack) {
    const HeldKeys shift({VK_SHIFT});
    Press(VK_TAB);
    EXPECT_TRUE(other_.HasFocus());
    Press(VK_TAB);
    EXPECT_TRUE(stamp_.HasFocus());
}

TEST_F(Keyboard, TabSkipsWhatIsDisabledOrHidden) {
    check_.SetEnabled(false);
    stamp_.SetVisible(false);
    Press(VK_TAB);
    EXPECT_TRUE(other_.HasFocus());
}

TEST_F(Keyboard, ALabelsMnemonicLeadsToTheControlAfterIt) {
    other_.Focus();
    Press('m', WM_SYSCHAR);
    EXPECT_TRUE(picker_.HasFocus());
}

TEST_F(Keyboard, ACheckBoxesMnemonicFlipsIt) {
    Press('c', WM_SYSCHAR);
    EXPECT_TRUE(check_.Checked());
}

TEST_F(Keyboard, EnterPressesTheDefaultButtonFromAnywhere) {
    Press(VK_RETURN);
    EXPECT_EQ(stamps_, 1);
    check_.Focus();
    Press(VK_RETURN);
    EXPECT_EQ(stamps_, 2);
    EXPECT_FALSE(check_.Checked());
}

TEST_F(Keyboard, EnterOnAnotherButtonPressesThatOne) {
    other_.Focus();
    Press(VK_RETURN);
    EXPECT_EQ(stamps_, 0);
    EXPECT_EQ(others_, 1);
}

TEST_F(Keyboard, EnterDoesNothingWhileTheDefaultButtonIsDisabled) {
    stamp_.SetEnabled(false);
    Press(VK_RETURN);
    EXPECT_EQ(stamps_, 0);
}

TEST_F(Keyboard, EnterDoesNothingWhileTheDefaultButtonIsHidden) {
    panel_.SetVisible(false);
    other_.Focus();
    other_.SetEnabled(false);
    ASSERT_EQ(::GetFocus(), form_.Handle());
    Press(VK_RETURN);
    EXPECT_EQ(stamps_, 0);
}

TEST_F(Keyboard, EscPressesTheCancelButtonOnlyWhileThereIsOne) {
    Press(VK_ESCAPE);
    EXPECT_EQ(stamps_, 0);
    form_.SetCancelButton(&stamp_);
    Press(VK_ESCAPE);
    EXPECT_EQ(stamps_, 1);
    form_.SetCancelButton(nullptr);
    Press(VK_ESCAPE);
    EXPECT_EQ(stamps_, 1);
}

TEST_F(Keyboard, HoldingEnterOrEscPressesNothingAgain) {
    Press(VK_RETURN);
    ASSERT_EQ(stamps_, 1);
    EXPECT_TRUE(Hold(VK_RETURN));
    other_.Focus();
    EXPECT_TRUE(Hold(VK_RETURN)) << "on a button, too";
    EXPECT_EQ(others_, 0);
    form_.SetCancelButton(&stamp_);
    EXPECT_TRUE(Hold(VK_ESCAPE));
    EXPECT_EQ(stamps_, 1);
}

TEST_F(Keyboard, OtherKeysRepeatWhileTheyAreHeld) {
    Hold(VK_TAB);
    EXPECT_TRUE(check_.HasFocus());
    Hold(VK_TAB);
    EXPECT_TRUE(stamp_.HasFocus());
    int reached = 0;
    Subclasser watch;
    watch.WndProc = [&reached](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        ++reached;
        return std::nullopt;
    };
    watch.RegisterMessages(stamp_.Handle(), {WM_KEYDOWN});
    Hold(VK_DELETE);
    EXPECT_EQ(reached, 1);
    int seen = 0;
    form_.on_key = [&seen](const KeyPress&) {
        ++seen;
        return true;
    };
    Hold(VK_DELETE);
    EXPECT_EQ(seen, 1);
}

TEST_F(Keyboard, TheFormSeesEachKeyFirstWithItsModifiers) {
    std::vector<KeyPress> seen;
    form_.on_key = [&](const KeyPress& press) {
        seen.push_back(press);
        return press.key == VK_RETURN;
    };
    Press(VK_RETURN);
    EXPECT_EQ(stamps_, 0) << "what the form takes goes no further";
    {
        const HeldKeys control({VK_CONTROL});
        Press('A');
    }
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].key, static_cast<UINT>(VK_RETURN));
    EXPECT_FALSE(seen[0].control);
    EXPECT_EQ(seen[1].key, static_cast<UINT>('A'));
    EXPECT_TRUE(seen[1].control);
    EXPECT_FALSE(seen[1].alt);
}

TEST_F(Keyboard, EnterWithControlOrAltIsNoStamp) {
    {
        const HeldKeys control({VK_CONTROL});
        Press(VK_RETURN);
    }
    const HeldKeys alt({VK_MENU});
    Press(VK_RETURN, WM_SYSKEYDOWN);
    EXPECT_EQ(stamps_, 0);
}

TEST_F(Keyboard, AnExceptionInAKeyHandlerIsReportedAndTheLoopGoesOn) {
    LastResortRecorder recorder;
    stamp_.on_click = [] { throw std::runtime_error("in the key's handler"); };
    Press(VK_RETURN);
    ASSERT_EQ(recorder.reports.size(), 1U);
    EXPECT_EQ(recorder.reports[0].owner, form_.Handle());
    Press(VK_TAB);
    EXPECT_TRUE(check_.HasFocus());
}

TEST_F(Keyboard, TheHandlerOfEnterMayDestroyTheForm) {
    stamp_.on_click = [this] { form_.Destroy(); };
    Press(VK_RETURN);
    EXPECT_FALSE(form_.Exists());
}

TEST_F(Keyboard, EnterReadsWhatWasJustTypedIntoAPicker) {
    picker_.SetValue({2004, 6, 15, 0, 0, 0});
    const PickedDateTime before = picker_.Value();
    PickedDateTime pressed;
    stamp_.on_click = [&] {
        picker_.TakeOverTypedDigits();
        pressed = picker_.Value();
    };
    Press(VK_RIGHT);  // some systems lose the first key after the focus came
    picker_.Send(WM_CHAR, '7');
    Press(VK_RETURN);
    EXPECT_NE(pressed, before);
    EXPECT_TRUE(picker_.HasFocus());
}

TEST_F(Keyboard, EnterAndEscBelongToACalendarThatIsDroppedDown) {
    form_.SetCancelButton(&stamp_);
    const auto notify = [&](UINT code) {
        NMHDR header{picker_.Handle(), 0, code};
        panel_.Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header));
    };
    notify(static_cast<UINT>(DTN_DROPDOWN));
    Press(VK_RETURN);
    Press(VK_ESCAPE);
    EXPECT_EQ(stamps_, 0);
    notify(static_cast<UINT>(DTN_CLOSEUP));
    Press(VK_ESCAPE);
    EXPECT_EQ(stamps_, 1);
}

TEST_F(Keyboard, AltAndALetterOpenAMenuFromInsideAControl) {
    Menu menu({{0, "mnuFile", "&File"},
               {1, "mnuFileExit", "E&xit"},
               {0, "mnuView", "&View"},
               {1, "mnuViewTop", "Top"}});
    form_.SetMenuBar(&menu);
    std::string opened;
    menu["mnuFile"].on_open = [&] { opened += "file"; };
    menu["mnuView"].on_open = [&] { opened += "view"; };
    form_.on_message = [](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_ENTERIDLE) {
            ::EndMenu();
        }
        return std::nullopt;
    };
    MSG press{picker_.Handle(), WM_SYSCHAR, 'v', 1 << 29, 0, {}};
    RouteMessage(press);
    PumpPending();
    EXPECT_EQ(opened, "view");
    form_.SetMenuBar(nullptr);
}

TEST_F(Keyboard, APumpInsideLongWorkTreatsKeysAsTheLoopDoes) {
    Win32TimerSource timers([] { ReportToLastResort(nullptr); });
    Win32MessagePump pump(
        RouteMessage, [] {}, timers);
    picker_.Post(WM_KEYDOWN, VK_RETURN, 1);
    pump.RunPendingMessagesNow();
    EXPECT_EQ(stamps_, 1);
    picker_.Post(WM_KEYDOWN, VK_TAB, 1);
    pump.RunPendingMessagesNow();
    EXPECT_TRUE(check_.HasFocus());
}

TEST_F(Keyboard, ALabelStandsDirectlyBeforeWhatItNames) {
    EXPECT_EQ(::GetWindow(picker_.Handle(), GW_HWNDPREV), label_.Handle());
}

TEST_F(Keyboard, TheLoopRunsUntilItIsAskedToQuit) {
    form_.on_message = [](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_APP) {
            ::PostQuitMessage(7);
        }
        return std::nullopt;
    };
    form_.Post(WM_APP);
    EXPECT_EQ(RunMessageLoop(form_), 7);
}

// A loop of the system may take the request for itself.
TEST_F(Keyboard, TheLoopEndsWithItsWindowAlsoWhenTheRequestToQuitIsLost) {
    form_.on_message = [this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_APP) {
            form_.Destroy();
        }
        return std::nullopt;
    };
    form_.Post(WM_APP);
    const UINT_PTR too_late =
        ::SetTimer(nullptr, 0, 5000, [](HWND, UINT, UINT_PTR, DWORD) { ::PostQuitMessage(9); });
    EXPECT_EQ(RunMessageLoop(form_), 0);
    ::KillTimer(nullptr, too_late);
}

// The system's search for a mnemonic, begun there, would go round for ever.
TEST_F(Keyboard, AKeySentToWhereNoKeyboardGetsIsAnswered) {
    DateTimePicker hidden;
    hidden.Create(form_, DateTimePicker::Kind::kTime, {.bounds = {90, 100, 100, 22}});
    other_.Focus();
    std::vector<HWND> out_of_reach = {check_.Handle(), hidden.Handle()};
    if (const HWND up_down = ::GetWindow(hidden.Handle(), GW_CHILD)) {
        out_of_reach.push_back(up_down);
    }
    const auto send_keys = [&] {
        for (const HWND window : out_of_reach) {
            for (const auto& [message, key] :
                 {std::pair<UINT, WPARAM>{WM_KEYDOWN, VK_TAB}, {WM_SYSCHAR, 'x'}, {WM_CHAR, 'x'}}) {
                MSG press{window, message, key, 1, 0, {}};
                RouteMessage(press);
            }
        }
        EXPECT_TRUE(other_.HasFocus());
    };
    panel_.SetVisible(false);
    hidden.SetVisible(false);
    send_keys();
    for (Window* const window : {static_cast<Window*>(&panel_), static_cast<Window*>(&hidden)}) {
        window->SetEnabled(false);
        window->SetVisible(true);
    }
    send_keys();
}

TEST_F(Keyboard, ARequestToQuitPassesThroughAModalLoop) {
    ::PostQuitMessage(3);
    RunMessageLoopWhileVisible(form_.Handle());
    EXPECT_TRUE(form_.Exists());
    EXPECT_EQ(RunMessageLoop(form_), 3);
}

}  // namespace
}  // namespace tidemark
