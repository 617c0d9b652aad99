#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/engine_fixture.h"
#include "engine/tidemark_item_collection.h"
#include "lists/list_model.h"
#include "platform/timer_queue.h"

namespace tidemark {
namespace {

using testing::IsEmpty;

// Commands and other items' ticks that arrive while an item works.
class ReentrancyTest : public EngineTest {
  protected:
    void SetUp() override {
        system.volume.AddFile("C:\\top\\a.txt");
        system.volume.AddFile("C:\\top\\sub\\b.txt");
        system.volume.AddFile("C:\\top\\sub\\deep\\c.txt");
        system.volume.AddFile("C:\\other\\d.txt");
    }

    void RunOut() {
        system.pump.RunUntilIdle();
        system.pump.ClearActions();
    }

    void ExpectNothingLeftOpen() {
        EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
        EXPECT_EQ(system.volume.OpenFileCount(), 0U);
        EXPECT_THAT(system.pump.Failures(), IsEmpty());
    }

    ListModel list{system.locale};
};

TEST_F(ReentrancyTest, AnItemNobodyOwnsAnyMoreLivesUntilItsWorkIsOffTheStack) {
    TidemarkItemCollection items(system.Parts());
    const std::weak_ptr<TidemarkItem> item = items.Add("C:\\top", nullptr, nullptr);
    item.lock()->Count();
    bool alive_after_removal = false;
    system.pump.AtCall(5, [&] {
        items.Remove("C:\\top\\", nullptr);
        alive_after_removal = !item.expired();
    });
    system.pump.RunUntilIdle();
    EXPECT_TRUE(alive_after_removal);
    EXPECT_TRUE(item.expired());
    ExpectNothingLeftOpen();
}

TEST_F(ReentrancyTest, TheCollectionIsClearedFromInsideANestedTick) {
    TidemarkItemCollection items(system.Parts());
    std::vector<std::weak_ptr<TidemarkItem>> all;
    for (const char* path : {"C:\\top", "C:\\other", "C:\\top\\sub", "C:\\top\\sub\\deep"}) {
        all.push_back(items.Add(path, &list, nullptr));
        all.back().lock()->Count();
        Stamp(*all.back().lock());
    }
    // Every tick that is due nests into the one before.
    system.pump.SetMillisecondsPerCall(60);
    system.pump.AtCall(12, [&] { items.Clear(&list); });
    system.pump.RunUntilIdle();
    EXPECT_EQ(items.Count(), 0U);
    EXPECT_EQ(list.Count(), 0U);
    for (const auto& item : all) {
        EXPECT_TRUE(item.expired());
    }
    ExpectNothingLeftOpen();
}

TEST_F(ReentrancyTest, TheCollectionIsDestroyedWhileItsItemsWork) {
    auto items = std::make_unique<TidemarkItemCollection>(system.Parts());
    for (const char* path : {"C:\\top", "C:\\other"}) {
        items->Add(path, nullptr, nullptr)->Count();
    }
    system.pump.SetMillisecondsPerCall(60);
    system.pump.AtCall(7, [&] { items.reset(); });
    system.pump.RunUntilIdle();
    EXPECT_EQ(items, nullptr);
    ExpectNothingLeftOpen();
}

TEST_F(ReentrancyTest, AStampStartedAgainFromInsideItselfRecordsEachErrorOnce) {
    system.volume.Lock("C:\\top\\a.txt");
    system.volume.Lock("C:\\top\\sub\\deep\\c.txt");
    for (const std::uint64_t milliseconds : {0U, 13U, 60U}) {
        system.pump.SetMillisecondsPerCall(milliseconds);
        for (std::size_t call = 1; call < 40; ++call) {
            const auto item = NewItem("C:\\top");
            item->Stamp(1.0, 0, false, false);
            bool again = false;
            system.pump.AtCall(call, [&] {
                again = true;
                Stamp(*item);
            });
            RunOut();
            SCOPED_TRACE("pump call " + std::to_string(call));
            EXPECT_TRUE(item->StampComplete());
            EXPECT_EQ(item->StampedFileCount(), 3);
            EXPECT_EQ(item->StampedFolderCount(), 2);
            EXPECT_EQ(item->StampErrors()->size(), 2U);
            EXPECT_EQ(IsStamped("C:\\top\\sub\\b.txt"), again);
        }
    }
    ExpectNothingLeftOpen();
}

TEST_F(ReentrancyTest, CancelledAndStartedAgainTheNewStampDoesItAll) {
    for (std::size_t call = 2; call < 25; ++call) {
        const auto item = NewItem("C:\\top");
        item->Stamp(1.0, 0, false, false);
        system.pump.AtCall(call, [&] {
            item->CancelStamp();
            Stamp(*item);
        });
        RunOut();
        EXPECT_TRUE(item->StampComplete() && !item->StampCancelled());
        EXPECT_EQ(item->StampedFileCount(), 3) << "pump call " << call;
        EXPECT_TRUE(IsStamped("C:\\top\\sub\\deep\\c.txt"));
    }
}

TEST_F(ReentrancyTest, ARecountDuringAStampLetsTheStampFinish) {
    const auto item = NewItem("C:\\top");
    Stamp(*item);
    system.pump.AtCall(6, [&] { item->Count(); });
    system.pump.RunUntilIdle();
    EXPECT_EQ(item->CountString(), "3 files; 3 folders");
    EXPECT_TRUE(item->StampComplete());
    EXPECT_TRUE(IsStamped("C:\\top\\sub\\deep\\c.txt"));
    ExpectNothingLeftOpen();
}

TEST_F(ReentrancyTest, AStampHiddenByARecountCanStillBeCancelled) {
    const auto item = NewItem("C:\\top");
    Stamp(*item);
    system.pump.AtCall(3, [&] {
        item->Count();
        item->CancelStamp();
    });
    system.pump.RunUntilIdle();
    EXPECT_FALSE(IsStamped("C:\\top\\sub\\b.txt"));
    EXPECT_FALSE(item->StampComplete());
    EXPECT_TRUE(item->CountComplete());
}

TEST_F(ReentrancyTest, AStampRunsNestedInTheCountItWaitedBehind) {
    const auto item = NewItem("C:\\top");
    item->Count();
    Stamp(*item);
    system.pump.SetMillisecondsPerCall(10);
    system.pump.RunUntilIdle();
    EXPECT_TRUE(item->CountComplete() && item->StampComplete());
    EXPECT_EQ(item->CountString(), "3 files; 3 folders");
    EXPECT_EQ(item->StampedFileCount() + item->StampedFolderCount() + 1,
              item->FileCount() + item->FolderCount());
    ExpectNothingLeftOpen();
}

TEST_F(ReentrancyTest, AQuitThatClearsTheListEntersNoOtherFolder) {
    TidemarkItemCollection items(system.Parts());
    items.Add("C:\\top", nullptr, nullptr)->Count();
    system.pump.AtCall(4, [&] {
        system.pump.Quit();
        items.Clear(nullptr);
    });
    system.pump.RunUntilIdle();
    ExpectNothingLeftOpen();
    EXPECT_LT(system.files.CallCount(KernelCall::kSearchFirst), 2U);
}

TEST_F(ReentrancyTest, AnOverflowInANestedTickEndsThatItemOnly) {
    const auto outer = NewItem("C:\\top");
    const auto inner = NewItem("C:\\other");
    outer->Count();
    system.pump.RunFor(10);
    inner->Count();
    TidemarkItemTestPeer::SetFileCount(*inner, 0x7FFFFFFF);
    system.pump.SetMillisecondsPerCall(20);
    system.pump.RunUntilIdle();
    EXPECT_EQ(system.pump.Failures().size(), 1U);
    EXPECT_EQ(outer->CountString(), "3 files; 3 folders");
    EXPECT_FALSE(inner->CountInProgress() || inner->CountComplete());
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
}

TEST_F(ReentrancyTest, FiveThousandFoldersAtOnceNestWithinTheBound) {
    constexpr int kFolders = 5000;
    TidemarkItemCollection items(system.Parts());
    system.files.SetRecording(false);
    for (int i = 0; i < kFolders; ++i) {
        const std::string folder = "C:\\many\\f" + std::to_string(i);
        system.volume.AddFile(folder + "\\a.txt");
        items.Add(folder, nullptr, nullptr)->Count();
    }
    system.pump.SetMillisecondsPerCall(60);
    system.pump.RunUntilIdle();
    EXPECT_EQ(items.CountedItems(), 2 * kFolders);
    EXPECT_EQ(system.pump.DeepestNesting(), TimerQueue::kMaxLongDepth);
    EXPECT_FALSE(items.Busy());
    ExpectNothingLeftOpen();
}

}  // namespace
}  // namespace tidemark
