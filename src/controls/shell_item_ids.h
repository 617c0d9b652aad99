#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace tidemark {

// The shell's identifier lists: a run of items, each led by its own size in two bytes, up to an
// item of size 0. What is in an item is known only to the folder that made it, and any program may
// bring folders, so nothing that a list says about itself is believed.

// One item, its size included.
using ShellItemId = std::span<const std::byte>;

// The items of a list, in order; none for the empty list, which is the desktop. `memory` is what
// the list's memory really holds; the items point into it.
//
// Nothing comes back when the list cannot be trusted: an item smaller than its own size field, one
// that runs out of the memory, or no end inside it.
[[nodiscard]] std::optional<std::vector<ShellItemId>> SplitItemIds(
    std::span<const std::byte> memory);

// Memory that a list of just this item takes, its end included.
[[nodiscard]] std::size_t SizeOfSingleItemList(ShellItemId item);

// Writes a list of just this item to memory of that size.
void WriteSingleItemList(ShellItemId item, std::byte* list);

}  // namespace tidemark
