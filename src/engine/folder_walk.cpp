#include "engine/folder_walk.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/paths.h"
#include "platform/path_form.h"

namespace tidemark {
namespace {

// An entry that cannot be fetched must not hide those behind it, so fetching goes on; a search that
// is broken for good must not hold the walk for ever, so it ends after this many failures in a row.
constexpr int kMaxFetchFailures = 16;

bool EndsInParent(std::string_view path) {
    return path == ".." || path.ends_with("\\..") || path.ends_with("/..");
}

std::optional<FileIdentity> IdentityOf(KernelFiles& files, const std::string& path) {
    FileIdentity identity;
    return files.ReadIdentity(path, identity) ? std::optional(identity) : std::nullopt;
}

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
          identity_(other.identity_),
          failures_(other.failures_) {}
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    Level& operator=(Level&&) = delete;

    [[nodiscard]] SearchHandle Search() const { return search_; }
    [[nodiscard]] std::size_t PathLength() const { return path_length_; }

    // Which folder it is, asked for once. `path` is any path that leads through it.
    [[nodiscard]] bool Is(const FileIdentity& other, std::string_view path) {
        if (!identity_) {
            identity_ = IdentityOf(*files_, std::string(path.substr(0, path_length_)));
        }
        return *identity_ == other;
    }

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
    std::optional<std::optional<FileIdentity>> identity_;
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
        if (!LetMessagesRun() || !visitor_.MayEnter() || LeadsBack()) {
            return false;
        }
        Level level(files_, files_.SearchFirst(path_ + "*.*", entry_), path_.size());
        if (level.Search() == kInvalidSearch) {
            return false;
        }
        levels_.push_back(std::move(level));
        return true;
    }

    // Whether `path_` is a link to a folder that it lies in: entering it would list the same
    // entries again, once for each way through all such links. Only links are asked about, so that
    // other folders cost nothing. A link without a readable identity is entered.
    bool LeadsBack() {
        if (levels_.empty() || (entry_.attributes & file_attribute::kReparsePoint) == 0) {
            return false;
        }
        const std::optional<FileIdentity> target = IdentityOf(files_, path_);
        return target && (IsAboveTheWalk(*target) ||
                          std::any_of(levels_.begin(), levels_.end(),
                                      [&](Level& level) { return level.Is(*target, path_); }));
    }

    bool IsAboveTheWalk(const FileIdentity& folder) {
        if (!above_) {
            above_.emplace();
            const std::string root = RemoveBackslash(path_.substr(0, levels_.front().PathLength()));
            std::string path = root;
            // The component before ".." is not a parent of the walked folder.
            while (!EndsInParent(path) && !(path = ParentPath(path)).empty()) {
                above_->push_back(IdentityOf(files_, path));
            }
            if (!path.empty()) {
                AddAbove(AddBackslash(path) + "..");
            } else if (AnchorOf(root) == PathAnchor::kRelative) {
                AddAbove(SplitRelative(root).place);
            }
        }
        return std::find(above_->begin(), above_->end(), folder) != above_->end();
    }

    // Adds the folder and those above it, which no path names. A drive's root is its own parent.
    void AddAbove(std::string folder) {
        std::optional<FileIdentity> below;
        for (;; folder = AddBackslash(folder) + "..") {
            const std::optional<FileIdentity> identity = IdentityOf(files_, folder);
            if (!identity || identity == below) {
                return;
            }
            above_->push_back(identity);
            below = identity;
        }
    }

    // True when the entry is a folder to enter; `path_` is then its path.
    bool VisitEntry() {
        path_.resize(levels_.back().PathLength());
        const bool folder = (entry_.attributes & file_attribute::kDirectory) != 0;
        if (folder && entry_.name.starts_with('.')) {
            return false;
        }
        if (!IsOneComponent(entry_.name)) {
            path_ += ReadableComponent(entry_.name);
            visitor_.VisitMisnamed(folder ? AddBackslash(path_) : path_, folder);
            return false;
        }
        path_ += entry_.name;
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
    // The folders above the one that is walked, once they were asked for.
    std::optional<std::vector<std::optional<FileIdentity>>> above_;
    std::string path_;
    FoundEntry entry_;
};

}  // namespace

void WalkFolder(const Platform& platform, const std::string& folder, FolderVisitor& visitor) {
    FolderWalk(platform, visitor).Run(folder);
}

}  // namespace tidemark
