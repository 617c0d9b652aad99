#include "lists/column_sort.h"

#include "platform/text.h"

namespace tidemark {

std::string SortableNumber(std::int64_t number) {
    return ZeroPadded(number, 12);
}

}  // namespace tidemark
