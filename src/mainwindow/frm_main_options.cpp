// What the options and the window placement ask of the window.

#include "mainwindow/frm_main.h"
#include "ui/topmost.h"

namespace tidemark {
namespace {

const char* NameOf(OptionItem item) {
    switch (item) {
        case OptionItem::mnuViewDateCreated:
            return "mnuViewDateCreated";
        case OptionItem::mnuViewControlsOnTop:
            return "mnuViewControlsOnTop";
        case OptionItem::mnuViewControlsOnBottom:
            return "mnuViewControlsOnBottom";
        case OptionItem::mnuViewAlwaysOnTop:
            return "mnuViewAlwaysOnTop";
        case OptionItem::mnuOptionsClearReadOnly:
            return "mnuOptionsClearReadOnly";
        case OptionItem::mnuOptionsSyncFolders:
            return "mnuOptionsSyncFolders";
        case OptionItem::mnuOptionsPrompt:
            return "mnuOptionsPrompt";
        case OptionItem::mnuOptionsClearAutomatically:
            return "mnuOptionsClearAutomatically";
        case OptionItem::mnuOptionsShowErrorsAutomatically:
            return "mnuOptionsShowErrorsAutomatically";
    }
    return "";
}

}  // namespace

bool frmMain::IsChecked(OptionItem item) const {
    return menu[NameOf(item)].Checked();
}

void frmMain::SetChecked(OptionItem item, bool checked) {
    menu[NameOf(item)].SetChecked(checked);
}

void frmMain::SetTopmost(bool on) {
    tidemark::SetTopmost(*this, on);
}

ListColumns& frmMain::ErrorsListColumns() {
    return services_.errors_list_columns();
}

std::int32_t frmMain::ColumnWidth(int column) const {
    return lvwItems.ColumnWidth(static_cast<std::size_t>(column));
}

void frmMain::SetColumnWidth(int column, std::int32_t width) {
    lvwItems.SetColumnWidth(static_cast<std::size_t>(column), width);
}

}  // namespace tidemark
