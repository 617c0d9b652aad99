#pragma once

#include <string>
#include <vector>

#include "platform/win32/windows.h"

namespace tidemark {

// The captions of a menu's items as the system has them; "-" for a separator.
[[nodiscard]] std::vector<std::string> CaptionsOf(HMENU menu);

}  // namespace tidemark
