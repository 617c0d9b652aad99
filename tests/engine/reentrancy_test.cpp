#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <set>
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

    // Runs the action at every pump call of a count and a stamp of "C:\top", one run for each.
    template <typename Action>
    void AtEveryPumpPoint(Action action) {
        for (std::size_t call = 1; call < 60; ++call) {
            TidemarkItemCollection items(system.View());
            const std::weak_ptr<TidemarkItem> item = items.Add("C:\\top", nullptr, nullptr);
            item.lock()->Count();
            Stamp(*item.lock());
            system.pump.AtCall(call, [&] { action(items); });
            RunOut();
            SCOPED_TRACE("pump call " + std::to_string(call));
            ExpectNothingLeftOpen();
            if (HasFailure()) {
                return;
            }
        }
    }

    ListModel list{system.locale};
};

TEST_F(ReentrancyTest, AnItemRemovedWhileItsOwnCountIsOnTheStackEndsItSafely) {
    AtEveryPumpPoint([](TidemarkItemCollection& items) { items.Remove("C:\\top\\", nullptr); });
}

TEST_F(ReentrancyTest, AnItemNobodyOwnsAnyMoreLivesUntilItsWorkIsOffTheStack) {
    TidemarkItemCollection items(system.View());
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
    TidemarkItemCollection items(system.View());
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
    auto items = std::make_unique<TidemarkItemCollection>(system.View());
    for (const char* path : {"C:\\top", "C:\\other"}) {
        items->Add(path, nullptr, nullptr)->Count();
    }
    system.pump.SetMillisecondsPerCall(60);
    system.pump.AtCall(7, [&] { items.reset(); });
    system.pump.RunUntilIdle();
    EXPECT_EQ(items, nullptr);
    ExpectNothingLeftOpen();
}

