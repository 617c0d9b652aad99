#pragma once

#include <vector>

#include "ui/menu.h"

namespace tidemark {

// The menu bar and the popup menus of the main window, in display order.
[[nodiscard]] const std::vector<MenuRow>& MainMenuTable();

}  // namespace tidemark
