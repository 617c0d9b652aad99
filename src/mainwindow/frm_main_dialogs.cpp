// The commands that open something: dialogs, other windows, other programs.

#include "platform/win32/windows.h"

#include <cderr.h>
#include <commdlg.h>
#include <shlobj.h>

#include <string>
#include <vector>

#include "controls/browse_for_folder.h"
#include "engine/paths.h"
#include "mainwindow/file_dialog_names.h"
#include "mainwindow/frm_main.h"
#include "mainwindow/send_to_shortcut.h"
#include "platform/program_error.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

constexpr std::size_t kFileDialogBuffer = 1024;  // limits how many names one selection can return
// Wine writes the names of a large selection past the end that it was told (seen in 8.0). The place
// behind it keeps that harmless, and shows it.
constexpr std::size_t kBehindTheBuffer = 0x10000;

static_assert(kFileDialogBufferTooSmall == FNERR_BUFFERTOOSMALL);

// Gives the process its current folder back. The file dialog makes the folder that it shows the
// current one: relative paths in the list would name other files from then on, and the folder could
// not be renamed or deleted as long as the program runs.
class CurrentFolderKept {
  public:
    CurrentFolderKept() : folder_(::GetCurrentDirectoryW(0, nullptr), L'\0') {
        folder_.resize(::GetCurrentDirectoryW(static_cast<DWORD>(folder_.size()), folder_.data()));
    }
    ~CurrentFolderKept() { ::SetCurrentDirectoryW(folder_.c_str()); }
    CurrentFolderKept(const CurrentFolderKept&) = delete;
    CurrentFolderKept& operator=(const CurrentFolderKept&) = delete;

  private:
    std::wstring folder_;
};

bool ShowFileDialog(OPENFILENAMEW& dialog) {
    const CurrentFolderKept current_folder;
    return ::GetOpenFileNameW(&dialog) != FALSE;
}

}  // namespace

void frmMain::WireDialogs() {
    menu["mnuFileAddFiles"].on_click = [this] { mnuFileAddFiles_Click(); };
    menu["mnuFileAddFolder"].on_click = [this] { mnuFileAddFolder_Click(); };
    menu["mnuOptionsCreateSendTo"].on_click = [this] { mnuOptionsCreateSendTo_Click(); };
    menu["mnuViewErrors"].on_click = [this] { mnuViewErrors_Click(); };
    menu["mnuHelpAbout"].on_click = [this] {
        services_.show_about(menu["mnuViewAlwaysOnTop"].Checked());
    };
    for (const char* name : {"mnuFileOpenContainingFolder", "mnuItemPopupOpenContainingFolder"}) {
        menu[name].on_click = [this, name] { OpenContainingFolder(menu[name]); };
    }
}

void frmMain::mnuFileAddFiles_Click() {
    std::vector<wchar_t> names(kFileDialogBuffer + kBehindTheBuffer);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = Handle();
    dialog.lpstrFilter = L"All Files (*.*)\0*.*\0";
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = names.data();
    dialog.nMaxFile = kFileDialogBuffer;
    dialog.Flags = OFN_HIDEREADONLY | OFN_ALLOWMULTISELECT | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST |
                   OFN_NOREADONLYRETURN | OFN_EXPLORER;
    const bool chosen = ShowFileDialog(dialog);
    bool too_many = names[kFileDialogBuffer] != 0 || names[kFileDialogBuffer - 1] != 0;
    if (!chosen) {
        const DWORD code = ::CommDlgExtendedError();
        const FileDialogEnd end = EndOfFileDialog(code);
        if (end == FileDialogEnd::kFailed) {
            throw ProgramError(static_cast<std::int32_t>(code), "The file dialog cannot be opened");
        }
        too_many = too_many || end == FileDialogEnd::kTooManyNames;
    }
    if (too_many) {
        services_.boxes.Show(this, {.text = "Too many files were chosen at once, so none was "
                                            "added. Choose fewer files, or add their folder.",
                                    .icon = BoxIcon::kWarning});
    } else if (chosen) {
        AddItems(PathsFromFileDialog(Utf8FromWide({names.data(), kFileDialogBuffer})));
    }
}

void frmMain::mnuFileAddFolder_Click() {
    BrowseForFolder chooser(services_.screen);
    chooser.hWndOwner = Handle();
    chooser.DialogTitle = "Add Folder";
    chooser.Prompt = "Select a folder to be stamped.";
    if (chooser.Browse()) {
        AddItems({chooser.SelectedFolder});
    }
}

void frmMain::mnuOptionsCreateSendTo_Click() {
    Process& process = services_.process;
    const std::string program = AddBackslash(process.ExecutableFolder()) + process.ExecutableName();
    if (WriteShortcut(program, BrowseForFolder::GetSpecialFolderLocation(CSIDL_SENDTO))) {
        services_.boxes.Show(this, {.text = "Shortcut created.\r\n\r\nThe program is listed as "
                                            "'Tidemark Clock' on your Send To menu."});
    }
}

void frmMain::mnuViewErrors_Click() {
    services_.common.platform.pump.RunPendingMessagesNow();
    if (!oTimer) {
        return;  // closed meanwhile, and the errors window with it
    }
    services_.show_errors(oItems.ErrorList(), menu["mnuViewAlwaysOnTop"].Checked());
}

void frmMain::OpenContainingFolder(const MenuItem& item) {
    if (!item.tag.empty()) {
        services_.common.command_runner.Run(item.tag);
    }
}

}  // namespace tidemark
