#pragma once

#include <string>
#include <vector>

namespace tidemark {

// Full paths of all files in a folder and below, in the order of listing.
[[nodiscard]] std::vector<std::string> FilesIn(const std::string& folder);

// Full paths of the folders right in a folder, in the order of listing.
[[nodiscard]] std::vector<std::string> FoldersIn(const std::string& folder);

// The last component of a path: what figures of a tree are named after.
[[nodiscard]] std::string NameOfTree(const std::string& path);

}  // namespace tidemark
