#pragma once

#include <string>

namespace tidemark {

// "version 1.0  build 0007": the build number has at least four digits.
[[nodiscard]] std::string VersionText(int major, int minor, int build);

}  // namespace tidemark