TEST_F(ReentrancyTest, ACountStartedAgainFromInsideItselfCountsEverythingOnce) {
    for (std::size_t call = 1; call < 40; ++call) {
        const auto item = NewItem("C:\\top");
        item->Count();
        system.pump.AtCall(call, [&] { item->Count(); });
        RunOut();
        EXPECT_TRUE(item->CountComplete());
        EXPECT_EQ(item->CountString(), "3 files; 3 folders") << "pump call " << call;
    }
    // And with the new count's tick nested into the old count.
    for (std::size_t call = 1; call < 40; ++call) {
        system.pump.SetMillisecondsPerCall(13);
        const auto item = NewItem("C:\\top");
        item->Count();
        system.pump.AtCall(call, [&] { item->Count(); });
        RunOut();
        EXPECT_EQ(item->CountString(), "3 files; 3 folders") << "pump call " << call;
    }
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

TEST_F(ReentrancyTest, AnotherPathEndsTheWorkOnTheOldOne) {
    AtEveryPumpPoint([](TidemarkItemCollection& items) {
        const auto item = items.Item("C:\\top\\");
        item->SetRootItem("C:\\other");
        EXPECT_EQ(item->FileCount() + item->FolderCount(), 0);
    });
    const auto item = NewItem("C:\\top");
    item->Count();
    system.pump.AtCall(6, [&] { item->SetRootItem("C:\\other"); });
    system.pump.RunUntilIdle();
    EXPECT_EQ(item->CountString(), "not counted");
    EXPECT_EQ(item->FileCount(), 0);
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

TEST_F(ReentrancyTest, AfterAQuitMessageTheWorkRunsOutWithoutPumping) {
    TidemarkItemCollection items(system.View());
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
    TidemarkItemCollection items(system.View());
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

// One run of random commands at random pump points, on a few items that share folders.
class Storm {
  public:
    explicit Storm(std::uint32_t seed) : random_(seed) {
        for (const char* path : {"C:\\s\\a.txt", "C:\\s\\d\\b.txt", "C:\\s\\d\\e\\c.txt",
                                 "C:\\s\\g\\h.txt", "C:\\s\\z.txt"}) {
            system_.volume.AddFile(path);
        }
        for (const char* path : {"C:\\s\\d\\b.txt", "C:\\s\\z.txt"}) {
            system_.volume.Lock(path);
        }
        system_.files.SetRecording(false);
        system_.pump.SetMillisecondsPerCall(Pick(3) * 17);
        system_.pump.AtEveryCall([this] {
            if (commands_left_ > 0 && Pick(6) == 0) {
                --commands_left_;
                Command();
            }
        });
    }

    void Run() {
        while (commands_left_ > 0) {
            --commands_left_;
            Command();
            system_.pump.RunFor(Pick(120));
        }
        system_.pump.RunUntilIdle();
        Check();
    }

  private:
    struct Total {
        const char* path;
        std::int32_t files;
        std::int32_t folders;
        std::size_t locked;
    };
    static constexpr Total kTotals[] = {{"C:\\s\\", 5, 4, 2},       {"C:\\s\\d\\", 2, 2, 1},
                                        {"C:\\s\\d\\e\\", 1, 1, 0}, {"C:\\s\\g\\", 1, 1, 0},
                                        {"C:\\s\\z.txt", 1, 0, 1},  {"C:\\s\\d\\b.txt", 1, 0, 1}};

    std::uint32_t Pick(std::uint32_t choices) {
        return static_cast<std::uint32_t>(random_() % choices);
    }

    std::shared_ptr<TidemarkItem> SomeItem() {
        const auto count = static_cast<std::uint32_t>(items_->Count());
        if (count == 0) {
            return nullptr;
        }
        auto at = items_->begin();
        for (std::uint32_t left = Pick(count); left > 0; --left) {
            ++at;
        }
        return *at;
    }

    void Command() {
        const auto item = SomeItem();
        if (item == nullptr || Pick(4) == 0) {
            const auto added = items_->Add(kTotals[Pick(6)].path, &list_, nullptr);
            if (!added->CountInProgress() && !added->CountComplete()) {
                Count(*added);
            }
            return;
        }
        switch (Pick(12)) {
            case 0:
                items_->Remove(item->RootItem(), &list_);
                break;
            case 1:
                if (Pick(4) == 0) {
                    items_->Clear(&list_);
                }
                break;
            case 2:
                item->CancelCount();
                break;
            case 3:
            case 4:
                item->CancelStamp();
                break;
            case 5:
                for (const auto& each : *items_) {
                    Count(*each);
                }
                break;
            case 6:
                Count(*item);
                break;
            case 7:
                item->SetRootItem(kTotals[Pick(4)].path == item->RootItem() ? "" : "C:\\none");
                break;
            case 8:
                if (Pick(6) == 0) {
                    items_ = std::make_unique<TidemarkItemCollection>(system_.View());
                    list_.Clear();
                }
                break;
            case 9:
                static_cast<void>(items_->ErrorList());
                static_cast<void>(items_->CountedItems() + items_->StampedItems());
                break;
            default:
                item->Stamp(44257.0, Pick(2), Pick(2) == 0, Pick(2) == 0);
                disturbed_.erase(item.get());
                kept_.insert(item);
                break;
        }
    }

    // A count resets the counters of a stamp that it does not end.
    void Count(TidemarkItem& item) {
        if (item.StampInProgress()) {
            disturbed_.insert(&item);
        }
        item.Count();
    }

    void Check() {
        EXPECT_THAT(system_.pump.Failures(), IsEmpty());
        EXPECT_EQ(system_.volume.OpenSearchCount(), 0U);
        EXPECT_EQ(system_.volume.OpenFileCount(), 0U);
        EXPECT_FALSE(items_->Busy());
        EXPECT_EQ(system_.pump.Timers().NextDue(), std::nullopt);
        EXPECT_EQ(list_.Count(), items_->Count());
        for (const auto& item : *items_) {
            const auto total =
                std::find_if(std::begin(kTotals), std::end(kTotals),
                             [&](const Total& each) { return each.path == item->RootItem(); });
            ASSERT_NE(total, std::end(kTotals));
            if (item->CountComplete()) {
                EXPECT_EQ(item->FileCount(), total->files) << item->RootItem();
                EXPECT_EQ(item->FolderCount(), total->folders) << item->RootItem();
            }
            if (item->StampComplete() && !disturbed_.contains(item.get())) {
                EXPECT_EQ(item->StampedFileCount(), total->files) << item->RootItem();
                EXPECT_EQ(item->StampedFolderCount(), std::max(total->folders - 1, 0))
                    << item->RootItem();
                EXPECT_EQ(item->StampErrors()->size(), total->locked) << item->RootItem();
            }
        }
    }

    std::mt19937 random_;
    MemorySystem system_;
    ListModel list_{system_.locale};
    int commands_left_ = 30;
    std::set<const TidemarkItem*> disturbed_;
    std::set<std::shared_ptr<TidemarkItem>> kept_;  // so that no address is used twice
    std::unique_ptr<TidemarkItemCollection> items_ =
        std::make_unique<TidemarkItemCollection>(system_.View());
};

// TIDEMARK_STORM_SEEDS sets how many seeds are run; TIDEMARK_STORM_FIRST with which to begin.
TEST(ReentrancyStorm, RandomCommandsAtRandomPumpPointsLeaveEverythingConsistent) {
    const auto number = [](const char* name, std::uint32_t otherwise) {
        const char* text = std::getenv(name);
        return text != nullptr ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10))
                               : otherwise;
    };
    const std::uint32_t first = number("TIDEMARK_STORM_FIRST", 1);
    const std::uint32_t seeds = number("TIDEMARK_STORM_SEEDS", 1000);
    for (std::uint32_t seed = first; seed < first + seeds; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Storm(seed).Run();
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

}  // namespace
}  // namespace tidemark
