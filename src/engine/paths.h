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

// Whether a listed name can stand as one component of a path. A name that holds a separator, a
// colon (which begins a stream's name) or a NUL, an empty one, "." and ".." would make the path
// lead to something else. File systems of other systems may list such names.
[[nodiscard]] bool IsOneComponent(std::string_view name);
// The name for the user to read, with look-alikes in place of what makes it lead elsewhere, so that
// a path with it leads nowhere.
[[nodiscard]] std::string ReadableComponent(std::string_view name);

// Whether the system is of the NT family.
[[nodiscard]] bool IsWinNT(KernelFiles& files);
// The system's text for an error code, line break and all; empty when it has none.
[[nodiscard]] std::string ApiErrorText(KernelFiles& files, std::uint32_t code);
// The text without one trailing carriage return and line feed.
[[nodiscard]] std::string StripCrLf(std::string_view text);

}  // namespace tidemark
