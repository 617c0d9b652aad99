#include "controls/edge_groups.h"

#include <algorithm>
#include <array>

namespace tidemark {

std::vector<EdgeGroup> EdgeGroups(std::int32_t left, std::int32_t top, std::int32_t right,
                                  std::int32_t bottom) {
    const std::array<EdgeGroup, 4> sides{{{left, edge_side::kLeft},
                                          {top, edge_side::kTop},
                                          {right, edge_side::kRight},
                                          {bottom, edge_side::kBottom}}};
    std::vector<EdgeGroup> groups;
    for (const EdgeGroup& side : sides) {
        const auto same = std::find_if(groups.begin(), groups.end(), [&](const EdgeGroup& group) {
            return group.style == side.style;
        });
        if (same == groups.end()) {
            groups.push_back(side);
        } else {
            same->sides |= side.sides;
        }
    }
    return groups;
}

}  // namespace tidemark
