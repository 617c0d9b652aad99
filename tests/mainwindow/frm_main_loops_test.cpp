// What the user sees, and what happens, while many items are started.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mainwindow/main_window_fixture.h"
#include "support/shown_status.h"

namespace tidemark {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MainWindowLoops : public MainWindowTest {
  protected:
    static constexpr int kFolders = 200;

    std::vector<std::string> ManyTrees() {
        std::vector<std::string> paths;
        for (int i = 0; i < kFolders; ++i) {
            AddTree(Numbered("t", i), 3);
            paths.push_back(Numbered("C:\\trees\\t", i));
        }
        return paths;
    }
    void KeepTheListAndSayNothing() {
        Item("mnuOptionsPrompt").SetChecked(false);
        Item("mnuOptionsClearAutomatically").SetChecked(false);
    }
    // The status cells of all rows.
    [[nodiscard]] std::vector<std::string> Statuses() {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < Main().rows.Count(); ++i) {
            texts.push_back(Main().rows.At(i).sub_items[1]);
        }
        return texts;
    }
};

TEST_F(MainWindowLoops, NoFolderIsWalkedBeforeTheLastItemIsStarted) {
    Load();
    List(ManyTrees());
    KeepTheListAndSayNothing();
    const FileTime before = Written("C:\\trees\\t0\\f0");
    system_.pump.SetMillisecondsPerCall(10);
    Main().cmdStamp_Click();
    for (const auto& item : Main().Items()) {
        EXPECT_TRUE(item->StampInProgress()) << item->RootItem();
    }
    EXPECT_NE(Written("C:\\trees\\t0"), before);
    EXPECT_EQ(Written("C:\\trees\\t0\\f0"), before);
    Finish();
    EXPECT_NE(Written(Numbered("C:\\trees\\t", kFolders - 1) + "\\f2"), before);
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Stamp Complete");
}

TEST_F(MainWindowLoops, WhileItemsStartNothingOfTheStampBeforeIsShown) {
    LoadWithFiles(4);
    KeepTheListAndSayNothing();
    system_.volume.Lock("C:\\data\\file4.txt");
    Main().cmdStamp.Click();
    Finish();
    ASSERT_THAT(Statuses(),
                ElementsAre("Complete", "Complete", "Complete", "Complete (with errors)"));
    std::string text;
    int progress = 0;
    std::vector<std::string> statuses;
    system_.pump.AtCall(1, [&] {
        Main().oTimer_Timer();
        text = ShownText(Main().StatusBar1, 0);
        progress = Main().ProgressBar1.Value();
        statuses = Statuses();
    });
    Main().cmdStamp.Click();
    EXPECT_EQ(text, "  Stamping (3 items remaining)");
    EXPECT_EQ(progress, 1);
    EXPECT_THAT(statuses, ElementsAre("Complete", "Ready", "Ready", "Ready"));
    Finish();
}

TEST_F(MainWindowLoops, ACancelWhileTheItemsOfASecondStampStartLeavesTheRestReady) {
    LoadWithFiles(5);
    KeepTheListAndSayNothing();
    Main().cmdStamp.Click();
    Finish();
    ASSERT_THAT(Statuses(), Each("Complete"));
    system_.pump.AtCall(2, [this] { Main().cmdStamp.Click(); });
    Main().cmdStamp.Click();
    Finish();
    EXPECT_THAT(Statuses(), ElementsAre("Complete", "Complete", "Ready", "Ready", "Ready"));
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Ready");
}

TEST_F(MainWindowLoops, ADateThatCannotBeReadLeavesTheLastStampAsItWas) {
    LoadWithFiles(2);
    KeepTheListAndSayNothing();
    Main().cmdStamp.Click();
    Finish();
    system_.locale.SetDateSeparator("");
    EXPECT_THROW(Main().cmdStamp_Click(), ProgramError);
    Finish();
    EXPECT_THAT(Statuses(), Each("Complete"));
}

