#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "engine/engine_fixture.h"

namespace tidemark {
namespace {

// Where a cancel is noticed: on entry to each folder, and nowhere else. Tried at every single pump
// point of a walk.
class CancellationTest : public testing::Test {
  protected:
    struct Entry {
        std::string path;
        std::string folder;  // that lists it
    };

    static void Build(MemorySystem& system) {
        for (const char* path : {"C:\\t\\a", "C:\\t\\d\\b", "C:\\t\\d\\e\\c", "C:\\t\\d\\e\\g\\h",
                                 "C:\\t\\d\\i", "C:\\t\\k\\l", "C:\\t\\m"}) {
            system.volume.AddFile(path);
        }
    }
    static const std::vector<Entry>& Entries() {
        static const std::vector<Entry> kEntries = {
            {"C:\\t\\a", "C:\\t\\"},
            {"C:\\t\\d\\", "C:\\t\\"},
            {"C:\\t\\d\\b", "C:\\t\\d\\"},
            {"C:\\t\\d\\e\\", "C:\\t\\d\\"},
            {"C:\\t\\d\\e\\c", "C:\\t\\d\\e\\"},
            {"C:\\t\\d\\e\\g\\", "C:\\t\\d\\e\\"},
            {"C:\\t\\d\\e\\g\\h", "C:\\t\\d\\e\\g\\"},
            {"C:\\t\\d\\i", "C:\\t\\d\\"},
            {"C:\\t\\k\\", "C:\\t\\"},
            {"C:\\t\\k\\l", "C:\\t\\k\\"},
            {"C:\\t\\m", "C:\\t\\"},
        };
        return kEntries;
    }
    // The folders that were entered so far.
    static std::set<std::string> Entered(const MemorySystem& system) {
        std::set<std::string> folders;
        for (const KernelCallRecord& call : system.files.Calls()) {
            if (call.call == KernelCall::kSearchFirst) {
                folders.insert(call.path.substr(0, call.path.size() - 3));
            }
        }
        return folders;
    }
    static bool IsStamped(const MemorySystem& system, const std::string& path) {
        return system.volume.TimesOf(path).written == SystemTime(2021, 3, 2, 13, 45);
    }
    const double date_ = DayNumber(2021, 3, 2, 13, 45);

    // Files and folders listed by these folders.
    static std::pair<int, int> ListedBy(const std::set<std::string>& folders) {
        std::pair<int, int> listed;
        for (const Entry& entry : Entries()) {
            if (folders.contains(entry.folder)) {
                ++(entry.path.back() == '\\' ? listed.second : listed.first);
            }
        }
        return listed;
    }
};

TEST_F(CancellationTest, ACancelledStampFinishesEveryFolderItIsInAndEntersNoOther) {
    int cancelled = 0;
    for (std::size_t call = 1;; ++call) {
        MemorySystem system;
        Build(system);
        const auto item = TidemarkItem::Create(system.Parts());
        item->SetRootItem("C:\\t");
        item->Stamp(date_, 0, false, false);
        std::set<std::string> entered;
        bool running = false;
        bool arrived = false;
        system.pump.AtCall(call, [&] {
            arrived = true;
            entered = Entered(system);
            item->CancelStamp();
            running = item->StampCancelled();
            EXPECT_EQ(item->StatusString(), "Ready");
        });
        system.pump.RunUntilIdle();
        if (!arrived) {
            break;
        }
        SCOPED_TRACE("at pump call " + std::to_string(call));
        EXPECT_EQ(Entered(system), entered);
        for (const Entry& entry : Entries()) {
            EXPECT_EQ(IsStamped(system, entry.path), entered.contains(entry.folder)) << entry.path;
        }
        EXPECT_TRUE(IsStamped(system, "C:\\t"));
        const auto [files, folders] = ListedBy(entered);
        EXPECT_EQ(item->StampedFileCount(), files);
        EXPECT_EQ(item->StampedFolderCount(), folders);
        // The first point is in the tick, before the walk: the stamp is only pending there.
        EXPECT_EQ(running, call > 1);
        EXPECT_EQ(item->StampCancelled(), running);
        EXPECT_FALSE(item->StampComplete() || item->StampInProgress());
        EXPECT_EQ(item->StatusString(), "Ready");
        EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
        ++cancelled;
    }
    EXPECT_GT(cancelled, 40);
}

TEST_F(CancellationTest, ACancelledCountFinishesEveryFolderItIsInAndEntersNoOther) {
    int cancelled = 0;
    for (std::size_t call = 1;; ++call) {
        MemorySystem system;
        Build(system);
        const auto item = TidemarkItem::Create(system.Parts());
        item->SetRootItem("C:\\t");
        item->Count();
        std::set<std::string> entered;
        bool arrived = false;
        system.pump.AtCall(call, [&] {
            arrived = true;
            entered = Entered(system);
            item->CancelCount();
        });
        system.pump.RunUntilIdle();
        if (!arrived) {
            break;
        }
        SCOPED_TRACE("at pump call " + std::to_string(call));
        EXPECT_EQ(Entered(system), entered);
        const auto [files, folders] = ListedBy(entered);
        EXPECT_EQ(item->FileCount(), files);
        EXPECT_EQ(item->FolderCount(), folders + 1);
        EXPECT_EQ(item->CountCancelled(), call > 1);
        EXPECT_FALSE(item->CountComplete() || item->CountInProgress());
        EXPECT_EQ(item->CountString(), "not counted");
        EXPECT_EQ(item->StatusString(), "Ready");
        EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
        ++cancelled;
    }
    EXPECT_GT(cancelled, 40);
}

// The errors that a cancelled stamp has met stay with it.
TEST_F(CancellationTest, ACancelledStampKeepsErrorsFromBeforeAndAfterTheCancel) {
    MemorySystem system;
    Build(system);
    system.volume.Lock("C:\\t\\a");
    system.volume.Lock("C:\\t\\m");
    const auto item = TidemarkItem::Create(system.Parts());
    item->SetRootItem("C:\\t");
    item->Stamp(date_, 0, false, false);
    std::size_t before = 0;
    system.pump.AtCall(8, [&] {
        before = item->StampErrors()->size();
        item->CancelStamp();
    });
    system.pump.RunUntilIdle();
    EXPECT_EQ(before, 1U);
    EXPECT_EQ(item->StatusString(), "Ready (with errors)");
    ASSERT_EQ(item->StampErrors()->size(), 2U);
    EXPECT_EQ(item->StampErrors()->front()->ItemName, "C:\\t\\a");
    EXPECT_EQ(item->StampErrors()->back()->ItemName, "C:\\t\\m");
}

}  // namespace
}  // namespace tidemark
