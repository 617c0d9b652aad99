#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/win32/windows.h"

namespace tidemark {

// The captions of a menu's items as the system has them; "-" for a separator.
[[nodiscard]] std::vector<std::string> CaptionsOf(HMENU menu);

// Does what opens a popup and dismisses that; its captions, none when nothing opened. `look` sees
// the menu before it goes.
[[nodiscard]] std::vector<std::string> CaptionsOfPopup(const std::function<void()>& open,
                                                       const std::function<void(HMENU)>& look = {});

}  // namespace tidemark
