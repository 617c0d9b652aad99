#include "ui/list_view.h"

#include <algorithm>

#include "platform/raise.h"
#include "platform/win32/wide_text.h"

namespace tidemark {

ListView::ListView(ListModel& model, ImageList& images) : model_(model), images_(images) {
    model_.SetObserver(this);
}

ListView::~ListView() {
    *alive_ = false;
    model_.SetObserver(nullptr);
    Destroy();
}

void ListView::Create(ControlSite& site, const ControlSpec& spec,
                      const std::vector<ListColumn>& columns) {
    ControlSpec own = spec;
    // The selection stays in sight while a menu or another window has the focus. The pictures
    // belong to their image list.
    own.style |= WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS;
    CreateChild(site, WC_LISTVIEWW, own);
    constexpr DWORD kLook = LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kLook, static_cast<LPARAM>(kLook));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::wstring header = WideFromUtf8(columns[i].header);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
        column.fmt = columns[i].right_aligned ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.cx = columns[i].width;
        column.pszText = header.data();
        column.iSubItem = static_cast<int>(i);
        Send(LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
    shown_count_ = 0;
    rows_changed_ = true;
    SmallIconsAttached();
    CatchUp();
}

int ListView::ColumnWidth(std::size_t column) const {
    return static_cast<int>(Send(LVM_GETCOLUMNWIDTH, column));
}

void ListView::SetColumnWidth(std::size_t column, int width) {
    // The control takes a negative width for a wish to size the column by what it holds, and only
    // the lower 16 bits of a greater one.
    const int wanted = std::clamp(width, 0, 0x7FFF);
    if (ColumnWidth(column) != wanted) {
        Send(LVM_SETCOLUMNWIDTH, column, wanted);
    }
}

void ListView::ShowSortArrow(std::size_t column, bool descending) {
    CatchUp();  // or what changed before the sort would take the arrow away
    PutSortArrow(column, descending);
}

void ListView::PutSortArrow(std::size_t column, bool descending) {
    arrow_column_ = column;
    const Window header(reinterpret_cast<HWND>(Send(LVM_GETHEADER)));
    const auto count =
        static_cast<std::size_t>(std::max<LRESULT>(0, header.Send(HDM_GETITEMCOUNT)));
    for (std::size_t i = 0; i < count; ++i) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        header.Send(HDM_GETITEMW, i, reinterpret_cast<LPARAM>(&item));
        const int before = item.fmt;
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == column) {
            item.fmt |= descending ? HDF_SORTDOWN : HDF_SORTUP;
        }
        if (item.fmt != before) {
            header.Send(HDM_SETITEMW, i, reinterpret_cast<LPARAM>(&item));
        }
    }
}

// Following the model.

void ListView::RowChanged(std::size_t position) {
    // When rows are to be shown anew anyway, or this one for the first time, it is drawn then. The
    // window must not even be asked: it would catch up at once, with each of many rows.
    if (!rows_changed_ && position < shown_count_ && InSight(position)) {
        Send(LVM_REDRAWITEMS, position, static_cast<LPARAM>(position));
    }
}

void ListView::CellChanged(std::size_t column) {
    if (column == arrow_column_) {
        CatchUpLater(order_lost_);
    }
}

void ListView::RowAppended() {
    CatchUpLater(rows_appended_);
}

void ListView::RowsChanged() {
    CatchUpLater(rows_changed_);
}

void ListView::SelectionChanged() {
    CatchUpLater(selection_changed_);
}

void ListView::SmallIconsAttached() {
    const bool shows = model_.SmallIcons() != nullptr;
    Send(LVM_SETIMAGELIST, LVSIL_SMALL,
         reinterpret_cast<LPARAM>(shows ? images_.Handle() : nullptr));
}

void ListView::EmptyStateChanged() {
    Raise(on_empty_state_changed);
}

// Any message makes the window catch up, before the message itself; this sees to it that one comes.
void ListView::CatchUpLater(bool& what_changed) {
    if (!AnythingChanged()) {
        Post(WM_NULL);
    }
    what_changed = true;
}

