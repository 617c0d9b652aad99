#include "errors/frm_errors.h"

#include <algorithm>
#include <utility>

#include "controls/list_popup.h"
#include "errors/errors_layout.h"
#include "lists/list_helpers.h"
#include "lists/shell_services.h"
#include "platform/input_bits.h"
#include "platform/win32/win32_screen.h"
#include "settings/mod_monitor_info.h"
#include "settings/mod_options.h"
#include "ui/window_end.h"

namespace tidemark {

namespace {

constexpr Size kWindowSize{640, 480};
constexpr Bounds kLabelBounds{8, 8, 600, 16};

}  // namespace

frmErrors::frmErrors(const ListWindowServices& services)
    : menu({{0, "mnuBadItemPopup", "BadItemPopup"},
            {1, "mnuBadItemPopup1", "No valid items selected"}}),
      rows(ErrorRows::Create(services.platform, ImageList1.Keyed(), *this)),
      lvwErrors(rows->List(), ImageList1),
      services_(services) {}

frmErrors::~frmErrors() {
    rows->Detach();
    Destroy();
}

void frmErrors::Form_Load() {
    rows->Attach();
    font_ = MakeFont("Tahoma", 8.25);
    SetFormFont(font_.Get());
    FormSpec spec;
    spec.caption = "errors: tidemark";
    spec.bounds.width = kWindowSize.width;
    spec.bounds.height = kWindowSize.height;
    Create(L"frmErrors", spec);
    CreateControls();
    WireList();
    message_font_.Adopt(*this);
    LoadColumnWidths(services_.settings, *this, ColumnSet::kErrorsList, /*useDefault=*/false);
    MinMax1.AttachTo(Handle());
    OnResize(ClientSize());
}

void frmErrors::Unload() {
    if (!Exists()) {
        return;
    }
    const WindowEnd end(*this);
    SaveColumnWidths(services_.settings, *this, ColumnSet::kErrorsList);
}

void frmErrors::AddFromCollection(StampErrorList errors) {
    rows->AddFromCollection(std::move(errors));
}

void frmErrors::CreateControls() {
    ControlSpec label;
    label.text = "The following errors occurred during stamping:";
    label.bounds = kLabelBounds;
    Label1.Create(*this, label);
    ControlSpec list;
    list.extended_style = WS_EX_CLIENTEDGE;
    lvwErrors.Create(*this, list,
                     {{"Name", 300}, {"Error", 96, /*right_aligned=*/true}, {"Description", 400}});
    ControlSpec status_bar;
    // The list reaches over its upper edge.
    status_bar.style = WS_CLIPSIBLINGS;
    StatusBar1.Create(*this, status_bar);
}

void frmErrors::WireList() {
    lvwErrors.on_column_click = [this](std::size_t column) { lvwErrors_ColumnClick(column); };
    lvwErrors.on_key_down = [this](UINT key, int shift) { lvwErrors_KeyDown(key, shift); };
    lvwErrors.on_mouse_down = [this](const MouseEvent& event) {
        bRightButtonDown = bRightButtonDown || event.button == kRightButton;
    };
    lvwErrors.on_mouse_move = [this](const MouseEvent& event) { lvwErrors_MouseMove(event); };
    lvwErrors.on_mouse_up = [this](const MouseEvent& event) { lvwErrors_MouseUp(event); };
    lvwErrors.on_context_key = [this](Point at) { ShowPopup(at); };
}

LRESULT frmErrors::OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const bool shown_by_program = wparam != FALSE && lparam == 0;
    if (message == WM_SHOWWINDOW && shown_by_program) {
        KeepOnMonitor();
    }
    return Form::OnMessage(window, message, wparam, lparam);
}

void frmErrors::KeepOnMonitor() {
    if (::IsIconic(Handle()) || ::IsZoomed(Handle())) {
        return;  // the system places these
    }
    const Win32Screen screen;
    const Bounds before = Position();
    Bounds place = before;
    KeepRectOnMonitor(screen, place);
    // What is larger than the monitor would end at its bottom right corner.
    const Rect monitor = MonitorRectAtPoint(screen, before.left, before.top);
    place.left = std::max(place.left, monitor.left);
    place.top = std::max(place.top, monitor.top);
    if (place != before) {
        Move(place);
    }
}

void frmErrors::OnResize(Size client) {
    StatusBar1.FollowForm();
    lvwErrors.Move(ErrorsListBounds(Label1.Position(), client.width, StatusBar1.Position().top));
}

void frmErrors::OnClose() {
    rows->Cancel();
    SetVisible(false);
    services_.platform.pump.RunPendingMessagesNow();
}

void frmErrors::SetListRedraw(bool on) {
    lvwErrors.Send(WM_SETREDRAW, on ? TRUE : FALSE);
    if (on) {
        lvwErrors.Invalidate();
    }
}

std::int32_t frmErrors::ColumnWidth(int column) const {
    return lvwErrors.ColumnWidth(static_cast<std::size_t>(column));
}

void frmErrors::SetColumnWidth(int column, std::int32_t width) {
    lvwErrors.SetColumnWidth(static_cast<std::size_t>(column), width);
}

void frmErrors::lvwErrors_ColumnClick(std::size_t column) {
    rows->ColumnClick(static_cast<ErrorColumn>(column));
    lvwErrors.ShowSortArrow(rows->Sorting().Column(), rows->Sorting().Descending());
}

void frmErrors::lvwErrors_KeyDown(UINT key, int shift) {
    if (key == 'A' && shift == kControlKey) {
        SelectAllRows(rows->List());
    }
}

void frmErrors::lvwErrors_MouseMove(const MouseEvent& event) {
    if (event.button == kRightButton && bRightButtonDown) {
        services_.drag_files(*this, kRightButton);
        // The drag has mostly taken the button's release.
        bRightButtonDown = ::GetKeyState(VK_RBUTTON) < 0;
    }
}

void frmErrors::lvwErrors_MouseUp(const MouseEvent& event) {
    const bool pressed_here = std::exchange(bRightButtonDown, false);
    if (event.button == kRightButton && pressed_here) {
        ShowPopup(kAtPointer);
    }
}

void frmErrors::ShowPopup(Point at) {
    if (lvwErrors.Visible()) {
        lvwErrors.Focus();
    }
    if (SelectedRowCount(rows->List()) == 0) {
        menu.PopUp(menu["mnuBadItemPopup"], *this, at);
        return;
    }
    // A second popup may take the member's place while this one is open.
    const auto popup = std::make_shared<ShellContextMenu>(services_.popup_menus);
    oContextMenu = popup;
    FillListPopup(*popup, ExistingSelectedPaths(rows->List(), services_.platform.file_system),
                  [this] { oContextMenu_MenuItemInvoked(); });
    popup->UseShellDefault = true;
    popup->PopupMenu(lvwErrors.Handle(), /*Flags=*/0, at.x, at.y);
}

void frmErrors::oContextMenu_MenuItemInvoked() {
    const std::string command =
        ContainingFolderCommand(&rows->List(), services_.platform.file_system);
    if (!command.empty()) {
        services_.command_runner.Run(command);
    }
}

void frmErrors::StartDrag(DragSourceData& data, std::int32_t& allowed_effects) {
    data.SetFiles(ExistingSelectedPaths(rows->List(), services_.platform.file_system));
    allowed_effects = kDropEffectCopy | kDropEffectMove;
}

}  // namespace tidemark
