#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/tidemark_item_collection.h"
#include "lists/list_model.h"
#include "mainwindow/control_states.h"
#include "platform/platform.h"
#include "platform/settings_store.h"
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
#include "ui/panel.h"
#include "ui/progress_bar.h"
#include "ui/status_bar.h"
#include "ui/subclasser.h"

namespace tidemark {

// What the main window asks of the rest of the program. Everything outlives the window.
struct MainWindowServices {
    const Platform& platform;
    MessageBoxes& boxes;
    SettingsStore& settings;
    std::function<ListColumns&()> errors_list_columns;  // of the errors window, loaded if need be
    std::function<void(bool unload_main)> shut_down;
    std::function<void()> closed;  // the window is going; the program may end
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

    // Adds each path that exists to the list and starts counting what is new. Other paths are left
    // out silently.
    void AddItems(const std::vector<std::string>& paths);

    // The Stamp button: starts a stamp of every item or, while it reads "Cancel", cancels it.
    void cmdStamp_Click();

    // The poll.
    void oTimer_Timer();
    // Brings captions and states of controls and menus in line with the items, handles the end of
    // a stamp, and restarts the poll.
    void UpdateControls();

    // OptionsHost
    [[nodiscard]] bool IsChecked(OptionItem item) const override;
    void SetChecked(OptionItem item, bool checked) override;
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
    DateTimePicker dtTimeLastModified;
    CheckBox chkCreated;
    DateTimePicker dtDateCreated;
    DateTimePicker dtTimeCreated;
    Button cmdStamp;
    ListModel rows;  // what lvwItems shows
    ImageList ImageList1;
    ListView lvwItems;
    StatusBar StatusBar1;
    ProgressBar ProgressBar1;

    [[nodiscard]] TidemarkItemCollection& Items() { return oItems; }

  private:
    void ITimerObjectSink_Timer() override { oTimer_Timer(); }

    void OnResize(Size client) override;
    void OnClose() override;
    void OnDestroy() override;

    // ListColumns, of lvwItems
    [[nodiscard]] std::int32_t ColumnWidth(int column) const override;
    void SetColumnWidth(int column, std::int32_t width) override;

    void CreateControls();
    void WireMenus();

    // frm_main_layout.cpp
    void PositionProgressBar();

    // frm_main_work.cpp
    void RefreshRows();
    void ShowStatus();
    void StampItems();
    void CancelStamps();
    void chkCreated_Click();
    void HandleEndOfStamp();

    // frm_main_commands.cpp
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
    TidemarkItemCollection oItems;
    std::unique_ptr<TimerObject> oTimer;
    bool bStampRequested = false;
    bool stamp_starting_ = false;  // between the press of Stamp and the last item's start
};

}  // namespace tidemark
