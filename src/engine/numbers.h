#pragma once

#include <cstdint>
#include <string>

#include "platform/user_locale.h"

namespace tidemark {

// Sum of two counters. Throws ProgramError (overflow) when 32 bits cannot hold it.
[[nodiscard]] std::int32_t CheckedAdd(std::int32_t a, std::int32_t b);

// A whole number in the format "###,###,###,##0": digits grouped in threes with the user's
// separator.
[[nodiscard]] std::string FormatWholeNumber(UserLocale& locale, std::int64_t number);

}  // namespace tidemark
