#include <cstdint>
#include <string>
#include <vector>

#include "engine/engine_fixture.h"
#include "engine/fault_matrix.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StampTest : public EngineTest {
  protected:
    void SetUp() override {
        system.volume.AddFile("C:\\top\\a.txt");
        system.volume.AddFile("C:\\top\\sub\\b.txt");
        system.volume.AddFolder("C:\\top\\sub\\deep");
    }
};

TEST_F(StampTest, AFileIsStampedAtOnceWithExactlyTheseCalls) {
    const auto item = NewItem("C:\\top\\a.txt");
    Stamp(*item);
    EXPECT_TRUE(item->StampComplete());
    EXPECT_EQ(item->StampedFileCount(), 1);
    EXPECT_EQ(item->StatusString(), "Complete");
    EXPECT_THAT(Calls(), ElementsAre("IsNtFamily", "OpenForTimes C:\\top\\a.txt 2000080",
                                     "LocalToSystemTime local modified",
                                     "SetLastWriteTime C:\\top\\a.txt modified",
                                     "CloseFile C:\\top\\a.txt"));
    EXPECT_EQ(system.pump.Timers().NextDue(), std::nullopt);
    EXPECT_EQ(system.pump.CallCount(), 0U);
    EXPECT_EQ(Written("C:\\top\\a.txt"), modified_time);
    EXPECT_EQ(Created("C:\\top\\a.txt"), untouched);
    EXPECT_EQ(system.volume.TimesOf("C:\\top\\a.txt").accessed, untouched);
}

TEST_F(StampTest, CreatedIsSetByASecondCallThatLeavesTheOthers) {
    const auto item = NewItem("C:\\top\\a.txt");
    Stamp(*item, created_date);
    EXPECT_THAT(
        Calls(),
        ElementsAre("IsNtFamily", "OpenForTimes C:\\top\\a.txt 2000080",
                    "LocalToSystemTime local modified", "SetLastWriteTime C:\\top\\a.txt modified",
                    "LocalToSystemTime local created", "SetCreationTime C:\\top\\a.txt created",
                    "CloseFile C:\\top\\a.txt"));
    EXPECT_EQ(Written("C:\\top\\a.txt"), modified_time);
    EXPECT_EQ(Created("C:\\top\\a.txt"), created_time);
    EXPECT_EQ(system.volume.TimesOf("C:\\top\\a.txt").accessed, untouched);
}

TEST_F(StampTest, AFolderIsStampedAtOnceAndItsContentsInATick) {
    const auto item = NewItem("C:\\top");
    Stamp(*item);
    EXPECT_TRUE(IsStamped("C:\\top"));
    EXPECT_FALSE(IsStamped("C:\\top\\a.txt"));
    EXPECT_TRUE(item->StampInProgress());
    EXPECT_EQ(item->StatusString(), "Stamping - 0 items");
    EXPECT_EQ(item->StampedFolderCount(), 0);
    system.pump.RunFor(49);
    EXPECT_FALSE(IsStamped("C:\\top\\a.txt"));
    system.pump.RunFor(1);
    for (const char* path :
         {"C:\\top\\a.txt", "C:\\top\\sub", "C:\\top\\sub\\b.txt", "C:\\top\\sub\\deep"}) {
        EXPECT_TRUE(IsStamped(path)) << path;
    }
    EXPECT_TRUE(item->StampComplete());
    EXPECT_FALSE(item->StampInProgress());
    EXPECT_EQ(item->StatusString(), "Complete");
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
}

TEST_F(StampTest, TheItemsOwnFolderIsNeverAddedToTheStampedFolders) {
    const auto item = NewItem("C:\\top");
    item->Count();
    system.pump.RunUntilIdle();
    StampToTheEnd(*item);
    EXPECT_EQ(item->FolderCount(), 3);
    EXPECT_EQ(item->StampedFolderCount(), 2);
    EXPECT_EQ(item->FileCount(), 2);
    EXPECT_EQ(item->StampedFileCount(), 2);
}

