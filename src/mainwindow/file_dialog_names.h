#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

// The full paths in what a file dialog returns: one path, or a folder and the bare names chosen in
// it, each ended by a NUL. Trailing NULs are not names; an empty text gives no path.
[[nodiscard]] std::vector<std::string> PathsFromFileDialog(std::string_view names);

}  // namespace tidemark
