#include "platform/win32/unique_handle.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace tidemark {
namespace {

std::vector<int> closed;

struct NumberTraits {
    using Type = int;
    static Type None() noexcept { return 0; }
    static void Close(Type number) noexcept {
        closed.push_back(number);
        ::SetLastError(ERROR_GEN_FAILURE);
    }
};
using Number = UniqueHandle<NumberTraits>;

static_assert(!std::is_copy_constructible_v<Number> && !std::is_copy_assignable_v<Number>);
static_assert(!std::is_convertible_v<int, Number>, "owning is explicit");
static_assert(std::is_nothrow_move_constructible_v<Number>);

class UniqueHandleTest : public testing::Test {
  protected:
    void SetUp() override { closed.clear(); }
};

TEST_F(UniqueHandleTest, ClosesWhatItHoldsOnce) {
    {
        const Number held(7);
        const Number none;
        EXPECT_TRUE(held);
        EXPECT_FALSE(none);
        EXPECT_EQ(held.Get(), 7);
    }
    EXPECT_EQ(closed, std::vector<int>{7});
}

TEST_F(UniqueHandleTest, MovingHandsOverAndAssigningClosesTheOldOne) {
    {
        Number first(1);
        Number second(std::move(first));
        EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): what a move leaves is the point
        Number third(3);
        third = std::move(second);
        EXPECT_EQ(closed, std::vector<int>{3});
        EXPECT_EQ(third.Get(), 1);
    }
    EXPECT_EQ(closed, (std::vector<int>{3, 1}));
}

TEST_F(UniqueHandleTest, MovingOntoItselfChangesNothing) {
    Number held(5);
    Number& same = held;
    held = std::move(same);
    EXPECT_TRUE(closed.empty());
    EXPECT_EQ(held.Get(), 5);
}

TEST_F(UniqueHandleTest, ReleasingKeepsTheResourceOpen) {
    {
        Number held(5);
        EXPECT_EQ(held.Release(), 5);
    }
    EXPECT_TRUE(closed.empty());
}

TEST_F(UniqueHandleTest, ClosingKeepsTheLastError) {
    {
        const Number held(5);
        ::SetLastError(ERROR_SHARING_VIOLATION);
    }
    EXPECT_EQ(::GetLastError(), static_cast<DWORD>(ERROR_SHARING_VIOLATION));
    EXPECT_EQ(closed.size(), 1U);
}

}  // namespace
}  // namespace tidemark