TEST_F(StampTest, FoldersAreStampedBeforeTheirContentsWithBackslashes) {
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item);
    std::vector<std::string> order;
    for (const KernelCallRecord& call : system.files.Calls()) {
        if (call.call == KernelCall::kOpenForTimes) {
            EXPECT_EQ(call.argument, kOpenBackupSemantics | kOpenNormal);
            order.push_back(call.path);
        }
    }
    EXPECT_THAT(order, ElementsAre("C:\\top\\", "C:\\top\\a.txt", "C:\\top\\sub\\",
                                   "C:\\top\\sub\\b.txt", "C:\\top\\sub\\deep\\"));
}

TEST_F(StampTest, MessagesRunAtTheSamePointsAsInCounting) {
    const auto points = [this](auto&& start) {
        system.files.ClearCalls();
        std::vector<std::string> trace;
        system.pump.AtEveryCall([&] {
            std::string last = "nothing";
            for (const KernelCallRecord& call : system.files.Calls()) {
                if (call.call <= KernelCall::kSearchClose) {
                    last = std::string(NameOf(call.call)) + " " + call.path;
                }
            }
            trace.push_back(last);
        });
        const auto item = NewItem("C:\\top");
        start(*item);
        system.pump.RunUntilIdle();
        system.pump.AtEveryCall({});
        return trace;
    };
    const auto counting = points([](TidemarkItem& item) { item.Count(); });
    const auto stamping = points([this](TidemarkItem& item) { Stamp(item); });
    EXPECT_EQ(counting, stamping);
    // One in the tick, one for each of three folders, two for each of ten entries.
    EXPECT_EQ(counting.size(), 1U + 3U + 20U);
}

TEST_F(StampTest, CreatedZeroWithoutSyncLeavesEveryCreatedTime) {
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item);
    for (const char* path : {"C:\\top", "C:\\top\\a.txt", "C:\\top\\sub", "C:\\top\\sub\\b.txt"}) {
        EXPECT_EQ(Created(path), untouched) << path;
    }
    EXPECT_EQ(system.files.CallCount(KernelCall::kSetCreationTime), 0U);
}

// Asked by the path is only what the open folder cannot tell.
TEST_F(StampTest, SyncAsksTheOpenEntryWhetherItIsAFolder) {
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, 0, false, /*sync_folders=*/true);
    EXPECT_EQ(system.files.CallCount(KernelCall::kReadAttributesOf), 5U);
    EXPECT_EQ(system.files.CallCount(KernelCall::kReadAttributes), 0U);
}

TEST_F(StampTest, SyncAsksByThePathWhenTheOpenEntryDoesNotTell) {
    for (const std::uint32_t code : fault_matrix::kCodes) {
        SCOPED_TRACE(code);
        system.volume.AddFolder("C:\\top\\folder of " + std::to_string(code));
        system.files.ClearFaults();
        system.files.Fail({KernelCall::kReadAttributesOf, {}, 0}, code);
        const auto item = NewItem("C:\\top");
        StampToTheEnd(*item, 0, false, /*sync_folders=*/true);
        EXPECT_EQ(Created("C:\\top\\folder of " + std::to_string(code)), modified_time);
        EXPECT_EQ(Created("C:\\top\\a.txt"), untouched);
        EXPECT_THAT(*item->StampErrors(), IsEmpty());
    }
}

TEST_F(StampTest, SyncGivesFoldersTheirLastModifiedAsCreatedAndFilesKeepTheirs) {
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, 0, false, /*sync_folders=*/true);
    for (const char* path : {"C:\\top", "C:\\top\\sub", "C:\\top\\sub\\deep"}) {
        EXPECT_EQ(Created(path), modified_time) << path;
    }
    for (const char* path : {"C:\\top\\a.txt", "C:\\top\\sub\\b.txt"}) {
        EXPECT_EQ(Created(path), untouched) << path;
    }
}

// What an item is now decides, not what its path looks like: a file's has no backslash at its end.
TEST_F(StampTest, SyncReachesAFolderThatTookThePlaceOfTheItemsFile) {
    const auto item = NewItem("C:\\top\\a.txt");
    system.volume.Remove("C:\\top\\a.txt");
    system.volume.AddFolder("C:\\top\\a.txt");
    Stamp(*item, 0, false, /*sync_folders=*/true);
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt"));
    EXPECT_EQ(Created("C:\\top\\a.txt"), modified_time);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
}

