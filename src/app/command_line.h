#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

// The paths of a command line (without the program's name). Blanks and commas separate paths; a
// pair of double quotes keeps the blanks between them, but not the commas. Blanks at the ends of a
// path are cut off, quoted or not. Two separators in a row have an empty path between them. An
// empty command line has no paths.
[[nodiscard]] std::vector<std::string> SplitCommandLine(std::string_view command_line);

}  // namespace tidemark
