#pragma once

#include <cstddef>
#include <string>

#include "lists/keyed_image_list.h"
#include "lists/list_model.h"

namespace tidemark {

// The row whose key is the lower-cased `key`, or null.
[[nodiscard]] const ListRow* FindRow(const ListModel& list, const std::string& key);
// The row under the lower-cased `key`, added with `text` when there is none.
const ListRow& FindOrAddRow(ListModel& list, const std::string& key, const std::string& text);

// The row that a command on a single row acts on: the current row when it is selected, else the
// first selected one; null when no row is selected.
[[nodiscard]] const ListRow* SelectedRow(const ListModel& list);

// Whether a row, or a picture, has the key.
[[nodiscard]] bool KeyExists(const ListModel& list, const std::string& key);
[[nodiscard]] bool KeyExists(const KeyedImageList& images, const std::string& key);

// Puts the path's small shell icon into the image list under its icon key (see IconKeys), unless a
// picture is there already.
void AddIcon(KeyedImageList& images, const std::string& key, const std::string& path);

// 1-based index of the picture under the key, or -1 when there is none (an empty key is none).
[[nodiscard]] int IconIndex(const KeyedImageList& images, const std::string& key);

// The picture for a row: the one under its path's icon key, or 1 when there is none.
[[nodiscard]] int RowIcon(const KeyedImageList& images, const std::string& key);

void SelectAllRows(ListModel& list);
void ClearRowSelection(ListModel& list);
[[nodiscard]] std::size_t SelectedRowCount(const ListModel& list);

}  // namespace tidemark
