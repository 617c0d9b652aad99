// Many paths added at once: the call returns early, the rest follows in slices, and commands given
// between the slices act as if every path were listed.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "lists/list_helpers.h"
#include "mainwindow/main_window_fixture.h"
#include "support/shown_status.h"

namespace tidemark {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MainWindowAdding : public MainWindowTest {
  protected:
    static constexpr int kPaths = 60;
    static constexpr std::size_t kRowsOfFirstSlice = 20;

    // A loaded window whose slices are as short as they can be: one path or one count in a tick.
    void LoadWithShortSlices() {
        Load();
        Item("mnuOptionsPrompt").SetChecked(false);
        Item("mnuOptionsClearAutomatically").SetChecked(false);
        system_.pump.SetAsksPerSlice(0);
    }
    // So many new files "C:\<name>\fileN.txt".
    std::vector<std::string> Files(const std::string& name, int count = kPaths) {
        std::vector<std::string> paths;
        for (int i = 0; i < count; ++i) {
            paths.push_back(Numbered("C:\\" + name + "\\file", i) + ".txt");
            system_.volume.AddFile(paths.back());
        }
        return paths;
    }
    void RunTicks(int count) {
        for (int i = 0; i < count; ++i) {
            system_.pump.RunFor(1);
        }
    }
    [[nodiscard]] std::vector<std::string> Statuses() {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < Main().rows.Count(); ++i) {
            texts.push_back(Main().rows.At(i).sub_items[1]);
        }
        return texts;
    }
    [[nodiscard]] bool AnyWritten(const std::vector<std::string>& paths, const FileTime& before) {
        return std::any_of(paths.begin(), paths.end(),
                           [&](const std::string& path) { return !(Written(path) == before); });
    }
    [[nodiscard]] bool AllWritten(const std::vector<std::string>& paths, const FileTime& before) {
        return std::none_of(paths.begin(), paths.end(),
                            [&](const std::string& path) { return Written(path) == before; });
    }
};

TEST_F(MainWindowAdding, TenPathsAreListedAndCountingWhenTheCallReturns) {
    LoadWithShortSlices();
    std::vector<std::string> paths;
    for (int i = 0; i < 10; ++i) {
        AddTree(Numbered("t", i), 2);
        paths.push_back(Numbered("C:\\trees\\t", i));
    }
    Main().AddItems(paths);
    EXPECT_THAT(RowTexts(), SizeIs(10));
    for (const auto& item : Main().Items()) {
        EXPECT_TRUE(item->CountInProgress()) << item->RootItem();
    }
}

TEST_F(MainWindowAdding, ManyPathsAreListedInLaterSlicesAndAllCounted) {
    LoadWithShortSlices();
    const std::vector<std::string> paths = Files("data");
    Main().AddItems(paths);
    EXPECT_EQ(Main().rows.Count(), kRowsOfFirstSlice);
    EXPECT_TRUE(Main().cmdStamp.Enabled());
    EXPECT_TRUE(Main().lvwItems.Visible());
    Finish();
    EXPECT_EQ(RowTexts(), paths);
    for (const auto& item : Main().Items()) {
        EXPECT_TRUE(item->CountComplete()) << item->RootItem();
    }
}

TEST_F(MainWindowAdding, TheStatusIsCountingUntilTheLastPathIsCounted) {
    LoadWithShortSlices();
    Main().AddItems(Files("data"));
    for (int tick = 0; tick < 2 * kPaths - static_cast<int>(kRowsOfFirstSlice) - 1; ++tick) {
        RunTicks(1);
        Main().oTimer_Timer();
        ASSERT_EQ(ShownSimpleText(Main().StatusBar1), "  Counting") << tick;
    }
    Finish();
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Ready");
}

TEST_F(MainWindowAdding, DropsFollowEachOtherInTheirOrder) {
    LoadWithShortSlices();
    std::vector<std::string> first = Files("first");
    const std::vector<std::string> second = Files("second");
    Main().AddItems(first);
    Main().AddItems(second);
    Finish();
    first.insert(first.end(), second.begin(), second.end());
    EXPECT_EQ(RowTexts(), first);
}