bool ListView::AnythingChanged() const {
    return rows_appended_ || rows_changed_ || selection_changed_ || order_lost_;
}

void ListView::CatchUp() {
    if (catching_up_ || !AnythingChanged()) {
        return;
    }
    catching_up_ = true;
    if ((rows_appended_ || order_lost_) && arrow_column_ != ListModel::kNoPosition) {
        PutSortArrow(ListModel::kNoPosition, /*descending=*/false);
    }
    if (rows_changed_ || rows_appended_) {
        ShowRowCount();
    }
    if (rows_changed_ || selection_changed_) {
        ShowSelection();
        ShowCurrent();
    }
    rows_appended_ = rows_changed_ = selection_changed_ = order_lost_ = sight_known_ = false;
    catching_up_ = false;
}

void ListView::ShowRowCount() {
    const std::size_t count = model_.Count();
    // Rows appended out of sight need no painting at all.
    const LPARAM quietly = rows_changed_ ? 0 : LVSICF_NOINVALIDATEALL;
    Send(LVM_SETITEMCOUNT, count, LVSICF_NOSCROLL | quietly);
    if (!rows_changed_ && count > shown_count_) {
        // The list may go through the rows one by one, in sight or not.
        FindSight();
        const std::size_t first = std::max(shown_count_, sight_first_);
        const std::size_t end = std::min(count, sight_first_ + sight_count_);
        if (first < end) {
            Send(LVM_REDRAWITEMS, first, static_cast<LPARAM>(end) - 1);
        }
    }
    shown_count_ = count;
}

void ListView::ShowSelection() {
    const std::size_t count = model_.Count();
    const std::size_t selected = model_.SelectedCount();
    if (selected == 0 && Send(LVM_GETSELECTEDCOUNT) == 0) {
        return;
    }
    // Nested in another pause, it would end that one.
    std::optional<RedrawPause> pause;
    if (drawing_) {
        pause.emplace(*this);
    }
    // All rows at once to what most of them are, then the others one by one.
    const bool most = selected > count / 2;
    const auto state = [](bool on) { return on ? LVIS_SELECTED : 0U; };
    SetRowState(kAllRows, state(most), LVIS_SELECTED);
    if (selected == 0 || selected == count) {
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (model_.At(i).selected != most) {
            SetRowState(static_cast<int>(i), state(!most), LVIS_SELECTED);
        }
    }
}

void ListView::ShowCurrent() {
    const std::size_t current = model_.CurrentPosition();
    if (current == ListModel::kNoPosition) {
        // Taking it from all rows would be a pass over them.
        const LRESULT shown = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(kAllRows), LVNI_FOCUSED);
        if (shown >= 0) {
            SetRowState(static_cast<int>(shown), 0, LVIS_FOCUSED);
        }
        return;
    }
    SetRowState(static_cast<int>(current), LVIS_FOCUSED, LVIS_FOCUSED);
    Send(LVM_SETSELECTIONMARK, 0, static_cast<LPARAM>(current));
}

