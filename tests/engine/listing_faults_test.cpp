// Failing calls that are no step of stamping an entry: those that list folders, that find the text
// of a code, and that ask what the system is.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/fault_matrix.h"

namespace tidemark::fault_matrix {
namespace {

struct Case {
    std::uint32_t code = 0;
    Options options;
};

// Every code under every combination of options; in the short form each code under three, and each
// combination with about four codes.
std::vector<Case> Cases() {
    const std::vector<Options> all_options = AllOptions();
    std::vector<Case> cases;
    for (std::size_t code = 0; code < kCodes.size(); ++code) {
        for (std::size_t options = 0; options < all_options.size(); ++options) {
            if (RunsInFull() || (code * 3 + options) % 4 == 0) {
                cases.push_back({kCodes[code], all_options[options]});
            }
        }
    }
    return cases;
}

class ListingFaultsTest : public FaultMatrixTest {
  protected:
    // Every entry as it is when nothing fails, or untouched.
    static void CheckEntries(const MemorySystem& system, const Options& options,
                             const std::string& hidden_below) {
        const std::vector<Fault> none;
        for (const Entry& entry : FolderEntries()) {
            Expected expected(none, 0, entry, options);
            if (!hidden_below.empty() && entry.path != hidden_below &&
                entry.path.starts_with(hidden_below)) {
                expected.modified = false;
                expected.created = false;
                expected.read_only = options.entries_read_only;
            }
            CheckEntry(system, entry, options, expected);
        }
    }

    // Counts and stamps a tree in which a fault strikes.
    struct World {
        explicit World(const Options& options) : options_(options) {
            Build(system, options.entries_read_only);
            item->SetRootItem("C:\\t");
        }
        void CountAndStamp() {
            item->Count();
            system.pump.RunUntilIdle();
            Stamp(system, *item, options_);
        }
        [[nodiscard]] int Counted() const { return item->FileCount() + item->FolderCount(); }
        [[nodiscard]] int Stamped() const {
            return item->StampedFileCount() + item->StampedFolderCount() + 1;
        }

        MemorySystem system;
        std::shared_ptr<TidemarkItem> item = TidemarkItem::Create(system.Parts());

      private:
        Options options_;
    };

