#include "engine/folder_walk.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "platform/text.h"

namespace tidemark {
namespace {

// An entry that cannot be fetched must not hide those behind it, so fetching goes on; a search that
// is broken for good must not hold the walk for ever, so it ends after this many failures in a row.
constexpr int kMaxFetchFailures = 16;

// A folder that is being listed. Its search is closed when it goes.
class Level {
  public:
    enum class Fetched { kEntry, kNoEntry, kTryAgain };

    Level(KernelFiles& files, SearchHandle search, std::size_t path_length)
        : files_(&files), search_(search), path_length_(path_length) {}
    ~Level() {
        if (files_ != nullptr) {
            files_->SearchClose(search_);
        }
    }
    Level(Level&& other) noexcept
        : files_(std::exchange(other.files_, nullptr)),
          search_(other.search_),
          path_length_(other.path_length_),
          failures_(other.failures_) {}
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    Level& operator=(Level&&) = delete;

    [[nodiscard]] SearchHandle Search() const { return search_; }
    [[nodiscard]] std::size_t PathLength() const { return path_length_; }

    Fetched FetchNext(FoundEntry& entry) {
        if (files_->SearchNext(search_, entry)) {
            failures_ = 0;
            return Fetched::kEntry;
        }
        if (files_->LastError() == system_error::kNoMoreFiles) {
            return Fetched::kNoEntry;
        }
        ++failures_;
        return failures_ < kMaxFetchFailures ? Fetched::kTryAgain : Fetched::kNoEntry;
    }

  private:
    KernelFiles* files_;
    SearchHandle search_;
    std::size_t path_length_;
    int failures_ = 0;  // in a row
};

// The folders being listed are kept in a list of their own, not on the stack: chains of folders may
// be thousands deep.
class FolderWalk {
  public:
    FolderWalk(const Platform& platform, FolderVisitor& visitor)
        : files_(platform.files), pump_(platform.pump), visitor_(visitor) {}
    ~FolderWalk() {
        while (!levels_.empty()) {
            levels_.pop_back();  // the innermost first
        }
    }
    FolderWalk(const FolderWalk&) = delete;
    FolderWalk& operator=(const FolderWalk&) = delete;

    void Run(const std::string& folder) {
        path_ = folder;
        bool fetched = EnterFolder();
        while (!levels_.empty()) {
            if (!fetched) {
                if (!LetMessagesRun()) {
                    return;
                }
                const Level::Fetched next = levels_.back().FetchNext(entry_);
                if (next == Level::Fetched::kNoEntry) {
                    levels_.pop_back();
                }
                if (next != Level::Fetched::kEntry) {
                    continue;
                }
            }
            if (!LetMessagesRun()) {
                return;
            }
            fetched = VisitEntry() && EnterFolder();
        }
    }

  private:
    bool LetMessagesRun() {
        pump_.LetPendingMessagesRun();
        return visitor_.MayGoOn();
    }

    // Begins to list the folder at `path_`. True when its first entry was fetched.
    bool EnterFolder() {
        if (!LetMessagesRun() || !visitor_.MayEnter()) {
            return false;
        }
        Level level(files_, files_.SearchFirst(path_ + "*.*", entry_), path_.size());
        if (level.Search() == kInvalidSearch) {
            return false;
        }
        levels_.push_back(std::move(level));
        return true;
    }

    // True when the entry is a folder to enter; `path_` is then its path.
    bool VisitEntry() {
        path_.resize(levels_.back().PathLength());
        const bool folder = (entry_.attributes & file_attribute::kDirectory) != 0;
        // A folder without a name would be its own parent.
        if (folder && (entry_.name.empty() || entry_.name.front() == '.')) {
            return false;
        }
        path_ += TrimNull(entry_.name);
        if (!folder) {
            visitor_.VisitFile(path_, entry_.attributes);
            return false;
        }
        path_ += '\\';
        visitor_.VisitFolder(path_, entry_.attributes);
        return true;
    }

    KernelFiles& files_;
    MessagePump& pump_;
    FolderVisitor& visitor_;
    std::vector<Level> levels_;
    std::string path_;
    FoundEntry entry_;
};

}  // namespace

void WalkFolder(const Platform& platform, const std::string& folder, FolderVisitor& visitor) {
    FolderWalk(platform, visitor).Run(folder);
}

}  // namespace tidemark
