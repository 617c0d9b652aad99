#pragma once

#include <cstdint>

#include "platform/program_error.h"

namespace tidemark {

// Sum and difference of two numbers. They throw ProgramError (overflow, with the description) when
// 32 bits cannot hold the result.
[[nodiscard]] inline std::int32_t CheckedAdd(std::int32_t a, std::int32_t b,
                                             const char* description = "Overflow") {
    std::int32_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        throw ProgramError(error_number::kOverflow, description);
    }
    return sum;
}
[[nodiscard]] inline std::int32_t CheckedSubtract(std::int32_t a, std::int32_t b,
                                                  const char* description = "Overflow") {
    std::int32_t difference = 0;
    if (__builtin_sub_overflow(a, b, &difference)) {
        throw ProgramError(error_number::kOverflow, description);
    }
    return difference;
}

}  // namespace tidemark
