#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "engine/tidemark_item_collection.h"
#include "lists/list_model.h"
#include "platform/memory/memory_system.h"
#include "support/size_from_environment.h"

namespace tidemark {
namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;

// One run of random commands at random pump points, on a few items that share folders. Commands
// also come between ticks, and ticks of other items come at every pump point once they are due.
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
        // Names that no path can hold: joined to their folder's path they lead out of the tree.
        system_.volume.AddFile("C:\\victim.txt");
        system_.volume.AddFile("C:\\outside\\victim.txt");
        system_.volume.AddFile("C:\\s\\d\\misnamed");
        system_.volume.ListAs("C:\\s\\d\\misnamed", "..\\..\\victim.txt");
        system_.volume.AddFile("C:\\s\\g\\misnamed\\inside");
        system_.volume.ListAs("C:\\s\\g\\misnamed", "x/../../../outside");
        system_.volume.AddFolderLink("C:\\s\\g\\to the drive", "C:");
        // Its handle stays open, so that it cannot even be opened from the second stamp on.
        system_.files.Fail({KernelCall::kSetLastWriteTime, "C:\\s\\g\\", 0}, 1117);
        system_.files.SetRecording(false);
        system_.pump.SetMillisecondsPerCall(Pick(3) * 17);
        // In some runs a command arrives at every single pump point, in others hardly any.
        constexpr std::uint32_t kRarities[] = {1, 2, 6, 20};
        const std::uint32_t rarity = kRarities[Pick(4)];
        system_.pump.AtEveryCall([this, rarity] {
            if (commands_left_ > 0 && Pick(rarity) == 0) {
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

    // What was done, to make a test of a seed that failed.
    [[nodiscard]] const std::string& Story() const { return story_; }

  private:
    struct Total {
        const char* path;
        std::int32_t files;
        std::int32_t folders;
        std::vector<std::string> failing;
    };
    static const std::vector<Total>& Totals() {
        static const std::vector<Total> kTotals = {
            {"C:\\s\\",
             6,
             6,
             {"C:\\s\\d\\b.txt", "C:\\s\\d\\..∖..∖victim.txt", "C:\\s\\g\\",
              "C:\\s\\g\\x∕..∕..∕..∕outside\\", "C:\\s\\z.txt"}},
            {"C:\\s\\d\\", 3, 2, {"C:\\s\\d\\b.txt", "C:\\s\\d\\..∖..∖victim.txt"}},
            {"C:\\s\\d\\e\\", 1, 1, {}},
            {"C:\\s\\g\\", 1, 3, {"C:\\s\\g\\", "C:\\s\\g\\x∕..∕..∕..∕outside\\"}},
            {"C:\\s\\z.txt", 1, 0, {"C:\\s\\z.txt"}},
            {"C:\\s\\d\\b.txt", 1, 0, {"C:\\s\\d\\b.txt"}}};
        return kTotals;
    }

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

    void Tell(const char* command, const TidemarkItem* item) {
        story_ += "\n  at pump call " + std::to_string(system_.pump.CallCount()) + ": " + command;
        if (item != nullptr) {
            story_ += " " + item->RootItem();
        }
    }

    void Command() {
        const auto item = SomeItem();
        if (item == nullptr || Pick(4) == 0) {
            const auto added = items_->Add(Totals()[Pick(6)].path, &list_, nullptr);
            Tell("add", added.get());
            if (!added->CountInProgress() && !added->CountComplete()) {
                Count(*added);
            }
            return;
        }
        switch (Pick(14)) {
            case 0:
                Tell("remove", item.get());
                items_->Remove(item->RootItem(), &list_);
                break;
            case 1:
                if (Pick(4) == 0) {
                    Tell("clear", nullptr);
                    items_->Clear(&list_);
                }
                break;
            case 2:
                Tell("cancel the count", item.get());
                item->CancelCount();
                break;
            case 3:
            case 4:
                Tell("cancel the stamp", item.get());
                item->CancelStamp();
                break;
            case 5:
                Tell("count all", nullptr);
                for (const auto& each : *items_) {
                    Count(*each);
                }
                break;
            case 6:
                Tell("count", item.get());
                Count(*item);
                break;
            case 7:
                Tell("assign no path", item.get());
                item->SetRootItem(Pick(2) == 0 ? "" : "C:\\none");
                break;
            case 8:
                if (Pick(6) == 0) {
                    Tell("a new list", nullptr);
                    items_ = std::make_unique<TidemarkItemCollection>(system_.Parts());
                    list_.Clear();
                }
                break;
            case 9:
                Poll();
                break;
            case 10:
                if (Pick(10) == 0) {
                    Close();
                }
                break;
            case 11:
                for (const auto& each : *items_) {
                    Stamp(each);
                }
                break;
            default:
                Stamp(item);
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

    void Stamp(const std::shared_ptr<TidemarkItem>& item) {
        Tell("stamp", item.get());
        const double created = Pick(2);
        const bool remove_read_only = Pick(2) == 0;
        item->Stamp(44257.0, created, remove_read_only, /*SyncFolderCreatedDate=*/Pick(2) == 0);
        disturbed_.erase(item.get());
        kept_.insert(item);
    }

    // What the window asks for all the time.
    void Poll() {
        std::int32_t counted = 0;
        std::int32_t stamped = 0;
        std::size_t errors = 0;
        bool busy = false;
        for (const auto& item : *items_) {
            EXPECT_FALSE(item->CountString().empty() || item->StatusString().empty());
            counted += item->FileCount() + item->FolderCount();
            stamped += item->StampedFileCount() + item->StampedFolderCount();
            errors += item->StampErrors()->size();
            busy = busy || item->CountInProgress() || item->StampInProgress();
        }
        EXPECT_EQ(items_->CountedItems(), counted);
        EXPECT_EQ(items_->StampedItems(), stamped);
        EXPECT_EQ(items_->ErrorList().size(), errors);
        EXPECT_EQ(items_->ErrorsExist(), errors > 0);
        EXPECT_EQ(items_->Busy(), busy);
        EXPECT_EQ(list_.Count(), items_->Count());
    }

    // As the window does it: no more work, and no more messages in the work that is on the stack.
    void Close() {
        Tell("close", nullptr);
        items_->Clear(&list_);
        system_.pump.Quit();
        commands_left_ = 0;
    }

    void Check() {
        EXPECT_THAT(system_.pump.Failures(), IsEmpty());
        EXPECT_EQ(system_.volume.OpenSearchCount(), 0U);
        EXPECT_LE(system_.volume.OpenFileCount(), 1U);
        for (const char* outside : {"C:\\victim.txt", "C:\\outside", "C:\\outside\\victim.txt",
                                    "C:\\s\\g\\misnamed\\inside"}) {
            EXPECT_EQ(system_.volume.TimesOf(outside).written, kMemoryBuildTime) << outside;
        }
        EXPECT_FALSE(items_->Busy());
        EXPECT_EQ(system_.pump.Timers().NextDue(), std::nullopt);
        Poll();
        for (const auto& item : *items_) {
            const auto total =
                std::find_if(Totals().begin(), Totals().end(),
                             [&](const Total& each) { return each.path == item->RootItem(); });
            ASSERT_NE(total, Totals().end());
            SCOPED_TRACE(item->RootItem());
            if (item->CountComplete()) {
                EXPECT_EQ(item->FileCount(), total->files);
                EXPECT_EQ(item->FolderCount(), total->folders);
            }
            if (item->StampComplete() && !disturbed_.contains(item.get())) {
                EXPECT_EQ(item->StampedFileCount(), total->files);
                EXPECT_EQ(item->StampedFolderCount(), std::max(total->folders - 1, 0));
                std::vector<std::string> failed;
                for (const auto& error : *item->StampErrors()) {
                    failed.push_back(error->ItemName);
                }
                EXPECT_THAT(failed, ElementsAreArray(total->failing));
            }
        }
    }

    std::mt19937 random_;
    MemorySystem system_;
    ListModel list_{system_.locale};
    int commands_left_ = 30;
    std::string story_;
    std::set<const TidemarkItem*> disturbed_;
    std::set<std::shared_ptr<TidemarkItem>> kept_;  // so that no address is used twice
    std::unique_ptr<TidemarkItemCollection> items_ =
        std::make_unique<TidemarkItemCollection>(system_.Parts());
};

void RunSeed(std::uint32_t seed) {
    Storm storm(seed);
    storm.Run();
    if (testing::Test::HasFailure()) {
        ADD_FAILURE() << "seed " << seed << ":" << storm.Story();
    }
}

// TIDEMARK_STORM_SEEDS sets how many seeds are run; TIDEMARK_STORM_FIRST with which to begin.
TEST(ReentrancyStorm, RandomCommandsAtRandomPumpPointsLeaveEverythingConsistent) {
    const int first = SizeFromEnvironment("TIDEMARK_STORM_FIRST", 1);
    const int seeds = SizeFromEnvironment("TIDEMARK_STORM_SEEDS", 1000);
    for (int seed = first; seed < first + seeds && !testing::Test::HasFailure(); ++seed) {
        RunSeed(static_cast<std::uint32_t>(seed));
    }
}

}  // namespace
}  // namespace tidemark
