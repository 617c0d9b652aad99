#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lists/list_model.h"
#include "platform/file_system_object.h"

namespace tidemark {

// For lists whose rows have the full path of a file or folder as their key.

// The command line that shows the selected row's path in the file manager. Among several selected
// rows it is the one the keyboard acts on, or else the first. Empty when there is no list, nothing
// is selected, or the path is gone.
[[nodiscard]] std::string ContainingFolderCommand(const ListModel* list,
                                                  FileSystemObject& file_system);

// The keys of the selected rows, in list order, if each is an existing file or folder and all of
// them lie in one folder; nullopt if not. Each path is tested once.
[[nodiscard]] std::optional<std::vector<std::string>> SelectedPathsInOneFolder(
    const ListModel& list, FileSystemObject& file_system);

// The keys of the selected rows that exist as a file or a folder, in list order.
[[nodiscard]] std::vector<std::string> ExistingSelectedPaths(const ListModel& list,
                                                             FileSystemObject& file_system);

}  // namespace tidemark
