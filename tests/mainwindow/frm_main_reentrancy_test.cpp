#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lists/list_helpers.h"
#include "mainwindow/main_window_fixture.h"
#include "support/shown_status.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// Whatever lets messages run can find the list changed, or the window gone, when it goes on.
class MainWindowInside : public MainWindowTest {
  protected:
    void ExpectClosedCleanly() {
        EXPECT_FALSE(Main().Exists());
        EXPECT_EQ(Main().Items().Count(), 0U);
        EXPECT_EQ(closed_, 1);
        Finish();
        EXPECT_THAT(errors_shown_, IsEmpty());
        ExpectNoFolderEnteredSince();
    }
    // As AddTree, with folders below the tree that a walk has still to enter.
    void AddDeepTree(const std::string& name, int files) {
        AddTree(name, files);
        for (int i = 0; i < 3; ++i) {
            AddTree(Numbered(name + "\\sub", i), 2);
        }
    }
    // Lists folders in one slice, and asks only some of them to count.
    void ListSomeAndCountFewer() {
        Load();
        system_.pump.SetAsksPerSlice(0);
        std::vector<std::string> paths;
        for (int i = 0; i < 15; ++i) {
            AddDeepTree(Numbered("t", i), 1);
            paths.push_back(Numbered("C:\\trees\\t", i));
        }
        Main().AddItems(paths);
        EXPECT_THAT(RowTexts(), SizeIs(paths.size()));
        EXPECT_TRUE(Main().Items().BusyCounting());
        EXPECT_FALSE(Main().Items().Item("c:\\trees\\t14\\")->CountInProgress());
    }
    // Does what ends the work, and remembers that no folder is to be entered any more. The items
    // are held, so that it is not their end that ends it.
    void EndWorkBy(const std::function<void()>& end) {
        for (const std::shared_ptr<TidemarkItem>& item : Main().Items()) {
            held_.push_back(item);
        }
        end();
        folders_entered_ = system_.files.CallCount(KernelCall::kSearchFirst);
    }
    void ExpectNoFolderEnteredSince() const {
        if (folders_entered_) {
            EXPECT_EQ(system_.files.CallCount(KernelCall::kSearchFirst), *folders_entered_);
        }
    }

  private:
    std::vector<std::shared_ptr<TidemarkItem>> held_;
    std::optional<std::size_t> folders_entered_;
};

TEST_F(MainWindowInside, ClosingWhileIdleSavesTheColumnWidthsAndShutsDown) {
    LoadWithFiles(1);
    Main().lvwItems.SetColumnWidth(1, 77);
    settings_.ForgetWrites();
    Main().Close();
    EXPECT_EQ(settings_.ReadText("2ColumnWidth", ""), "77");
    EXPECT_THAT(settings_.Writes(), ElementsAre("1ColumnWidth", "2ColumnWidth", "3ColumnWidth"));
    EXPECT_THAT(shut_downs_, ElementsAre(false));
    ExpectClosedCleanly();
}

TEST_F(MainWindowInside, TheColumnWidthsAreSavedBeforeTheOtherWindowsGo) {
    LoadWithFiles(1);
    Main().lvwItems.SetColumnWidth(1, 77);
    std::string saved;
    on_shut_down_ = [&] { saved = settings_.ReadText("2ColumnWidth", ""); };
    Main().Close();
    EXPECT_EQ(saved, "77");
}

TEST_F(MainWindowInside, AColumnClickWhileTheWindowClosesDoesNothing) {
    Load();
    system_.volume.AddFile("C:\\b");
    system_.volume.AddFile("C:\\a");
    List({"C:\\b", "C:\\a"});
    Subclasser closing;
    int clicks = 0;
    closing.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        NMLISTVIEW click{};
        click.hdr.hwndFrom = Main().lvwItems.Handle();
        click.hdr.code = LVN_COLUMNCLICK;
        ++clicks;
        Main().Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
        return std::nullopt;
    };
    closing.RegisterMessages(Main().Handle(), {WM_DESTROY});
    Main().Close();
    EXPECT_EQ(clicks, 1);
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\b", "C:\\a"));
    ExpectClosedCleanly();
}

TEST_F(MainWindowInside, ClosingIsNotRefusedWhenTheSettingsCannotBeWritten) {
    Load();
    settings_.FailWrites(5);
    Main().Close();
    EXPECT_THAT(shut_downs_, ElementsAre(false));
    ExpectClosedCleanly();
}

