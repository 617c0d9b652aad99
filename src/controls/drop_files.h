#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

// The file-list block of drag and drop and of the clipboard (format 15): a header of 20 bytes, then
// the names, each ended by a NUL, then one more NUL. It comes from another program, so nothing it
// says about itself is believed.

inline constexpr std::size_t kDropFilesHeaderSize = 20;

// Turns names of a block in 8-bit text into UTF-8; which code page the sender meant is the
// system's knowledge.
using NarrowTextDecoder = std::function<std::string(std::string_view)>;

// The names of the block, in order, as UTF-8. `block` is what the memory really holds.
//
// Nothing comes back when the block cannot be trusted: a header that is cut off or points outside
// the block, or a last name without its NUL. A name cut short could name something else that
// exists, so such a block is refused whole. Only the list's own final NUL may be missing.
[[nodiscard]] std::optional<std::vector<std::string>> ParseDropFiles(
    std::span<const std::byte> block, const NarrowTextDecoder& decode_narrow);

// A block in wide text that names `paths` (UTF-8) in order. Each path is cut at its first NUL;
// empty ones are left out, because an empty name would end the list early.
[[nodiscard]] std::vector<std::byte> BuildDropFiles(std::span<const std::string> paths);

}  // namespace tidemark
