#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/shell_context_menu.h"

namespace tidemark {

// Makes `popup`, which is empty as yet, the popup of the selected rows of a list: "Open Containing
// Folder", a line, and the shell's own menu for `paths`. `open_containing_folder` runs when that
// entry is chosen.
void FillListPopup(ShellContextMenu& popup, const std::vector<std::string>& paths,
                   std::function<void()> open_containing_folder);

}  // namespace tidemark
