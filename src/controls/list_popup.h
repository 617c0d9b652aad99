#pragma once

#include <functional>

#include "controls/shell_context_menu.h"
#include "lists/list_model.h"
#include "platform/file_system_object.h"

namespace tidemark {

// Makes `popup`, which is empty as yet, the popup of a list whose rows have the full path of a file
// or folder as their key: "Open Containing Folder", a line, and the shell's own menu for the
// selected paths that exist. `open_containing_folder` runs when that entry is chosen.
void FillListPopup(ShellContextMenu& popup, const ListModel& list, FileSystemObject& file_system,
                   std::function<void()> open_containing_folder);

}  // namespace tidemark
