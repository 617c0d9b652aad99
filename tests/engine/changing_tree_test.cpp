#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "engine/engine_fixture.h"
#include "engine/tidemark_item_collection.h"
#include "lists/list_model.h"

namespace tidemark {
namespace {

// Something that happens to a tree while it is walked. What it happens to is "C:\t\m\..." and
// "C:\t\n"; everything else stays as it is.
struct Change {
    const char* name;
    std::function<void(MemorySystem&)> happen;
    // Failures that it may bring, besides none.
    std::set<std::int32_t> codes;
    // What happens a few pump points later, if anything.
    std::function<void(MemorySystem&)> afterwards;
    // What is new to the walk, and stamped when it has not come that far yet.
    std::vector<std::string> stamped = {};
};
std::ostream& operator<<(std::ostream& out, const Change& change) {
    return out << change.name;
}

// Codes of an entry that is gone: the file, or a folder on the way; and, when its attributes were
// to be cleared, of their unknown value being written back.
const std::set<std::int32_t> kGone = {2, 3};

class ChangingTreeTest : public testing::TestWithParam<Change> {
  protected:
    static void Build(MemorySystem& system) {
        for (const char* path : {"C:\\t\\a\\x", "C:\\t\\a\\y", "C:\\t\\b", "C:\\t\\m\\p",
                                 "C:\\t\\m\\q\\r", "C:\\t\\n", "C:\\t\\y", "C:\\t\\z\\w"}) {
            system.volume.AddFile(path);
        }
        system.files.SetRecording(false);
    }
    static void ExpectStamped(const MemorySystem& system, const std::vector<std::string>& paths) {
        for (const std::string& path : paths) {
            EXPECT_EQ(system.volume.TimesOf(path).written, SystemTime(2021, 3, 2, 13, 45)) << path;
        }
    }
    static void ExpectSteadyStamped(const MemorySystem& system) {
        ExpectStamped(system, {"C:\\t", "C:\\t\\a", "C:\\t\\a\\x", "C:\\t\\a\\y", "C:\\t\\b",
                               "C:\\t\\y", "C:\\t\\z", "C:\\t\\z\\w"});
    }
    // Up to this pump call the walk has come to no more than the beginning of "C:\t\a".
    static constexpr std::size_t kInFolderA = 10;
    static bool IsChanged(const std::string& path) {
        return path.starts_with("C:\\t\\m") || path.starts_with("C:\\t\\n");
    }
};

TEST_P(ChangingTreeTest, StopsNothingAndIsListedOnceWhereItFails) {
    const Change& change = GetParam();
    std::set<std::int32_t> met;
    for (const bool remove_read_only : {false, true}) {
        for (std::size_t call = 1;; ++call) {
            MemorySystem system;
            Build(system);
            const auto item = TidemarkItem::Create(system.Parts());
            item->SetRootItem("C:\\t");
            item->Stamp(DayNumber(2021, 3, 2, 13, 45), 0, remove_read_only, false);
            bool arrived = false;
            system.pump.AtCall(call, [&] {
                arrived = true;
                change.happen(system);
            });
            if (change.afterwards) {
                system.pump.AtCall(call + 5, [&] { change.afterwards(system); });
            }
            system.pump.RunUntilIdle();
            if (!arrived) {
                break;
            }
            SCOPED_TRACE("at pump call " + std::to_string(call));
            EXPECT_TRUE(item->StampComplete());
            ExpectSteadyStamped(system);
            if (call <= kInFolderA) {
                ExpectStamped(system, change.stamped);
            }
            std::set<std::string> failed;
            for (const auto& error : *item->StampErrors()) {
                EXPECT_TRUE(IsChanged(error->ItemName)) << error->ItemName;
                EXPECT_TRUE(failed.insert(error->ItemName).second) << error->ItemName;
                EXPECT_TRUE(change.codes.contains(error->ErrorNumber)) << error->ErrorNumber;
                met.insert(error->ErrorNumber);
                EXPECT_FALSE(error->ErrorDescription.empty());
            }
            EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
            EXPECT_EQ(system.volume.OpenFileCount(), 0U);
            if (HasFailure()) {
                return;
            }
        }
    }
    // What can bring failures did so at one moment or another.
    EXPECT_EQ(met.empty(), change.codes.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Changes, ChangingTreeTest,
    testing::Values(
        Change{"AFileVanishes", [](MemorySystem& s) { s.volume.Remove("C:\\t\\n"); }, kGone, {}},
        Change{"AFolderVanishes", [](MemorySystem& s) { s.volume.Remove("C:\\t\\m"); }, kGone, {}},
        Change{"EntriesAppear",
               [](MemorySystem& s) {
                   s.volume.AddFile("C:\\t\\m\\new");
                   s.volume.AddFile("C:\\t\\m\\q\\z\\new");
                   s.volume.AddFolder("C:\\t\\nn");
               },
               {},
               {},
               {"C:\\t\\m\\new", "C:\\t\\m\\q\\z\\new", "C:\\t\\nn"}},
        Change{"AFileBecomesAFolder",
               [](MemorySystem& s) {
                   s.volume.Remove("C:\\t\\n");
                   s.volume.AddFile("C:\\t\\n\\inside");
               },
               {},
               {},
               {"C:\\t\\n\\inside"}},
        Change{"AFolderBecomesAFile",
               [](MemorySystem& s) {
                   s.volume.Remove("C:\\t\\m");
                   s.volume.AddFile("C:\\t\\m");
               },
               {2, 3, 123},
               {},
               {"C:\\t\\m"}},
        Change{"EntriesBecomeReadOnly",
               [](MemorySystem& s) {
                   s.volume.WriteAttributes("C:\\t\\n", file_attribute::kReadOnly);
                   s.volume.WriteAttributes("C:\\t\\m\\p", file_attribute::kReadOnly);
               },
               {5},
               {}},
        Change{"AFileIsLockedAndReleased",
               [](MemorySystem& s) { s.volume.Lock("C:\\t\\n"); },
               {32},
               [](MemorySystem& s) { s.volume.Unlock("C:\\t\\n"); }},
        Change{"AFolderIsRenamed",
               [](MemorySystem& s) { s.volume.Move("C:\\t\\m", "C:\\t\\mm"); },
               kGone,
               {},
               {"C:\\t\\mm\\p", "C:\\t\\mm\\q\\r"}},
        Change{"AFolderIsRenamedAndBack",
               [](MemorySystem& s) { s.volume.Move("C:\\t\\m", "C:\\t\\mm"); }, kGone,
               [](MemorySystem& s) { s.volume.Move("C:\\t\\mm", "C:\\t\\m"); }}),
    testing::PrintToStringParamName());

class ChangingVolumeTest : public EngineTest {
  protected:
    static constexpr int kFiles = 10;
    void SetUp() override {
        for (int i = 0; i < kFiles; ++i) {
            system.volume.AddFile("C:\\t\\" + std::to_string(i));
        }
    }
};

TEST_F(ChangingVolumeTest, WhenTheVolumeFillsEveryLaterEntryIsTriedAndListed) {
    const auto item = NewItem("C:\\t");
    Stamp(*item);
    system.files.Before({KernelCall::kOpenForTimes, "C:\\t\\4", 0}, [&] {
        system.files.Fail({KernelCall::kSetLastWriteTime, {}, 0}, 112);
    });
    system.pump.RunUntilIdle();
    EXPECT_EQ(item->StampedFileCount(), kFiles);
    ASSERT_EQ(item->StampErrors()->size(), 6U);
    for (int i = 4; i < kFiles; ++i) {
        const StampError& error = *(*item->StampErrors())[static_cast<std::size_t>(i - 4)];
        EXPECT_EQ(error.ItemName, "C:\\t\\" + std::to_string(i));
        EXPECT_EQ(error.ErrorNumber, 112);
        EXPECT_EQ(error.ErrorDescription, "There is not enough space on the disk.");
    }
    EXPECT_EQ(system.volume.OpenFileCount(), 6U);
}

TEST_F(ChangingVolumeTest, WhenTheWholeTreeGoesTheWalkEnds) {
    std::size_t failed = 0;
    for (std::size_t call = 1; call < 20; ++call) {
        system.volume.AddFolder("C:\\t");
        SetUp();
        const auto item = NewItem("C:\\t");
        Stamp(*item);
        bool arrived = false;
        system.pump.AtCall(call, [&] {
            arrived = true;
            system.volume.Remove("C:\\t");
        });
        system.pump.RunUntilIdle();
        ASSERT_TRUE(arrived) << call;
        EXPECT_TRUE(item->StampComplete());
        EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
        for (const auto& error : *item->StampErrors()) {
            EXPECT_TRUE(kGone.contains(error->ErrorNumber)) << error->ErrorNumber;
        }
        failed += item->StampErrors()->size();
        item->Count();
        EXPECT_EQ(item->CountString(), "not counted");
    }
    EXPECT_GT(failed, 0U);
}

// A file that is there when it is looked for and gone right afterwards.
class BrieflyThere final : public FileSystemObject {
  public:
    std::int32_t DriveCount() override { return 1; }
    bool FileExists(const std::string& /*path*/) override { return ++looks_ == 1; }
    bool FolderExists(const std::string& /*path*/) override { return false; }
    std::string TypeName(const std::string& /*path*/) override { return {}; }

  private:
    int looks_ = 0;
};

TEST(ChangingTree, APathThatGoesRightAfterItWasLookedForIsNotListed) {
    MemorySystem system;
    BrieflyThere file_system;
    Platform parts = system.Parts();
    const Platform platform{parts.files, file_system, parts.timers, parts.pump, parts.locale};
    ListModel list(system.locale);
    TidemarkItemCollection items(platform);
    EXPECT_EQ(items.Add("C:\\gone.txt", &list, nullptr), nullptr);
    EXPECT_EQ(items.Count(), 0U);
    EXPECT_EQ(list.Count(), 0U);
}

}  // namespace
}  // namespace tidemark
