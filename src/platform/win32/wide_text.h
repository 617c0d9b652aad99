#pragma once

#include <string>
#include <string_view>

namespace tidemark {

// Between the program's text (UTF-8, see platform/text.h) and the wide text of the system's calls.
[[nodiscard]] std::wstring WideFromUtf8(std::string_view text);
[[nodiscard]] std::string Utf8FromWide(std::wstring_view text);

}  // namespace tidemark
