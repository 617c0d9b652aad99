#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

// The full paths in what a file dialog returns: one path, or a folder and the bare names chosen in
// it, each ended by a NUL. An empty name ends them: what is in the buffer after it was never
// written by the dialog. An empty text gives no path.
[[nodiscard]] std::vector<std::string> PathsFromFileDialog(std::string_view names);

}  // namespace tidemark
