#include "lists/icon_keys.h"

namespace tidemark {

namespace {

// What follows the last dot of the last component; empty when there is no dot.
std::string Extension(const std::string& path) {
    const std::size_t at = path.find_last_of(".\\/:");
    return at == std::string::npos || path[at] != '.' ? std::string() : path.substr(at + 1);
}

}  // namespace

const std::string& IconKeys::Of(const std::string& path, const std::string& fallback) {
    // Nothing is both. What is likelier by the look of the path is asked for first.
    const bool looks_like_folder = path.ends_with('\\');
    if (looks_like_folder && file_system_.FolderExists(path)) {
        return Kept(":");
    }
    if (!file_system_.FileExists(path)) {
        const bool is_folder = !looks_like_folder && file_system_.FolderExists(path);
        return Kept(is_folder ? ":" : fallback);
    }
    const std::string extension = Extension(path);
    auto known = by_extension_.find(extension);
    if (known == by_extension_.end()) {
        const std::string lower = locale_.LowerCase(extension);
        const std::string* key = nullptr;
        if (lower != "exe" && lower != "ico") {
            key = &Kept(locale_.LowerCase(file_system_.TypeName(path)));
            if (key->empty()) {
                return *key;  // gone meanwhile, which says nothing about the others
            }
        }
        known = by_extension_.emplace(extension, key).first;
    }
    return known->second != nullptr ? *known->second : Kept(locale_.LowerCase(path));
}

}  // namespace tidemark
