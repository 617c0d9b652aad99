#pragma once

#include <string>

namespace tidemark {

// Writes the program's link, "Tidemark Clock.lnk", into a folder. False when the link cannot be
// made or saved; nothing is told beyond that.
[[nodiscard]] bool WriteShortcut(const std::string& target_path, const std::string& folder);

}  // namespace tidemark
