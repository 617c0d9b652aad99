#include "lists/column_sort.h"

namespace tidemark {

std::string SortableNumber(std::int64_t number) {
    constexpr std::size_t kDigits = 12;
    std::string text = std::to_string(number);
    const std::size_t sign = number < 0 ? 1 : 0;
    if (const std::size_t digits = text.size() - sign; digits < kDigits) {
        text.insert(sign, kDigits - digits, '0');
    }
    return text;
}

}  // namespace tidemark
