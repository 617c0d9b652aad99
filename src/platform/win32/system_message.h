#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tidemark {

// Text of a system error code in the user's language, without its final line break; empty when
// the system has none.
[[nodiscard]] std::string SystemMessage(std::uint32_t code);

// One sentence for a failed operation: "OPERATION failed: TEXT (error CODE)".
[[nodiscard]] std::string FailureText(std::string_view operation, std::uint32_t code);

// Throws ProgramError with the code of a failed operation and the sentence above. What is given as
// a literal is not copied before the code is read, so that the code may be read in the call.
[[noreturn]] void ThrowSystemError(std::uint32_t code, std::string_view operation);

}  // namespace tidemark
