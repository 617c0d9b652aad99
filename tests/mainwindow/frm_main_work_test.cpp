#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>

#include "engine/engine_fixture.h"
#include "mainwindow/main_window_fixture.h"
#include "support/shown_status.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MainWindowWork : public MainWindowTest {
  protected:
    void Options(bool prompt, bool clear, bool show_errors) {
        Item("mnuOptionsPrompt").SetChecked(prompt);
        Item("mnuOptionsClearAutomatically").SetChecked(clear);
        Item("mnuOptionsShowErrorsAutomatically").SetChecked(show_errors);
    }
    // Two files, the second of which cannot be stamped, and a stamp of both to its end.
    void StampOneThatWorksAndOneThatDoesNot() {
        LoadWithFiles(2);
        system_.volume.Lock("C:\\data\\file2.txt");
    }
    void StampToTheEnd() {
        Main().cmdStamp.Click();
        Finish();
    }
};

TEST_F(MainWindowWork, AnEmptyListShowsTheDropLabelAndStampIsDisabled) {
    Load();
    EXPECT_FALSE(Main().cmdStamp.Enabled());
    EXPECT_FALSE(Item("mnuFileStamp").Enabled());
    EXPECT_TRUE(Main().OLEDropper1.Visible());
    EXPECT_FALSE(Main().lvwItems.Visible());
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Ready");
    EXPECT_TRUE(Main().StatusBar1.Simple());
    EXPECT_FALSE(Main().ProgressBar1.Visible());
    Main().cmdStamp_Click();
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
}

TEST_F(MainWindowWork, TheFirstPathShowsTheListAndEnablesStamp) {
    LoadWithFiles(1);
    EXPECT_TRUE(Main().cmdStamp.Enabled());
    EXPECT_TRUE(Item("mnuFileStamp").Enabled());
    EXPECT_FALSE(Main().OLEDropper1.Visible());
    EXPECT_TRUE(Main().lvwItems.Visible());
    EXPECT_EQ(Item("mnuFileStamp").Caption(), "&Stamp\tEnter");
}

TEST_F(MainWindowWork, ThePickersStartAtTodayAndOneOClock) {
    const PickedDateTime before = LocalNow();
    Load();
    const PickedDateTime after = LocalNow();
    for (const DateTimePicker* date : {&Main().dtDateLastModified, &Main().dtDateCreated}) {
        const auto shows = [value = date->Value()](const PickedDateTime& day) {
            return value.year == day.year && value.month == day.month && value.day == day.day;
        };
        EXPECT_TRUE(shows(before) || shows(after)) << "they differ around midnight only";
    }
    for (const DateTimePicker* time : {&Main().dtTimeLastModified, &Main().dtTimeCreated}) {
        EXPECT_EQ(time->Value().hour, 1);
        EXPECT_EQ(time->Value().minute, 0);
        EXPECT_EQ(time->Value().second, 0);
    }
}

