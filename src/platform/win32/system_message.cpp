#include "platform/win32/system_message.h"

#include <array>

#include "platform/program_error.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {

std::string SystemMessage(std::uint32_t code) {
    std::array<wchar_t, 512> buffer{};
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                  /*lpSource=*/nullptr, code, /*dwLanguageId=*/0, buffer.data(),
                                  static_cast<DWORD>(buffer.size()), /*Arguments=*/nullptr);
    while (length > 0 && (buffer[length - 1] == L'\n' || buffer[length - 1] == L'\r')) {
        --length;
    }
    return Utf8FromWide({buffer.data(), length});
}

std::string FailureText(std::string_view operation, std::uint32_t code) {
    const std::string text = SystemMessage(code);
    return std::string(operation) + " failed: " + text + (text.empty() ? "" : " ") + "(error " +
           std::to_string(code) + ")";
}

void ThrowSystemError(std::uint32_t code, std::string_view operation) {
    throw ProgramError(static_cast<std::int32_t>(code), FailureText(operation, code));
}

}  // namespace tidemark
