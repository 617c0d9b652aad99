#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

// The full paths in what a file dialog returns: one path, or a folder and the bare names chosen in
// it, each ended by a NUL. An empty name ends them: what is in the buffer after it was never
// written by the dialog. An empty text gives no path.
[[nodiscard]] std::vector<std::string> PathsFromFileDialog(std::string_view names);

// How a file dialog that chose nothing has ended, by the system's code for it.
enum class FileDialogEnd { kCancelled, kTooManyNames, kFailed };
inline constexpr std::uint32_t kFileDialogBufferTooSmall = 0x3003;
[[nodiscard]] constexpr FileDialogEnd EndOfFileDialog(std::uint32_t code) {
    return code == 0                           ? FileDialogEnd::kCancelled
           : code == kFileDialogBufferTooSmall ? FileDialogEnd::kTooManyNames
                                               : FileDialogEnd::kFailed;
}

}  // namespace tidemark
