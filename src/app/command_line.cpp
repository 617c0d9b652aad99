#include "app/command_line.h"

#include <cstddef>

namespace tidemark {
namespace {

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

std::vector<std::string> SplitCommandLine(std::string_view command_line) {
    std::vector<std::string> paths;
    if (command_line.empty()) {
        return paths;
    }
    std::string piece;
    bool in_quotes = false;
    for (const char character : command_line) {
        if (character == '"') {
            in_quotes = !in_quotes;
        } else if (character == ',' || (character == ' ' && !in_quotes)) {
            paths.emplace_back(TrimBlanks(piece));
            piece.clear();
        } else {
            piece += character;
        }
    }
    paths.emplace_back(TrimBlanks(piece));
    return paths;
}

}  // namespace tidemark
