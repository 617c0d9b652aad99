// Dropped file lists of any bytes: the names are what a plain reading of the block gives, none
// comes from outside it, and a list that was read can be built and read again.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/drop_files.h"
#include "fuzz/fuzz_check.h"
#include "platform/text.h"

namespace {

std::uint32_t NumberAt(const std::uint8_t* data, std::size_t offset) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i > 0; --i) {
        number = number << 8 | data[offset + i - 1];
    }
    return number;
}

// The rules one by one, unit by unit.
std::optional<std::vector<std::string>> ReadStepByStep(const std::uint8_t* data, std::size_t size) {
    if (size < 20 || NumberAt(data, 0) < 20 || NumberAt(data, 0) > size) {
        return std::nullopt;
    }
    const bool wide = NumberAt(data, 16) != 0;
    const std::size_t unit = wide ? 2 : 1;
    std::vector<std::string> names;
    std::u16string wide_name;
    std::string name;
    for (std::size_t at = NumberAt(data, 0); at + unit <= size; at += unit) {
        const unsigned value = data[at] + (wide ? data[at + 1] * 256U : 0U);
        if (value != 0) {
            wide_name += static_cast<char16_t>(value);
            name += static_cast<char>(data[at]);
        } else if (name.empty()) {
            return names;
        } else {
            names.push_back(wide ? tidemark::Utf8FromUtf16(wide_name) : name);
            wide_name.clear();
            name.clear();
        }
    }
    return name.empty() ? std::optional(names) : std::nullopt;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view whole(reinterpret_cast<const char*>(data), size);
    bool narrow = false;
    const auto decode = [&](std::string_view name) {
        narrow = true;
        FUZZ_CHECK(!name.empty() && name.find('\0') == std::string_view::npos);
        FUZZ_CHECK(name.data() != nullptr && whole.find(name) != std::string_view::npos);
        return std::string(name);
    };
    const auto paths = tidemark::ParseDropFiles(std::as_bytes(std::span(data, size)), decode);
    FUZZ_CHECK(paths == ReadStepByStep(data, size));
    if (paths && !narrow) {
        const std::vector<std::byte> block = tidemark::BuildDropFiles(*paths);
        FUZZ_CHECK(tidemark::ParseDropFiles(block, decode) == paths);
        FUZZ_CHECK(!narrow);
    }
    return 0;
}
