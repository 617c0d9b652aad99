#include "lists/shell_services.h"

#include <cstddef>
#include <utility>

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

std::optional<std::vector<std::string>> SelectedPathsInOneFolder(const ListModel& list,
                                                                 FileSystemObject& file_system) {
    std::vector<std::string> paths;
    if (list.SelectedCount() == 0) {
        return paths;
    }
    std::string common;
    for (std::size_t position = 0; position < list.Count(); ++position) {
        const ListRow& row = list.At(position);
        if (!row.selected) {
            continue;
        }
        if (!PathExists(file_system, row.key)) {
            return std::nullopt;
        }
        // In lower case, as the key is.
        std::string parent = ParentPath(row.key);
        if (!paths.empty() && parent != common) {
            return std::nullopt;
        }
        common = std::move(parent);
        paths.push_back(row.key);
    }
    return paths;
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
