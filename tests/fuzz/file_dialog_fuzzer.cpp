// File dialog buffers of any wide text: the paths are what a plain reading of the rules gives, and
// every name in the buffer is in them.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_check.h"
#include "mainwindow/file_dialog_names.h"
#include "platform/text.h"

namespace {

// The rules one by one: parts up to the first empty one; one part is a path; of more, the first is
// the folder of the others.
std::vector<std::string> PathsStepByStep(std::string_view buffer) {
    std::vector<std::string> parts(1);
    for (const char character : buffer) {
        if (character != '\0') {
            parts.back() += character;
        } else if (parts.back().empty()) {
            break;
        } else {
            parts.emplace_back();
        }
    }
    if (parts.back().empty()) {
        parts.pop_back();
    }
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (parts.size() == 1) {
            paths.push_back(parts[i]);
        } else if (i > 0) {
            const bool closed = parts[0].back() == '\\';
            paths.push_back(parts[0] + (closed ? "" : "\\") + parts[i]);
        }
    }
    return paths;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // As the dialog leaves it, in wide text; and as bytes, which need not be any text.
    std::u16string wide(size / sizeof(char16_t), u'\0');
    if (!wide.empty()) {
        std::memcpy(wide.data(), data, wide.size() * sizeof(char16_t));
    }
    for (const std::string& buffer :
         {tidemark::Utf8FromUtf16(wide), std::string(reinterpret_cast<const char*>(data), size)}) {
        const std::vector<std::string> paths = tidemark::PathsFromFileDialog(buffer);
        FUZZ_CHECK(paths == PathsStepByStep(buffer));
        for (const std::string& path : paths) {
            FUZZ_CHECK(!path.empty() && path.find('\0') == std::string::npos);
        }
    }
    return 0;
}
