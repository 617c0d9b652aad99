#include "controls/shell_item_ids.h"

#include <cstdint>
#include <cstring>

namespace tidemark {
namespace {

constexpr std::size_t kSizeField = sizeof(std::uint16_t);

}  // namespace

std::optional<std::vector<ShellItemId>> SplitItemIds(std::span<const std::byte> memory) {
    std::vector<ShellItemId> items;
    while (memory.size() >= kSizeField) {
        // Copied out: nothing promises that it is aligned.
        std::uint16_t size = 0;
        std::memcpy(&size, memory.data(), sizeof size);
        if (size == 0) {
            return items;
        }
        if (size < kSizeField || size > memory.size()) {
            return std::nullopt;
        }
        items.push_back(memory.first(size));
        memory = memory.subspan(size);
    }
    return std::nullopt;
}

std::size_t SizeOfSingleItemList(ShellItemId item) {
    return item.size() + kSizeField;
}

void WriteSingleItemList(ShellItemId item, std::byte* list) {
    std::memcpy(list, item.data(), item.size());
    std::memset(list + item.size(), 0, kSizeField);
}

}  // namespace tidemark
