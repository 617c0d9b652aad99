#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lists/list_model.h"
#include "platform/geometry.h"
#include "ui/control.h"
#include "ui/image_list.h"

namespace tidemark {

struct MouseEvent {
    // Of platform/input_bits.h: the one pressed or released; while moving, those held.
    int button = 0;
};

struct ListColumn {
    std::string header;
    int width = 0;
    bool right_aligned = false;
};

// A report list over a ListModel: shows its rows, selects whole rows (several at once), follows
// every change of the model, and puts what the user selects back into it.
//
// Changes of the model cost next to nothing here: the window catches up with all of them at once,
// before it does anything else. A changed cell repaints its row, and only when that is in sight; a
// poll that writes cells needs no RedrawPause.
class ListView : public Control, private ListModelObserver {
  public:
    std::function<void(std::size_t column)> on_column_click;
    // VK_... with the bits of the shift keys held; then the list acts on it.
    std::function<void(UINT key, int shift)> on_key_down;
    std::function<void(const MouseEvent&)> on_mouse_down;
    // A held right button counts as moved once it has gone the system's distance for a drag, and
    // once for each press: a drag that the user gave up is not to start again.
    std::function<void(const MouseEvent&)> on_mouse_move;
    std::function<void(const MouseEvent&)> on_mouse_up;
    // The keyboard asks for the popup of the selection; the point is at the current row, on the
    // screen.
    std::function<void(Point)> on_context_key;
    std::function<void()> on_empty_state_changed;  // the model's empty-state switch was flipped

    // Neither is owned; both outlive the list. `images` is what the model's small icons are in.
    ListView(ListModel& model, ImageList& images);
    ~ListView() override;

    void Create(ControlSite& site, const ControlSpec& spec, const std::vector<ListColumn>& columns);

    [[nodiscard]] int ColumnWidth(std::size_t column) const;
    void SetColumnWidth(std::size_t column, int width);

    // Draws the arrow of the sort order into one column's header and takes it from the others. It
    // goes by itself once the rows may no longer be in that order: a row was added, or a text of
    // that column changed.
    void ShowSortArrow(std::size_t column, bool descending);

    std::optional<LRESULT> OnNotify(NMHDR& header) override;

  private:
    static constexpr int kAllRows = -1;  // to the system's list

    void RowChanged(std::size_t position) override;
    void CellChanged(std::size_t column) override;
    void RowAppended() override;
    void RowsChanged() override;
    void SelectionChanged() override;
    void SmallIconsAttached() override;
    void EmptyStateChanged() override;

    LRESULT OnOwnMessage(const WatchedMessage& message) override;
    // True when the message has been dealt with and is not for the list itself.
    bool OnListMessage(UINT message, WPARAM wparam, LPARAM lparam);
    bool OnMouseMessage(UINT message, WPARAM wparam, LPARAM lparam);
    void PressRight(Point at, int shift);
    [[nodiscard]] bool MovedEnough(Point at, WPARAM buttons) const;

    [[nodiscard]] bool AnythingChanged() const;
    void CatchUpLater(bool& what_changed);
    void CatchUp();
    void ShowRowCount();
    void PutSortArrow(std::size_t column, bool descending);
    void ShowSelection();
    void ShowCurrent();
    void SetRowState(int row, UINT state, UINT mask) const;
    void ReadSelection();
    void FindSight();
    [[nodiscard]] bool InSight(std::size_t position);
    [[nodiscard]] Point ContextPoint() const;

    void GiveCell(LVITEMW& item);
    void NoteChange(const NMLISTVIEW& change);
    [[nodiscard]] LRESULT FindText(const NMLVFINDITEMW& find) const;

    ListModel& model_;
    ImageList& images_;
    const std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  // for handlers that end it

    // What the window has yet to catch up with.
    bool rows_appended_ = false;
    bool rows_changed_ = false;
    bool selection_changed_ = false;
    bool order_lost_ = false;
    bool catching_up_ = false;
    bool drawing_ = true;
    std::size_t shown_count_ = 0;

    std::size_t arrow_column_ = ListModel::kNoPosition;  // whose header has the sort arrow

    // The rows in sight, kept between two messages to the window.
    bool sight_known_ = false;
    std::size_t sight_first_ = 0;
    std::size_t sight_count_ = 0;

    std::optional<Point> right_press_;  // where the right button went down, until it moves or rises
    bool right_move_told_ = false;      // since it went down

    // Texts handed to the window, which may use each until it has asked for two more.
    std::array<std::wstring, 4> cells_;
    std::size_t next_cell_ = 0;
};

}  // namespace tidemark
