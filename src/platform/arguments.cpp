#include "platform/arguments.h"

#include <cstddef>

namespace tidemark {

std::string_view ArgumentsOf(std::string_view whole_command_line) {
    bool in_quotes = false;
    std::size_t end = 0;
    for (; end < whole_command_line.size(); ++end) {
        const char character = whole_command_line[end];
        if (character == '"') {
            in_quotes = !in_quotes;
        } else if (!in_quotes && (character == ' ' || character == '\t')) {
            break;
        }
    }
    const std::size_t start = whole_command_line.find_first_not_of(" \t", end);
    return start == std::string_view::npos ? std::string_view{} : whole_command_line.substr(start);
}

}  // namespace tidemark
