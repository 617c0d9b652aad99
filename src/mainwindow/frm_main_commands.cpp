// The menus: what is enabled when one opens, and what each item does.

#include "lists/list_helpers.h"
#include "lists/shell_services.h"
#include "mainwindow/control_states.h"
#include "mainwindow/frm_main.h"
#include "settings/mod_options.h"

namespace tidemark {

void frmMain::WireMenus() {
    menu["mnuFile"].on_open = [this] { mnuFile_Click(); };
    menu["mnuFileStamp"].on_click = [this] { cmdStamp_Click(); };
    menu["mnuFileRemoveSelected"].on_click = [this] { mnuFileRemoveSelected_Click(); };
    menu["mnuFileRemoveCompleted"].on_click = [this] { mnuFileRemoveCompleted_Click(); };
    menu["mnuFileRemoveAll"].on_click = [this] { mnuFileRemoveAll_Click(); };
    menu["mnuFileExit"].on_click = [this] {
        adding_.Clear();  // shutting down lets messages run before this window goes
        services_.shut_down(/*unload_main=*/true);
    };
    menu["mnuEdit"].on_open = [this] { mnuEdit_Click(); };
    menu["mnuEditSelectAll"].on_click = [this] {
        SelectAllRows(rows);
        adding_.SelectWhenListed();
    };
    menu["mnuEditClearSelections"].on_click = [this] { ClearRowSelection(rows); };
    menu["mnuView"].on_open = [this] { mnuView_Click(); };
    menu["mnuViewRefresh"].on_click = [this] { mnuViewRefresh_Click(); };
    // The window follows the panel also when the option could not be saved.
    const auto lay_out_after = [this](const auto& command) {
        try {
            command();
        } catch (...) {
            Form_Resize();
            throw;
        }
        Form_Resize();
    };
    const auto set_layout = [this, lay_out_after](bool controls_on_top) {
        lay_out_after([this, controls_on_top] {
            ApplyOption(services_.common.settings, *this, Option::ControlsOnTop, controls_on_top);
        });
    };
    menu["mnuViewControlsOnTop"].on_click = [set_layout] { set_layout(true); };
    menu["mnuViewControlsOnBottom"].on_click = [set_layout] { set_layout(false); };
    menu["mnuViewDateCreated"].on_click = [this, lay_out_after] {
        lay_out_after(
            [this] { ToggleOption(services_.common.settings, *this, Option::ShowDateCreated); });
    };
    const auto toggles = [this](const char* name, Option option) {
        menu[name].on_click = [this, option] {
            ToggleOption(services_.common.settings, *this, option);
        };
    };
    toggles("mnuViewAlwaysOnTop", Option::AlwaysOnTop);
    toggles("mnuOptionsClearReadOnly", Option::ClearReadOnlyAttribute);
    toggles("mnuOptionsSyncFolders", Option::SyncFolderCreatedDates);
    toggles("mnuOptionsPrompt", Option::PromptWhenDone);
    toggles("mnuOptionsClearAutomatically", Option::ClearAutomatically);
    toggles("mnuOptionsShowErrorsAutomatically", Option::ShowErrorsAutomatically);
    menu["mnuOptionsReset"].on_click = [this] { mnuOptionsReset_Click(); };
    menu["mnuLPRemove"].on_click = [this] { mnuFileRemoveSelected_Click(); };
    menu["mnuLPRemoveAll"].on_click = [this] { mnuFileRemoveAll_Click(); };
}

MenuSituation frmMain::Situation() const {
    return {.rows = rows.Count() > 0,
            .selected_rows = SelectedRowCount(rows) > 0,
            .items = oItems.Count() > 0,
            .any_count_complete = oItems.AnyCountComplete(),
            .any_stamp_complete_without_errors = oItems.AnyStampCompleteWithNoErrors(),
            .errors_exist = oItems.ErrorsExist()};
}

void frmMain::mnuFile_Click() {
    MenuItem& open = menu["mnuFileOpenContainingFolder"];
    open.tag = ContainingFolderCommand(&rows, services_.common.platform.file_system);
    open.SetEnabled(!open.tag.empty());
    const MenuStates states = MenuStatesFor(Situation());
    menu["mnuFileRemoveSelected"].SetEnabled(states.remove_selected);
    menu["mnuFileRemoveAll"].SetEnabled(states.remove_all);
    menu["mnuFileRemoveCompleted"].SetEnabled(states.remove_completed);
}

void frmMain::mnuEdit_Click() {
    const MenuStates states = MenuStatesFor(Situation());
    menu["mnuEditSelectAll"].SetEnabled(states.select_all);
    menu["mnuEditClearSelections"].SetEnabled(states.select_none);
}

void frmMain::mnuView_Click() {
    const MenuStates states = MenuStatesFor(Situation());
    menu["mnuViewRefresh"].SetEnabled(states.recount);
    menu["mnuViewErrors"].SetEnabled(states.errors);
}

void frmMain::RemoveItems(const std::vector<std::string>& keys) {
    adding_.LeaveOut(keys);
    for (const std::string& key : keys) {
        oItems.Remove(key, &rows);
    }
    UpdateControls();
}

void frmMain::mnuFileRemoveSelected_Click() {
    if (adding_.SelectsAll()) {
        SelectAllRows(rows);
        adding_.ForgetSelected();
    }
    std::vector<std::string> keys;
    for (std::size_t position = 0; position < rows.Count(); ++position) {
        if (rows.At(position).selected) {
            keys.push_back(rows.At(position).key);
        }
    }
    RemoveItems(keys);
}

void frmMain::mnuFileRemoveCompleted_Click() {
    std::vector<std::string> keys;
    for (std::size_t position = 0; position < rows.Count(); ++position) {
        const ListRow& row = rows.At(position);
        const TidemarkItem* const item = oItems.ItemOf(row);
        if (item != nullptr && item->StampComplete() && !item->HasErrors()) {
            keys.push_back(row.key);
        }
    }
    RemoveItems(keys);
}

void frmMain::mnuFileRemoveAll_Click() {
    adding_.Clear();
    oItems.Clear(&rows);
    UpdateControls();
}

void frmMain::mnuViewRefresh_Click() {
    for (const std::shared_ptr<TidemarkItem>& item : oItems) {
        item->Count();
    }
    UpdateControls();
}

void frmMain::mnuOptionsReset_Click() {
    if (services_.boxes.Show(this, {.text = "Set default visuals and options?",
                                    .buttons = BoxButtons::kYesNo,
                                    .icon = BoxIcon::kQuestion,
                                    .default_button = 2}) != BoxAnswer::kNo) {
        ResetOptions(services_.common.settings, *this);
    }
}

}  // namespace tidemark
