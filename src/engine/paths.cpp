#include "engine/paths.h"

namespace tidemark {

std::string AddBackslash(std::string_view path) {
    std::string result(path);
    if (!result.ends_with('\\')) {
        result.push_back('\\');
    }
    return result;
}

std::string RemoveBackslash(std::string_view path) {
    if (path.ends_with('\\')) {
        path.remove_suffix(1);
    }
    return std::string(path);
}

bool IsWinNT(KernelFiles& files) {
    return files.IsNtFamily();
}

std::string ApiErrorText(KernelFiles& files, std::uint32_t code) {
    return files.MessageText(code);
}

std::string StripCrLf(std::string_view text) {
    if (text.ends_with("\r\n")) {
        text.remove_suffix(2);
    }
    return std::string(text);
}

}  // namespace tidemark
