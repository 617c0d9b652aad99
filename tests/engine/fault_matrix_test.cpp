#include <array>
#include <string>
#include <vector>

#include "engine/engine_fixture.h"

namespace tidemark {
namespace {

constexpr std::array<std::uint32_t, 12> kCodes = {2, 3, 5, 21, 32, 53, 67, 87, 112, 123, 234, 1117};

struct Options {
    bool created = false;
    bool remove_read_only = false;
    bool sync_folders = false;
};

std::vector<Options> AllOptions() {
    std::vector<Options> all;
    for (const bool created : {false, true}) {
        for (const bool remove_read_only : {false, true}) {
            for (const bool sync_folders : {false, true}) {
                all.push_back({created, remove_read_only, sync_folders});
            }
        }
    }
    return all;
}

struct Entry {
    std::string path;
    bool folder = false;
};

// Each call that stamping makes, failing with each code at the first, a middle and the last entry,
// under every combination of options. Each failure must become one record and stop nothing else.
class FaultMatrixTest : public testing::Test {
  protected:
    // In the order they are stamped; everything may be read-only only when that is to be cleared.
    static std::vector<Entry> Build(MemorySystem& system, bool read_only) {
        const std::vector<Entry> entries = {
            {"C:\\t\\", true},      {"C:\\t\\a", false},     {"C:\\t\\d\\", true},
            {"C:\\t\\d\\b", false}, {"C:\\t\\d\\e\\", true}, {"C:\\t\\d\\f", false},
            {"C:\\t\\g\\", true},   {"C:\\t\\h", false},
        };
        for (const Entry& entry : entries) {
            const std::uint32_t attributes = read_only ? file_attribute::kReadOnly : 0;
            if (entry.folder) {
                system.volume.AddFolder(entry.path, attributes);
            } else {
                system.volume.AddFile(entry.path, attributes | file_attribute::kArchive);
            }
        }
        return entries;
    }

    static void Stamp(MemorySystem& system, TidemarkItem& item, const Options& options) {
        item.Stamp(DayNumber(2021, 3, 2, 13, 45),
                   options.created ? DayNumber(1999, 12, 31, 23, 59) : 0.0,
                   options.remove_read_only, options.sync_folders);
        system.pump.RunUntilIdle();
    }

    static bool SetsCreated(const Options& options, const Entry& entry) {
        return options.created || (options.sync_folders && entry.folder);
    }

    // Makes the call fail for the entry; false when the entry is stamped without such a call.
    static bool Inject(MemorySystem& system, KernelCall call, std::uint32_t code,
                       const Options& options, const std::vector<Entry>& entries, std::size_t at) {
        const Entry& entry = entries[at];
        switch (call) {
            case KernelCall::kReadAttributes:
            case KernelCall::kWriteAttributes:
                if (!options.remove_read_only) {
                    return false;
                }
                break;
            case KernelCall::kSetCreationTime:
                if (!SetsCreated(options, entry)) {
                    return false;
                }
                break;
            case KernelCall::kLocalToSystemTime:
                system.files.Fail({call, {}, at * (options.created ? 2 : 1) + 1}, code);
                return true;
            default:
                break;
        }
        system.files.Fail({call, entry.path, 0}, code);
        return true;
    }

    static bool IsAfterOpen(KernelCall call) {
        return call == KernelCall::kLocalToSystemTime || call == KernelCall::kSetLastWriteTime ||
               call == KernelCall::kSetCreationTime;
    }

    static void CheckEntry(const MemorySystem& system, const Entry& entry, const Options& options,
                           bool failed, KernelCall call) {
        const MemoryTimes times = system.volume.TimesOf(entry.path);
        const bool written = !failed || call == KernelCall::kSetCreationTime;
        EXPECT_EQ(times.written == SystemTime(2021, 3, 2, 13, 45), written) << entry.path;
        const FileTime created =
            options.created ? SystemTime(1999, 12, 31, 23, 59) : SystemTime(2021, 3, 2, 13, 45);
        EXPECT_EQ(times.created == created, !failed && SetsCreated(options, entry)) << entry.path;
        const bool read_only =
            (system.volume.AttributesOf(entry.path) & file_attribute::kReadOnly) != 0;
        const bool before_clearing =
            call == KernelCall::kReadAttributes || call == KernelCall::kWriteAttributes;
        EXPECT_EQ(read_only, options.remove_read_only && failed && before_clearing) << entry.path;
    }