TEST_F(MainWindowInside, ClosingWhileCountingEndsTheCount) {
    Load();
    AddDeepTree("t", 50);
    Main().AddItems({"C:\\trees\\t"});
    system_.pump.AtCall(10, [this] { EndWorkBy([this] { Main().Close(); }); });
    Finish();
    ExpectClosedCleanly();
}

TEST_F(MainWindowInside, ClosingWhileStampingEndsTheStamp) {
    Load();
    AddDeepTree("slow", 0);
    const FileTime before = Written("C:\\trees\\slow\\sub2\\f1");
    StartSlowStamp();
    system_.pump.AtCall(10, [this] { EndWorkBy([this] { Main().Close(); }); });
    Finish();
    ExpectClosedCleanly();
    EXPECT_EQ(Written("C:\\trees\\slow\\sub2\\f1"), before);
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(MainWindowInside, ClosingFromInsideThePollIsClean) {
    LoadWithFiles(2);
    system_.pump.AtCall(1, [this] { Main().Close(); });
    Main().oTimer_Timer();
    ExpectClosedCleanly();
}

TEST_F(MainWindowInside, ClosingFromInsideTheEndOfAStampOpensNothingMore) {
    LoadWithFiles(2);
    system_.volume.Lock("C:\\data\\file1.txt");
    boxes_.on_show = [this] { Main().Close(); };
    boxes_.answer = BoxAnswer::kYes;
    Main().cmdStamp.Click();
    Finish();
    EXPECT_THAT(boxes_.shown, SizeIs(1));
    ExpectClosedCleanly();
}

TEST_F(MainWindowInside, ClosingWhileAddedPathsStartToCountEndsThat) {
    ListSomeAndCountFewer();
    EndWorkBy([this] { Main().Close(); });
    ExpectClosedCleanly();
}

TEST_F(MainWindowInside, ClosingBetweenTwoItemsOfAStampStampsNoMore) {
    LoadWithFiles(5);
    const FileTime before = Written("C:\\data\\file5.txt");
    system_.pump.AtCall(2, [this] { Main().Close(); });
    Main().cmdStamp_Click();
    ExpectClosedCleanly();
    EXPECT_NE(Written("C:\\data\\file1.txt"), before);
    EXPECT_EQ(Written("C:\\data\\file5.txt"), before);
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(MainWindowInside, CommandsAfterTheWindowClosedDoNothing) {
    LoadWithFiles(1);
    Main().Close();
    Main().AddItems({"C:\\data\\file1.txt"});
    Main().UpdateControls();
    Main().oTimer_Timer();
    Main().cmdStamp_Click();
    EXPECT_EQ(Main().Items().Count(), 0U);
    EXPECT_EQ(closed_, 1);
}

TEST_F(MainWindowInside, ItemsRemovedWhilePathsAreAddedAreNotCounted) {
    ListSomeAndCountFewer();
    EndWorkBy([this] { Choose("mnuFile", "mnuFileRemoveAll"); });
    EXPECT_THAT(RowTexts(), IsEmpty());
    EXPECT_EQ(Main().Items().Count(), 0U);
    EXPECT_FALSE(Main().cmdStamp.Enabled());
    Finish();
    EXPECT_FALSE(Main().Items().Busy());
    ExpectNoFolderEnteredSince();
}

TEST_F(MainWindowInside, ASecondPressWhileItemsStartIsACancel) {
    LoadWithFiles(5);
    const FileTime before = Written("C:\\data\\file5.txt");
    std::string caption;
    system_.pump.AtCall(2, [&] {
        caption = Main().cmdStamp.Text();
        Main().cmdStamp.Click();
    });
    Main().cmdStamp.Click();
    Finish();
    EXPECT_EQ(caption, "Cancel");
    EXPECT_EQ(Written("C:\\data\\file5.txt"), before);
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
    EXPECT_THAT(boxes_.shown, IsEmpty());
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Ready");
}

TEST_F(MainWindowInside, CancelAndStampAgainWhileItemsStartStampsThemAll) {
    LoadWithFiles(5);
    const FileTime before = Written("C:\\data\\file5.txt");
    Item("mnuOptionsClearAutomatically").SetChecked(false);
    system_.pump.AtCall(2, [this] {
        Main().cmdStamp.Click();
        Main().cmdStamp.Click();
    });
    Main().cmdStamp.Click();
    Finish();
    EXPECT_NE(Written("C:\\data\\file5.txt"), before);
    EXPECT_THAT(boxes_.shown, SizeIs(1)) << "the end was handled once";
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Stamp Complete");
}

TEST_F(MainWindowInside, ItemsRemovedWhileItemsStartAreNotStamped) {
    LoadWithFiles(5);
    const FileTime before = Written("C:\\data\\file4.txt");
    Item("mnuOptionsClearAutomatically").SetChecked(false);
    system_.pump.AtCall(2, [this] {
        SelectRow("c:\\data\\file4.txt");
        Choose("mnuFile", "mnuFileRemoveSelected");
    });
    Main().cmdStamp.Click();
    Finish();
    EXPECT_EQ(Written("C:\\data\\file4.txt"), before);
    EXPECT_NE(Written("C:\\data\\file5.txt"), before);
    EXPECT_THAT(RowTexts(), SizeIs(4));
}

TEST_F(MainWindowInside, ThePollMeanwhileShowsThatStampingIsUnderWay) {
    LoadWithFiles(3);
    std::string text;
    system_.pump.AtCall(2, [&] {
        Main().oTimer_Timer();
        text = ShownText(Main().StatusBar1, 0);
    });
    Main().cmdStamp.Click();
    EXPECT_EQ(text, "  Stamping (1 items remaining)");
    Finish();
}

TEST_F(MainWindowInside, AStampStartedFromInsideThePollIsFollowedToItsEnd) {
    for (const int call : {1, 2}) {
        boxes_.shown.clear();
        if (call == 1) {
            Load();
            AddTree("t", 20);
            List({"C:\\trees\\t"});
            Item("mnuOptionsClearAutomatically").SetChecked(false);
        }
        // This poll begins with nothing at work and would be the last one.
        system_.pump.AtCall(call, [this] { Main().cmdStamp.Click(); });
        Main().oTimer_Timer();
        Finish();
        EXPECT_THAT(boxes_.shown, SizeIs(1)) << "call " << call;
        EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
        EXPECT_EQ(Main().rows.At(0).sub_items[1], "Complete");
        EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Stamp Complete");
    }
}

TEST_F(MainWindowInside, FilesStampedFromInsideThePollAreShownAsComplete) {
    LoadWithFiles(1);
    Item("mnuOptionsPrompt").SetChecked(false);
    Item("mnuOptionsClearAutomatically").SetChecked(false);
    system_.pump.AtCall(1, [this] { Main().cmdStamp.Click(); });
    Main().oTimer_Timer();
    Finish();
    EXPECT_EQ(Main().rows.At(0).sub_items[1], "Complete");
}

TEST_F(MainWindowInside, PathsAddedFromInsideThePollAreCountedBeforeItsEyes) {
    Load();
    AddTree("t", 3);
    system_.pump.AtCall(2, [this] { Main().AddItems({"C:\\trees\\t"}); });
    Main().oTimer_Timer();
    Finish();
    EXPECT_EQ(Main().rows.At(0).sub_items[0], "3 files; 1 folder");
}

TEST_F(MainWindowInside, RowsRemovedFromInsideACountAreGoneAndItEnds) {
    Load();
    AddDeepTree("t", 50);
    Main().AddItems({"C:\\trees\\t"});
    system_.pump.AtCall(10,
                        [this] { EndWorkBy([this] { Choose("mnuFile", "mnuFileRemoveAll"); }); });
    Finish();
    ExpectNoFolderEnteredSince();
    EXPECT_THAT(RowTexts(), IsEmpty());
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Ready");
}

TEST_F(MainWindowInside, ADateThatTheLocaleCannotReadStampsNothingAndUnlocksTheControls) {
    LoadWithFiles(2);
    const FileTime before = Written("C:\\data\\file1.txt");
    system_.locale.SetDateSeparator("");
    EXPECT_THROW(Main().cmdStamp_Click(), ProgramError);
    Finish();
    EXPECT_EQ(Written("C:\\data\\file1.txt"), before);
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
    EXPECT_TRUE(Main().dtDateLastModified.Enabled());
}

TEST_F(MainWindowInside, TenThousandPathsAreAllListedCountedAndStamped) {
    Load();
    std::vector<std::string> paths;
    for (int i = 0; i < 10000; ++i) {
        paths.push_back(Numbered("C:\\data\\file", i));
        system_.volume.AddFile(paths.back());
    }
    const FileTime before = Written(paths.back());
    system_.files.SetRecording(false);
    List(paths);
    EXPECT_EQ(Main().rows.Count(), 10000U);
    EXPECT_EQ(Main().Items().CountedItems(), 10000);
    Item("mnuOptionsPrompt").SetChecked(false);
    Main().cmdStamp.Click();
    Finish();
    EXPECT_NE(Written(paths.back()), before);
    EXPECT_EQ(Main().rows.Count(), 0U) << "all complete, and cleared";
}

}  // namespace
}  // namespace tidemark
