#include <string_view>
#include <utility>

#include "platform/memory/memory_volume.h"
#include "platform/memory/memory_volume_node.h"

namespace tidemark {
namespace {

using namespace system_error;

constexpr std::int64_t kTicksPerMinute = 60LL * 10'000'000;

}  // namespace

bool MemoryVolume::Succeed() {
    last_error_ = kSuccess;
    return true;
}

bool MemoryVolume::Fail(std::uint32_t code) {
    last_error_ = code;
    return false;
}

bool MemoryVolume::Fetch(Search& search, FoundEntry& entry) {
    if (search.dots_left > 0) {
        entry.attributes = file_attribute::kDirectory;
        entry.name = search.dots_left == 2 ? "." : "..";
        --search.dots_left;
        return true;
    }
    const auto next = search.folder->children.upper_bound(search.last_key);
    if (next == search.folder->children.end()) {
        return false;
    }
    search.last_key = next->first;
    const Node& found = *next->second;
    entry.attributes = found.attributes;
    entry.name = found.listed_name.value_or(found.name);
    return true;
}

SearchHandle MemoryVolume::SearchFirst(const std::string& pattern, FoundEntry& entry) {
    const std::size_t end = pattern.find_last_of("\\/");
    const std::string mask = end == std::string::npos ? pattern : pattern.substr(end + 1);
    if (end != std::string::npos && mask.find_first_of("*?") == std::string::npos) {
        return SearchOne(pattern, entry);
    }
    if (end == std::string::npos || (mask != "*.*" && mask != "*")) {
        Fail(kInvalidParameter);
        return kInvalidSearch;
    }
    const Located located =
        Locate(std::string_view(pattern).substr(0, end + 1), /*follow_last=*/true);
    std::uint32_t code = located.code;
    if (code == kFileNotFound) {
        code = kPathNotFound;  // the folder is a part of the pattern's path
    } else if (code == kInvalidName && FileExists(pattern.substr(0, end))) {
        code = kDirectory;
    } else if (located.node != nullptr && located.node->denies_listing) {
        code = kAccessDenied;
    }
    Search search{located.node, 0, {}};
    if (code == kSuccess) {
        search.dots_left = located.node->is_root ? 0 : 2;
        code = Fetch(search, entry) ? kSuccess : kFileNotFound;
    }
    if (code != kSuccess) {
        Fail(code);
        return kInvalidSearch;
    }
    Succeed();
    searches_.emplace(next_handle_, std::move(search));
    return SearchHandle{next_handle_++};
}

SearchHandle MemoryVolume::SearchOne(const std::string& path, FoundEntry& entry) {
    const Located located = Locate(path, /*follow_last=*/false);
    if (located.code != kSuccess) {
        Fail(located.code);
        return kInvalidSearch;
    }
    entry.attributes = located.node->attributes;
    entry.name = located.node->name;
    Succeed();
    // What follows the one entry is what an empty folder has.
    searches_.emplace(next_handle_, Search{std::make_shared<Node>(), 0, {}});
    return SearchHandle{next_handle_++};
}

bool MemoryVolume::SearchNext(SearchHandle search, FoundEntry& entry) {
    const auto found = searches_.find(static_cast<std::uintptr_t>(search));
    if (found == searches_.end()) {
        return Fail(kInvalidHandle);
    }
    return Fetch(found->second, entry) ? Succeed() : Fail(kNoMoreFiles);
}

bool MemoryVolume::SearchClose(SearchHandle search) {
    return searches_.erase(static_cast<std::uintptr_t>(search)) == 1 ? Succeed()
                                                                     : Fail(kInvalidHandle);
}

std::uint32_t MemoryVolume::ReadAttributes(const std::string& path) {
    const Located located = Locate(path, /*follow_last=*/false);
    if (located.node == nullptr) {
        Fail(located.code);
        return file_attribute::kInvalid;
    }
    Succeed();
    return located.node->attributes;
}

bool MemoryVolume::WriteAttributes(const std::string& path, std::uint32_t attributes) {
    const Located located = Locate(path, /*follow_last=*/false);
    if (located.node == nullptr) {
        return Fail(located.code);
    }
    if (located.node->denies_writing) {
        return Fail(kAccessDenied);
    }
    constexpr std::uint32_t kKnownBits = 0x00FFFFFF;
    if ((attributes & ~kKnownBits) != 0) {
        return Fail(kInvalidParameter);
    }
    // What an entry is cannot be changed, and "normal" means none of the others.
    constexpr std::uint32_t kFixed = file_attribute::kDirectory | file_attribute::kReparsePoint;
    located.node->attributes =
        (located.node->attributes & kFixed) | (attributes & ~(kFixed | file_attribute::kNormal));
    if (located.node->attributes == 0) {
        located.node->attributes = file_attribute::kNormal;
    }
    return Succeed();
}

bool MemoryVolume::ReadIdentity(const std::string& path, FileIdentity& identity) {
    const Located located = Locate(path, /*follow_last=*/true);
    if (located.node == nullptr) {
        return Fail(located.code);
    }
    if (!numbers_) {
        return Fail(kNotSupported);
    }
    // All roots number their nodes together, so that one volume is enough.
    identity = {/*volume=*/1, reinterpret_cast<std::uintptr_t>(located.node.get())};
    return Succeed();
}

FileHandle MemoryVolume::OpenForTimes(const std::string& path, std::uint32_t flags_and_attributes) {
    const Located located = Locate(path, /*follow_last=*/true);
    std::uint32_t code = located.code;
    if (const Node* node = located.node.get()) {
        const bool folder_refused =
            node->IsFolder() && (flags_and_attributes & kOpenBackupSemantics) == 0;
        const bool read_only =
            !node->IsFolder() && (node->attributes & file_attribute::kReadOnly) != 0;
        if (folder_refused || read_only || node->denies_writing) {
            code = kAccessDenied;
        } else if (node->locked || node->open_handles > 0) {
            // Handles of this call let others read, not write.
            code = kSharingViolation;
        }
    }
    if (code != kSuccess) {
        Fail(code);
        return kInvalidFile;
    }
    Succeed();
    ++located.node->open_handles;
    files_.emplace(next_handle_, located.node);
    return FileHandle{next_handle_++};
}

std::uint32_t MemoryVolume::ReadAttributesOf(FileHandle file) {
    const auto found = files_.find(static_cast<std::uintptr_t>(file));
    if (found == files_.end()) {
        Fail(kInvalidHandle);
        return file_attribute::kInvalid;
    }
    Succeed();
    return found->second->attributes;
}

bool MemoryVolume::SetTime(FileHandle file, FileTime time, FileTime MemoryTimes::*which) {
    const auto found = files_.find(static_cast<std::uintptr_t>(file));
    if (found == files_.end()) {
        return Fail(kInvalidHandle);
    }
    // 0 and -1 ask the system to leave the time as it is.
    if (time.ticks < -1) {
        return Fail(kInvalidParameter);
    }
    if (time.ticks > 0) {
        found->second->times.*which = time;
    }
    return Succeed();
}

bool MemoryVolume::SetLastWriteTime(FileHandle file, FileTime time) {
    return SetTime(file, time, &MemoryTimes::written);
}

bool MemoryVolume::SetCreationTime(FileHandle file, FileTime time) {
    return SetTime(file, time, &MemoryTimes::created);
}

bool MemoryVolume::CloseFile(FileHandle file) {
    const auto found = files_.find(static_cast<std::uintptr_t>(file));
    if (found == files_.end()) {
        return Fail(kInvalidHandle);
    }
    --found->second->open_handles;
    files_.erase(found);
    return Succeed();
}

bool MemoryVolume::LocalToSystemTime(FileTime local, FileTime& system) {
    if (local.ticks < 0) {
        return Fail(kInvalidParameter);
    }
    system.ticks = local.ticks - minutes_ahead_ * kTicksPerMinute;
    return Succeed();
}

std::string MemoryVolume::MessageText(std::uint32_t code) {
    const auto found = messages_.find(code);
    if (found == messages_.end()) {
        Fail(kMessageNotFound);
        return {};
    }
    Succeed();
    return found->second;
}

bool MemoryVolume::IsNtFamily() {
    Succeed();
    return nt_family_;
}

}  // namespace tidemark
