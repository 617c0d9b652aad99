#include "platform/checked_arithmetic.h"

#include <gtest/gtest.h>

#include <limits>

namespace tidemark {
namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();

TEST(CheckedArithmetic, ASumThatDoesNotFitIsThrownInsteadOfWrapped) {
    EXPECT_EQ(CheckedAdd(kMax - 1, 1), kMax);
    EXPECT_EQ(CheckedAdd(kMin, kMax), -1);
    EXPECT_THROW(static_cast<void>(CheckedAdd(kMin, -1)), ProgramError);
    try {
        static_cast<void>(CheckedAdd(kMax, 1));
        FAIL() << "nothing thrown";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), error_number::kOverflow);
        EXPECT_EQ(error.Description(), "Overflow");
    }
}

TEST(CheckedArithmetic, ADifferenceThatDoesNotFitIsThrownInsteadOfWrapped) {
    EXPECT_EQ(CheckedSubtract(kMin + 1, 1), kMin);
    EXPECT_EQ(CheckedSubtract(-1, kMax), kMin);
    EXPECT_THROW(static_cast<void>(CheckedSubtract(kMax, -1)), ProgramError);
    try {
        static_cast<void>(CheckedSubtract(0, kMin, "too far"));
        FAIL() << "nothing thrown";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), error_number::kOverflow);
        EXPECT_EQ(error.Description(), "too far");
    }
}

}  // namespace
}  // namespace tidemark
