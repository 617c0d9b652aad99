#pragma once

#include <string>
#include <string_view>

namespace tidemark {

// Lower case of UTF-8 text as the in-memory system knows it: ASCII and Latin-1 letters.
[[nodiscard]] std::string FoldCase(std::string_view text);

}  // namespace tidemark
