#include "platform/memory/memory_volume.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/memory/fold_case.h"
#include "platform/memory/memory_volume_node.h"
#include "platform/text.h"

namespace tidemark {
namespace {

using namespace system_error;

constexpr std::size_t kMaxNameUnits = 255;
// The system gives up on a path that leads through more links than this.
constexpr int kMaxLinks = 63;

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

std::size_t ComponentEnd(std::string_view path, std::size_t from) {
    while (from < path.size() && !IsSeparator(path[from])) {
        ++from;
    }
    return from;
}

// Length of the path's root ("C:" or "\\server\share"); 0 when it has none.
std::size_t RootLength(std::string_view path) {
    if (path.size() >= 2 && path[1] == ':' && (path.size() == 2 || IsSeparator(path[2]))) {
        return 2;
    }
    if (path.size() > 2 && IsSeparator(path[0]) && IsSeparator(path[1])) {
        const std::size_t server = ComponentEnd(path, 2);
        if (server > 2 && server + 1 < path.size()) {
            return ComponentEnd(path, server + 1);
        }
    }
    return 0;
}

bool IsValidName(std::string_view name) {
    const bool clean = std::all_of(name.begin(), name.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x20 && std::string_view("<>:\"|?*").find(c) == std::string_view::npos;
    });
    // A unit takes one to three bytes, so that most names need no conversion.
    return clean && !name.empty() &&
           (name.size() <= kMaxNameUnits || Utf16FromUtf8(name).size() <= kMaxNameUnits);
}

[[noreturn]] void Refuse(const char* what, const std::string& path) {
    throw std::invalid_argument(std::string(what) + ": " + path);
}

}  // namespace

MemoryVolume::MemoryVolume()
    : messages_{
          {kFileNotFound, "The system cannot find the file specified.\r\n"},
          {kPathNotFound, "The system cannot find the path specified.\r\n"},
          {kAccessDenied, "Access is denied.\r\n"},
          {kInvalidHandle, "The handle is invalid.\r\n"},
          {kNoMoreFiles, "There are no more files.\r\n"},
          {21, "The device is not ready.\r\n"},
          {kSharingViolation,
           "The process cannot access the file because it is being used by another process.\r\n"},
          {53, "The network path was not found.\r\n"},
          {67, "The network name cannot be found.\r\n"},
          {kInvalidParameter, "The parameter is incorrect.\r\n"},
          {112, "There is not enough space on the disk.\r\n"},
          {kInvalidName, "The filename, directory name, or volume label syntax is incorrect.\r\n"},
          {206, "The filename or extension is too long.\r\n"},
          {234, "More data is available.\r\n"},
          {kDirectory, "The directory name is invalid.\r\n"},
          {1117, "The request could not be performed because of an I/O device error.\r\n"},
          {kCantResolveName, "The name of the file cannot be resolved by the system.\r\n"},
      } {}

MemoryVolume::~MemoryVolume() = default;

// Where to begin: where the last path led when this one goes on from there, else at the root.
// Without a node when there is no such root.
MemoryVolume::Way MemoryVolume::StartOf(std::string_view path) const {
    const std::size_t root_length = RootLength(path);
    if (root_length == 0) {
        const bool relative = !path.empty() && !IsSeparator(path.front());
        return relative ? Way{current_folder_, 0, 0} : Way{};
    }
    if (NodePtr known = last_folder_.node.lock();
        known != nullptr && path.starts_with(last_folder_.path)) {
        return {std::move(known), last_folder_.path.size(), last_folder_.links};
    }
    const auto root = roots_.find(FoldCase(path.substr(0, root_length)));
    return root == roots_.end() ? Way{} : Way{root->second, root_length, 0};
}

// Steps from a link to what it leads to, and stays at anything else. Returns why that cannot be
// done: `gone` when nothing is there any more.
std::uint32_t MemoryVolume::FollowLink(Way& way, std::uint32_t gone) {
    if (!way.node->IsLink()) {
        return kSuccess;
    }
    if (++way.links > kMaxLinks) {
        return kCantResolveName;
    }
    way.node = way.node->link_target.lock();
    return way.node != nullptr ? kSuccess : gone;
}

// Steps from a folder to its entry of that name, or returns why that cannot be done.
std::uint32_t MemoryVolume::StepInto(Way& way, std::string_view name) {
    if (name == ".") {
        return kSuccess;
    }
    if (name == "..") {
        const NodePtr parent = way.node->parent.lock();
        way.node = parent != nullptr ? parent : way.node;
        return kSuccess;
    }
    if (!IsValidName(name)) {
        return kInvalidName;
    }
    const auto child = way.node->children.find(FoldCase(name));
    if (child == way.node->children.end()) {
        return kFileNotFound;
    }
    way.node = child->second;
    return kSuccess;
}

MemoryVolume::Located MemoryVolume::Locate(std::string_view path, bool follow_last) const {
    Way way = StartOf(path);
    if (way.node == nullptr) {
        return {nullptr, kPathNotFound};
    }
    Way last_folder;
    while (true) {
        way.at = path.find_first_not_of("\\/", way.at);
        if (way.at == std::string_view::npos) {
            break;
        }
        // More of the path follows, so this must be a folder to step into.
        if (const std::uint32_t code = FollowLink(way, kPathNotFound); code != kSuccess) {
            return {nullptr, code};
        }
        if (!way.node->IsFolder()) {
            return {nullptr, kPathNotFound};
        }
        last_folder = way;
        const std::size_t end = ComponentEnd(path, way.at);
        const std::uint32_t code = StepInto(way, path.substr(way.at, end - way.at));
        if (code != kSuccess) {
            const bool is_last = path.find_first_not_of("\\/", end) == std::string_view::npos;
            return {nullptr, code == kFileNotFound && !is_last ? kPathNotFound : code};
        }
        way.at = end;
    }
    const std::size_t root_length = RootLength(path);
    if (last_folder.node != nullptr && root_length > 0 && last_folder.at > root_length) {
        last_folder_ = {std::string(path.substr(0, last_folder.at)), last_folder.node,
                        last_folder.links};
    }
    if (!way.node->IsFolder() && IsSeparator(path.back())) {
        return {nullptr, kInvalidName};
    }
    if (follow_last) {
        if (const std::uint32_t code = FollowLink(way, kFileNotFound); code != kSuccess) {
            return {nullptr, code};
        }
    }
    return {way.node, kSuccess};
}

