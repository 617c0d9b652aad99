// The item list: sorting, keys, the right-click popup, and files dragged in and out.

#include "controls/list_popup.h"
#include "lists/list_helpers.h"
#include "lists/shell_services.h"
#include "mainwindow/frm_main.h"
#include "platform/input_bits.h"

namespace tidemark {
namespace {

constexpr std::size_t kContainsColumn = 1;

}  // namespace

void frmMain::WireList() {
    // The list appears with its first row, long before the last of many is added.
    lvwItems.on_empty_state_changed = [this] { ShowListOrLabel(rows.HoldsItems()); };
    lvwItems.on_column_click = [this](std::size_t column) { lvwItems_ColumnClick(column); };
    lvwItems.on_key_down = [this](UINT key, int /*shift*/) {
        if (key == VK_DELETE) {
            mnuFileRemoveSelected_Click();
        }
    };
    lvwItems.on_mouse_down = [this](const MouseEvent& event) {
        if (event.button == kRightButton) {
            bRightButtonDown = true;
        }
    };
    lvwItems.on_mouse_move = [this](const MouseEvent& event) {
        if (event.button == kRightButton && bRightButtonDown) {
            services_.common.drag_files(list_drag_, kRightButton);
            // The drag has mostly taken the button's release.
            bRightButtonDown = ::GetKeyState(VK_RBUTTON) < 0;
        }
    };
    lvwItems.on_mouse_up = [this](const MouseEvent& event) {
        if (event.button == kRightButton && bRightButtonDown) {
            PopUpForSelection(kAtPointer);
            bRightButtonDown = false;
        }
    };
    lvwItems.on_context_key = [this](Point at) { PopUpForSelection(at); };

    const auto drag_over = [](DragData& data, std::int32_t& effect, std::int16_t /*button*/,
                              std::int16_t /*shift*/, float& /*x*/, float& /*y*/,
                              std::int16_t /*state*/) { AcceptFiles(data, effect); };
    const auto drop = [this](DragData& data, std::int32_t& effect, std::int16_t /*button*/,
                             std::int16_t /*shift*/, float& /*x*/, float& /*y*/) {
        if (AcceptDroppedFiles(data, effect)) {
            AddItems(std::vector<std::string>(data.Files()));
        }
    };
    list_drag_events_.OLEDragOver = drag_over;
    list_drag_events_.OLEDragDrop = drop;
    list_drag_events_.OLEStartDrag = [this](DragSourceData& data, std::int32_t& allowed_effects) {
        data.SetFiles(ExistingSelectedPaths(rows, services_.common.platform.file_system));
        allowed_effects = kDropEffectCopy | kDropEffectMove;
    };
    OLEDropper1.OLEDragOver = drag_over;
    OLEDropper1.OLEDragDrop = drop;
    list_target_ = std::make_unique<DropTarget>(lvwItems.Handle(), list_drag_);
}

void frmMain::lvwItems_ColumnClick(std::size_t column) {
    if (!oTimer) {
        return;  // the window is closing, and its items are gone
    }
    sort_.Click(column);
    sort_when_listed_ = !adding_.Empty();
    SortRows();
}

void frmMain::SortRows() {
    const std::size_t column = sort_.Column();
    const bool polling = oTimer->Enabled();
    oTimer->SetEnabled(false);
    const RedrawPause pause(lvwItems);
    const auto write_contains = [this](auto text_of) {
        for (std::size_t position = 0; position < rows.Count(); ++position) {
            const ListRow& row = rows.At(position);
            if (const TidemarkItem* const item = oItems.ItemOf(row)) {
                rows.SetSubItem(row, 0, text_of(*item));
            }
        }
    };
    // The rows are sorted by their texts, and counts sort by value only while they are padded.
    if (column == kContainsColumn) {
        write_contains([](const TidemarkItem& item) {
            return SortableNumber(std::int64_t{item.FileCount()} + item.FolderCount());
        });
    }
    rows.Sort(column, sort_.Descending());
    if (column == kContainsColumn) {
        write_contains([](const TidemarkItem& item) { return item.CountString(); });
    }
    lvwItems.ShowSortArrow(column, sort_.Descending());
    oTimer->SetEnabled(polling);
}

void frmMain::PopUpForSelection(Point at) {
    if (lvwItems.Visible()) {
        lvwItems.Focus();
    }
    FileSystemObject& file_system = services_.common.platform.file_system;
    if (SelectedRowCount(rows) == 0) {
        menu.PopUp(menu["mnuBadItemPopup"], *this, at);
        return;
    }
    const auto paths = SelectedPathsInOneFolder(rows, file_system);
    if (!paths) {
        MenuItem& open = menu["mnuItemPopupOpenContainingFolder"];
        open.tag = ContainingFolderCommand(&rows, file_system);
        open.SetEnabled(!open.tag.empty());
        menu.PopUp(menu["mnuItemPopup"], *this, at);
        return;
    }
    // The popup runs messages while it is up, in which the window may go.
    const auto popup = std::make_shared<ShellContextMenu>(services_.common.popup_menus);
    oContextMenu = popup;
    FillListPopup(*popup, *paths, [this] { oContextMenu_MenuItemInvoked(); });
    popup->PopupMenu(lvwItems.Handle(), /*Flags=*/0, at.x, at.y);
}

void frmMain::oContextMenu_MenuItemInvoked() {
    if (!oTimer) {
        return;
    }
    mnuFile_Click();
    if (menu["mnuFileOpenContainingFolder"].Enabled()) {
        OpenContainingFolder(menu["mnuFileOpenContainingFolder"]);
    }
}

}  // namespace tidemark
