#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "engine/engine_fixture.h"

// What the tests of failing calls share: the tree, the calls and what must come of their failing.
namespace tidemark::fault_matrix {

// What the calls fail with. The last three: a code without a text; none at all; and one that is
// negative as a signed number.
inline constexpr std::array<std::uint32_t, 15> kCodes = {
    2, 3, 5, 21, 32, 53, 67, 87, 112, 123, 234, 1117, 8888, 0, 0x80070005};

struct Options {
    bool created = false;
    bool remove_read_only = false;
    bool sync_folders = false;
    bool entries_read_only = false;  // at first; only when that is to be cleared
};

inline std::vector<Options> AllOptions() {
    std::vector<Options> all;
    for (const bool created : {false, true}) {
        for (const bool remove_read_only : {false, true}) {
            for (const bool sync_folders : {false, true}) {
                all.push_back({created, remove_read_only, sync_folders, false});
                if (remove_read_only) {
                    all.push_back({created, remove_read_only, sync_folders, true});
                }
            }
        }
    }
    return all;
}

struct Entry {
    std::string path;
    bool folder = false;
};

// In the order they are stamped.
inline const std::vector<Entry>& FolderEntries() {
    static const std::vector<Entry> kEntries = {
        {"C:\\t\\", true},      {"C:\\t\\a", false},     {"C:\\t\\d\\", true},
        {"C:\\t\\d\\b", false}, {"C:\\t\\d\\e\\", true}, {"C:\\t\\d\\f", false},
        {"C:\\t\\g\\", true},   {"C:\\t\\h", false},
    };
    return kEntries;
}
inline const std::vector<Entry>& FileEntries() {
    static const std::vector<Entry> kEntries = {{"C:\\t\\a", false}};
    return kEntries;
}

// Whether an entry is opened before its attributes are asked for: it was listed without the one to
// clear. The first of all is the item's own, which was not listed.
inline bool IsOpenedFirst(std::size_t at, const Options& options) {
    return options.remove_read_only && !options.entries_read_only && at != 0;
}

// The steps of stamping one entry, in their order. What an open entry answers about its attributes
// only spares the first two.
enum class Step {
    kReadAttributes,
    kWriteAttributes,
    kOpen,
    kConvertModified,
    kSetModified,
    kConvertCreated,
    kSetCreated,
    kClose,
};
inline constexpr std::size_t kSteps = 8;

struct CallOfStep {
    KernelCall call;
    const char* name;
};
inline CallOfStep CallOf(Step step) {
    constexpr std::array<CallOfStep, kSteps> kCalls = {{
        {KernelCall::kReadAttributes, "reading attributes"},
        {KernelCall::kWriteAttributes, "writing attributes"},
        {KernelCall::kOpenForTimes, "opening"},
        {KernelCall::kLocalToSystemTime, "converting Last-Modified"},
        {KernelCall::kSetLastWriteTime, "setting Last-Modified"},
        {KernelCall::kLocalToSystemTime, "converting Created"},
        {KernelCall::kSetCreationTime, "setting Created"},
        {KernelCall::kCloseFile, "closing"},
    }};
    return kCalls[static_cast<std::size_t>(step)];
}

// One step of one entry that fails.
struct Fault {
    Step step{};
    std::size_t entry = 0;
    std::uint32_t code = 0;
};

// What must come of stamping one entry when the faults strike, by a plain reading of the steps.
class Expected {
  public:
    Expected(const std::vector<Fault>& faults, std::size_t at, const Entry& entry,
             const Options& options)
        : faults_(faults), at_(at), read_only(options.entries_read_only) {
        record = Run(entry, options);
    }

    // How many of the faults the entry came to, and how many calls of it failed with them.
    [[nodiscard]] std::size_t ReachedCount() const { return reached_.size(); }
    [[nodiscard]] std::size_t FailureCount() const { return failures_; }

  private:
    const std::vector<Fault>& faults_;
    std::size_t at_;
    std::set<Step> reached_;
    std::size_t failures_ = 0;

  public:
    std::optional<std::uint32_t> record;
    bool read_only;  // afterwards
    bool modified = false;
    bool created = false;
    bool left_open = false;

  private:
    std::optional<std::uint32_t> Hit(Step step) {
        for (const Fault& fault : faults_) {
            if (fault.entry == at_ && fault.step == step) {
                reached_.insert(step);
                ++failures_;
                return fault.code;
            }
        }
        return std::nullopt;
    }

