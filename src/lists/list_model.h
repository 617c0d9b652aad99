#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/user_locale.h"

namespace tidemark {

class KeyedImageList;

// One row of a list: a key (lower case, unique within its list), the text of the first column and
// the texts of the two columns after it.
struct ListRow {
    std::string key;
    std::string text;
    std::array<std::string, 2> sub_items;
    int small_icon = 0;  // 1-based index into the list's small icons; 0 shows none
    bool selected = false;
};

// Told of what changes in a ListModel, so that a window can follow. Positions are valid until the
// next change.
class ListModelObserver {
  public:
    virtual void RowChanged(std::size_t position) = 0;  // a text or the icon of one row
    virtual void RowsChanged() = 0;                     // rows came, went or moved
    virtual void SelectionChanged() = 0;                // by the program, not by the user
    virtual void SmallIconsAttached() = 0;
    virtual void EmptyStateChanged() = 0;

  protected:
    ~ListModelObserver() = default;
};

// What a list view shows, without the window: rows in display order, found by key in constant
// time. Removing many rows costs one pass in all, however many calls it takes; rows keep their
// order. Every write that changes nothing tells nobody.
class ListModel {
  public:
    explicit ListModel(UserLocale& locale);
    ListModel(const ListModel&) = delete;
    ListModel& operator=(const ListModel&) = delete;

    // Not owned; null detaches.
    void SetObserver(ListModelObserver* observer);

    [[nodiscard]] std::size_t Count() const;
    [[nodiscard]] const ListRow& At(std::size_t position) const;  // display order, 0-based

    // Keys are lower-cased before they are looked up or stored. A returned row stays where it is
    // in memory until it is removed. Find returns null for an unknown key.
    [[nodiscard]] const ListRow* Find(const std::string& key) const;
    // Throws ProgramError (duplicate key) when the key is taken.
    const ListRow& Add(const std::string& key, const std::string& text);
    // Unknown keys are ignored; true when a row went.
    bool Remove(const std::string& key);
    void Clear();

    void SetText(const ListRow& row, const std::string& text);
    void SetSubItem(const ListRow& row, std::size_t sub_item, const std::string& text);  // 0 or 1
    void SetSmallIcon(const ListRow& row, int index);

    // Selection. The first two tell the observer; NoteSelected is for a window that reports what
    // the user did, and tells nobody.
    void SelectAll();
    void ClearSelection();
    void SetSelected(std::size_t position, bool selected);
    void NoteSelected(std::size_t first, std::size_t last, bool selected);
    [[nodiscard]] std::size_t SelectedCount() const;

    // Sorts once by the text of a column (0 = text, 1 and 2 = sub-items), stably; rows added later
    // are appended.
    void Sort(std::size_t column, bool descending);

    // The list's small icons: not owned. Attaching an image list that holds no picture throws
    // ProgramError (image list not initialised).
    void AttachSmallIcons(KeyedImageList* images);
    [[nodiscard]] KeyedImageList* SmallIcons() const;

    // The empty-state switch: whether the list's container shows the list (true) or what stands
    // for an empty one.
    void SetHoldsItems(bool holds_items);
    [[nodiscard]] bool HoldsItems() const;

  private:
    // Left to the implementation; removal is lazy so that many removals cost one pass.
};

}  // namespace tidemark
