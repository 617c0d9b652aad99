// What the options and the window placement ask of the window.

#include "mainwindow/frm_main.h"
#include "ui/topmost.h"

namespace tidemark {

bool frmMain::IsChecked(std::string_view item) const {
    return menu[item].Checked();
}

void frmMain::SetChecked(std::string_view item, bool checked) {
    menu[item].SetChecked(checked);
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
