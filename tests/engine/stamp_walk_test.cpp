#include <string>

#include "engine/engine_fixture.h"

namespace tidemark {
namespace {

using testing::IsEmpty;

// A stamp's way over a folder and all that may lie below it.
class StampWalkTest : public EngineTest {
  protected:
    void SetUp() override {
        system.volume.AddFile("C:\\top\\a.txt");
        system.volume.AddFile("C:\\top\\sub\\b.txt");
    }
};

TEST_F(StampWalkTest, AFolderThatCannotBeListedAddsNoRecord) {
    system.volume.DenyListing("C:\\top\\sub");
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
    EXPECT_TRUE(IsStamped("C:\\top\\sub"));
    EXPECT_FALSE(IsStamped("C:\\top\\sub\\b.txt"));
    EXPECT_TRUE(item->StampComplete());
}

TEST_F(StampWalkTest, CancelIsNoticedOnEntryToAFolderOnly) {
    system.volume.AddFile("C:\\top\\z.txt");
    const auto item = NewItem("C:\\top");
    Stamp(*item);
    // Call 3 is before "." in the top folder.
    system.pump.AtCall(3, [&] {
        item->CancelStamp();
        EXPECT_EQ(item->StatusString(), "Ready");
    });
    system.pump.RunUntilIdle();
    EXPECT_TRUE(item->StampCancelled());
    EXPECT_FALSE(item->StampComplete() || item->StampInProgress());
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt") && IsStamped("C:\\top\\z.txt"));
    EXPECT_TRUE(IsStamped("C:\\top\\sub"));
    EXPECT_FALSE(IsStamped("C:\\top\\sub\\b.txt"));
    EXPECT_EQ(item->StampedFileCount(), 2);
    EXPECT_EQ(item->StampedFolderCount(), 1);
    EXPECT_EQ(item->StatusString(), "Ready");
}

TEST_F(StampWalkTest, CancelWhileOnlyPendingDropsTheStampUnmarked) {
    const auto item = NewItem("C:\\top");
    Stamp(*item);
    item->CancelStamp();
    system.pump.RunUntilIdle();
    EXPECT_TRUE(IsStamped("C:\\top"));
    EXPECT_FALSE(IsStamped("C:\\top\\a.txt"));
    EXPECT_FALSE(item->StampCancelled() || item->StampComplete() || item->StampInProgress());
}

TEST_F(StampWalkTest, CancelStampLeavesACountAlone) {
    const auto item = NewItem("C:\\top");
    item->Count();
    Stamp(*item);
    item->CancelStamp();
    system.pump.RunUntilIdle();
    EXPECT_TRUE(item->CountComplete());
    EXPECT_FALSE(IsStamped("C:\\top\\a.txt"));
}

// Links to folders that they lie in, which a walk would meet again and again.
class LinksBackTest : public EngineTest {
  protected:
    void ExpectCountedAndStamped(const std::string& path, int files, int folders) {
        const auto item = NewItem(path);
        item->Count();
        system.pump.RunUntilIdle();
        EXPECT_TRUE(item->CountComplete());
        EXPECT_EQ(item->FileCount(), files);
        EXPECT_EQ(item->FolderCount(), folders);
        StampToTheEnd(*item);
        EXPECT_EQ(item->StampedFileCount(), files);
        EXPECT_EQ(item->StampedFolderCount() + 1, folders);
        EXPECT_EQ(item->StatusString(), "Complete");
        EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
    }
};

TEST_F(LinksBackTest, ALinkToItsOwnFolderIsStampedAndNotEntered) {
    system.volume.AddFile("C:\\loop\\x.txt");
    system.volume.AddFolderLink("C:\\loop\\self", "C:\\loop");
    ExpectCountedAndStamped("C:\\loop", 1, 2);
    EXPECT_EQ(system.files.CallCount(KernelCall::kOpenForTimes), 3U);
}

TEST_F(LinksBackTest, TwoLinksToTheirFolderDoNotMultiply) {
    system.volume.AddFile("C:\\loop\\sub\\x.txt");
    system.volume.AddFolderLink("C:\\loop\\sub\\one", "C:\\loop");
    system.volume.AddFolderLink("C:\\loop\\sub\\two", "C:\\loop\\sub");
    ExpectCountedAndStamped("C:\\loop", 1, 4);
}

TEST_F(LinksBackTest, ALinkToAFolderAboveTheListedOneIsNotEntered) {
    system.volume.AddFile("C:\\up\\other.txt");
    system.volume.AddFile("C:\\up\\listed\\x.txt");
    system.volume.AddFolderLink("C:\\up\\listed\\back", "C:\\up");
    system.volume.AddFolderLink("C:\\up\\listed\\root", "C:");
    ExpectCountedAndStamped("C:\\up\\listed", 1, 3);
    EXPECT_FALSE(IsStamped("C:\\up\\other.txt"));
}

TEST_F(LinksBackTest, TheFoldersAboveARelativePathAreThoseAboveTheCurrentFolder) {
    system.volume.AddFile("C:\\up\\other\\o.txt");
    system.volume.AddFile("C:\\up\\listed\\x.txt");
    system.volume.AddFolderLink("C:\\up\\listed\\back", "C:\\up");
    system.volume.AddFolderLink("C:\\up\\listed\\root", "C:");
    system.volume.SetCurrentFolder("C:\\up\\listed");
    ExpectCountedAndStamped(".", 1, 3);
    system.volume.SetCurrentFolder("C:\\up");
    ExpectCountedAndStamped("listed", 1, 3);
    ExpectCountedAndStamped("C:\\up\\other\\..\\listed", 1, 3);
    system.volume.SetCurrentFolder("C:\\up\\other");
    ExpectCountedAndStamped("..\\listed", 1, 3);
    EXPECT_FALSE(IsStamped("C:\\up\\other\\o.txt"));
}

TEST_F(LinksBackTest, ALinkToAFolderThatTheListedPathLeavesAgainIsEntered) {
    system.volume.AddFile("C:\\a\\x.txt");
    system.volume.AddFolder("C:\\b");
    system.volume.AddFolderLink("C:\\b\\to a", "C:\\a");
    system.volume.AddFolderLink("C:\\b\\to the drive", "C:");
    ExpectCountedAndStamped("C:\\a\\..\\b", 1, 3);
}

TEST_F(LinksBackTest, FoldersThatLinkToEachOtherAreEnteredOnceOnEachWay) {
    system.volume.AddFile("C:\\top\\a\\x.txt");
    system.volume.AddFile("C:\\top\\b\\y.txt");
    system.volume.AddFolderLink("C:\\top\\a\\to b", "C:\\top\\b");
    system.volume.AddFolderLink("C:\\top\\b\\to a", "C:\\top\\a");
    // The top; a and "to b" in it and "to a" in that; the same from b.
    ExpectCountedAndStamped("C:\\top", 4, 7);
}

TEST_F(LinksBackTest, ALinkToAFolderThatItDoesNotLieInIsEntered) {
    system.volume.AddFile("C:\\top\\a\\x.txt");
    system.volume.AddFile("C:\\elsewhere\\y.txt");
    system.volume.AddFolderLink("C:\\top\\b", "C:\\elsewhere");
    system.volume.AddFolderLink("C:\\top\\c", "C:\\top\\a");
    ExpectCountedAndStamped("C:\\top", 3, 4);
    EXPECT_TRUE(IsStamped("C:\\elsewhere\\y.txt"));
}

TEST_F(LinksBackTest, OnlyLinksAreAskedWhichFolderTheyAre) {
    system.volume.AddFile("C:\\top\\a\\x.txt");
    ExpectCountedAndStamped("C:\\top", 1, 2);
    EXPECT_EQ(system.files.CallCount(KernelCall::kReadIdentity), 0U);
    // Two links, the root, the drive and the folder that they lie in, in either walk.
    system.volume.AddFolder("C:\\elsewhere");
    system.volume.AddFolderLink("C:\\top\\a\\l", "C:\\elsewhere");
    system.volume.AddFolderLink("C:\\top\\a\\m", "C:\\elsewhere");
    ExpectCountedAndStamped("C:\\top", 1, 4);
    EXPECT_EQ(system.files.CallCount(KernelCall::kReadIdentity), 2U * 5U);
}

TEST_F(LinksBackTest, WhereFoldersCannotBeToldApartTheSystemEndsTheWalk) {
    system.volume.AddFile("C:\\loop\\x.txt");
    system.volume.AddFolderLink("C:\\loop\\self", "C:\\loop");
    system.volume.StopNumbering();
    const auto item = NewItem("C:\\loop");
    item->Count();
    system.pump.RunUntilIdle();
    EXPECT_TRUE(item->CountComplete());
    EXPECT_EQ(item->FolderCount(), 65);
    EXPECT_EQ(item->FileCount(), 64);
    StampToTheEnd(*item);
    EXPECT_TRUE(item->StampComplete());
    EXPECT_EQ(item->StampedFolderCount() + 1, item->FolderCount());
    ASSERT_EQ(item->StampErrors()->size(), 1U);
    EXPECT_EQ(item->StampErrors()->front()->ErrorNumber, 1921);
}

TEST_F(LinksBackTest, AWalkThroughLinksWithoutEndCanBeCancelled) {
    system.volume.AddFolder("C:\\top");
    system.volume.AddFolderLink("C:\\top\\zelf", "C:\\top");
    system.volume.StopNumbering();
    const auto item = NewItem("C:\\top");
    item->Count();
    system.pump.AtCall(60, [&] { item->CancelCount(); });
    system.pump.RunUntilIdle();
    EXPECT_TRUE(item->CountCancelled());
    EXPECT_LT(item->FolderCount(), 40);
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
}

TEST_F(StampWalkTest, AFolderWithVeryManyFilesIsCountedAndStampedWhole) {
    constexpr int kMany = 20000;
    system.files.SetRecording(false);
    for (int i = 0; i < kMany; ++i) {
        system.volume.AddFile("C:\\many\\" + std::to_string(i));
    }
    const auto item = NewItem("C:\\many");
    item->Count();
    system.pump.RunUntilIdle();
    EXPECT_EQ(item->CountString(), "20,000 files; 1 folder");
    StampToTheEnd(*item);
    EXPECT_EQ(item->StampedFileCount(), kMany);
    EXPECT_EQ(item->StatusString(), "Complete");
}

class DeepChainTest : public EngineTest, public testing::WithParamInterface<int> {};

TEST_P(DeepChainTest, IsCountedAndStampedToItsEnd) {
    std::string path = "C:\\";
    for (int i = 0; i < GetParam(); ++i) {
        path += "d\\";
    }
    system.volume.AddFile(path + "last.txt");
    system.files.SetRecording(false);
    const auto item = NewItem("C:\\d");
    item->Count();
    system.pump.RunUntilIdle();
    StampToTheEnd(*item);
    EXPECT_TRUE(item->CountComplete() && item->StampComplete());
    EXPECT_EQ(item->FolderCount(), GetParam());
    EXPECT_EQ(item->StampedFolderCount(), GetParam() - 1);
    EXPECT_EQ(item->StampedFileCount(), 1);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
    EXPECT_TRUE(IsStamped(path + "last.txt"));
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Depths, DeepChainTest, testing::Values(1, 1000, 5000),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace tidemark