TEST_F(MainWindowAdding, NoFolderOfADropIsWalkedBeforeTheLastPathIsListed) {
    LoadWithShortSlices();
    std::vector<std::string> paths;
    for (int i = 0; i < kPaths; ++i) {
        AddTree(Numbered("t", i), 3);
        paths.push_back(Numbered("C:\\trees\\t", i));
    }
    Main().AddItems(paths);
    while (Main().rows.Count() < kPaths) {
        EXPECT_FALSE(Main().Items().BusyCounting());
        RunTicks(1);
    }
    Finish();
    for (const auto& item : Main().Items()) {
        EXPECT_EQ(item->CountString(), "3 files; 1 folder") << item->RootItem();
    }
}

TEST_F(MainWindowAdding, AStampPressedMeanwhileCoversEveryDroppedPath) {
    LoadWithShortSlices();
    Item("mnuOptionsPrompt").SetChecked(true);
    const std::vector<std::string> paths = Files("data");
    const FileTime before = Written(paths[0]);
    Main().AddItems(paths);
    Main().cmdStamp.Click();
    EXPECT_EQ(Main().cmdStamp.Text(), "Cancel");
    EXPECT_FALSE(Main().dtDateLastModified.Enabled());
    while (Main().rows.Count() < kPaths) {
        RunTicks(1);
        ASSERT_FALSE(AnyWritten(paths, before));
        ASSERT_EQ(Main().cmdStamp.Text(), "Cancel");
    }
    Finish();
    EXPECT_TRUE(AllWritten(paths, before));
    EXPECT_THAT(Statuses(), Each("Complete"));
    EXPECT_THAT(boxes_.shown, ElementsAre(BoxRequest{.text = "Stamp Complete"}));
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Stamp Complete");
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
}

TEST_F(MainWindowAdding, AStampPressedMeanwhileCoversNoLaterDrop) {
    LoadWithShortSlices();
    const std::vector<std::string> chosen = Files("chosen");
    const std::vector<std::string> later = Files("later", 5);
    const FileTime before = Written(chosen[0]);
    Main().AddItems(chosen);
    Main().cmdStamp.Click();
    // The slice inside this call could finish the first drop: a stamp would hold the call up.
    system_.pump.SetAsksPerSlice(10 * kPaths);
    Main().AddItems(later);
    EXPECT_FALSE(AnyWritten(chosen, before));
    Finish();
    EXPECT_TRUE(AllWritten(chosen, before));
    EXPECT_FALSE(AnyWritten(later, before));
    EXPECT_THAT(RowTexts(), SizeIs(chosen.size() + later.size()));
}

TEST_F(MainWindowAdding, ACancelTakesBackAStampThatWaits) {
    LoadWithShortSlices();
    const std::vector<std::string> paths = Files("data");
    const FileTime before = Written(paths[0]);
    Main().AddItems(paths);
    Main().cmdStamp.Click();
    RunTicks(3);
    Main().cmdStamp.Click();
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
    EXPECT_TRUE(Main().dtDateLastModified.Enabled());
    Finish();
    EXPECT_FALSE(AnyWritten(paths, before));
    EXPECT_EQ(RowTexts(), paths);
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Ready");
}

