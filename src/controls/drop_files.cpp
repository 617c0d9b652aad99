#include "controls/drop_files.h"

#include <cstdint>
#include <cstring>

#include "platform/text.h"

namespace tidemark {
namespace {

// Offsets in the header; the pointer position and its flag between them are of no use here.
constexpr std::size_t kOffsetOfNames = 0;
constexpr std::size_t kOffsetOfWide = 16;

std::uint32_t ReadUint32(std::span<const std::byte> block, std::size_t offset) {
    std::uint32_t value = 0;
    std::memcpy(&value, block.data() + offset, sizeof value);
    return value;
}

// The names are copied out unit by unit: nothing promises that they are aligned.
template <typename Unit>
std::vector<Unit> UnitsOf(std::span<const std::byte> bytes) {
    std::vector<Unit> units(bytes.size() / sizeof(Unit));
    if (!units.empty()) {
        std::memcpy(units.data(), bytes.data(), units.size() * sizeof(Unit));
    }
    return units;
}

// Calls `take` with each name up to the empty one that ends the list. False when the last name runs
// into the end of the memory.
template <typename Unit, typename Take>
bool SplitNames(const std::vector<Unit>& units, Take take) {
    std::size_t start = 0;
    while (start < units.size() && units[start] != Unit{}) {
        std::size_t end = start;
        while (end < units.size() && units[end] != Unit{}) {
            ++end;
        }
        if (end == units.size()) {
            return false;
        }
        take(std::basic_string_view<Unit>(units.data() + start, end - start));
        start = end + 1;
    }
    return true;
}

}  // namespace

std::optional<std::vector<std::string>> ParseDropFiles(std::span<const std::byte> block,
                                                       const NarrowTextDecoder& decode_narrow) {
    if (block.size() < kDropFilesHeaderSize) {
        return std::nullopt;
    }
    const std::size_t names = ReadUint32(block, kOffsetOfNames);
    if (names < kDropFilesHeaderSize || names > block.size()) {
        return std::nullopt;
    }
    const std::span<const std::byte> bytes = block.subspan(names);
    std::vector<std::string> paths;
    bool whole = false;
    if (ReadUint32(block, kOffsetOfWide) != 0) {
        whole = SplitNames(UnitsOf<char16_t>(bytes), [&paths](std::u16string_view name) {
            paths.push_back(Utf8FromUtf16(name));
        });
    } else {
        whole = SplitNames(UnitsOf<char>(bytes),
                           [&](std::string_view name) { paths.push_back(decode_narrow(name)); });
    }
    if (!whole) {
        return std::nullopt;
    }
    return paths;
}

std::vector<std::byte> BuildDropFiles(std::span<const std::string> paths) {
    std::u16string names;
    for (const std::string& path : paths) {
        const std::string_view name = TrimNull(path);
        if (!name.empty()) {
            names += Utf16FromUtf8(name);
            names += u'\0';
        }
    }
    // An empty list, too, ends in two NULs: some readers look for both.
    names.append(names.empty() ? 2 : 1, u'\0');

    std::vector<std::byte> block(kDropFilesHeaderSize + names.size() * sizeof(char16_t));
    const auto header = static_cast<std::uint32_t>(kDropFilesHeaderSize);
    const std::uint32_t wide = 1;
    std::memcpy(block.data() + kOffsetOfNames, &header, sizeof header);
    std::memcpy(block.data() + kOffsetOfWide, &wide, sizeof wide);
    std::memcpy(block.data() + kDropFilesHeaderSize, names.data(), names.size() * sizeof(char16_t));
    return block;
}

}  // namespace tidemark
