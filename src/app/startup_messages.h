#pragma once

#include <string>

#include "platform/program_error.h"

namespace tidemark {

// Where users are sent for the Scripting Runtime: its vendor's general download page, which moves
// less often than the pages of single packages.
inline constexpr const char* kRuntimeDownloadLocation = "https://www.microsoft.com/download";

inline constexpr const char* kMissingRuntimeCaption = "tidemark";
[[nodiscard]] std::string MissingRuntimeText();

inline constexpr const char* kStartupErrorCaption = "Orrery RTE Startup Error";
[[nodiscard]] std::string StartupErrorText(const ProgramError& error);

}  // namespace tidemark
