#include "engine/numbers.h"

#include <cstddef>
#include <limits>

#include "platform/program_error.h"

namespace tidemark {

std::int32_t CheckedAdd(std::int32_t a, std::int32_t b) {
    const std::int64_t sum = std::int64_t{a} + b;
    if (sum < std::numeric_limits<std::int32_t>::min() ||
        sum > std::numeric_limits<std::int32_t>::max()) {
        throw ProgramError(error_number::kOverflow, "Overflow");
    }
    return static_cast<std::int32_t>(sum);
}

std::string FormatWholeNumber(UserLocale& locale, std::int64_t number) {
    std::string text = std::to_string(number);
    const std::size_t first_digit = number < 0 ? 1 : 0;
    if (text.size() - first_digit > 3) {
        const std::string separator = locale.ThousandsSeparator();
        for (std::size_t at = text.size() - 3; at > first_digit;) {
            text.insert(at, separator);
            at = at - first_digit > 3 ? at - 3 : first_digit;
        }
    }
    return text;
}

}  // namespace tidemark
