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

TEST_F(StampWalkTest, ALinkToItsOwnParentEndsWhereTheSystemEndsIt) {
    system.volume.AddFile("C:\\loop\\x.txt");
    system.volume.AddFolderLink("C:\\loop\\self", "C:\\loop");
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

TEST_F(StampWalkTest, ALinkToItsOwnParentCanBeCancelled) {
    system.volume.AddFolderLink("C:\\top\\zelf", "C:\\top");
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
