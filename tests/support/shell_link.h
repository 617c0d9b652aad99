#pragma once

#include <optional>
#include <string>

namespace tidemark {

// What a link file of the shell says.
struct ShellLink {
    std::string target;
    std::string description;
    std::string arguments;
    std::string working_folder;
};

// Reads a link through the shell's own object; nothing when there is none that can be read. Needs
// COM on the thread.
[[nodiscard]] std::optional<ShellLink> ReadShellLink(const std::string& path);

}  // namespace tidemark