TEST_F(StampTest, SyncReachesAFolderThatTookThePlaceOfAListedFile) {
    system.files.Before({KernelCall::kOpenForTimes, "C:\\top\\a.txt", 0}, [this] {
        system.volume.Remove("C:\\top\\a.txt");
        system.volume.AddFolder("C:\\top\\a.txt");
    });
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, 0, false, /*sync_folders=*/true);
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt"));
    EXPECT_EQ(Created("C:\\top\\a.txt"), modified_time);
}

// The path decides: a folder given as relative from the current one is left out, the same folder
// given by its name is not.
TEST_F(StampTest, SyncLeavesOutPathsThatBeginWithADot) {
    system.volume.SetCurrentFolder("C:\\top");
    for (const char* path : {".", ".\\sub"}) {
        const auto item = NewItem(path);
        StampToTheEnd(*item, 0, false, /*sync_folders=*/true);
        EXPECT_EQ(item->StatusString(), "Complete");
        EXPECT_TRUE(IsStamped("C:\\top\\sub\\b.txt"));
    }
    for (const char* path : {"C:\\top", "C:\\top\\sub", "C:\\top\\sub\\deep"}) {
        EXPECT_TRUE(IsStamped(path));
        EXPECT_EQ(Created(path), untouched) << path;
    }
    const auto item = NewItem("sub");
    StampToTheEnd(*item, 0, false, /*sync_folders=*/true);
    EXPECT_EQ(Created("C:\\top\\sub"), modified_time);
    EXPECT_EQ(Created("C:\\top\\sub\\deep"), modified_time);
}

TEST_F(StampTest, AFolderThatTookThePlaceOfTheItemsFileIsCountedAndStampedWhole) {
    const auto item = NewItem("C:\\top\\a.txt");
    system.volume.Remove("C:\\top\\a.txt");
    system.volume.AddFile("C:\\top\\a.txt\\inside.txt");
    item->Count();
    system.pump.RunUntilIdle();
    EXPECT_EQ(item->CountString(), "1 file; 1 folder");
    StampToTheEnd(*item);
    EXPECT_EQ(item->StampedFileCount(), 1);
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt\\inside.txt"));
}

TEST_F(StampTest, AGivenCreatedGoesBeforeSync) {
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, created_date, false, /*sync_folders=*/true);
    for (const char* path : {"C:\\top", "C:\\top\\a.txt", "C:\\top\\sub"}) {
        EXPECT_EQ(Created(path), created_time) << path;
    }
}

TEST_F(StampTest, ACreatedBeforeTheDayThatCountsAsZeroIsSet) {
    const auto item = NewItem("C:\\top\\a.txt");
    Stamp(*item, DayNumber(1752, 9, 14, 13, 45));
    EXPECT_EQ(Created("C:\\top\\a.txt"), SystemTime(1752, 9, 14, 13, 45));
    EXPECT_EQ(Written("C:\\top\\a.txt"), modified_time);
}

TEST_F(StampTest, AnyCreatedButExactlyZeroIsSet) {
    const auto item = NewItem("C:\\top\\a.txt");
    Stamp(*item, 1e-12);
    EXPECT_EQ(Created("C:\\top\\a.txt"), SystemTime(1899, 12, 30));
}

TEST_F(StampTest, DotFoldersAreNeitherStampedNorEnteredAndDotFilesAre) {
    system.volume.AddFile("C:\\top\\.git\\config");
    system.volume.AddFile("C:\\top\\.profile");
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, created_date, true, true);
    EXPECT_EQ(system.volume.TimesOf("C:\\top\\.git"),
              (MemoryTimes{untouched, untouched, untouched}));
    EXPECT_EQ(Written("C:\\top\\.git\\config"), untouched);
    EXPECT_TRUE(IsStamped("C:\\top\\.profile"));
}

