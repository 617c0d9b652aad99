#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/kernel_files.h"

namespace tidemark {

// The path with "\" appended when its last character is not "\" (an empty path becomes "\").
[[nodiscard]] std::string AddBackslash(std::string_view path);
// The path without its last character when that is "\".
[[nodiscard]] std::string RemoveBackslash(std::string_view path);

// Whether the system is of the NT family.
[[nodiscard]] bool IsWinNT(KernelFiles& files);
// The system's text for an error code, line break and all; empty when it has none.
[[nodiscard]] std::string ApiErrorText(KernelFiles& files, std::uint32_t code);
// The text without one trailing carriage return and line feed.
[[nodiscard]] std::string StripCrLf(std::string_view text);

}  // namespace tidemark
