#pragma once

#include <string>
#include <string_view>

namespace tidemark {

// What follows the program's name, and the blanks and tabs after it, in a process's whole command
// line. The name ends at the first blank or tab outside double quotes.
[[nodiscard]] std::string_view ArgumentsOf(std::string_view whole_command_line);

// That name, without quotes.
[[nodiscard]] std::string ProgramOf(std::string_view whole_command_line);

}  // namespace tidemark
