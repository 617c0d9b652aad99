#include "lists/list_helpers.h"

namespace tidemark {

const ListRow* FindRow(const ListModel& list, const std::string& key) {
    return list.Find(key);
}

const ListRow& FindOrAddRow(ListModel& list, const std::string& key, const std::string& text) {
    const ListRow* const row = list.Find(key);
    return row != nullptr ? *row : list.Add(key, text);
}

const ListRow* SelectedRow(const ListModel& list) {
    if (list.SelectedCount() == 0) {
        return nullptr;
    }
    const ListRow* const current = list.Current();
    if (current != nullptr && current->selected) {
        return current;
    }
    std::size_t position = 0;
    while (!list.At(position).selected) {
        ++position;
    }
    return &list.At(position);
}

bool KeyExists(const ListModel& list, const std::string& key) {
    return list.Find(key) != nullptr;
}

bool KeyExists(const KeyedImageList& images, const std::string& key) {
    return IconIndex(images, key) != -1;
}

void AddIcon(KeyedImageList& images, const std::string& key, const std::string& path) {
    if (!KeyExists(images, key)) {
        images.Add(key, path);
    }
}

int IconIndex(const KeyedImageList& images, const std::string& key) {
    return images.Index(key);
}

int RowIcon(const KeyedImageList& images, const std::string& key) {
    const int index = IconIndex(images, key);
    return index == -1 ? 1 : index;
}

void SelectAllRows(ListModel& list) {
    list.SelectAll();
}

void ClearRowSelection(ListModel& list) {
    list.ClearSelection();
}

std::size_t SelectedRowCount(const ListModel& list) {
    return list.SelectedCount();
}

}  // namespace tidemark