MemoryVolume::NodePtr MemoryVolume::Require(const std::string& path) const {
    const Located located = Locate(path, /*follow_last=*/false);
    if (located.node == nullptr) {
        Refuse("no such file or folder", path);
    }
    return located.node;
}

// Makes the folders that lead to the path's last component; `name` receives that component, empty
// for a root.
MemoryVolume::NodePtr MemoryVolume::MakeFolders(const std::string& path, std::string& name) {
    const std::size_t root_length = RootLength(path);
    if (root_length == 0) {
        Refuse("not an absolute path", path);
    }
    NodePtr& root = roots_[FoldCase(path.substr(0, root_length))];
    if (root == nullptr) {
        root = std::make_shared<Node>();
        root->name = path.substr(0, root_length);
        root->attributes = file_attribute::kDirectory;
        root->is_root = true;
    }
    NodePtr node = root;
    name.clear();
    std::size_t at = root_length;
    while (true) {
        while (at < path.size() && IsSeparator(path[at])) {
            ++at;
        }
        if (at == path.size()) {
            return node;
        }
        if (!name.empty()) {
            NodePtr& child = node->children[FoldCase(name)];
            if (child == nullptr) {
                child = std::make_shared<Node>();
                child->name = name;
                child->attributes = file_attribute::kDirectory;
                child->parent = node;
            }
            node = child->IsLink() ? child->link_target.lock() : child;
            if (node == nullptr || !node->IsFolder()) {
                Refuse("not a folder on the way", path);
            }
        }
        const std::size_t end = ComponentEnd(path, at);
        name = path.substr(at, end - at);
        at = end;
        if (name == "." || name == ".." || !IsValidName(name)) {
            Refuse("not a valid name", path);
        }
    }
}

void MemoryVolume::Insert(const std::string& path, const NodePtr& node) {
    std::string name;
    const NodePtr folder = MakeFolders(path, name);
    if (name.empty()) {
        return;  // a root, which exists now
    }
    node->name = name;
    node->parent = folder;
    folder->children.try_emplace(FoldCase(name), node);
}

void MemoryVolume::AddFolder(const std::string& path, std::uint32_t attributes) {
    const auto node = std::make_shared<Node>();
    node->attributes = attributes | file_attribute::kDirectory;
    Insert(path, node);
}

void MemoryVolume::AddFile(const std::string& path, std::uint32_t attributes) {
    if (IsSeparator(path.back())) {
        Refuse("not a file's path", path);
    }
    const auto node = std::make_shared<Node>();
    node->attributes = attributes & ~file_attribute::kDirectory;
    Insert(path, node);
}

void MemoryVolume::AddFolderLink(const std::string& path, const std::string& target) {
    const auto node = std::make_shared<Node>();
    node->attributes = file_attribute::kDirectory | file_attribute::kReparsePoint;
    node->link_target = Require(target);
    Insert(path, node);
}

void MemoryVolume::SetCurrentFolder(const std::string& path) {
    current_folder_ = Require(path);
}

void MemoryVolume::ListAs(const std::string& path, const std::string& name) {
    Require(path)->listed_name = name;
}

void MemoryVolume::Detach(const std::string& path) {
    const NodePtr node = Require(path);
    last_folder_ = {};
    if (node->is_root) {
        roots_.erase(FoldCase(node->name));
    } else if (const NodePtr parent = node->parent.lock()) {
        parent->children.erase(FoldCase(node->name));
    }
}

void MemoryVolume::Remove(const std::string& path) {
    const NodePtr node = Require(path);
    Detach(path);
    // A search that is under way in it finds nothing more.
    node->children.clear();
}

void MemoryVolume::Move(const std::string& from, const std::string& to) {
    const NodePtr node = Require(from);
    Detach(from);
    Insert(to, node);
}

void MemoryVolume::Lock(const std::string& path) {
    Require(path)->locked = true;
}

void MemoryVolume::Unlock(const std::string& path) {
    Require(path)->locked = false;
}

void MemoryVolume::DenyWriting(const std::string& path) {
    Require(path)->denies_writing = true;
}

void MemoryVolume::DenyListing(const std::string& path) {
    Require(path)->denies_listing = true;
}

bool MemoryVolume::FileExists(const std::string& path) const {
    const Located located = Locate(path, /*follow_last=*/true);
    return located.node != nullptr && !located.node->IsFolder();
}

bool MemoryVolume::FolderExists(const std::string& path) const {
    const Located located = Locate(path, /*follow_last=*/false);
    return located.node != nullptr && located.node->IsFolder();
}

MemoryTimes MemoryVolume::TimesOf(const std::string& path) const {
    return Require(path)->times;
}

std::uint32_t MemoryVolume::AttributesOf(const std::string& path) const {
    return Require(path)->attributes;
}

std::int32_t MemoryVolume::RootCount() const {
    return static_cast<std::int32_t>(roots_.size());
}

}  // namespace tidemark
