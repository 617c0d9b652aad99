#include "controls/edge_groups.h"

#include <gtest/gtest.h>

#include <set>

namespace tidemark {
namespace {

using Groups = std::vector<EdgeGroup>;

TEST(EdgeGroupsTest, FourEqualSidesAreOneCall) {
    EXPECT_EQ(EdgeGroups(10, 10, 10, 10), (Groups{{10, 15}}));
}

TEST(EdgeGroupsTest, OppositePairsAreTwoCallsLeftAndRightFirst) {
    EXPECT_EQ(EdgeGroups(1, 2, 1, 2), (Groups{{1, 1 | 4}, {2, 2 | 8}}));
}

TEST(EdgeGroupsTest, FourDifferentSidesAreFourCallsInTheirOrder) {
    EXPECT_EQ(EdgeGroups(1, 2, 4, 8), (Groups{{1, 1}, {2, 2}, {4, 4}, {8, 8}}));
}

TEST(EdgeGroupsTest, ATopThatMatchesLaterSidesTakesThemAlong) {
    EXPECT_EQ(EdgeGroups(1, 2, 2, 2), (Groups{{1, 1}, {2, 2 | 4 | 8}}));
    EXPECT_EQ(EdgeGroups(1, 2, 2, 1), (Groups{{1, 1 | 8}, {2, 2 | 4}}));
}

TEST(EdgeGroupsTest, RightAndBottomShareACallWhenOnlyTheyMatch) {
    EXPECT_EQ(EdgeGroups(1, 2, 4, 4), (Groups{{1, 1}, {2, 2}, {4, 4 | 8}}));
}

TEST(EdgeGroupsTest, EverySideIsDrawnExactlyOnceForEveryChoiceOfStyles) {
    for (std::int32_t styles = 0; styles < 256; ++styles) {
        const Groups groups =
            EdgeGroups(styles & 3, (styles >> 2) & 3, (styles >> 4) & 3, (styles >> 6) & 3);
        std::uint32_t drawn = 0;
        std::set<std::int32_t> seen;
        for (const EdgeGroup& group : groups) {
            EXPECT_EQ(drawn & group.sides, 0U) << styles;
            EXPECT_TRUE(seen.insert(group.style).second) << styles;
            drawn |= group.sides;
        }
        EXPECT_EQ(drawn, 15U) << styles;
    }
}

}  // namespace
}  // namespace tidemark