    // Fails each call that goes on with a search of the folder, one in each run, and each that ends
    // one. How many runs there were.
    static int FailEachCallOfSearching(const std::string& folder, std::uint32_t code,
                                       const Options& options) {
        for (int nth = 1;; ++nth) {
            SCOPED_TRACE(folder + ", call " + std::to_string(nth));
            World world(options);
            const std::string pattern = folder + "*.*";
            world.system.files.Fail(
                {KernelCall::kSearchNext, pattern, static_cast<std::size_t>(nth)}, code);
            world.system.files.Fail({KernelCall::kSearchClose, pattern, 0}, code);
            world.CountAndStamp();
            EXPECT_EQ(world.Counted(), 8);
            EXPECT_EQ(world.Stamped(), 8);
            EXPECT_TRUE(world.item->StampErrors()->empty());
            EXPECT_EQ(world.item->StatusString(), "Complete");
            CheckEntries(world.system, options, "");
            // One search of the count and one of the stamp could not be ended.
            EXPECT_EQ(world.system.volume.OpenSearchCount(), 2U);
            const std::size_t failed = world.system.files.FailureCount();
            if (failed == 2) {
                return nth - 1;  // behind the last call
            }
            EXPECT_EQ(failed, 3U);
            if (HasFailure()) {
                return 0;
            }
        }
    }
};

TEST_F(ListingFaultsTest, FailuresOfListingAddNoRecordAndLoseNothingElse) {
    int runs = 0;
    for (const auto& [code, options] : Cases()) {
        SCOPED_TRACE("code " + std::to_string(code) + Describe(options));
        for (const Entry& entry : FolderEntries()) {
            if (!entry.folder) {
                continue;
            }
            // The other name of the folder, its parent's and the end, in the count and in the
            // stamp.
            const int runs_here = FailEachCallOfSearching(entry.path, code, options);
            ASSERT_GE(runs_here, 4) << entry.path;
            runs += runs_here;
        }
    }
    RecordProperty("runs", runs);
}

TEST_F(ListingFaultsTest, AFolderThatCannotBeListedHidesOnlyWhatItHolds) {
    for (const auto& [code, options] : Cases()) {
        for (const Entry& folder : FolderEntries()) {
            if (!folder.folder) {
                continue;
            }
            SCOPED_TRACE(folder.path + " code " + std::to_string(code) + Describe(options));
            const auto hidden = std::count_if(
                FolderEntries().begin(), FolderEntries().end(), [&](const Entry& entry) {
                    return entry.path != folder.path && entry.path.starts_with(folder.path);
                });
            World world(options);
            world.system.files.Fail({KernelCall::kSearchFirst, folder.path + "*.*", 0}, code);
            world.CountAndStamp();
            EXPECT_EQ(world.system.files.FailureCount(), 2U);
            EXPECT_EQ(world.Counted(), 8 - static_cast<int>(hidden));
            EXPECT_EQ(world.Stamped(), 8 - static_cast<int>(hidden));
            EXPECT_TRUE(world.item->StampErrors()->empty());
            EXPECT_EQ(world.item->StatusString(), "Complete");
            EXPECT_EQ(world.system.volume.OpenSearchCount(), 0U);
            CheckEntries(world.system, options, folder.path);
            if (HasFailure()) {
                return;
            }
        }
    }
}

TEST_F(ListingFaultsTest, AFailureWhoseTextCannotBeHadKeepsItsNumber) {
    for (const auto& [code, options] : Cases()) {
        SCOPED_TRACE("code " + std::to_string(code) + Describe(options));
        World world(options);
        world.system.files.Fail({KernelCall::kOpenForTimes, "C:\\t\\d\\b", 0}, code);
        world.system.files.Fail({KernelCall::kMessageText, {}, 0}, 317);
        world.CountAndStamp();
        // The text's, and one for each time that the entry is opened.
        EXPECT_EQ(world.system.files.FailureCount(), IsOpenedFirst(3, options) ? 3U : 2U);
        ASSERT_EQ(world.item->StampErrors()->size(), 1U);
        const StampError& error = *world.item->StampErrors()->front();
        EXPECT_EQ(error.ItemName, "C:\\t\\d\\b");
        EXPECT_EQ(error.ErrorNumber, static_cast<std::int32_t>(code));
        EXPECT_EQ(error.ErrorDescription, "");
        EXPECT_EQ(world.Stamped(), 8);
    }
}

// A system that cannot say what it is counts as one outside the NT family: for that entry alone.
TEST_F(ListingFaultsTest, AFailedQuestionForTheFamilyIsAnsweredForThatEntryOnly) {
    for (const auto& [code, options] : Cases()) {
        for (std::size_t at = 0; at < FolderEntries().size(); ++at) {
            const Entry& entry = FolderEntries()[at];
            SCOPED_TRACE(entry.path + " code " + std::to_string(code) + Describe(options));
            World world(options);
            world.system.files.Fail({KernelCall::kIsNtFamily, {}, at + 1}, code);
            world.CountAndStamp();
            EXPECT_EQ(world.system.files.FailureCount(), 1U);
            // A folder cannot be opened like a file, but may be opened again; a file is as ever.
            const bool fails = entry.folder && !IsOpenedFirst(at, options);
            ASSERT_EQ(world.item->StampErrors()->size(), fails ? 1U : 0U);
            if (fails) {
                EXPECT_EQ(world.item->StampErrors()->front()->ItemName, entry.path);
                EXPECT_EQ(world.item->StampErrors()->front()->ErrorNumber, 5);
            }
            EXPECT_EQ(world.Stamped(), 8);
            EXPECT_EQ(world.system.volume.OpenFileCount(), 0U);
        }
    }
}

}  // namespace
}  // namespace tidemark::fault_matrix
