#pragma once

#include <cstdint>
#include <string>

#include "platform/user_locale.h"

namespace tidemark {

// A whole number in the format "###,###,###,##0": digits grouped in threes with the user's
// separator.
[[nodiscard]] std::string FormatWholeNumber(UserLocale& locale, std::int64_t number);

}  // namespace tidemark
