#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tidemark {

// Conversions between the program's text (UTF-8) and the system's (UTF-16).
//
// A file name may hold a lone surrogate, which UTF-8 cannot express. Such a unit becomes the three
// bytes that UTF-8's scheme would give it (WTF-8), so that every name survives the round trip.
// Bytes that are neither UTF-8 nor WTF-8 become U+FFFD.
[[nodiscard]] std::string Utf8FromUtf16(std::u16string_view text);
[[nodiscard]] std::u16string Utf16FromUtf8(std::string_view text);

// The same into a text whose memory is used again, for calls that are made by the hundred thousand.
// A unit is a char16_t, or a wchar_t where that holds UTF-16.
template <typename Unit>
void AssignUtf8(std::string& out, std::basic_string_view<Unit> text);
template <typename Unit>
void AssignUtf16(std::basic_string<Unit>& out, std::string_view text);

// The part of the text up to, and without, its first NUL.
[[nodiscard]] inline std::string_view TrimNull(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

// The number in decimal with zeros before it, up to so many digits without the sign.
[[nodiscard]] std::string ZeroPadded(std::int64_t number, std::size_t digits);

}  // namespace tidemark