TEST_F(MainWindowAdding, RemoveAllMeanwhileLeavesNothingToList) {
    LoadWithShortSlices();
    const std::vector<std::string> paths = Files("data");
    const FileTime before = Written(paths[0]);
    Item("mnuOptionsPrompt").SetChecked(true);
    Main().AddItems(paths);
    Main().cmdStamp.Click();
    Choose("mnuFile", "mnuFileRemoveAll");
    EXPECT_EQ(Main().cmdStamp.Text(), "Stamp");
    Finish();
    EXPECT_THAT(RowTexts(), IsEmpty());
    EXPECT_FALSE(Main().cmdStamp.Enabled());
    EXPECT_FALSE(AnyWritten(paths, before));
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(MainWindowAdding, ARemovedRowIsNotListedAgainByTheSameDrop) {
    LoadWithShortSlices();
    std::vector<std::string> paths = Files("data");
    AddTree("t", 1);
    paths.insert(paths.begin(), "C:\\trees\\t");
    std::vector<std::string> twice = paths;
    twice.push_back("C:\\Trees\\T");
    twice.push_back("C:\\data\\FILE0.TXT");
    Main().AddItems(twice);
    SelectRow("c:\\trees\\t\\");
    SelectRow("c:\\data\\file0.txt");
    Choose("mnuFile", "mnuFileRemoveSelected");
    Finish();
    EXPECT_EQ(RowTexts(), std::vector<std::string>(paths.begin() + 2, paths.end()));
    // A later drop lists it again.
    List({"C:\\data\\file0.txt"});
    EXPECT_EQ(RowTexts().back(), "C:\\data\\file0.txt");
}

TEST_F(MainWindowAdding, SelectAllMeanwhileSelectsEveryDroppedPath) {
    LoadWithShortSlices();
    Main().AddItems(Files("data"));
    Choose("mnuEdit", "mnuEditSelectAll");
    Finish();
    EXPECT_EQ(Main().rows.SelectedCount(), static_cast<std::size_t>(kPaths));
}

TEST_F(MainWindowAdding, SelectAllAndRemoveMeanwhileRemoveEveryDroppedPath) {
    LoadWithShortSlices();
    Main().AddItems(Files("data"));
    Choose("mnuEdit", "mnuEditSelectAll");
    RunTicks(3);
    Choose("mnuFile", "mnuFileRemoveSelected");
    Finish();
    EXPECT_THAT(RowTexts(), IsEmpty());
}

TEST_F(MainWindowAdding, ADropAfterSelectAllIsNeitherSelectedNorRemoved) {
    for (const bool remove : {false, true}) {
        LoadWithShortSlices();
        const std::vector<std::string> later = Files(Numbered("later", remove ? 1 : 0), 5);
        Main().AddItems(Files(Numbered("data", remove ? 1 : 0)));
        Choose("mnuEdit", "mnuEditSelectAll");
        Main().AddItems(later);
        if (remove) {
            Choose("mnuFile", "mnuFileRemoveSelected");
        }
        Finish();
        EXPECT_EQ(Main().rows.SelectedCount(), remove ? 0U : kPaths);
        EXPECT_THAT(RowTexts(), SizeIs((remove ? 0 : kPaths) + later.size()));
        EXPECT_EQ(RowTexts().back(), later.back());
        MakeWindow(screen_, popup_menus_);
    }
}

TEST_F(MainWindowAdding, ASelectionOfAsManyOtherRowsIsNotTakenForAll) {
    LoadWithShortSlices();
    Main().AddItems(Files("data"));
    Choose("mnuEdit", "mnuEditSelectAll");
    RunTicks(1);
    SelectRow("c:\\data\\file0.txt", false);
    SelectRow("c:\\data\\file20.txt");
    Finish();
    EXPECT_EQ(Main().rows.SelectedCount(), kRowsOfFirstSlice);
    Choose("mnuFile", "mnuFileRemoveSelected");
    EXPECT_THAT(RowTexts(), SizeIs(kPaths - kRowsOfFirstSlice));
}

TEST_F(MainWindowAdding, AColumnClickedMeanwhileSortsEveryDroppedPath) {
    LoadWithShortSlices();
    std::vector<std::string> paths = Files("data");
    std::reverse(paths.begin(), paths.end());
    Main().AddItems(paths);
    Main().lvwItems.on_column_click(0);
    Finish();
    std::sort(paths.begin(), paths.end());
    EXPECT_EQ(RowTexts(), paths);
    List(Files("another", 1));
    EXPECT_EQ(RowTexts().back(), "C:\\another\\file0.txt") << "a later drop is not sorted in";
}

TEST_F(MainWindowAdding, ExitStampsNothingThatWaits) {
    LoadWithShortSlices();
    const std::vector<std::string> paths = Files("data");
    const FileTime before = Written(paths[0]);
    Main().AddItems(paths);
    Main().cmdStamp.Click();
    on_shut_down_ = [this] { system_.pump.RunFor(5000); };
    Choose("mnuFile", "mnuFileExit");
    Finish();
    EXPECT_FALSE(AnyWritten(paths, before));
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(MainWindowAdding, ASelectionChangedAfterSelectAllStays) {
    LoadWithShortSlices();
    const std::vector<std::string> paths = Files("data");
    Main().AddItems(paths);
    Choose("mnuEdit", "mnuEditSelectAll");
    RunTicks(3);
    SelectRow("c:\\data\\file0.txt", false);
    Finish();
    EXPECT_EQ(Main().rows.SelectedCount(), kRowsOfFirstSlice - 1);
    Choose("mnuFile", "mnuFileRemoveSelected");
    EXPECT_THAT(RowTexts(), SizeIs(kPaths - kRowsOfFirstSlice + 1));
}

TEST_F(MainWindowAdding, ClosingMeanwhileListsNoMore) {
    for (const int ticks : {0, 1, kPaths}) {  // listing, and counting
        LoadWithShortSlices();
        Main().AddItems(Files(Numbered("data", ticks)));
        RunTicks(ticks);
        Main().Close();
        EXPECT_FALSE(Main().Exists());
        Finish();
        EXPECT_EQ(Main().Items().Count(), 0U);
        MakeWindow(screen_, popup_menus_);
    }
    EXPECT_EQ(closed_, 3);
}

// Commands at random moments of random drops. What must hold afterwards follows from the commands
// alone, wherever the slices ended.
TEST_F(MainWindowAdding, CommandsAtEverySliceLoseNothingAndTouchNothingElse) {
    for (unsigned seed = 1; seed <= 25; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&random](std::size_t end) { return random() % end; };
        LoadWithShortSlices();
        system_.pump.SetAsksPerSlice(below(4));
        std::vector<std::string> wanted;  // rows in their order
        std::set<std::string> may_be_stamped;
        std::set<std::string> to_be_stamped;  // unless removed
        const FileTime before = Written(Files(Numbered("seed", static_cast<int>(seed)), 1)[0]);
        std::vector<std::string> all;
        for (int round = 0; round < 30; ++round) {
            switch (below(6)) {
                case 0: {
                    const auto paths =
                        Files(Numbered("s", static_cast<int>(seed)) + Numbered("_", round),
                              1 + static_cast<int>(below(40)));
                    Main().AddItems(paths);
                    wanted.insert(wanted.end(), paths.begin(), paths.end());
                    all.insert(all.end(), paths.begin(), paths.end());
                    break;
                }
                case 1:
                    to_be_stamped.clear();
                    if (Main().cmdStamp.Text() == "Stamp" && !wanted.empty()) {
                        to_be_stamped.insert(wanted.begin(), wanted.end());
                        may_be_stamped.insert(wanted.begin(), wanted.end());
                    }
                    Main().cmdStamp.Click();
                    break;
                case 2:
                    if (below(4) == 0) {
                        Main().UpdateControls();
                        Main().menu["mnuFileRemoveAll"].on_click();
                        wanted.clear();
                    }
                    break;
                case 3:
                    if (Main().rows.Count() > 0) {
                        ClearRowSelection(Main().rows);
                        const ListRow row = Main().rows.At(below(Main().rows.Count()));
                        SelectRow(row.key);
                        Main().menu["mnuFileRemoveSelected"].on_click();
                        std::erase(wanted, row.text);
                    }
                    break;
                case 4:
                    Main().AddItems(std::vector<std::string>(wanted));  // all of them again
                    break;
                default:
                    RunTicks(static_cast<int>(below(20)));
                    break;
            }
        }
        Finish();
        EXPECT_EQ(RowTexts(), wanted);
        EXPECT_EQ(Main().Items().Count(), wanted.size());
        for (const auto& item : Main().Items()) {
            EXPECT_TRUE(item->CountComplete()) << item->RootItem();
        }
        for (const std::string& path : wanted) {
            EXPECT_TRUE(!to_be_stamped.contains(path) || !(Written(path) == before)) << path;
        }
        for (const std::string& path : all) {
            EXPECT_TRUE(Written(path) == before || may_be_stamped.contains(path)) << path;
        }
        Main().Close();
        MakeWindow(screen_, popup_menus_);
    }
}

}  // namespace
}  // namespace tidemark
