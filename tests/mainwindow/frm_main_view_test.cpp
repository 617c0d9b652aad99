#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <initializer_list>

#include "engine/engine_fixture.h"
#include "mainwindow/main_window_fixture.h"
#include "platform/program_error.h"
#include "platform/win32/wide_text.h"
#include "support/refused_windows.h"
// After the system's main header.
#include <commctrl.h>

namespace tidemark {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Ne;
using ::testing::StartsWith;

class MainWindowView : public MainWindowTest {
  protected:
    // Panel, list and status bar fill the client area without a gap, and the label covers the list.
    void ExpectNoGap(bool on_top) {
        const Bounds panel = Main().picControls.Position();
        const Bounds list = Main().lvwItems.Position();
        const Bounds bar = Main().StatusBar1.Position();
        const int width = Main().ClientSize().width;
        EXPECT_EQ(panel.left, 0);
        EXPECT_EQ(panel.width, width);
        EXPECT_EQ(list.left, 0);
        EXPECT_EQ(list.width, width);
        if (on_top) {
            EXPECT_EQ(panel.top, 0);
            EXPECT_EQ(list.top, panel.height);
            EXPECT_EQ(list.top + list.height, bar.top);
        } else {
            EXPECT_EQ(list.top, 0);
            EXPECT_EQ(list.height, panel.top);
            EXPECT_EQ(panel.top + panel.height, bar.top);
        }
        EXPECT_EQ(Main().OLEDropper1.Position(), list);
    }
    // The control before `control` among its siblings, which names it.
    static std::string NameOf(const Window& control) {
        return Window(::GetWindow(control.Handle(), GW_HWNDPREV)).Text();
    }
};

TEST_F(MainWindowView, AWindowLoadedHalfWayGoesUnnoticedAndCanBeLoadedAgain) {
    {
        const RefusedWindows no_lists(WC_LISTVIEWW);
        EXPECT_THROW(Main().Form_Load(), ProgramError);
        EXPECT_EQ(no_lists.Count(), 1);
    }
    Main().Destroy();
    EXPECT_EQ(closed_, 0);
    Load();
    Main().Close();
    EXPECT_EQ(closed_, 1);
}

TEST_F(MainWindowView, OptionsOfAFirstRunShowOneRowOnTop) {
    Load();
    ExpectNoGap(true);
    EXPECT_FALSE(Main().chkCreated.Visible());
    EXPECT_FALSE(Main().dtDateCreated.Visible());
    EXPECT_FALSE(Main().dtTimeCreated.Visible());
    const int row = Main().dtDateLastModified.Position().height;
    EXPECT_EQ(Main().picControls.Position().height, row + 9 + 9 + 2);
    EXPECT_EQ(Main().dtDateLastModified.Position().left, 78);
    EXPECT_EQ(Main().dtDateLastModified.Position().top, 9);
    EXPECT_EQ(Main().dtTimeLastModified.Position().left, 195);
    const Bounds label = Main().lblLastModified.Position();
    EXPECT_EQ(label.left + label.width, std::max(73, label.width));
    EXPECT_GE(label.left, 0) << "the label is cut off";
    EXPECT_LE(label.width, 78) << "the label reaches into the pickers";
    EXPECT_TRUE(Item("mnuOptionsSyncFolders").Enabled());
    EXPECT_TRUE(Item("mnuOptionsSyncFolders").Checked());
}

TEST_F(MainWindowView, ControlsOnBottomMovesThePanelAboveTheStatusBarWithoutAGap) {
    LoadWithFiles(1);
    Choose("mnuView", "mnuViewControlsOnBottom");
    ExpectNoGap(false);
    EXPECT_EQ(Main().dtDateLastModified.Position().top, 11);
    EXPECT_TRUE(Item("mnuViewControlsOnBottom").Checked());
    EXPECT_FALSE(Item("mnuViewControlsOnTop").Checked());
    EXPECT_EQ(settings_.ReadText("ControlsOnTop", ""), "False");
    Choose("mnuView", "mnuViewControlsOnTop");
    ExpectNoGap(true);
    EXPECT_EQ(settings_.ReadText("ControlsOnTop", ""), "True");
}

TEST_F(MainWindowView, ChoosingTheLayoutInForceOnlyRedoesIt) {
    Load();
    for (const bool on_top : {true, false}) {
        const char* chosen = on_top ? "mnuViewControlsOnTop" : "mnuViewControlsOnBottom";
        const char* other = on_top ? "mnuViewControlsOnBottom" : "mnuViewControlsOnTop";
        Choose("mnuView", chosen);
        const Bounds list = Main().lvwItems.Position();
        Main().lvwItems.Move({.left = 7, .top = 7, .width = 70, .height = 70});
        Main().OLEDropper1.Move({.left = 7, .top = 7, .width = 70, .height = 70});
        Main().picControls.Move({.left = 9, .top = 9, .width = 90, .height = 90});
        Choose("mnuView", chosen);
        EXPECT_TRUE(Item(chosen).Checked());
        EXPECT_FALSE(Item(other).Checked());
        EXPECT_EQ(settings_.ReadText("ControlsOnTop", ""), on_top ? "True" : "False");
        EXPECT_EQ(Main().lvwItems.Position(), list);
        ExpectNoGap(on_top);
    }
}

TEST_F(MainWindowView, DateCreatedShowsTheSecondRow) {
    Load();
    Choose("mnuView", "mnuViewDateCreated");
    ExpectNoGap(true);
    const Bounds first = Main().dtDateLastModified.Position();
    const Bounds second = Main().dtDateCreated.Position();
    EXPECT_TRUE(Main().chkCreated.Visible());
    EXPECT_TRUE(Main().chkCreated.Enabled());
    EXPECT_TRUE(Main().dtTimeCreated.Visible());
    EXPECT_EQ(second.left, 78);
    EXPECT_EQ(second.top, first.top + first.height + 6);
    EXPECT_EQ(Main().dtTimeCreated.Position().left, 195);
    EXPECT_EQ(Main().dtTimeCreated.Position().top, second.top);
    const Bounds box = Main().chkCreated.Position();
    EXPECT_EQ(box.left + box.width, 78);
    EXPECT_GE(box.left, 0);
    const Bounds panel = Main().picControls.Position();
    EXPECT_EQ(panel.height, first.height + second.height + 9 + 6 + 9 + 2);
    const Bounds button = Main().cmdStamp.Position();
    EXPECT_EQ(button.top, (Main().picControls.ClientSize().height - button.height) / 2);
    EXPECT_GE(button.left, 195 + Main().dtTimeCreated.Position().width);
    EXPECT_EQ(settings_.ReadText("ShowDateCreated", ""), "True");
    Choose("mnuView", "mnuViewDateCreated");
    ExpectNoGap(true);
    EXPECT_FALSE(Main().dtDateCreated.Visible());
}

TEST_F(MainWindowView, SyncFolderCreatedDateIsOnlyToBeHadWhileDateCreatedIsOff) {
    Load();
    Choose("mnuView", "mnuViewDateCreated");
    EXPECT_FALSE(Item("mnuOptionsSyncFolders").Enabled());
    EXPECT_FALSE(Item("mnuOptionsSyncFolders").Checked());
    EXPECT_EQ(settings_.ReadText("SyncFolderCreatedDates", ""), "True");
    Choose("mnuView", "mnuViewDateCreated");
    EXPECT_TRUE(Item("mnuOptionsSyncFolders").Enabled());
    EXPECT_TRUE(Item("mnuOptionsSyncFolders").Checked());
}

TEST_F(MainWindowView, TheCreatedCheckBoxKeepsItsValueWhileItIsOutOfView) {
    Load();
    EXPECT_TRUE(Main().chkCreated.Checked());
    Choose("mnuView", "mnuViewDateCreated");
    Main().chkCreated.Send(BM_CLICK);
    EXPECT_FALSE(Main().chkCreated.Checked());
    EXPECT_FALSE(Main().dtDateCreated.Enabled());
    Choose("mnuView", "mnuViewDateCreated");
    Choose("mnuView", "mnuViewDateCreated");
    EXPECT_FALSE(Main().chkCreated.Checked());
}

TEST_F(MainWindowView, MinimisingAndRestoringLeavesTheLayoutAsItWas) {
    LoadWithFiles(1);
    const Bounds panel = Main().picControls.Position();
    const Bounds list = Main().lvwItems.Position();
    ::ShowWindow(Main().Handle(), SW_MINIMIZE);
    PumpPending();
    ::ShowWindow(Main().Handle(), SW_RESTORE);
    PumpPending();
    EXPECT_EQ(Main().picControls.Position(), panel);
    EXPECT_EQ(Main().lvwItems.Position(), list);
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(MainWindowView, TheSmallestWindowShowsAllOfThePanel) {
    Load(/*reset=*/true);
    Choose("mnuView", "mnuViewDateCreated");
    const Bounds now = Main().Position();
    Main().Move({now.left, now.top, 10, 10});
    PumpPending();
    const Bounds button = Main().cmdStamp.Position();
    EXPECT_LE(button.left + button.width, Main().ClientSize().width);
    EXPECT_GT(Main().lvwItems.Position().height, 50);
    ExpectNoGap(true);
}

TEST_F(MainWindowView, ThePanelGivesTheFirstFocusToItsFirstPicker) {
    Load();
    EXPECT_TRUE(Main().dtDateLastModified.HasFocus());
}

TEST_F(MainWindowView, ThePanelGetsTheFirstFocusAlsoBelowAList) {
    Main().Form_Load();
    Main().InitializeDisplay();
    Choose("mnuView", "mnuViewControlsOnBottom");
    system_.volume.AddFile("C:\\a.txt");
    List({"C:\\a.txt"});
    Main().SetVisible(true);
    ::SetForegroundWindow(Main().Handle());
    ASSERT_TRUE(PumpUntil([this] { return ::GetFocus() != nullptr; }));
    ASSERT_TRUE(Main().lvwItems.Visible());
    EXPECT_TRUE(Main().dtDateLastModified.HasFocus());
}

TEST_F(MainWindowView, TabFollowsTheEyeInBothLayouts) {
    LoadWithFiles(1);
    Choose("mnuView", "mnuViewDateCreated");
    const std::vector<const Window*> on_top = {&Main().dtDateLastModified,
                                               &Main().dtTimeLastModified,
                                               &Main().chkCreated,
                                               &Main().dtDateCreated,
                                               &Main().dtTimeCreated,
                                               &Main().cmdStamp,
                                               &Main().lvwItems};
    const auto expect_order = [this](const std::vector<const Window*>& order) {
        order[0]->Focus();
        for (std::size_t i = 0; i < order.size(); ++i) {
            EXPECT_TRUE(order[i]->HasFocus()) << "stop " << i;
            Press(VK_TAB);
        }
        EXPECT_TRUE(order[0]->HasFocus());
    };
    expect_order(on_top);
    // The first child in the window's order is where Tab starts.
    EXPECT_EQ(::GetNextDlgTabItem(Main().Handle(), nullptr, FALSE),
              Main().dtDateLastModified.Handle());
    Choose("mnuView", "mnuViewControlsOnBottom");
    expect_order(on_top);
    EXPECT_EQ(::GetNextDlgTabItem(Main().Handle(), nullptr, FALSE), Main().lvwItems.Handle());
}

TEST_F(MainWindowView, ALabelRightBeforeEachControlNamesIt) {
    Load();
    EXPECT_EQ(NameOf(Main().dtDateLastModified), "Last &Modified:");
    EXPECT_EQ(NameOf(Main().dtTimeLastModified), "Last Modified time");
    EXPECT_EQ(NameOf(Main().dtDateCreated), "Created date");
    EXPECT_EQ(NameOf(Main().dtTimeCreated), "Created time");
    EXPECT_EQ(NameOf(Main().lvwItems), "Items");
    EXPECT_EQ(Main().chkCreated.Text(), "&Created:");
    EXPECT_EQ(Main().Text(), "tidemark clock");
}

TEST_F(MainWindowView, EnterStampsFromAnywhereInTheWindow) {
    LoadWithFiles(1);
    Item("mnuOptionsClearAutomatically").SetChecked(false);
    Item("mnuOptionsPrompt").SetChecked(false);
    Choose("mnuView", "mnuViewDateCreated");
    int year = 2000;
    for (const Window* at : std::initializer_list<const Window*>{
             &Main().dtDateLastModified, &Main().dtTimeLastModified, &Main().chkCreated,
             &Main().dtTimeCreated, &Main().cmdStamp, &Main().lvwItems}) {
        ++year;
        Main().dtDateLastModified.SetValue({.year = year, .month = 7, .day = 7});
        at->Focus();
        Press(VK_RETURN);
        Finish();
        EXPECT_EQ(Written("C:\\data\\file1.txt"), SystemTime(year, 7, 7, 1, 0));
    }
}

TEST_F(MainWindowView, EnterOnAnEmptyListDoesNothing) {
    Load();
    Press(VK_RETURN);
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(MainWindowView, EscCancelsARunningStampAndDoesNothingElse) {
    Load();
    Press(VK_ESCAPE);
    EXPECT_TRUE(Main().Exists());
    StartSlowStamp();
    Press(VK_ESCAPE);
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
    Finish();
    EXPECT_THAT(boxes_.shown, IsEmpty());
    Press(VK_ESCAPE);
    EXPECT_TRUE(Main().Exists());
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
}

TEST_F(MainWindowView, MnemonicsLeadToTheirControls) {
    LoadWithFiles(1);
    Choose("mnuView", "mnuViewDateCreated");
    Main().lvwItems.Focus();
    Press('m', WM_SYSCHAR);
    EXPECT_TRUE(Main().dtDateLastModified.HasFocus());
    const bool before = Main().chkCreated.Checked();
    Press('c', WM_SYSCHAR);
    EXPECT_EQ(Main().chkCreated.Checked(), !before);
}

TEST_F(MainWindowView, EveryControlHasTheSystemsMessageFont) {
    Load();
    const std::string face = MessageFontName();
    for (const Window* control : std::initializer_list<const Window*>{
             &Main().lblLastModified, &Main().dtDateLastModified, &Main().chkCreated,
             &Main().cmdStamp, &Main().lvwItems, &Main().OLEDropper1, &Main().StatusBar1}) {
        LOGFONTW font{};
        ASSERT_NE(::GetObjectW(control->Font(), sizeof(font), &font), 0);
        EXPECT_STREQ(font.lfFaceName, std::wstring(face.begin(), face.end()).c_str());
    }
}

TEST_F(MainWindowView, ALayoutThatCannotBeSavedIsAppliedAllTheSame) {
    LoadWithFiles(1);
    settings_.FailWrites(5);
    EXPECT_THROW(Item("mnuViewControlsOnBottom").Click(), ProgramError);
    EXPECT_TRUE(Item("mnuViewControlsOnBottom").Checked());
    ExpectNoGap(false);
    settings_.AllowWrites();
}

TEST_F(MainWindowView, TheSmallestWindowShowsSomeRowsOfTheList) {
    Load();
    Main().Move({.left = 0, .top = 0, .width = 10, .height = 10});
    EXPECT_EQ(Main().ClientSize().width, 480);
    EXPECT_EQ(Main().ClientSize().height, 320);
}

class MainWindowTimes : public MainWindowTest {
  protected:
    MainWindowTimes() {
        Load();
        Main().dtDateLastModified.SetValue({.year = 2026, .month = 3, .day = 4});
        Main().dtDateCreated.SetValue({.year = 2026, .month = 11, .day = 22});
    }
    // What the tip over a control says, asked for as the system does when the tip appears.
    [[nodiscard]] std::string TipOver(const Window& control) {
        std::array<wchar_t, 200> text{};
        TTTOOLINFOW tool{};
        tool.cbSize = sizeof(tool);
        tool.hwnd = Main().Handle();
        tool.uId = reinterpret_cast<UINT_PTR>(control.Handle());
        tool.lpszText = text.data();
        Main().tipTimes.Send(TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
        return Utf8FromWide(text.data());
    }
};

TEST_F(MainWindowTimes, TheTipOverStampAndThePickersSaysWhatWouldBeWritten) {
    for (const Window* control : std::initializer_list<const Window*>{
             &Main().cmdStamp, &Main().dtDateLastModified, &Main().dtTimeLastModified,
             &Main().dtDateCreated, &Main().dtTimeCreated}) {
        EXPECT_EQ(TipOver(*control),
                  "Last-Modified: 4 March 2026, 1:00 AM\r\nCreated: 22 November 2026, 1:00 AM");
    }
    system_.locale.SetDateOrder(MemoryUserLocale::DateOrder::kDayFirst);
    EXPECT_EQ(TipOver(Main().cmdStamp),
              "Last-Modified: 3 April 2026, 1:00 AM\r\nCreated: 22 November 2026, 1:00 AM");
}

TEST_F(MainWindowTimes, AShownTipFollowsThePickersAlsoOverADisabledOne) {
    Main().dtTimeLastModified.SetEnabled(false);
    const auto answer = Main().tipTimes.text;
    std::vector<std::string> answers;
    Main().tipTimes.text = [&] { return answers.emplace_back(answer()); };
    Press(VK_RIGHT);  // a picker that has just got the focus may lose its first key
    Press(VK_UP);     // another value
    EXPECT_THAT(answers, IsEmpty()) << "no tip is shown";
    RECT picker{};
    ::GetWindowRect(Main().dtTimeLastModified.Handle(), &picker);
    ::SetCursorPos((picker.left + picker.right) / 2, (picker.top + picker.bottom) / 2);
    ASSERT_TRUE(PumpUntil([this] { return Main().tipTimes.Visible(); }));
    const std::string before = answers.back();
    answers.clear();
    Press(VK_UP);
    EXPECT_THAT(answers, Contains(Ne(before)));
}

TEST_F(MainWindowTimes, NoTipTellsATimeWhileDigitsAreTyped) {
    Main().dtDateLastModified.Send(WM_CHAR, '1');
    EXPECT_EQ(TipOver(Main().cmdStamp), "");
    Main().dtDateLastModified.Send(WM_KILLFOCUS);
    EXPECT_NE(TipOver(Main().cmdStamp), "");
}

TEST_F(MainWindowTimes, ATipOverDatesThatTheLocaleCannotReadSaysWhatAPressWouldSay) {
    system_.locale.SetDateSeparator("");
    EXPECT_THAT(TipOver(Main().cmdStamp), StartsWith("\"03042026\" cannot be read as a date"));
}

TEST_F(MainWindowTimes, APickerChangedWhileItemsStartCountsForTheItemsAfterIt) {
    for (const char* path : {"C:\\a", "C:\\b"}) {
        system_.volume.AddFile(path);
    }
    List({"C:\\a", "C:\\b"});
    system_.pump.AtCall(1,
                        [this] { Main().dtTimeLastModified.SetValue({.year = 2026, .hour = 2}); });
    Main().cmdStamp_Click();
    constexpr std::int64_t kHour = 36'000'000'000;
    EXPECT_EQ(Written("C:\\b").ticks - Written("C:\\a").ticks, kHour);
}

}  // namespace
}  // namespace tidemark