TEST_F(MainWindowLoops, FilesDroppedWhileItemsStartAreListedAndNotStamped) {
    LoadWithFiles(3);
    KeepTheListAndSayNothing();
    Item("mnuOptionsPrompt").SetChecked(true);
    system_.volume.AddFile("C:\\data\\late.txt");
    const FileTime before = Written("C:\\data\\late.txt");
    system_.pump.AtCall(2, [this] { Main().AddItems({"C:\\data\\late.txt"}); });
    Main().cmdStamp.Click();
    Finish();
    EXPECT_EQ(Written("C:\\data\\late.txt"), before);
    EXPECT_NE(Written("C:\\data\\file3.txt"), before);
    EXPECT_THAT(Statuses(), ElementsAre("Complete", "Complete", "Complete", "Ready"));
    EXPECT_THAT(boxes_.shown, ElementsAre(BoxRequest{.text = "Stamp Complete"}));
}

TEST_F(MainWindowLoops, AnItemRemovedAndDroppedAgainWhileItemsStartIsNotStamped) {
    LoadWithFiles(3);
    KeepTheListAndSayNothing();
    const FileTime before = Written("C:\\data\\file3.txt");
    system_.pump.AtCall(1, [this] {
        SelectRow("c:\\data\\file3.txt");
        Choose("mnuFile", "mnuFileRemoveSelected");
        Main().AddItems({"C:\\data\\file3.txt"});
    });
    Main().cmdStamp.Click();
    Finish();
    EXPECT_EQ(Written("C:\\data\\file3.txt"), before);
    EXPECT_THAT(Statuses(), ElementsAre("Complete", "Complete", "Ready"));
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(MainWindowLoops, RemovingAllDuringAStampEndsItAndItsEndIsAnnounced) {
    Load();
    KeepTheListAndSayNothing();
    Item("mnuOptionsPrompt").SetChecked(true);
    AddTree("t\\first", 20);
    AddTree("t\\second", 20);
    List({"C:\\trees\\t"});
    const FileTime before = Written("C:\\trees\\t\\second\\f0");
    bool removed = false;
    system_.pump.AtEveryCall([&] {
        if (!removed && Written("C:\\trees\\t\\first\\f0") != before) {
            removed = true;
            Choose("mnuFile", "mnuFileRemoveAll");
        }
    });
    Main().cmdStamp.Click();
    Finish();
    ASSERT_TRUE(removed);
    EXPECT_NE(Written("C:\\trees\\t\\first\\f19"), before) << "the folder at hand is finished";
    EXPECT_EQ(Written("C:\\trees\\t\\second\\f0"), before);
    EXPECT_THAT(RowTexts(), IsEmpty());
    EXPECT_THAT(boxes_.shown, ElementsAre(BoxRequest{.text = "Stamp Complete"}));
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Ready");
    EXPECT_FALSE(Main().cmdStamp.Enabled());
}

TEST_F(MainWindowLoops, RecountingDuringAStampShowsTheCountWhileTheStampUnderWayIsFinished) {
    Load();
    KeepTheListAndSayNothing();
    Item("mnuOptionsPrompt").SetChecked(true);
    AddTree("t", 20);
    AddTree("waiting", 2);
    // The tick of the second begins inside that of the first, which has not begun its work.
    List({"C:\\trees\\waiting", "C:\\trees\\t"});
    const FileTime before = Written("C:\\trees\\t\\f0");
    bool recounted = false;
    std::string caption;
    std::vector<std::string> statuses;
    system_.pump.AtEveryCall([&] {
        if (!recounted && Written("C:\\trees\\t\\f0") != before) {
            recounted = true;
            Choose("mnuView", "mnuViewRefresh");
            caption = Main().cmdStamp.Text();
            statuses = Statuses();
        }
    });
    Main().cmdStamp.Click();
    Finish();
    ASSERT_TRUE(recounted);
    EXPECT_EQ(caption, "Stamp");
    EXPECT_THAT(statuses, ElementsAre("Counting", "Counting"));
    EXPECT_THAT(boxes_.shown, ElementsAre(BoxRequest{.text = "Stamp Complete"}));
    EXPECT_NE(Written("C:\\trees\\t\\f19"), before);
    EXPECT_EQ(Written("C:\\trees\\waiting\\f0"), before);
    EXPECT_EQ(Main().rows.At(0).sub_items[0], "2 files; 1 folder");
    EXPECT_EQ(Main().rows.At(1).sub_items[0], "20 files; 1 folder");
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
}

}  // namespace
}  // namespace tidemark
