#include "engine/tidemark_item.h"

#include <cmath>
#include <utility>

#include "engine/folder_walk.h"
#include "engine/local_date_time.h"
#include "engine/numbers.h"
#include "engine/paths.h"
#include "platform/checked_arithmetic.h"
#include "platform/program_error.h"

namespace tidemark {
namespace {

constexpr std::uint32_t kTimerMilliseconds = 50;

// Stands for the attributes of a path that was not listed: it may be anything.
constexpr std::uint32_t kUnlisted = file_attribute::kInvalid;

}  // namespace

// The flags alone cannot end a walk for good: a new count or stamp may clear them while the old
// walk is still on the stack, further out.
struct TidemarkItem::Walk {
    // Cancelled: enters no further folder and completes nothing.
    bool stopped = false;
    // A newer walk does the work from the start: touches nothing any more.
    bool superseded = false;
};

// Puts a walk on the stack and takes it off. However that happens, an exception included, the walk
// is then no longer running.
class TidemarkItem::WalkScope {
  public:
    WalkScope(Walk*& current, bool& running) : current_(current), running_(running) {
        outer_ = current_;
        current_ = &walk_;
        running_ = true;
    }
    ~WalkScope() {
        current_ = outer_;
        if (!walk_.superseded) {
            running_ = false;
        }
    }
    WalkScope(const WalkScope&) = delete;
    WalkScope& operator=(const WalkScope&) = delete;

    [[nodiscard]] Walk& Get() { return walk_; }
    [[nodiscard]] bool RanToItsEnd() const { return !walk_.stopped && !walk_.superseded; }

    static void Stop(Walk* walk) {
        if (walk != nullptr) {
            walk->stopped = true;
        }
    }
    static void Supersede(Walk* walk) {
        if (walk != nullptr) {
            walk->superseded = true;
        }
    }

  private:
    Walk*& current_;
    Walk* outer_;
    bool& running_;
    Walk walk_;
};

class TidemarkItem::CountVisitor final : public FolderVisitor {
  public:
    CountVisitor(TidemarkItem& item, Walk& walk) : item_(item), walk_(walk) {}

    bool MayGoOn() override { return !walk_.superseded; }
    bool MayEnter() override { return !item_.flags_.CountCancelled && !walk_.stopped; }
    void VisitFile(const std::string& /*path*/, std::uint32_t /*attributes*/) override {
        item_.counters_.FileCount = CheckedAdd(item_.counters_.FileCount, 1);
    }
    void VisitFolder(const std::string& /*path*/, std::uint32_t /*attributes*/) override {
        item_.counters_.FolderCount = CheckedAdd(item_.counters_.FolderCount, 1);
    }
    void VisitMisnamed(const std::string& path, bool folder) override {
        folder ? VisitFolder(path, 0) : VisitFile(path, 0);
    }

  private:
    TidemarkItem& item_;
    Walk& walk_;
};

class TidemarkItem::StampVisitor final : public FolderVisitor {
  public:
    StampVisitor(TidemarkItem& item, Walk& walk) : item_(item), walk_(walk) {}

    bool MayGoOn() override { return !walk_.superseded; }
    bool MayEnter() override { return !item_.flags_.StampCancelled && !walk_.stopped; }
    void VisitFile(const std::string& path, std::uint32_t attributes) override {
        item_.TryStampPath(path, attributes);
        item_.counters_.StampedFileCount = CheckedAdd(item_.counters_.StampedFileCount, 1);
    }
    void VisitFolder(const std::string& path, std::uint32_t attributes) override {
        item_.TryStampPath(path, attributes);
        item_.counters_.StampedFolderCount = CheckedAdd(item_.counters_.StampedFolderCount, 1);
    }
    // No call is made with the path, which leads nowhere.
    void VisitMisnamed(const std::string& path, bool folder) override {
        item_.Record(path, item_.SystemFailure(system_error::kInvalidName));
        std::int32_t& count =
            folder ? item_.counters_.StampedFolderCount : item_.counters_.StampedFileCount;
        count = CheckedAdd(count, 1);
    }

