#include "platform/win32/wide_text.h"

#include "platform/text.h"

namespace tidemark {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

std::wstring WideFromUtf8(std::string_view text) {
    std::wstring wide;
    AssignUtf16(wide, text);
    return wide;
}

std::string Utf8FromWide(std::wstring_view text) {
    std::string utf8;
    AssignUtf8(utf8, text);
    return utf8;
}

}  // namespace tidemark
