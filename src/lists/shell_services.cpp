#include "lists/shell_services.h"

#include <cstddef>
#include <optional>

#include "lists/list_helpers.h"
#include "platform/path_form.h"

namespace tidemark {

std::string ContainingFolderCommand(const ListModel* list, FileSystemObject& file_system) {
    const ListRow* const row = list == nullptr ? nullptr : SelectedRow(*list);
    if (row == nullptr) {
        return {};
    }
    if (!PathExists(file_system, row->key)) {
        return {};
    }
    return "explorer ,\"" + row->key + "\",/select";
}

bool SelectionLiesInOneFolder(const ListModel& list, FileSystemObject& file_system) {
    std::optional<std::string> common;
    for (std::size_t position = 0; position < list.Count(); ++position) {
        const ListRow& row = list.At(position);
        if (!row.selected) {
            continue;
        }
        if (!PathExists(file_system, row.key)) {
            return false;
        }
        // In lower case, as the key is.
        const std::string parent = ParentPath(row.key);
        if (common && *common != parent) {
            return false;
        }
        common = parent;
    }
    return true;
}

std::vector<std::string> ExistingSelectedPaths(const ListModel& list,
                                               FileSystemObject& file_system) {
    std::vector<std::string> paths;
    if (list.SelectedCount() == 0) {
        return paths;
    }
    for (std::size_t position = 0; position < list.Count(); ++position) {
        const ListRow& row = list.At(position);
        if (row.selected && PathExists(file_system, row.key)) {
            paths.push_back(row.key);
        }
    }
    return paths;
}

}  // namespace tidemark