void ListView::SetRowState(int row, UINT state, UINT mask) const {
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void ListView::FindSight() {
    sight_first_ = static_cast<std::size_t>(Send(LVM_GETTOPINDEX));
    // A row that shows in part counts too.
    sight_count_ = static_cast<std::size_t>(Send(LVM_GETCOUNTPERPAGE)) + 1;
    sight_known_ = true;
}

bool ListView::InSight(std::size_t position) {
    if (!sight_known_) {
        FindSight();
    }
    return position >= sight_first_ && position - sight_first_ < sight_count_;
}

// What the window asks and reports.

std::optional<LRESULT> ListView::OnNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            GiveCell(reinterpret_cast<NMLVDISPINFOW&>(header).item);
            return 0;
        case LVN_ITEMCHANGED:
            NoteChange(reinterpret_cast<const NMLISTVIEW&>(header));
            return 0;
        case LVN_ODSTATECHANGED: {
            const auto& change = reinterpret_cast<const NMLVODSTATECHANGE&>(header);
            if (!catching_up_ && change.iFrom >= 0 && change.iTo >= change.iFrom) {
                model_.NoteSelected(static_cast<std::size_t>(change.iFrom),
                                    static_cast<std::size_t>(change.iTo),
                                    (change.uNewState & LVIS_SELECTED) != 0);
            }
            return 0;
        }
        case LVN_ODFINDITEMW:
            return FindText(reinterpret_cast<const NMLVFINDITEMW&>(header));
        case LVN_COLUMNCLICK: {
            const int column = reinterpret_cast<const NMLISTVIEW&>(header).iSubItem;
            Raise(on_column_click, static_cast<std::size_t>(column));
            return 0;
        }
        default:
            return std::nullopt;
    }
}

void ListView::GiveCell(LVITEMW& item) {
    const auto position = static_cast<std::size_t>(item.iItem);
    if (item.iItem < 0 || position >= model_.Count()) {
        return;
    }
    const ListRow& row = model_.At(position);
    if ((item.mask & LVIF_TEXT) != 0) {
        const auto column = static_cast<std::size_t>(item.iSubItem);
        std::wstring& cell = cells_[next_cell_];
        next_cell_ = (next_cell_ + 1) % cells_.size();
        cell = column == 0                      ? WideFromUtf8(row.text)
               : column <= row.sub_items.size() ? WideFromUtf8(row.sub_items[column - 1])
                                                : std::wstring();
        item.pszText = cell.data();
    }
    if ((item.mask & LVIF_IMAGE) != 0) {
        item.iImage = row.small_icon == 0 ? I_IMAGENONE : row.small_icon - 1;
    }
}

void ListView::NoteChange(const NMLISTVIEW& change) {
    if (catching_up_ || (change.uChanged & LVIF_STATE) == 0) {
        return;
    }
    if (change.iItem == kAllRows) {
        ReadSelection();
        return;
    }
    const auto position = static_cast<std::size_t>(change.iItem);
    const UINT flipped = change.uOldState ^ change.uNewState;
    if ((flipped & LVIS_SELECTED) != 0) {
        model_.NoteSelected(position, position, (change.uNewState & LVIS_SELECTED) != 0);
    }
    if ((flipped & LVIS_FOCUSED) != 0) {
        const bool gained = (change.uNewState & LVIS_FOCUSED) != 0;
        if (gained || model_.CurrentPosition() == position) {
            model_.NoteCurrent(gained ? position : ListModel::kNoPosition);
        }
    }
}

// A change of all rows at once does not tell reliably what became of each.
void ListView::ReadSelection() {
    const std::size_t count = model_.Count();
    const auto selected = static_cast<std::size_t>(Send(LVM_GETSELECTEDCOUNT));
    if (count != 0) {
        model_.NoteSelected(0, count - 1, selected == count);
    }
    if (selected == count) {
        return;
    }
    for (LRESULT i = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED); i != -1;
         i = Send(LVM_GETNEXTITEM, static_cast<WPARAM>(i), LVNI_SELECTED)) {
        model_.NoteSelected(static_cast<std::size_t>(i), static_cast<std::size_t>(i), true);
    }
}

LRESULT ListView::FindText(const NMLVFINDITEMW& find) const {
    const UINT flags = find.lvfi.flags;
    if ((flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || find.lvfi.psz == nullptr) {
        return -1;
    }
    const std::size_t found = model_.FindText(
        Utf8FromWide(find.lvfi.psz), {.start = static_cast<std::size_t>(std::max(0, find.iStart)),
                                      .wrap = (flags & LVFI_WRAP) != 0,
                                      .whole = (flags & LVFI_PARTIAL) == 0});
    return found == ListModel::kNoPosition ? -1 : static_cast<LRESULT>(found);
}

}  // namespace tidemark
