#include "engine/paths.h"

namespace tidemark {
namespace {

constexpr const char* kSetMinus = "\xE2\x88\x96";
constexpr const char* kDivisionSlash = "\xE2\x88\x95";
constexpr const char* kRatio = "\xE2\x88\xB6";
constexpr const char* kSymbolForNull = "\xE2\x90\x80";
constexpr const char* kOneDotLeader = "\xE2\x80\xA4";

}  // namespace

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

bool IsOneComponent(std::string_view name) {
    constexpr std::string_view kNeverInNames("\\/:\0", 4);
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(kNeverInNames) == std::string_view::npos;
}

std::string ReadableComponent(std::string_view name) {
    if (name.empty()) {
        return kSymbolForNull;
    }
    const bool only_dots = name == "." || name == "..";
    std::string readable;
    for (const char c : name) {
        if (c == '\\') {
            readable += kSetMinus;
        } else if (c == '/') {
            readable += kDivisionSlash;
        } else if (c == ':') {
            readable += kRatio;
        } else if (c == '\0') {
            readable += kSymbolForNull;
        } else if (c == '.' && only_dots) {
            readable += kOneDotLeader;
        } else {
            readable += c;
        }
    }
    return readable;
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
