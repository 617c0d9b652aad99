#include "engine/numbers.h"

#include <cstddef>

namespace tidemark {

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
