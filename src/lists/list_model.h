#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/user_locale.h"

namespace tidemark {

class KeyedImageList;
class ListModel;

// One row of a list: a key (lower case, unique within its list), the text of the first column and
// the texts of the two columns after it.
struct ListRow {
    std::string key;
    std::string text;
    std::array<std::string, 2> sub_items;
    int small_icon = 0;  // 1-based index into the list's small icons; 0 shows none
    bool selected = false;
    std::uint64_t item_number = 0;  // of what the row stands for, to its owner; 0 for nothing

  private:
    friend class ListModel;
    std::size_t slot_ = 0;  // where its list holds it
};

// Told of what changes in a ListModel, so that a window can follow. Positions are valid until the
// next change. What is told may be acted upon later, but must not change the list.
class ListModelObserver {
  public:
    virtual void RowChanged(std::size_t position) = 0;  // a text or the icon of one row
    virtual void CellChanged(std::size_t column) = 0;   // the text of a column, in some row
    virtual void RowAppended() = 0;                     // after all rows there were
    virtual void RowsChanged() = 0;                     // rows went or moved
    virtual void SelectionChanged() = 0;                // by the program
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
    static constexpr std::size_t kNoPosition = static_cast<std::size_t>(-1);

    // The locale lower-cases keys and orders texts. Not owned.
    explicit ListModel(UserLocale& locale) : locale_(locale) {}
    ListModel(const ListModel&) = delete;
    ListModel& operator=(const ListModel&) = delete;

    // Not owned; null detaches.
    void SetObserver(ListModelObserver* observer) { observer_ = observer; }

    [[nodiscard]] std::size_t Count() const { return rows_by_key_.size(); }
    [[nodiscard]] const ListRow& At(std::size_t position) const;  // display order, 0-based

    // Keys are lower-cased before they are looked up or stored. A returned row stays where it is
    // in memory until it is removed. Find returns null for an unknown key.
    [[nodiscard]] const ListRow* Find(const std::string& key) const;
    // Appends a row. Throws ProgramError (duplicate key) when the key is taken.
    const ListRow& Add(const std::string& key, const std::string& text);
    // Unknown keys are ignored; true when a row went.
    bool Remove(const std::string& key);
    void Clear();

    void SetText(const ListRow& row, const std::string& text);
    void SetSubItem(const ListRow& row, std::size_t sub_item, const std::string& text);  // 0 or 1
    void SetSmallIcon(const ListRow& row, int index);
    void SetItemNumber(const ListRow& row, std::uint64_t number) {
        Writable(row).item_number = number;
    }

    // Selection. The first two tell the observer; NoteSelected (both ends included) is for a window
    // that reports what the user did, and tells nobody.
    void SelectAll();
    void ClearSelection();
    void NoteSelected(std::size_t first, std::size_t last, bool selected);
    [[nodiscard]] std::size_t SelectedCount() const { return selected_count_; }
    // Differs from an earlier answer if the selection of any row has changed since.
    [[nodiscard]] std::uint64_t SelectionVersion() const { return selection_version_; }

    // The row that the keyboard acts on; kNoPosition and null when there is none. When it is
    // removed, the row that takes its place becomes current, or the new last row. NoteCurrent is
    // for a window, as above.
    [[nodiscard]] const ListRow* Current() const;
    [[nodiscard]] std::size_t CurrentPosition() const;
    void NoteCurrent(std::size_t position);

    // Sorts once by the text of a column (0 = text, 1 and 2 = sub-items), as the user's language
    // orders texts (UserLocale::SortKey). Rows of equal text keep their order; rows added later are
    // appended.
    void Sort(std::size_t column, bool descending);

    // Which rows FindText looks at, and what it takes for a match.
    struct TextSearch {
        std::size_t start = 0;
        bool wrap = false;   // on from the top after the last row
        bool whole = false;  // the whole text, not its beginning
    };
    // Position of the next row whose first text matches, letter case ignored; kNoPosition when
    // there is none.
    [[nodiscard]] std::size_t FindText(const std::string& text, const TextSearch& search) const;

    // The list's small icons: not owned; null until some are attached. Attaching an image list that
    // holds no picture throws ProgramError (image list not initialised).
    void AttachSmallIcons(KeyedImageList& images);
    [[nodiscard]] KeyedImageList* SmallIcons() const { return small_icons_; }

    // The empty-state switch: whether the list's container shows the list (true) or what stands
    // for an empty one.
    void SetHoldsItems(bool holds_items);
    [[nodiscard]] bool HoldsItems() const { return holds_items_; }

  private:
    using RowsByKey = std::unordered_map<std::string_view, ListRow*>;

    [[nodiscard]] RowsByKey::const_iterator Look(const std::string& key) const;
    [[nodiscard]] ListRow& Writable(const ListRow& row) { return *slots_[row.slot_]; }
    // Closes the gaps that removed rows left, so that slots are positions.
    void CloseGaps() const;
    [[nodiscard]] std::vector<std::string> SortKeys(std::size_t column) const;
    void Select(ListRow& row, bool selected);
    void TellCellChanged(const ListRow& row, std::size_t column) const;
    void TellRowChanged(const ListRow& row) const;

    UserLocale& locale_;
    ListModelObserver* observer_ = nullptr;
    // Rows in display order; a removed row leaves an empty slot until somebody asks for a position,
    // or until half of the slots are empty.
    mutable std::vector<std::unique_ptr<ListRow>> slots_;
    mutable std::size_t current_slot_ = kNoPosition;
    RowsByKey rows_by_key_;  // views into the rows' own keys
    std::size_t selected_count_ = 0;
    std::uint64_t selection_version_ = 0;
    KeyedImageList* small_icons_ = nullptr;
    bool holds_items_ = false;
};

}  // namespace tidemark
