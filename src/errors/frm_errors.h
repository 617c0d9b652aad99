#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "controls/list_window_services.h"
#include "controls/ole_drag_drop.h"
#include "controls/shell_context_menu.h"
#include "engine/stamp_error.h"
#include "errors/error_rows.h"
#include "settings/options_host.h"
#include "ui/form.h"
#include "ui/image_list.h"
#include "ui/label.h"
#include "ui/list_view.h"
#include "ui/menu.h"
#include "ui/message_font.h"
#include "ui/min_max.h"
#include "ui/status_bar.h"

namespace tidemark {

// The window that lists the errors of the last stamp: what failed, the system's code and its text.
// The user closing it only hides it, and the next collection is shown in the same window. Wherever
// it was placed, it comes up with its title bar on a monitor.
//
// The object stays until nothing of it is on the stack; Unload ends the window itself.
class frmErrors final : public Form,
                        private ErrorsDisplay,
                        private ListColumns,
                        private OleDragDropSink {
  public:
    explicit frmErrors(const ListWindowServices& services);
    ~frmErrors() override;

    // Creates the window and its controls, invisible. Throws ProgramError when it cannot.
    void Form_Load();
    // Saves the column widths and destroys the window for good. Throws ProgramError when the
    // widths cannot be saved; the window is gone all the same.
    void Unload();

    // Shows these errors instead of those before; the rows come once the window had its chance to
    // paint. The records are shared, not copied. No path may be there twice.
    void AddFromCollection(StampErrorList errors);

    // The columns' widths, as they are kept between runs.
    [[nodiscard]] ListColumns& Columns() { return *this; }

    // The controls and menus, under the names that the whole program uses for them.
    Menu menu;
    Label Label1;
    ImageList ImageList1;

    const std::shared_ptr<ErrorRows> rows;  // what lvwErrors shows
    ListView lvwErrors;
    StatusBar StatusBar1;
    MinMax MinMax1;

    LRESULT OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) override;

  private:
    void OnResize(Size client) override;
    void OnClose() override;
    void OnDestroy() override { rows->Detach(); }

    // ErrorsDisplay
    void SetStatusText(const std::string& text) override { StatusBar1.SetSimpleText(text); }
    void SetListRedraw(bool on) override;

    // ListColumns, of lvwErrors
    [[nodiscard]] std::int32_t ColumnWidth(int column) const override;
    void SetColumnWidth(int column, std::int32_t width) override;

    // OleDragDropSink
    void StartDrag(DragSourceData& data, std::int32_t& allowed_effects) override;

    void KeepOnMonitor();
    void CreateControls();
    void WireList();
    void lvwErrors_ColumnClick(std::size_t column);
    void lvwErrors_KeyDown(UINT key, int shift);
    void lvwErrors_MouseMove(const MouseEvent& event);
    void lvwErrors_MouseUp(const MouseEvent& event);
    void ShowPopup(Point at);  // on the screen, or kAtPointer
    void oContextMenu_MenuItemInvoked();

    ListWindowServices services_;
    UniqueFont font_;
    MessageFont message_font_;
    std::shared_ptr<ShellContextMenu> oContextMenu;
    bool bRightButtonDown = false;
};

}  // namespace tidemark
