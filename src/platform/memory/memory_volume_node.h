#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/memory/memory_volume.h"

// What the parts of MemoryVolume's implementation share.
namespace tidemark {

struct MemoryVolume::Node {
    std::string name;
    std::optional<std::string> listed_name;  // where it is another one
    std::uint32_t attributes = 0;
    MemoryTimes times{kMemoryBuildTime, kMemoryBuildTime, kMemoryBuildTime};
    std::map<std::string, NodePtr, std::less<>> children;  // by lower-cased name
    std::weak_ptr<Node> parent;
    std::weak_ptr<Node> link_target;
    bool is_root = false;
    bool locked = false;
    bool denies_writing = false;
    bool denies_listing = false;
    int open_handles = 0;

    [[nodiscard]] bool IsFolder() const { return (attributes & file_attribute::kDirectory) != 0; }
    [[nodiscard]] bool IsLink() const { return (attributes & file_attribute::kReparsePoint) != 0; }

    // Chains of folders may be thousands deep: taken apart level by level, not by recursion.
    ~Node() {
        std::vector<NodePtr> pending;
        const auto gather = [&pending](Node& node) {
            for (auto& [key, child] : node.children) {
                pending.push_back(std::move(child));
            }
            node.children.clear();
        };
        gather(*this);
        while (!pending.empty()) {
            const NodePtr node = std::move(pending.back());
            pending.pop_back();
            if (node.use_count() == 1) {
                gather(*node);
            }
        }
    }
    Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
};

// Where a path leads; without a node, why it leads nowhere.
struct MemoryVolume::Located {
    NodePtr node;
    std::uint32_t code = system_error::kSuccess;
};

// How far a path has been followed.
struct MemoryVolume::Way {
    NodePtr node;
    std::size_t at = 0;  // the rest of the path begins here
    int links = 0;       // followed so far
};

struct MemoryVolume::Search {
    NodePtr folder;
    int dots_left = 0;
    std::string last_key;  // of the entry returned last; empty before the first
};

}  // namespace tidemark