TEST_F(MainWindowWork, PathsThatDoNotExistAndDuplicatesAreLeftOutSilently) {
    Load();
    system_.volume.AddFile("C:\\a.txt");
    AddTree("t", 1);
    List({"C:\\a.txt", "C:\\missing", "C:\\A.TXT", "C:\\trees\\t", "C:\\trees\\T\\"});
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\a.txt", "C:\\trees\\t\\"));
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(MainWindowWork, CountingShowsInTheStatusBarAndTheCells) {
    Load();
    AddTree("t", 3);
    Main().AddItems({"C:\\trees\\t"});
    Main().oTimer_Timer();
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Counting");
    EXPECT_EQ(Main().rows.At(0).sub_items[1], "Counting");
    Finish();
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Ready");
    EXPECT_EQ(Main().rows.At(0).sub_items[0], "3 files; 1 folder");
    EXPECT_EQ(Main().rows.At(0).sub_items[1], "Ready");
}

TEST_F(MainWindowWork, ATimePickerShowingSecondsStampsTheWholeMinute) {
    LoadWithFiles(1);
    Main().dtDateLastModified.SetValue({.year = 2024, .month = 5, .day = 17});
    Main().dtTimeLastModified.SetValue(
        {.year = 2024, .month = 5, .day = 17, .hour = 13, .minute = 45, .second = 30});
    Main().dtDateCreated.SetValue({.year = 1999, .month = 12, .day = 31});
    Main().dtTimeCreated.SetValue(
        {.year = 2024, .month = 5, .day = 17, .hour = 0, .minute = 5, .second = 59});
    StampToTheEnd();
    EXPECT_EQ(Written("C:\\data\\file1.txt"), SystemTime(2024, 5, 17, 13, 45));
    EXPECT_EQ(system_.volume.TimesOf("C:\\data\\file1.txt").created,
              SystemTime(1999, 12, 31, 0, 5));
}

TEST_F(MainWindowWork, CreatedIsStampedWhateverItsCheckBoxSays) {
    LoadWithFiles(1);
    Main().chkCreated.SetChecked(false);
    Main().chkCreated.on_click();
    EXPECT_FALSE(Main().dtDateCreated.Enabled());
    EXPECT_FALSE(Main().dtTimeCreated.Enabled());
    Main().dtDateCreated.SetValue({.year = 1999, .month = 12, .day = 31});
    StampToTheEnd();
    EXPECT_EQ(system_.volume.TimesOf("C:\\data\\file1.txt").created,
              SystemTime(1999, 12, 31, 1, 0));
}

TEST_F(MainWindowWork, ADayFirstLocaleReadsAnAmbiguousDateInItsOwnOrder) {
    LoadWithFiles(1);
    system_.locale.SetDateOrder(MemoryUserLocale::DateOrder::kDayFirst);
    Main().dtDateLastModified.SetValue({.year = 2024, .month = 1, .day = 3});
    StampToTheEnd();
    EXPECT_EQ(Written("C:\\data\\file1.txt"), SystemTime(2024, 3, 1, 1, 0));
}

TEST_F(MainWindowWork, ClearReadOnlyFollowsItsCheckMark) {
    Load();
    system_.volume.AddFile("C:\\locked.txt", file_attribute::kReadOnly);
    List({"C:\\locked.txt"});
    Choose("mnuOptions", "mnuOptionsClearReadOnly");
    StampToTheEnd();
    EXPECT_EQ(system_.volume.AttributesOf("C:\\locked.txt") & file_attribute::kReadOnly, 0U);
}

TEST_F(MainWindowWork, WhileStampingTheControlsAreLockedAndStampReadsCancel) {
    Load();
    StartSlowStamp();
    EXPECT_EQ(Main().cmdStamp.Text(), "Cancel");
    EXPECT_EQ(Item("mnuFileStamp").Caption(), "Cancel");
    for (const Control* control : std::initializer_list<const Control*>{
             &Main().dtDateLastModified, &Main().dtTimeLastModified, &Main().dtDateCreated,
             &Main().dtTimeCreated, &Main().chkCreated}) {
        EXPECT_FALSE(control->Enabled());
    }
    for (const char* name :
         {"mnuOptionsClearReadOnly", "mnuOptionsReset", "mnuOptionsSyncFolders"}) {
        EXPECT_FALSE(Item(name).Enabled()) << name;
    }
    Finish();
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
    EXPECT_TRUE(Main().dtDateLastModified.Enabled());
    EXPECT_TRUE(Main().dtDateCreated.Enabled());
    EXPECT_TRUE(Item("mnuOptionsReset").Enabled());
    EXPECT_TRUE(Item("mnuOptionsSyncFolders").Enabled());
}

TEST_F(MainWindowWork, ProgressShowsItemsRemainingInThePanels) {
    Load();
    StartSlowStamp();
    Main().oTimer_Timer();
    EXPECT_FALSE(Main().StatusBar1.Simple());
    EXPECT_EQ(ShownText(Main().StatusBar1, 0), "  Stamping (21 items remaining)");
    EXPECT_TRUE(Main().ProgressBar1.Visible());
    EXPECT_EQ(Main().ProgressBar1.Maximum(), 21);
    EXPECT_EQ(Main().ProgressBar1.Value(), 0);
    const Bounds panel = Main().StatusBar1.PanelBounds(1);
    const Bounds bar = Main().StatusBar1.Position();
    EXPECT_EQ(Main().ProgressBar1.Position(),
              (Bounds{bar.left + panel.left + 4, bar.top + panel.top + 3, panel.width - 12,
                      panel.height - 6}));
    Finish();
    EXPECT_TRUE(Main().StatusBar1.Simple());
    EXPECT_FALSE(Main().ProgressBar1.Visible());
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Stamp Complete");
}

TEST_F(MainWindowWork, TheTaskbarButtonShowsTheProgressAndNothingAfterwards) {
    taskbar_ = ComPtr<FakeTaskbar>::Adopt(new FakeTaskbar);
    Load();
    Main().Send(::RegisterWindowMessageW(L"TaskbarButtonCreated"));
    StartSlowStamp();
    Main().oTimer_Timer();
    EXPECT_THAT(taskbar_->told, ElementsAre("normal", "0 of 21"));
    EXPECT_EQ(taskbar_->windows.back(), Main().Handle());
    Finish();
    EXPECT_EQ(taskbar_->told.back(), "none");
}

TEST_F(MainWindowWork, TheTaskbarButtonShowsNoProgressWhileTheEndIsAnnounced) {
    taskbar_ = ComPtr<FakeTaskbar>::Adopt(new FakeTaskbar);
    Load();
    Main().Send(::RegisterWindowMessageW(L"TaskbarButtonCreated"));
    StartSlowStamp();
    Main().oTimer_Timer();
    ASSERT_THAT(taskbar_->told, ElementsAre("normal", "0 of 21"));
    std::string told;
    boxes_.on_show = [&] { told = taskbar_->told.back(); };
    Finish();
    EXPECT_EQ(told, "none");
}

TEST_F(MainWindowWork, WhileTheEndIsAnnouncedTheWindowShowsItAndThePollGoesOn) {
    Load();
    Options(true, false, false);
    StartSlowStamp();
    Main().oTimer_Timer();
    ASSERT_TRUE(Main().ProgressBar1.Visible());
    std::string bar;
    bool progress = true;
    std::string cell;
    std::string polled_cell;
    boxes_.on_show = [&] {
        bar = ShownSimpleText(Main().StatusBar1);
        progress = Main().ProgressBar1.Visible() || !Main().StatusBar1.Simple();
        cell = Main().rows.At(0).sub_items[1];
        Main().rows.SetSubItem(Main().rows.At(0), 1, "out of date");
        system_.pump.RunFor(1000);
        polled_cell = Main().rows.At(0).sub_items[1];
    };
    Finish();
    EXPECT_EQ(bar, "  Stamp Complete");
    EXPECT_FALSE(progress);
    EXPECT_EQ(cell, "Complete");
    EXPECT_EQ(polled_cell, "Complete");
    EXPECT_THAT(boxes_.shown, SizeIs(1));
}

TEST_F(MainWindowWork, MoreStampedThanCountedSwitchesTheTextAndRaisesTheMaximum) {
    Load();
    AddTree("t", 2);
    List({"C:\\trees\\t"});
    AddTree("t", 30);  // since the count
    Options(false, false, false);
    std::vector<std::string> texts;
    int maximum = 0;
    int value = 0;
    system_.pump.AtEveryCall([&] {
        if (Main().Items().StampedItems() > 5 && Main().Items().BusyStamping() && texts.empty()) {
            texts.emplace_back();
            Main().oTimer_Timer();
            texts.back() = ShownText(Main().StatusBar1, 0);
            maximum = Main().ProgressBar1.Maximum();
            value = Main().ProgressBar1.Value();
        }
    });
    StampToTheEnd();
    ASSERT_THAT(texts, SizeIs(1));
    EXPECT_EQ(texts[0], Numbered("  Stamping (", value) + " items stamped)");
    EXPECT_GT(value, 5);
    EXPECT_EQ(maximum, value);
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Stamp Complete");
}

TEST_F(MainWindowWork, CancelStopsTheStampWithoutAPromptAndTheStatusIsReady) {
    Load();
    StartSlowStamp();
    Main().cmdStamp.Click();
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
    Finish();
    EXPECT_THAT(boxes_.shown, IsEmpty());
    EXPECT_THAT(errors_shown_, IsEmpty());
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Ready");
    EXPECT_NE(Written("C:\\trees\\slow\\f0"), Written("C:\\trees\\slow"));
}

TEST_F(MainWindowWork, TheStampCommandOfTheMenuCancelsWhileItReadsCancel) {
    Load();
    StartSlowStamp();
    Choose("mnuFile", "mnuFileStamp");
    EXPECT_FALSE(Main().Items().BusyStamping());
    EXPECT_EQ(Item("mnuFileStamp").Caption(), "&Stamp\tEnter");
    Finish();
    EXPECT_THAT(boxes_.shown, IsEmpty());
    EXPECT_NE(Written("C:\\trees\\slow\\f0"), Written("C:\\trees\\slow"));
}

TEST_F(MainWindowWork, ACancelAfterEveryItemCompletedLeavesStampComplete) {
    LoadWithFiles(2);
    Options(false, false, false);
    system_.pump.AtCall(2, [this] { Main().cmdStamp_Click(); });
    StampToTheEnd();
    EXPECT_THAT(boxes_.shown, IsEmpty());
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Stamp Complete");
}

TEST_F(MainWindowWork, WithPromptAndClearTheUserIsAskedAndYesRemovesTheCompleted) {
    StampOneThatWorksAndOneThatDoesNot();
    Options(true, true, false);
    boxes_.answer = BoxAnswer::kYes;
    StampToTheEnd();
    EXPECT_THAT(boxes_.shown,
                ElementsAre(BoxRequest{.text = "Stamp complete.\r\n\r\nRemove completed items?",
                                       .buttons = BoxButtons::kYesNo,
                                       .icon = BoxIcon::kQuestion}));
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\data\\file2.txt"));
    EXPECT_THAT(errors_shown_, IsEmpty());
}

TEST_F(MainWindowWork, WithPromptAndClearNoKeepsTheCompleted) {
    StampOneThatWorksAndOneThatDoesNot();
    Options(true, true, false);
    boxes_.answer = BoxAnswer::kNo;
    StampToTheEnd();
    EXPECT_THAT(RowTexts(), SizeIs(2));
}

TEST_F(MainWindowWork, WithPromptAloneTheUserIsToldAndNothingIsRemoved) {
    StampOneThatWorksAndOneThatDoesNot();
    Options(true, false, false);
    StampToTheEnd();
    EXPECT_THAT(boxes_.shown, ElementsAre(BoxRequest{.text = "Stamp Complete"}));
    EXPECT_EQ(boxes_.shown[0].buttons, BoxButtons::kOk);
    EXPECT_EQ(boxes_.shown[0].icon, BoxIcon::kInformation);
    EXPECT_THAT(RowTexts(), SizeIs(2));
}

TEST_F(MainWindowWork, WithClearAloneTheCompletedGoWithoutAQuestion) {
    StampOneThatWorksAndOneThatDoesNot();
    Options(false, true, false);
    StampToTheEnd();
    EXPECT_THAT(boxes_.shown, IsEmpty());
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\data\\file2.txt"));
}

TEST_F(MainWindowWork, WithNeitherTheEndIsSilent) {
    StampOneThatWorksAndOneThatDoesNot();
    Options(false, false, false);
    StampToTheEnd();
    EXPECT_THAT(boxes_.shown, IsEmpty());
    EXPECT_THAT(errors_shown_, IsEmpty());
    EXPECT_THAT(RowTexts(), SizeIs(2));
}

TEST_F(MainWindowWork, ShowErrorsAutomaticallyOpensTheErrorsAfterTheAnswer) {
    for (const bool prompt : {false, true}) {
        for (const bool clear : {false, true}) {
            boxes_.shown.clear();
            errors_shown_.clear();
            if (!window_->Exists()) {
                StampOneThatWorksAndOneThatDoesNot();
            } else {
                List({"C:\\data\\file1.txt", "C:\\data\\file2.txt"});
            }
            Options(prompt, clear, true);
            boxes_.answer = BoxAnswer::kYes;
            boxes_.on_show = [this] { EXPECT_THAT(errors_shown_, IsEmpty()); };
            StampToTheEnd();
            EXPECT_THAT(boxes_.shown, SizeIs(prompt ? 1 : 0));
            ASSERT_THAT(errors_shown_, SizeIs(1));
            ASSERT_THAT(errors_shown_[0], SizeIs(1));
            EXPECT_EQ(errors_shown_[0][0]->ItemName, "C:\\data\\file2.txt");
            EXPECT_THAT(RowTexts(), SizeIs(clear ? 1 : 2));
        }
    }
}

TEST_F(MainWindowWork, WithShowErrorsAutomaticallyAndNoErrorsNothingOpens) {
    LoadWithFiles(2);
    Options(false, false, true);
    StampToTheEnd();
    EXPECT_THAT(errors_shown_, IsEmpty());
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Stamp Complete");
}

TEST_F(MainWindowWork, TheEndOfAStampIsHandledOnce) {
    LoadWithFiles(2);
    Options(true, false, false);
    // While the box is open the poll goes on.
    boxes_.on_show = [this] {
        Main().oTimer_Timer();
        Main().UpdateControls();
    };
    StampToTheEnd();
    EXPECT_THAT(boxes_.shown, SizeIs(1));
}

TEST_F(MainWindowWork, ClearingTheLastItemAtTheEndDisablesStamp) {
    LoadWithFiles(1);
    Options(false, true, false);
    StampToTheEnd();
    EXPECT_FALSE(Main().cmdStamp.Enabled());
    EXPECT_TRUE(Main().OLEDropper1.Visible());
}

TEST_F(MainWindowWork, ThePollStopsWhenNothingIsBusy) {
    Load();
    AddTree("t", 3);
    Main().AddItems({"C:\\trees\\t"});
    Finish();  // would never return while the poll goes on
    const std::size_t calls = system_.pump.CallCount();
    system_.pump.RunFor(5000);
    EXPECT_EQ(system_.pump.CallCount(), calls);
}

TEST_F(MainWindowWork, TheFirstStatusPanelShowsItsWidestTextWhole) {
    Load();
    EXPECT_GE(FirstPanelWidth(Main().StatusBar1),
              Main().StatusBar1.TextSize("  Stamping (888,888,888 items remaining)").width);
    EXPECT_EQ(Main().ProgressBar1.ExtendedStyle() & (WS_EX_STATICEDGE | WS_EX_CLIENTEDGE), 0U);
}

}  // namespace
}  // namespace tidemark