  private:
    TidemarkItem& item_;
    Walk& walk_;
};

std::shared_ptr<TidemarkItem> TidemarkItem::Create(const Platform& platform) {
    return std::make_shared<TidemarkItem>(ByCreate(), platform);
}

TidemarkItem::TidemarkItem(ByCreate /*by_create*/, const Platform& platform)
    : platform_(platform), oTimer(platform.timers.NewTimer(TickKind::kLong)) {
    oTimer->SetInterval(kTimerMilliseconds);
}

TidemarkItem::~TidemarkItem() {
    oTimer->SetEnabled(false);
    oTimer->SetSink(nullptr);
}

void TidemarkItem::SetRootItem(const std::string& NewItem) {
    std::string accepted = root_item_;
    if (platform_.file_system.FileExists(NewItem)) {
        accepted = NewItem;
    } else if (platform_.file_system.FolderExists(NewItem)) {
        accepted = AddBackslash(NewItem);
    } else if (!NewItem.empty()) {
        return;
    }
    CancelCount();
    CancelStamp();
    // The walks on the stack are about the path before.
    WalkScope::Supersede(count_walk_);
    WalkScope::Supersede(stamp_walk_);
    root_item_ = std::move(accepted);
    counters_ = {};
    flags_ = {};
    stamp_errors_ = nullptr;
}

bool TidemarkItem::CountInProgress() const {
    return flags_.CountPending || flags_.CountRunning;
}

bool TidemarkItem::StampInProgress() const {
    return flags_.StampPending || flags_.StampRunning;
}

const std::shared_ptr<StampErrorList>& TidemarkItem::Errors() const {
    if (stamp_errors_ == nullptr) {
        stamp_errors_ = std::make_shared<StampErrorList>();
    }
    return stamp_errors_;
}

std::string TidemarkItem::Formatted(std::int64_t number) const {
    return FormatWholeNumber(platform_.locale, number);
}

std::string TidemarkItem::CountString() const {
    if (!flags_.CountRunning && !flags_.CountComplete && !flags_.CountPending) {
        return "not counted";
    }
    std::string files;
    if (counters_.FileCount == 1) {
        files = "1 file";
    } else if (counters_.FileCount != 0) {
        files = Formatted(counters_.FileCount) + " files";
    }
    std::string folders;
    if (counters_.FolderCount == 1) {
        folders = "1 folder";
    } else if (counters_.FolderCount != 0) {
        folders = Formatted(counters_.FolderCount) + " folders";
    }
    if (flags_.CountComplete) {
        return (files.empty() ? "no files" : files) + (folders.empty() ? "" : "; " + folders);
    }
    // Under way, "no files" means "none found yet" and is not said.
    if (files.empty() && folders.empty()) {
        return "counting";
    }
    return "at least " + files + (files.empty() || folders.empty() ? "" : "; ") + folders;
}

std::string TidemarkItem::StatusString() const {
    std::string status = "Ready";
    if (flags_.StampComplete) {
        status = "Complete";
    } else if (StampInProgress()) {
        status = "Stamping - " + ProgressString();
    } else if (CountInProgress()) {
        status = "Counting";
    }
    if (HasErrors()) {
        status += " (with errors)";
    }
    return status;
}

std::string TidemarkItem::ProgressString() const {
    const std::int32_t done = CheckedAdd(counters_.StampedFileCount, counters_.StampedFolderCount);
    if (!flags_.CountComplete) {
        return Formatted(done) + " items";
    }
    const std::int32_t total = CheckedAdd(counters_.FileCount, counters_.FolderCount);
    const double ratio = total == 0 ? 0.0 : static_cast<double>(done) / total;
    return Formatted(std::llround(ratio * 100)) + "%";
}

void TidemarkItem::CancelCount() {
    flags_.CountPending = false;
    flags_.StampPending = false;
    if (flags_.CountRunning) {
        flags_.CountCancelled = true;
        flags_.CountRunning = false;
    }
    WalkScope::Stop(count_walk_);
}

void TidemarkItem::CancelStamp() {
    flags_.StampPending = false;
    if (flags_.StampRunning) {
        flags_.StampCancelled = true;
        flags_.StampRunning = false;
    }
    WalkScope::Stop(stamp_walk_);
}

void TidemarkItem::ArmTimer() {
    oTimer->SetSink(this);
    oTimer->SetEnabled(true);
}

void TidemarkItem::Count() {
    WalkScope::Supersede(count_walk_);
    counters_ = {};
    flags_ = {};
    stamp_errors_ = nullptr;
    if (platform_.file_system.FileExists(root_item_)) {
        counters_.FileCount = 1;
        flags_.CountComplete = true;
    } else if (platform_.file_system.FolderExists(root_item_)) {
        flags_.CountPending = true;
        counters_.FolderCount = 1;
        ArmTimer();
    }
}

void TidemarkItem::ITimerObjectSink_Timer() {
    // Whoever owns the item may let go of it while it works.
    const std::shared_ptr<TidemarkItem> alive = shared_from_this();
    oTimer->SetEnabled(false);
    oTimer->SetSink(nullptr);
    platform_.pump.LetPendingMessagesRun();
    if (flags_.CountPending) {
        flags_.CountPending = false;
        if (flags_.StampPending) {
            ArmTimer();
        }
        RunCount();
    } else if (flags_.StampPending) {
        flags_.StampPending = false;
        RunStamp();
    }
}

void TidemarkItem::RunCount() {
    WalkScope scope(count_walk_, flags_.CountRunning);
    CountFolder(AddBackslash(root_item_), scope.Get());
    if (scope.RanToItsEnd() && !flags_.CountCancelled) {
        flags_.CountComplete = true;
    }
}

void TidemarkItem::CountFolder(const std::string& folder, Walk& walk) {
    CountVisitor visitor(*this, walk);
    WalkFolder(platform_, folder, visitor);
}

void TidemarkItem::ForgetStamp() {
    WalkScope::Supersede(stamp_walk_);
    counters_.StampedFileCount = 0;
    counters_.StampedFolderCount = 0;
    flags_.StampPending = false;
    flags_.StampRunning = false;
    flags_.StampComplete = false;
    flags_.StampCancelled = false;
    stamp_errors_ = nullptr;
}

void TidemarkItem::Stamp(double dateLastModified, double dateCreated, bool RemoveReadOnlyAttribute,
                         bool SyncFolderCreatedDate) {
    ForgetStamp();
    arguments_ = {dateLastModified, dateCreated, RemoveReadOnlyAttribute, SyncFolderCreatedDate};
    if (platform_.file_system.FileExists(root_item_)) {
        TryStampPath(root_item_, kUnlisted);
        counters_.StampedFileCount = 1;
        flags_.StampComplete = true;
    } else if (platform_.file_system.FolderExists(root_item_)) {
        flags_.StampPending = true;
        TryStampPath(root_item_, kUnlisted);
        ArmTimer();
    }
}

void TidemarkItem::RunStamp() {
    WalkScope scope(stamp_walk_, flags_.StampRunning);
    StampFolder(AddBackslash(root_item_), scope.Get());
    if (scope.RanToItsEnd() && !flags_.StampCancelled) {
        flags_.StampComplete = true;
    }
}

void TidemarkItem::StampFolder(const std::string& folder, Walk& walk) {
    StampVisitor visitor(*this, walk);
    WalkFolder(platform_, folder, visitor);
}

void TidemarkItem::TryStampPath(const std::string& path, std::uint32_t attributes) {
    if (std::optional<StampFailure> failure = StampPath(path, attributes)) {
        Record(path, *std::move(failure));
    }
}

void TidemarkItem::Record(const std::string& path, StampFailure failure) {
    Errors()->push_back(std::make_shared<const StampError>(
        StampError{path, false, failure.number, std::move(failure.description)}));
}

std::optional<TidemarkItem::StampFailure> TidemarkItem::StampPath(const std::string& path,
                                                                  std::uint32_t attributes) {
    FileHandle file = kInvalidFile;
    if (arguments_.RemoveReadOnlyAttribute) {
        file = OpenUnlessReadOnly(path, attributes);
    }
    if (file == kInvalidFile) {
        if (std::optional<StampFailure> failure = OpenByPath(path, file)) {
            return failure;
        }
    }
    if (file == kInvalidFile) {
        return std::nullopt;
    }
    // On failure the handle stays open until the program ends, one for each failed entry.
    if (std::optional<StampFailure> failure = SetTimes(file, path)) {
        return failure;
    }
    platform_.files.CloseFile(file);
    return std::nullopt;
}

std::optional<TidemarkItem::StampFailure> TidemarkItem::OpenByPath(const std::string& path,
                                                                   FileHandle& file) {
    if (arguments_.RemoveReadOnlyAttribute) {
        if (std::optional<StampFailure> failure = ClearReadOnly(path)) {
            return failure;
        }
    }
    file = Open(path);
    if (file != kInvalidFile) {
        return std::nullopt;
    }
    const std::uint32_t code = platform_.files.LastError();
    // Outside the NT family a file that cannot be opened is left alone without a word.
    if (path.ends_with('\\') || IsWinNT(platform_.files)) {
        return SystemFailure(code);
    }
    return std::nullopt;
}

std::optional<TidemarkItem::StampFailure> TidemarkItem::ClearReadOnly(const std::string& path) {
    KernelFiles& files = platform_.files;
    const std::uint32_t attributes = files.ReadAttributes(path);
    // Attributes that cannot be read have every bit set, so that writing them back reports why.
    if ((attributes & file_attribute::kReadOnly) == 0) {
        return std::nullopt;
    }
    files.WriteAttributes(path, attributes & ~file_attribute::kReadOnly);
    // The code decides, not the result: some systems clear the attribute and complain.
    const std::uint32_t code = files.LastError();
    if (static_cast<std::int32_t>(code) > 0) {
        return SystemFailure(code);
    }
    return std::nullopt;
}

FileHandle TidemarkItem::Open(const std::string& path) {
    KernelFiles& files = platform_.files;
    return files.OpenForTimes(path,
                              IsWinNT(files) ? kOpenBackupSemantics | kOpenNormal : kOpenNormal);
}

// Most entries have no attribute to clear, and on Wine to learn that by the path costs a third of
// what all the rest of a stamp does. So what was listed without the attribute is opened at once and
// asked by its handle. Whatever is then not as expected is done from the start, by the path; so is
// a link, whose handle has the attributes of where it leads to.
FileHandle TidemarkItem::OpenUnlessReadOnly(const std::string& path, std::uint32_t attributes) {
    if ((attributes & (file_attribute::kReadOnly | file_attribute::kReparsePoint)) != 0) {
        return kInvalidFile;
    }
    const FileHandle file = Open(path);
    if (file == kInvalidFile ||
        (platform_.files.ReadAttributesOf(file) & file_attribute::kReadOnly) == 0) {
        return file;
    }
    platform_.files.CloseFile(file);
    return kInvalidFile;
}

std::optional<TidemarkItem::StampFailure> TidemarkItem::SetTimes(FileHandle file,
                                                                 const std::string& path) {
    KernelFiles& files = platform_.files;
    FileTime last_modified;
    if (auto failure = LocalDateToFileTime(arguments_.dateLastModified, last_modified)) {
        return failure;
    }
    if (!files.SetLastWriteTime(file, last_modified)) {
        return SystemFailure(files.LastError());
    }
    FileTime created = last_modified;
    if (arguments_.dateCreated != 0) {
        if (auto failure = LocalDateToFileTime(arguments_.dateCreated, created)) {
            return failure;
        }
    } else if (!arguments_.SyncFolderCreatedDate || path.front() == '.' || !IsFolder(file, path)) {
        return std::nullopt;
    }
    if (!files.SetCreationTime(file, created)) {
        return SystemFailure(files.LastError());
    }
    return std::nullopt;
}

// The handle answers much sooner than a question about the path.
bool TidemarkItem::IsFolder(FileHandle file, const std::string& path) {
    const std::uint32_t attributes = platform_.files.ReadAttributesOf(file);
    if (attributes == file_attribute::kInvalid) {
        return platform_.file_system.FolderExists(path);
    }
    return (attributes & file_attribute::kDirectory) != 0;
}

std::optional<TidemarkItem::StampFailure> TidemarkItem::LocalDateToFileTime(double date,
                                                                            FileTime& time) {
    const std::optional<FileTime> local = LocalFileTimeFromDayNumber(date);
    if (!local) {
        return StampFailure{error_number::kOverflow, "Overflow"};
    }
    if (!platform_.files.LocalToSystemTime(*local, time)) {
        return SystemFailure(platform_.files.LastError());
    }
    return std::nullopt;
}

TidemarkItem::StampFailure TidemarkItem::SystemFailure(std::uint32_t code) {
    return {static_cast<std::int32_t>(code), StripCrLf(ApiErrorText(platform_.files, code))};
}

}  // namespace tidemark
