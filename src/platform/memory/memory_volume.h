#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/kernel_files.h"

namespace tidemark {

// The three times of a file or folder, in system time.
struct MemoryTimes {
    FileTime created;
    FileTime accessed;
    FileTime written;
    friend bool operator==(const MemoryTimes&, const MemoryTimes&) = default;
};

// The times of what was just made: 1 January 2020, 12:00.
inline constexpr FileTime kMemoryBuildTime{132223536000000000};

// Folders and files in memory that answer KernelFiles as the real system does, error codes
// included. Names ignore case, may be 255 UTF-16 units long and may hold lone surrogates; paths may
// have any length. A folder lists "." and ".." first (a root has neither) and then its entries by
// lower-cased name; what comes or goes while it is listed shows up or does not by its name.
//
// The building calls throw std::invalid_argument for a path they cannot serve: a mistake of the
// test.
class MemoryVolume final : public KernelFiles {
  public:
    MemoryVolume();
    ~MemoryVolume() override;
    MemoryVolume(const MemoryVolume&) = delete;
    MemoryVolume& operator=(const MemoryVolume&) = delete;

    // Building. Paths begin with a drive ("C:") or a share ("\\server\share"); folders on the way
    // are made. What exists already is left as it is.
    void AddFolder(const std::string& path, std::uint32_t attributes = 0);
    void AddFile(const std::string& path, std::uint32_t attributes = file_attribute::kArchive);
    // A link to a folder that exists; it may be one that holds the link.
    void AddFolderLink(const std::string& path, const std::string& target);
    // Searches give the entry this name from now on, whatever it holds, as file systems of other
    // systems do. Paths go on to lead to it by the name that it was made with.
    void ListAs(const std::string& path, const std::string& name);
    void Remove(const std::string& path);  // with everything below
    void Move(const std::string& from, const std::string& to);

    // Another program holds the file or folder open and lets nobody else write.
    void Lock(const std::string& path);
    void Unlock(const std::string& path);
    // The user may not open it for writing.
    void DenyWriting(const std::string& path);
    // The user may not list the folder.
    void DenyListing(const std::string& path);

    // Looking.
    [[nodiscard]] bool FileExists(const std::string& path) const;
    [[nodiscard]] bool FolderExists(const std::string& path) const;
    [[nodiscard]] MemoryTimes TimesOf(const std::string& path) const;
    [[nodiscard]] std::uint32_t AttributesOf(const std::string& path) const;
    [[nodiscard]] std::int32_t RootCount() const;
    [[nodiscard]] std::size_t OpenFileCount() const { return files_.size(); }
    [[nodiscard]] std::size_t OpenSearchCount() const { return searches_.size(); }

    // Where paths without a drive or share begin; none do at first. Exists.
    void SetCurrentFolder(const std::string& path);
    // The volume numbers nothing: no identity can be read.
    void StopNumbering() { numbers_ = false; }

    // The system around the volume. Local time is `minutes` ahead of system time (60 at first).
    void SetLocalTimeAhead(int minutes) { minutes_ahead_ = minutes; }
    void SetNtFamily(bool nt_family) { nt_family_ = nt_family; }
    void SetMessageText(std::uint32_t code, const std::string& text) { messages_[code] = text; }

    SearchHandle SearchFirst(const std::string& pattern, FoundEntry& entry) override;
    bool SearchNext(SearchHandle search, FoundEntry& entry) override;
    bool SearchClose(SearchHandle search) override;
    std::uint32_t ReadAttributes(const std::string& path) override;
    bool WriteAttributes(const std::string& path, std::uint32_t attributes) override;
    bool ReadIdentity(const std::string& path, FileIdentity& identity) override;
    FileHandle OpenForTimes(const std::string& path, std::uint32_t flags_and_attributes) override;
    std::uint32_t ReadAttributesOf(FileHandle file) override;
    bool SetLastWriteTime(FileHandle file, FileTime time) override;
    bool SetCreationTime(FileHandle file, FileTime time) override;
    bool CloseFile(FileHandle file) override;
    bool LocalToSystemTime(FileTime local, FileTime& system) override;
    std::string MessageText(std::uint32_t code) override;
    bool IsNtFamily() override;
    std::uint32_t LastError() const override { return last_error_; }

  private:
    struct Node;
    using NodePtr = std::shared_ptr<Node>;
    struct Located;
    struct Way;
    struct Search;

    [[nodiscard]] Way StartOf(std::string_view path) const;
    static std::uint32_t FollowLink(Way& way, std::uint32_t gone);
    static std::uint32_t StepInto(Way& way, std::string_view name);
    [[nodiscard]] Located Locate(std::string_view path, bool follow_last) const;
    [[nodiscard]] NodePtr Require(const std::string& path) const;
    NodePtr MakeFolders(const std::string& path, std::string& name);
    void Insert(const std::string& path, const NodePtr& node);
    void Detach(const std::string& path);
    bool Succeed();
    bool Fail(std::uint32_t code);
    SearchHandle SearchOne(const std::string& path, FoundEntry& entry);
    bool Fetch(Search& search, FoundEntry& entry);
    bool SetTime(FileHandle file, FileTime time, FileTime MemoryTimes::*which);

    // Where the last path led, so that walks down long chains do not start at the root each time.
    struct LastFolder {
        std::string path;
        std::weak_ptr<Node> node;
        int links = 0;
    };

    std::map<std::string, NodePtr, std::less<>> roots_;
    mutable LastFolder last_folder_;
    NodePtr current_folder_;
    std::map<std::uintptr_t, Search> searches_;
    std::map<std::uintptr_t, NodePtr> files_;
    std::uintptr_t next_handle_ = 0x40;
    std::map<std::uint32_t, std::string> messages_;
    int minutes_ahead_ = 60;
    bool nt_family_ = true;
    bool numbers_ = true;
    std::uint32_t last_error_ = 0;
};

}  // namespace tidemark
