#include "lists/keyed_image_list.h"

#include "platform/program_error.h"

namespace tidemark {

int KeyedImageList::Index(const std::string& key) const {
    const auto found = indices_.find(key);
    return found == indices_.end() ? -1 : found->second;
}

void KeyedImageList::Add(const std::string& key, const std::string& path) {
    if (indices_.contains(key)) {
        throw ProgramError(error_number::kDuplicateKey, "Key is not unique in collection");
    }
    if (!store_.AddSmallIcon(path)) {
        return;
    }
    ++count_;
    if (!key.empty()) {
        indices_.emplace(key, count_);
    }
}

}  // namespace tidemark
