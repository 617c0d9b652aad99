#include "errors/errors_layout.h"

#include <gtest/gtest.h>

namespace tidemark {
namespace {

TEST(ErrorsLayout, TheListFillsTheWindowAndReachesTwoPixelsOverTheStatusBar) {
    const Bounds label{8, 8, 600, 16};
    const Bounds list = ErrorsListBounds(label, 624, 419);
    EXPECT_EQ(list, (Bounds{0, 28, 624, 393}));
    EXPECT_EQ(list.Bottom(), 419 + 2);
}

TEST(ErrorsLayout, ItFollowsTheLabelAndEverySize) {
    const Bounds label{0, 0, 10, 30};
    EXPECT_EQ(ErrorsListBounds(label, 1000, 700), (Bounds{0, 34, 1000, 668}));
    EXPECT_EQ(ErrorsListBounds(label, 0, 32).height, 0);
}

}  // namespace
}  // namespace tidemark
