// Command lines of any text: the paths that they are split into are what a plain reading of the
// rules gives, and nothing is lost between them.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/command_line.h"
#include "fuzz/fuzz_check.h"
#include "platform/arguments.h"

namespace {

// The rules one by one, each over the whole text: blanks outside quotes become commas and quotes
// go; then the text is split at commas; then blanks at the ends go.
std::vector<std::string> SplitStepByStep(std::string_view text) {
    std::string with_commas;
    bool in_quotes = false;
    for (const char character : text) {
        if (character == '"') {
            in_quotes = !in_quotes;
            continue;
        }
        with_commas += character == ' ' && !in_quotes ? ',' : character;
    }
    std::vector<std::string> pieces;
    if (text.empty()) {
        return pieces;
    }
    for (std::size_t start = 0;;) {
        const std::size_t comma = with_commas.find(',', start);
        std::string piece = with_commas.substr(start, comma - start);
        while (!piece.empty() && piece.front() == ' ') {
            piece.erase(0, 1);
        }
        while (!piece.empty() && piece.back() == ' ') {
            piece.pop_back();
        }
        pieces.push_back(piece);
        if (comma == std::string::npos) {
            return pieces;
        }
        start = comma + 1;
    }
}

std::string WithoutSeparators(std::string_view text) {
    std::string rest;
    for (const char character : text) {
        if (character != ' ' && character != ',' && character != '"') {
            rest += character;
        }
    }
    return rest;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> paths = tidemark::SplitCommandLine(text);
    FUZZ_CHECK(paths == SplitStepByStep(text));
    std::string joined;
    for (const std::string& path : paths) {
        FUZZ_CHECK(path.find_first_of(",\"") == std::string::npos);
        joined += path;
    }
    FUZZ_CHECK(WithoutSeparators(joined) == WithoutSeparators(text));

    const std::string_view arguments = tidemark::ArgumentsOf(text);
    FUZZ_CHECK(text.ends_with(arguments));
    FUZZ_CHECK(arguments.empty() || (arguments.front() != ' ' && arguments.front() != '\t'));
    return 0;
}
