#pragma once

#include <cstdint>
#include <string>

namespace tidemark {

// Text of a system error code in the user's language, without its final line break; empty when
// the system has none.
[[nodiscard]] std::string SystemMessage(std::uint32_t code);

// One sentence for a failed operation: "OPERATION failed: TEXT (error CODE)".
[[nodiscard]] std::string FailureText(const std::string& operation, std::uint32_t code);

}  // namespace tidemark