    static void Run(KernelCall call, std::uint32_t code, const Options& options, bool folder_item,
                    std::size_t at) {
        MemorySystem system;
        const std::vector<Entry> all = Build(system, options.remove_read_only);
        const std::vector<Entry> entries =
            folder_item ? all : std::vector<Entry>{{"C:\\t\\a", false}};
        if (!Inject(system, call, code, options, entries, at)) {
            return;
        }
        const auto item = TidemarkItem::Create(system.View());
        item->SetRootItem(entries.front().path);
        Stamp(system, *item, options);

        EXPECT_EQ(system.files.FailureCount(), 1U);
        EXPECT_TRUE(item->StampComplete());
        EXPECT_EQ(item->StatusString(), "Complete (with errors)");
        const std::int32_t stamped = item->StampedFileCount() + item->StampedFolderCount();
        EXPECT_EQ(stamped + (folder_item ? 1 : 0), static_cast<std::int32_t>(entries.size()));
        ASSERT_EQ(item->StampErrors()->size(), 1U);
        const StampError& error = *item->StampErrors()->front();
        EXPECT_EQ(error.ItemName, entries[at].path);
        EXPECT_FALSE(error.CountError);
        // Attributes that cannot be read are written back all the same, and that is what fails.
        const std::uint32_t reported = call == KernelCall::kReadAttributes ? 87 : code;
        EXPECT_EQ(error.ErrorNumber, static_cast<std::int32_t>(reported));
        EXPECT_EQ(error.ErrorDescription + "\r\n", system.volume.MessageText(reported));
        for (std::size_t i = 0; i < entries.size(); ++i) {
            CheckEntry(system, entries[i], options, i == at, call);
        }
        EXPECT_EQ(system.volume.OpenFileCount(), IsAfterOpen(call) ? 1U : 0U);
        EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
    }
};

TEST_F(FaultMatrixTest, EveryFailingCallBecomesOneRecordAndStopsNothing) {
    for (const KernelCall call : {KernelCall::kReadAttributes, KernelCall::kWriteAttributes,
                                  KernelCall::kOpenForTimes, KernelCall::kLocalToSystemTime,
                                  KernelCall::kSetLastWriteTime, KernelCall::kSetCreationTime}) {
        for (const std::uint32_t code : kCodes) {
            for (const Options& options : AllOptions()) {
                SCOPED_TRACE(std::string(NameOf(call)) + " code " + std::to_string(code) +
                             (options.created ? " created" : "") +
                             (options.remove_read_only ? " read-only" : "") +
                             (options.sync_folders ? " sync" : ""));
                Run(call, code, options, /*folder_item=*/false, 0);
                for (const std::size_t at : {0U, 3U, 4U, 7U}) {
                    Run(call, code, options, /*folder_item=*/true, at);
                    if (HasFailure()) {
                        return;
                    }
                }
            }
        }
    }
}

TEST_F(FaultMatrixTest, WhenEveryOpenFailsEveryEntryHasItsRecord) {
    for (const std::uint32_t code : kCodes) {
        MemorySystem system;
        const std::vector<Entry> entries = Build(system, false);
        system.files.Fail({KernelCall::kOpenForTimes, {}, 0}, code);
        const auto item = TidemarkItem::Create(system.View());
        item->SetRootItem("C:\\t");
        Stamp(system, *item, {});
        ASSERT_EQ(item->StampErrors()->size(), entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            EXPECT_EQ((*item->StampErrors())[i]->ItemName, entries[i].path);
        }
        EXPECT_EQ(item->StampedFileCount() + item->StampedFolderCount() + 1,
                  static_cast<std::int32_t>(entries.size()));
    }
}

TEST_F(FaultMatrixTest, FailuresOfListingAddNoRecordAndLoseNothingElse) {
    for (const std::uint32_t code : kCodes) {
        for (const char* folder : {"C:\\t\\*.*", "C:\\t\\d\\*.*", "C:\\t\\g\\*.*"}) {
            for (const std::size_t nth : {1U, 2U, 3U}) {
                MemorySystem system;
                const std::vector<Entry> entries = Build(system, false);
                system.files.Fail({KernelCall::kSearchNext, folder, nth}, code);
                system.files.Fail({KernelCall::kSearchClose, folder, 1}, code);
                const auto item = TidemarkItem::Create(system.View());
                item->SetRootItem("C:\\t");
                item->Count();
                system.pump.RunUntilIdle();
                EXPECT_EQ(item->FileCount() + item->FolderCount(), 8);
                Stamp(system, *item, {});
                EXPECT_TRUE(item->StampErrors()->empty());
                EXPECT_EQ(item->StatusString(), "Complete");
                for (const Entry& entry : entries) {
                    CheckEntry(system, entry, {}, false, KernelCall::kSearchNext);
                }
            }
        }
    }
}

TEST_F(FaultMatrixTest, AFolderThatCannotBeListedHidesOnlyWhatItHolds) {
    for (const std::uint32_t code : kCodes) {
        MemorySystem system;
        const std::vector<Entry> entries = Build(system, false);
        system.files.Fail({KernelCall::kSearchFirst, "C:\\t\\d\\*.*", 0}, code);
        const auto item = TidemarkItem::Create(system.View());
        item->SetRootItem("C:\\t");
        Stamp(system, *item, {});
        EXPECT_TRUE(item->StampErrors()->empty());
        EXPECT_EQ(item->StampedFileCount() + item->StampedFolderCount() + 1, 5);
        for (const Entry& entry : entries) {
            const bool hidden = entry.path.size() > 7 && entry.path.starts_with("C:\\t\\d\\");
            CheckEntry(system, entry, {}, hidden, KernelCall::kSearchFirst);
        }
    }
}

TEST_F(FaultMatrixTest, AFailureWhoseTextCannotBeHadKeepsItsNumber) {
    MemorySystem system;
    Build(system, false);
    system.files.Fail({KernelCall::kOpenForTimes, "C:\\t\\a", 0}, 5);
    system.files.Fail({KernelCall::kMessageText, {}, 0}, 317);
    const auto item = TidemarkItem::Create(system.View());
    item->SetRootItem("C:\\t\\a");
    Stamp(system, *item, {});
    ASSERT_EQ(item->StampErrors()->size(), 1U);
    EXPECT_EQ(item->StampErrors()->front()->ErrorNumber, 5);
    EXPECT_EQ(item->StampErrors()->front()->ErrorDescription, "");
}

}  // namespace
}  // namespace tidemark
