#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "controls/drop_target.h"
#include "controls/list_window_services.h"
#include "controls/ole_dropper.h"
#include "controls/shell_context_menu.h"
#include "engine/tidemark_item_collection.h"
#include "lists/column_sort.h"
#include "lists/list_model.h"
#include "mainwindow/adding_queue.h"
#include "mainwindow/control_states.h"
#include "mainwindow/stamp_times.h"
#include "platform/process.h"
#include "platform/screen.h"
#include "settings/options_host.h"
#include "ui/button.h"
#include "ui/date_time_picker.h"
#include "ui/form.h"
#include "ui/image_list.h"
#include "ui/label.h"
#include "ui/list_view.h"
#include "ui/menu.h"
#include "ui/message_box.h"
#include "ui/message_font.h"
#include "ui/min_max.h"
#include "ui/panel.h"
#include "ui/progress_bar.h"
#include "ui/status_bar.h"
#include "ui/subclasser.h"
#include "ui/taskbar_button.h"
#include "ui/tool_tip.h"

namespace tidemark {

// What the main window asks of the rest of the program. Everything outlives the window.
struct MainWindowServices {
    ListWindowServices common;
    MessageBoxes& boxes;
    const Screen& screen;
    Process& process;
    TaskbarButton::TaskbarSource taskbar;
    std::function<ListColumns&()> errors_list_columns;  // of the errors window, loaded if need be
    std::function<void(const StampErrorList& errors, bool topmost)> show_errors;
    std::function<void(bool topmost)> show_about;  // until the user closes it
    std::function<void(bool unload_main)> shut_down;
    std::function<void()> closed;  // the loaded window is going; the program may end
};

// The program's working window: the list of items, the pickers, Stamp and Cancel, and the poll
// that keeps list, status bar and progress bar up to date. It owns the items; their work runs in
// their own timer ticks, and the window only watches.
class frmMain final : public Form,
                      public OptionsHost,
                      private ListColumns,
                      private ITimerObjectSink {
  public:
    explicit frmMain(const MainWindowServices& services);
    ~frmMain() override;

    // Creates the window and its controls, invisible. Throws ProgramError when it cannot.
    void Form_Load();
    // One-time preparation after Form_Load: the pickers' first values, the options, the first poll.
    void InitializeDisplay();

    // Applies the saved placement, or the default one when `reset`.
    void LoadPosition(bool reset);

    // Adds each path that exists to the list and starts counting what is new. Other paths are left
    // out silently. The first of many paths are listed at once, the others in later ticks; commands
    // act as if all of them were listed.
    void AddItems(std::vector<std::string> paths);

    // Whether paths are still to be listed, or any item counts or stamps.
    [[nodiscard]] bool Busy() const;

    // The Stamp button: starts a stamp of every item or, while it reads "Cancel", cancels it.
    void cmdStamp_Click();

    // The poll.
    void oTimer_Timer();
    // Brings captions and states of controls and menus in line with the items, handles the end of
    // a stamp, and restarts the poll.
    void UpdateControls();

    // OptionsHost
    [[nodiscard]] bool IsChecked(std::string_view item) const override;
    void SetChecked(std::string_view item, bool checked) override;
    void ArrangeControls(bool showDateCreated, bool controlsOnTop) override;
    void SetTopmost(bool on) override;
    void Form_Resize() override;
    [[nodiscard]] ListColumns& ItemListColumns() override { return *this; }
    [[nodiscard]] ListColumns& ErrorsListColumns() override;

    // The controls and menus, under the names that the whole program uses for them.
    Menu menu;
    Panel picControls;
    Label lblLastModified;
    DateTimePicker dtDateLastModified;
    Label lblTimeLastModified;  // hidden, as the next two: names for assistive technology
    DateTimePicker dtTimeLastModified;
    CheckBox chkCreated;
    Label lblDateCreated;
    DateTimePicker dtDateCreated;
    Label lblTimeCreated;
    DateTimePicker dtTimeCreated;
    Button cmdStamp;
    ListModel rows;  // what lvwItems shows
    ImageList ImageList1;
    Label lblItems;     // hidden
    Label lblProgress;  // hidden
    ListView lvwItems;
    OLEDropper OLEDropper1;    // stands in the list's place while the list is empty
    ProgressBar ProgressBar1;  // in front of the status bar's second panel
    StatusBar StatusBar1;
    ToolTip tipTimes;  // what a stamp would write now, over the pickers and the button

    [[nodiscard]] TidemarkItemCollection& Items() { return oItems; }

  private:
    void ITimerObjectSink_Timer() override { oTimer_Timer(); }

    void OnResize(Size client) override;
    void OnClose() override;
    void OnDestroy() override;
    void OnFirstFocus() override;

    // ListColumns, of lvwItems
    [[nodiscard]] std::int32_t ColumnWidth(int column) const override;
    void SetColumnWidth(int column, std::int32_t width) override;

    void CreateControls();
    void OnExitSizeMove();
    [[nodiscard]] Size SmallestSize() const;
    void Form_QueryUnload();

    // frm_main_layout.cpp
    void PositionProgressBar();
    void ShowListOrLabel(bool list);

    // frm_main_work.cpp
    void OnBatchAdded(bool stamp_due);
    [[nodiscard]] bool Stamping() const;
    void RefreshRows();
    void ShowControls();
    void ShowStatus();
    [[nodiscard]] PickedTimes PickedNow() const;
    void TakeOverTypedDigits() const;
    [[nodiscard]] std::string TimesInWords() const;
    void RequestStamp();
    void StampItems();
    void CancelStamps();
    void chkCreated_Click();
    void HandleEndOfStamp();

    // frm_main_list.cpp
    void WireList();
    void lvwItems_ColumnClick(std::size_t column);
    void SortRows();                   // by the column clicked last
    void PopUpForSelection(Point at);  // on the screen, or kAtPointer
    void oContextMenu_MenuItemInvoked();

    // frm_main_dialogs.cpp
    void WireDialogs();
    void mnuFileAddFiles_Click();
    void mnuFileAddFolder_Click();
    void mnuOptionsCreateSendTo_Click();
    void mnuViewErrors_Click();
    void OpenContainingFolder(const MenuItem& item);

    // frm_main_commands.cpp
    void WireMenus();
    [[nodiscard]] MenuSituation Situation() const;
    void mnuFile_Click();
    void mnuEdit_Click();
    void mnuView_Click();
    void mnuFileRemoveSelected_Click();
    void mnuFileRemoveCompleted_Click();
    void mnuFileRemoveAll_Click();
    void mnuViewRefresh_Click();
    void mnuOptionsReset_Click();
    void RemoveItems(const std::vector<std::string>& keys);

    MainWindowServices services_;
    UniqueFont font_;
    MessageFont message_font_;
    TidemarkItemCollection oItems;
    AddingQueue adding_;
    std::unique_ptr<TimerObject> oTimer;
    Subclasser oSubclasser;
    MinMax MinMax1;
    TaskbarButton taskbar_button_;
    std::shared_ptr<ShellContextMenu> oContextMenu;
    OleDragDropEvents list_drag_events_;
    OleDragDropForwarder list_drag_{list_drag_events_};
    std::unique_ptr<DropTarget> list_target_;
    ColumnSort sort_;
    bool sort_when_listed_ = false;    // a column was clicked while paths are being listed
    bool loaded_ = false;              // Form_Load has done all of its work
    bool bRestoringPlacement = false;  // what moves the window now is not the user
    bool bRightButtonDown = false;
    bool bStampRequested = false;  // the end of this stamp is still to be handled
    unsigned poll_restarts_ = 0;   // UpdateControls so far: a command inside a poll wants another
    bool stamp_starting_ = false;  // between the press of Stamp and the last item's start
};

}  // namespace tidemark
