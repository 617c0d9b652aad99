#pragma once

#include <cstdint>
#include <vector>

namespace tidemark {

// The sides of a rectangle as bits, as the system's edge drawing takes them.
namespace edge_side {
inline constexpr std::uint32_t kLeft = 1;
inline constexpr std::uint32_t kTop = 2;
inline constexpr std::uint32_t kRight = 4;
inline constexpr std::uint32_t kBottom = 8;
}  // namespace edge_side

// Sides that are drawn in one call, and their common style.
struct EdgeGroup {
    std::int32_t style = 0;
    std::uint32_t sides = 0;

    bool operator==(const EdgeGroup&) const = default;
};

// The calls that draw four sides of the given styles: one per distinct style, in the order in which
// the styles first appear from left over top and right to bottom.
[[nodiscard]] std::vector<EdgeGroup> EdgeGroups(std::int32_t left, std::int32_t top,
                                                std::int32_t right, std::int32_t bottom);

}  // namespace tidemark