    // Clears the attribute if need be and opens the entry.
    std::optional<std::uint32_t> RunByPath(const Entry& entry, const Options& options) {
        // Attributes that cannot be read are written back all the same, and that is what fails.
        const bool unknown = options.remove_read_only && Hit(Step::kReadAttributes);
        if (unknown || (options.remove_read_only && read_only)) {
            if (const auto code = Hit(Step::kWriteAttributes)) {
                if (static_cast<std::int32_t>(*code) > 0) {
                    return code;
                }
            } else if (unknown) {
                return system_error::kInvalidParameter;
            } else {
                read_only = false;
            }
        }
        if (const auto code = Hit(Step::kOpen)) {
            return code;
        }
        return read_only && !entry.folder ? std::optional(system_error::kAccessDenied)
                                          : std::nullopt;
    }

    std::optional<std::uint32_t> Run(const Entry& entry, const Options& options) {
        const bool open = IsOpenedFirst(at_, options) && !Hit(Step::kOpen);
        if (!open) {
            if (const auto code = RunByPath(entry, options)) {
                return code;
            }
        }
        left_open = true;
        if (const auto code = Hit(Step::kConvertModified)) {
            return code;
        }
        if (const auto code = Hit(Step::kSetModified)) {
            return code;
        }
        modified = true;
        if (options.created || (options.sync_folders && entry.folder)) {
            if (options.created) {
                if (const auto code = Hit(Step::kConvertCreated)) {
                    return code;
                }
            }
            if (const auto code = Hit(Step::kSetCreated)) {
                return code;
            }
            created = true;
        }
        left_open = Hit(Step::kClose).has_value();
        return std::nullopt;
    }
};

// Whether all of it is to be run, which takes minutes: TIDEMARK_FAULT_MATRIX=full.
inline bool RunsInFull() {
    const char* const wanted = std::getenv("TIDEMARK_FAULT_MATRIX");
    return wanted != nullptr && std::string(wanted) == "full";
}

// The entries that fail: the first, two in the middle (a file and a folder) and the last.
inline std::vector<std::size_t> FailingEntries(bool folder_item) {
    if (!folder_item) {
        return {0};
    }
    return RunsInFull() ? std::vector<std::size_t>{0, 1, 2, 3, 4, 5, 6, 7}
                        : std::vector<std::size_t>{0, 3, 4, 7};
}

// Each step of stamping, failing with each code at each of the FailingEntries, under every
// combination of options. Each failure must become one record and stop nothing else.
class FaultMatrixTest : public testing::Test {
  protected:
    static void Build(MemorySystem& system, bool read_only) {
        for (const Entry& entry : FolderEntries()) {
            const std::uint32_t attributes = read_only ? file_attribute::kReadOnly : 0;
            if (entry.folder) {
                system.volume.AddFolder(entry.path, attributes);
            } else {
                system.volume.AddFile(entry.path, attributes | file_attribute::kArchive);
            }
        }
    }

    static void Stamp(MemorySystem& system, TidemarkItem& item, const Options& options) {
        item.Stamp(DayNumber(2021, 3, 2, 13, 45),
                   options.created ? DayNumber(1999, 12, 31, 23, 59) : 0.0,
                   options.remove_read_only, options.sync_folders);
        system.pump.RunUntilIdle();
    }

    static void Inject(MemorySystem& system, const Fault& fault, const Entry& entry) {
        const KernelCall call = CallOf(fault.step).call;
        if (call != KernelCall::kLocalToSystemTime) {
            system.files.Fail({call, entry.path, 0}, fault.code);
            return;
        }
        // A conversion names no path: it fails once the entry has come to it.
        const KernelCall before = fault.step == Step::kConvertModified
                                      ? KernelCall::kOpenForTimes
                                      : KernelCall::kSetLastWriteTime;
        system.files.Before({before, entry.path, 0}, [&system, fault] {
            system.files.Fail({KernelCall::kLocalToSystemTime, {}, 1}, fault.code);
        });
    }

