#include "engine/numbers.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "platform/memory/memory_user_locale.h"

namespace tidemark {
namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

TEST(Numbers, WholeNumbersAreGroupedInThrees) {
    MemoryUserLocale locale;
    EXPECT_EQ(FormatWholeNumber(locale, 0), "0");
    EXPECT_EQ(FormatWholeNumber(locale, 999), "999");
    EXPECT_EQ(FormatWholeNumber(locale, 1000), "1,000");
    EXPECT_EQ(FormatWholeNumber(locale, 123456), "123,456");
    EXPECT_EQ(FormatWholeNumber(locale, 1234567), "1,234,567");
    EXPECT_EQ(FormatWholeNumber(locale, kMax), "2,147,483,647");
    EXPECT_EQ(FormatWholeNumber(locale, -100), "-100");
    EXPECT_EQ(FormatWholeNumber(locale, -1000), "-1,000");
}

TEST(Numbers, TheSeparatorIsTheUsers) {
    MemoryUserLocale locale;
    locale.SetThousandsSeparator("\xC2\xA0");
    EXPECT_EQ(FormatWholeNumber(locale, 1234567),
              "1\xC2\xA0"
              "234\xC2\xA0"
              "567");
    locale.SetThousandsSeparator("");
    EXPECT_EQ(FormatWholeNumber(locale, 1234567), "1234567");
}

}  // namespace
}  // namespace tidemark
