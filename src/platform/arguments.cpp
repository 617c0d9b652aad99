#include "platform/arguments.h"

#include <cstddef>

namespace tidemark {
namespace {

std::size_t EndOfProgram(std::string_view whole_command_line) {
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
    return end;
}

}  // namespace

std::string_view ArgumentsOf(std::string_view whole_command_line) {
    const std::size_t end = EndOfProgram(whole_command_line);
    const std::size_t start = whole_command_line.find_first_not_of(" \t", end);
    return start == std::string_view::npos ? std::string_view{} : whole_command_line.substr(start);
}

std::string ProgramOf(std::string_view whole_command_line) {
    std::string program(whole_command_line.substr(0, EndOfProgram(whole_command_line)));
    std::erase(program, '"');
    return program;
}

}  // namespace tidemark
