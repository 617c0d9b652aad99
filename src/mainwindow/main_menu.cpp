#include "mainwindow/main_menu.h"

namespace tidemark {

const std::vector<MenuRow>& MainMenuTable() {
    static const std::vector<MenuRow> kTable = {
        {0, "mnuFile", "&File"},
        {1, "mnuFileOpenContainingFolder", "Open &Containing Folder"},
        {1, "mnuFileZ1", "-"},
        {1, "mnuFileAddFiles", "Add &Files..."},
        {1, "mnuFileAddFolder", "Add F&older..."},
        {1, "mnuFileStamp", "&Stamp"},
        {1, "mnuFileZ2", "-"},
        {1, "mnuFileRemoveSelected", "Re&move Selected"},
        {1, "mnuFileRemoveCompleted", "&Remove Completed"},
        {1, "mnuFileRemoveAll", "Remove A&ll"},
        {1, "mnuFileZ3", "-"},
        {1, "mnuFileExit", "E&xit"},
        {0, "mnuEdit", "&Edit"},
        {1, "mnuEditSelectAll", "Select &All"},
        {1, "mnuEditClearSelections", "Select &None"},
        {0, "mnuView", "&View"},
        {1, "mnuViewControlsOnTop", "Controls On &Top"},
        {1, "mnuViewControlsOnBottom", "Controls On &Bottom"},
        {1, "mnuViewDateCreated", "Date &Created"},
        {1, "mnuViewZ1", "-"},
        {1, "mnuViewRefresh", "&Recount"},
        {1, "mnuViewErrors", "Stamping &Errors"},
        {1, "mnuViewZ2", "-"},
        {1, "mnuViewAlwaysOnTop", "&Always On Top"},
        {0, "mnuOptions", "&Options"},
        {1, "mnuOptionsClearReadOnly", "Clear &Read-Only Attributes"},
        {1, "mnuOptionsSyncFolders", "Sync &Folder Created Date"},
        {1, "mnuOptionsZ1", "-"},
        {1, "mnuOptionsPrompt", "&Prompt When Done"},
        {1, "mnuOptionsClearAutomatically", "Clear &Completed Items Automatically"},
        {1, "mnuOptionsShowErrorsAutomatically", "Show &Errors Automatically"},
        {1, "mnuOptionsZ2", "-"},
        {1, "mnuOptionsCreateSendTo", "Create &Send To Shortcut"},
        {1, "mnuOptionsReset", "Reset O&ptions"},
        {0, "mnuHelp", "&Help"},
        {1, "mnuHelpAbout", "&About"},
        // These three never stand in the bar. The list pops up the last two, nothing the first.
        {0, "mnuListPopup", "list popup"},
        {1, "mnuLPRemove", "&Remove Selected"},
        {1, "mnuLPRemoveAll", "Remove A&ll"},
        {0, "mnuItemPopup", "item popup"},
        {1, "mnuItemPopupOpenContainingFolder", "Open &Containing Folder"},
        {0, "mnuBadItemPopup", "bad item popup"},
        {1, "mnuBadItemPopup1", "No valid items selected"},
    };
    return kTable;
}

}  // namespace tidemark
