#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "engine/stamp_error.h"
#include "platform/platform.h"
#include "platform/timer_object.h"

namespace tidemark {

// One entry of the user's list: a file, or a folder with everything below it. It counts what it
// covers and stamps it with new times.
//
// Work on a file is done at once. Work on a folder is only marked as pending; it runs in a tick of
// the item's own timer, on the user-interface thread, and lets pending messages run between
// entries. In there anything may be called on the item, and its owners may let go of it: it lives
// until its own work is off the stack.
class TidemarkItem final : public ITimerObjectSink,
                           public std::enable_shared_from_this<TidemarkItem> {
    struct ByCreate {
        explicit ByCreate() = default;
    };

  public:
    // A new item without a path. The platform's parts outlive the item.
    [[nodiscard]] static std::shared_ptr<TidemarkItem> Create(const Platform& platform);
    // For Create alone, which has one piece of memory made for the item and its count of owners.
    TidemarkItem(ByCreate by_create, const Platform& platform);
    ~TidemarkItem();
    TidemarkItem(const TidemarkItem&) = delete;
    TidemarkItem& operator=(const TidemarkItem&) = delete;

    // A file's full path as given, or a folder's with "\" at its end.
    [[nodiscard]] const std::string& RootItem() const { return root_item_; }
    // Takes the path of an existing file or folder and forgets all counts, states and errors of
    // the one before. The empty text forgets them and keeps the path; any other path is ignored.
    void SetRootItem(const std::string& NewItem);

    // Files and folders that counting found; the item's own folder is among them.
    [[nodiscard]] std::int32_t FileCount() const { return counters_.FileCount; }
    [[nodiscard]] std::int32_t FolderCount() const { return counters_.FolderCount; }
    // Files and folders stamped so far, failed ones included; the item's own folder is never
    // added.
    [[nodiscard]] std::int32_t StampedFileCount() const { return counters_.StampedFileCount; }
    [[nodiscard]] std::int32_t StampedFolderCount() const { return counters_.StampedFolderCount; }

    // What the item holds, for the user: "1,234 files; 56 folders", "at least 1 folder",
    // "not counted".
    [[nodiscard]] std::string CountString() const;

    [[nodiscard]] bool CountInProgress() const;
    [[nodiscard]] bool CountComplete() const { return flags_.CountComplete; }
    [[nodiscard]] bool CountCancelled() const { return flags_.CountCancelled; }
    [[nodiscard]] bool StampInProgress() const;
    // Set also when errors were recorded.
    [[nodiscard]] bool StampComplete() const { return flags_.StampComplete; }
    [[nodiscard]] bool StampCancelled() const { return flags_.StampCancelled; }

    // The errors of the last stamp: the collection itself, shared. A new one takes its place when
    // the path is assigned and when a count or a stamp starts. Never null.
    [[nodiscard]] std::shared_ptr<const StampErrorList> StampErrors() const { return Errors(); }

    [[nodiscard]] bool HasErrors() const {
        return stamp_errors_ != nullptr && !stamp_errors_->empty();
    }

    // What the item is doing, for the user: "Ready", "Counting", "Stamping - 45%",
    // "Complete (with errors)". Throws ProgramError (overflow) when a counter does not hold the sum
    // of files and folders that a stamp's progress is told by.
    [[nodiscard]] std::string StatusString() const;

    // Drops a pending count, and a stamp pending behind it. A running count finishes the folder it
    // is listing, enters no other and ends cancelled.
    void CancelCount();
    // Starts counting afresh; what a stamp before has left is forgotten.
    void Count();
    // As CancelCount, for the stamp.
    void CancelStamp();

    // Forgets what the last stamp has left: counters, states and errors. One that runs touches
    // nothing any more.
    void ForgetStamp();
    // Sets Last-Modified and, unless `dateCreated` is exactly 0, Created of the item's file, or of
    // its folder and everything below. Dates are local day numbers. `RemoveReadOnlyAttribute`
    // clears the read-only attribute of every entry first, for good. `SyncFolderCreatedDate` gives
    // folders their new Last-Modified time as Created when `dateCreated` is 0. What fails becomes a
    // record in StampErrors and stops nothing.
    void Stamp(double dateLastModified, double dateCreated, bool RemoveReadOnlyAttribute,
               bool SyncFolderCreatedDate);

    // One tick: runs the pending count; a stamp pending too is left to the next tick. Throws
    // ProgramError (overflow) when there are more entries than a counter holds; nothing is then
    // running, and nothing complete.
    void ITimerObjectSink_Timer() override;

  private:
    friend struct TidemarkItemTestPeer;

    struct Counters {
        std::int32_t FileCount = 0;
        std::int32_t FolderCount = 0;
        std::int32_t StampedFileCount = 0;
        std::int32_t StampedFolderCount = 0;
    };
    struct Flags {
        bool CountPending = false;
        bool CountRunning = false;
        bool CountComplete = false;
        bool CountCancelled = false;
        bool StampPending = false;
        bool StampRunning = false;
        bool StampComplete = false;
        bool StampCancelled = false;
    };
    // The arguments of the last Stamp, for the deferred work.
    struct StampArguments {
        double dateLastModified = 0;
        double dateCreated = 0;
        bool RemoveReadOnlyAttribute = false;
        bool SyncFolderCreatedDate = false;
    };
    // Why one file or folder could not be stamped.
    struct StampFailure {
        std::int32_t number = 0;
        std::string description;
    };

    // A count or a stamp that is on the stack.
    struct Walk;
    class WalkScope;
    class CountVisitor;
    class StampVisitor;

    void ArmTimer();
    void RunCount();
    void CountFolder(const std::string& folder, Walk& walk);
    void RunStamp();
    void StampFolder(const std::string& folder, Walk& walk);
    // The attributes are those that the path was listed with, kUnlisted when it was not.
    void TryStampPath(const std::string& path, std::uint32_t attributes);
    void Record(const std::string& path, StampFailure failure);
    [[nodiscard]] std::optional<StampFailure> StampPath(const std::string& path,
                                                        std::uint32_t attributes);
    // No failure and kInvalidFile: the file is to be left alone.
    [[nodiscard]] std::optional<StampFailure> OpenByPath(const std::string& path, FileHandle& file);
    [[nodiscard]] std::optional<StampFailure> ClearReadOnly(const std::string& path);
    [[nodiscard]] FileHandle Open(const std::string& path);
    // kInvalidFile also when there may be an attribute to clear.
    [[nodiscard]] FileHandle OpenUnlessReadOnly(const std::string& path, std::uint32_t attributes);
    [[nodiscard]] bool IsFolder(FileHandle file, const std::string& path);
    [[nodiscard]] std::optional<StampFailure> SetTimes(FileHandle file, const std::string& path);
    [[nodiscard]] std::optional<StampFailure> LocalDateToFileTime(double date, FileTime& time);
    // The failure of the call that left the code.
    [[nodiscard]] StampFailure SystemFailure(std::uint32_t code);
    [[nodiscard]] std::string ProgressString() const;
    [[nodiscard]] const std::shared_ptr<StampErrorList>& Errors() const;
    [[nodiscard]] std::string Formatted(std::int64_t number) const;

    Platform platform_;
    std::string root_item_;
    Counters counters_;
    Flags flags_;
    StampArguments arguments_;
    // Made when it is first asked for: most items never have an error.
    mutable std::shared_ptr<StampErrorList> stamp_errors_;
    std::unique_ptr<TimerObject> oTimer;
    // The innermost walk of each kind that is on the stack; null when there is none.
    Walk* count_walk_ = nullptr;
    Walk* stamp_walk_ = nullptr;
};

}  // namespace tidemark
