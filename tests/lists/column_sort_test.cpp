#include "lists/column_sort.h"

#include <gtest/gtest.h>

namespace tidemark {
namespace {

TEST(ColumnSort, TheFirstClickAscendsAndTheSameColumnTurnsRound) {
    ColumnSort sort;
    EXPECT_EQ(sort.Column(), ColumnSort::kNone);
    sort.Click(0);
    EXPECT_EQ(sort.Column(), 0U);
    EXPECT_FALSE(sort.Descending());
    sort.Click(0);
    EXPECT_TRUE(sort.Descending());
    sort.Click(0);
    EXPECT_FALSE(sort.Descending());
}

TEST(ColumnSort, AnotherColumnAscends) {
    ColumnSort sort;
    sort.Click(1);
    sort.Click(1);
    sort.Click(2);
    EXPECT_EQ(sort.Column(), 2U);
    EXPECT_FALSE(sort.Descending());
}

TEST(ColumnSort, SortableNumbersHaveTwelveDigitsAtLeast) {
    EXPECT_EQ(SortableNumber(0), "000000000000");
    EXPECT_EQ(SortableNumber(32), "000000000032");
    EXPECT_EQ(SortableNumber(-5), "-000000000005");
    EXPECT_EQ(SortableNumber(123456789012), "123456789012");
    EXPECT_EQ(SortableNumber(1234567890123), "1234567890123");
}

}  // namespace
}  // namespace tidemark
