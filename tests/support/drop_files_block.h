#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "controls/drop_files.h"

namespace tidemark {

// A file-list block as another program would make it, honest or not. `names` are its bytes behind
// the header, whatever `names_at` says.
[[nodiscard]] inline std::vector<std::byte> DropFilesBlock(std::uint32_t names_at, bool wide,
                                                           std::string_view names) {
    const std::uint32_t wide_field = wide ? 1 : 0;
    std::vector<std::byte> block(kDropFilesHeaderSize + names.size());
    std::memcpy(block.data(), &names_at, sizeof names_at);
    std::memcpy(block.data() + 16, &wide_field, sizeof wide_field);
    if (!names.empty()) {
        std::memcpy(block.data() + kDropFilesHeaderSize, names.data(), names.size());
    }
    return block;
}

}  // namespace tidemark