TEST_F(StampTest, ProgressReachesAtMostTheShareWithoutTheItemsOwnFolder) {
    for (const char* path : {"C:\\three\\a", "C:\\three\\b", "C:\\three\\c"}) {
        system.volume.AddFile(path);
    }
    const auto item = NewItem("C:\\three");
    item->Count();
    system.pump.RunUntilIdle();
    Stamp(*item);
    EXPECT_EQ(item->StatusString(), "Stamping - 0%");
    std::vector<std::string> texts;
    system.pump.AtEveryCall([&] {
        const std::string text = item->StatusString();
        if (texts.empty() || texts.back() != text) {
            texts.push_back(text);
        }
    });
    system.pump.RunUntilIdle();
    EXPECT_THAT(texts,
                ElementsAre("Stamping - 0%", "Stamping - 25%", "Stamping - 50%", "Stamping - 75%"));
    EXPECT_EQ(item->StatusString(), "Complete");
}

TEST_F(StampTest, ProgressWithoutAFinishedCountIsANumberOfItems) {
    const auto item = NewItem("C:\\top");
    Stamp(*item);
    TidemarkItemTestPeer::SetStampedFileCount(*item, 1200);
    TidemarkItemTestPeer::SetStampedFolderCount(*item, 34);
    EXPECT_EQ(item->StatusString(), "Stamping - 1,234 items");
}

TEST_F(StampTest, ProgressIsRoundedToAWholeNumberHalvesUp) {
    const auto item = NewItem("C:\\top");
    item->Count();
    system.pump.RunUntilIdle();
    Stamp(*item);
    const auto text = [&](std::int32_t done, std::int32_t total) {
        TidemarkItemTestPeer::SetFileCount(*item, total);
        TidemarkItemTestPeer::SetFolderCount(*item, 0);
        TidemarkItemTestPeer::SetStampedFileCount(*item, done);
        return item->StatusString();
    };
    EXPECT_EQ(text(1, 8), "Stamping - 13%");
    EXPECT_EQ(text(45, 100), "Stamping - 45%");
    EXPECT_EQ(text(1, 3), "Stamping - 33%");
    EXPECT_EQ(text(5, 0), "Stamping - 0%");
    EXPECT_EQ(text(1500, 100), "Stamping - 1,500%");
}

TEST_F(StampTest, StampKeepsTheCountAndReplacesTheErrors) {
    system.volume.Lock("C:\\top\\a.txt");
    const auto item = NewItem("C:\\top");
    item->Count();
    system.pump.RunUntilIdle();
    StampToTheEnd(*item);
    const auto first = item->StampErrors();
    EXPECT_EQ(first->size(), 1U);
    system.volume.Unlock("C:\\top\\a.txt");
    StampToTheEnd(*item);
    EXPECT_TRUE(item->CountComplete());
    EXPECT_EQ(item->CountString(), "2 files; 3 folders");
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
    EXPECT_EQ(first->size(), 1U);
    EXPECT_EQ(item->StampedFileCount(), 2);
}

TEST_F(StampTest, AnItemThatIsGoneIsNotStamped) {
    const auto item = NewItem("C:\\top");
    system.volume.Remove("C:\\top");
    StampToTheEnd(*item);
    EXPECT_FALSE(item->StampComplete() || item->StampInProgress());
    EXPECT_TRUE(system.files.Calls().empty());
    EXPECT_EQ(item->StatusString(), "Ready");
}

TEST_F(StampTest, OverflowEndsTheStampNeitherRunningNorComplete) {
    const auto item = NewItem("C:\\top");
    Stamp(*item);
    TidemarkItemTestPeer::SetStampedFileCount(*item, 0x7FFFFFFF);
    system.pump.RunUntilIdle();
    EXPECT_THAT(system.pump.Failures(), ElementsAre("Overflow"));
    EXPECT_FALSE(item->StampInProgress() || item->StampComplete());
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
    EXPECT_EQ(item->StampedFileCount(), 0x7FFFFFFF);
}

TEST_F(StampTest, TimesFollowTheZone) {
    system.volume.SetLocalTimeAhead(-330);
    const auto item = NewItem("C:\\top\\a.txt");
    Stamp(*item);
    EXPECT_EQ(Written("C:\\top\\a.txt"), SystemTime(2021, 3, 2, 13, 45, -330));
}

}  // namespace
}  // namespace tidemark
