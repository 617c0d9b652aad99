#pragma once

#include <cstddef>
#include <string>

namespace tidemark {

// A text as often as asked for, one behind the other.
template <typename Unit>
[[nodiscard]] std::basic_string<Unit> Repeated(const Unit* text, std::size_t times) {
    std::basic_string<Unit> repeated;
    for (std::size_t i = 0; i < times; ++i) {
        repeated += text;
    }
    return repeated;
}

}  // namespace tidemark
