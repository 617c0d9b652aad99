#pragma once

#include <cstdint>
#include <utility>

#include "platform/program_error.h"

namespace tidemark {

// The result in 32 bits. Throws ProgramError (overflow, with the description) when it does not
// fit.
[[nodiscard]] inline std::int32_t CheckedNarrow(std::int64_t result, const char* description) {
    if (!std::in_range<std::int32_t>(result)) {
        throw ProgramError(error_number::kOverflow, description);
    }
    return static_cast<std::int32_t>(result);
}

// Sum and difference of two numbers; they throw as CheckedNarrow does.
[[nodiscard]] inline std::int32_t CheckedAdd(std::int32_t a, std::int32_t b,
                                             const char* description = "Overflow") {
    return CheckedNarrow(std::int64_t{a} + b, description);
}
[[nodiscard]] inline std::int32_t CheckedSubtract(std::int32_t a, std::int32_t b,
                                                  const char* description = "Overflow") {
    return CheckedNarrow(std::int64_t{a} - b, description);
}

}  // namespace tidemark