    static void CheckEntry(const MemorySystem& system, const Entry& entry, const Options& options,
                           const Expected& expected) {
        const MemoryTimes times = system.volume.TimesOf(entry.path);
        const FileTime modified = SystemTime(2021, 3, 2, 13, 45);
        EXPECT_EQ(times.written, expected.modified ? modified : kMemoryBuildTime) << entry.path;
        const FileTime created = options.created ? SystemTime(1999, 12, 31, 23, 59) : modified;
        EXPECT_EQ(times.created, expected.created ? created : kMemoryBuildTime) << entry.path;
        EXPECT_EQ(times.accessed, kMemoryBuildTime) << entry.path;
        const std::uint32_t kind =
            entry.folder ? file_attribute::kDirectory : file_attribute::kArchive;
        EXPECT_EQ(system.volume.AttributesOf(entry.path),
                  kind | (expected.read_only ? file_attribute::kReadOnly : 0))
            << entry.path;
    }

    // One stamp in which the faults strike. False when one of them is at a step that is not taken.
    static bool Run(const std::vector<Fault>& faults, const Options& options, bool folder_item) {
        const std::vector<Entry>& entries = folder_item ? FolderEntries() : FileEntries();
        std::vector<Expected> expected;
        std::size_t reached = 0;
        std::size_t failures = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            expected.emplace_back(faults, i, entries[i], options);
            reached += expected.back().ReachedCount();
            failures += expected.back().FailureCount();
        }
        if (reached != faults.size()) {
            return false;
        }
        MemorySystem system;
        system.files.SetRecording(false);
        Build(system, options.entries_read_only);
        for (const Fault& fault : faults) {
            Inject(system, fault, entries[fault.entry]);
        }
        const auto item = TidemarkItem::Create(system.Parts());
        item->SetRootItem(entries.front().path);
        item->Count();
        system.pump.RunUntilIdle();
        Stamp(system, *item, options);

        EXPECT_EQ(system.files.FailureCount(), failures);
        Check(system, *item, entries, options, expected);
        return true;
    }

    static void Check(MemorySystem& system, const TidemarkItem& item,
                      const std::vector<Entry>& entries, const Options& options,
                      const std::vector<Expected>& expected) {
        const bool folder_item = entries.front().folder;
        std::size_t records = 0;
        std::size_t left_open = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            CheckEntry(system, entries[i], options, expected[i]);
            left_open += expected[i].left_open ? 1 : 0;
            if (!expected[i].record) {
                continue;
            }
            ASSERT_LT(records, item.StampErrors()->size());
            const StampError& error = *(*item.StampErrors())[records++];
            EXPECT_EQ(error.ItemName, entries[i].path);
            EXPECT_FALSE(error.CountError);
            EXPECT_EQ(error.ErrorNumber, static_cast<std::int32_t>(*expected[i].record));
            const std::string text = system.volume.MessageText(*expected[i].record);
            EXPECT_EQ(error.ErrorDescription + (text.empty() ? "" : "\r\n"), text);
        }
        EXPECT_EQ(item.StampErrors()->size(), records);
        EXPECT_EQ(system.volume.OpenFileCount(), left_open);
        EXPECT_EQ(system.volume.OpenSearchCount(), 0U);

        EXPECT_EQ(item.StampedFileCount(), folder_item ? 4 : 1);
        EXPECT_EQ(item.StampedFolderCount(), folder_item ? 3 : 0);
        EXPECT_EQ(item.StampedFileCount() + item.StampedFolderCount() + (folder_item ? 1 : 0),
                  item.FileCount() + item.FolderCount());
        EXPECT_TRUE(item.StampComplete() && item.CountComplete());
        EXPECT_FALSE(item.StampInProgress() || item.StampCancelled());
        EXPECT_FALSE(item.CountInProgress() || item.CountCancelled());
        EXPECT_EQ(item.CountString(), folder_item ? "4 files; 4 folders" : "1 file");
        EXPECT_EQ(item.StatusString(), records == 0 ? "Complete" : "Complete (with errors)");
    }

    static std::string Describe(const Fault& fault) {
        return std::string(CallOf(fault.step).name) + " of entry " + std::to_string(fault.entry) +
               " fails with " + std::to_string(fault.code);
    }
    static std::string Describe(const Options& options) {
        return std::string(options.created ? " created" : "") +
               (options.remove_read_only ? " clearing" : "") +
               (options.entries_read_only ? " read-only" : "") +
               (options.sync_folders ? " sync" : "");
    }
};

}  // namespace tidemark::fault_matrix
