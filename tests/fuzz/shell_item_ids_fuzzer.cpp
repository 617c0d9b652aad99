// Identifier lists of any bytes: the items are what a plain reading gives, lie end to end inside
// the memory, and each makes a list of its own.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "controls/shell_item_ids.h"
#include "fuzz/fuzz_check.h"

namespace {

// Where each item starts, and where the list ends; nothing when a step leads out of the memory.
std::optional<std::vector<std::size_t>> StartsStepByStep(const std::uint8_t* data,
                                                         std::size_t size) {
    std::vector<std::size_t> starts;
    for (std::size_t at = 0; at + 2 <= size;) {
        starts.push_back(at);
        const std::size_t step = data[at] + data[at + 1] * std::size_t{256};
        if (step == 0) {
            return starts;
        }
        if (step == 1 || at + step > size) {
            return std::nullopt;
        }
        at += step;
    }
    return std::nullopt;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::byte> memory = std::as_bytes(std::span(data, size));
    const auto items = tidemark::SplitItemIds(memory);
    const auto starts = StartsStepByStep(data, size);
    FUZZ_CHECK(items.has_value() == starts.has_value());
    if (!items) {
        return 0;
    }
    FUZZ_CHECK(items->size() + 1 == starts->size());
    for (std::size_t i = 0; i < items->size(); ++i) {
        const tidemark::ShellItemId item = (*items)[i];
        FUZZ_CHECK(item.data() == memory.data() + (*starts)[i]);
        FUZZ_CHECK(item.size() == (*starts)[i + 1] - (*starts)[i]);
        std::vector<std::byte> list(tidemark::SizeOfSingleItemList(item));
        tidemark::WriteSingleItemList(item, list.data());
        const auto again = tidemark::SplitItemIds(list);
        FUZZ_CHECK(again.has_value() && again->size() == 1);
        FUZZ_CHECK(
            std::equal(item.begin(), item.end(), again->front().begin(), again->front().end()));
    }
    return 0;
}
