#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/screen.h"
#include "platform/win32/windows.h"
// After the system's main header.
#include <shlobj.h>

namespace tidemark {

// The shell's folder chooser. Set the fields, call Browse, read SelectedFolder. Texts are UTF-8.
// One dialog at a time in the whole program; the fields may be written while it is open, but only
// what it has not yet read takes effect. User-interface thread only.
class BrowseForFolder {
  public:
    // Folders of the file system, their ancestors, the resizable dialog, and its usage hint.
    static constexpr std::int32_t kDefaultFlags =
        BIF_RETURNONLYFSDIRS | BIF_RETURNFSANCESTORS | BIF_NEWDIALOGSTYLE | BIF_UAHINT;

    // The shell's dialog, or a stand-in with its argument and result.
    using ShowDialog = std::function<PIDLIST_ABSOLUTE(BROWSEINFOW&)>;

    // The dialog is kept on a monitor of `screen`, which is not owned and outlives the object.
    explicit BrowseForFolder(const Screen& screen);
    BrowseForFolder(const Screen& screen, ShowDialog show_dialog);

    std::string DialogTitle;             // caption of the dialog; empty: the shell's own
    std::int32_t Flags = kDefaultFlags;  // of BROWSEINFO, passed as they are
    HWND hWndOwner = nullptr;            // owner; the dialog is centred over it
    std::string OKText;                  // caption of the OK button; empty: the shell's own
    std::string RootFolder;              // root of the tree; empty: the desktop
    std::string Prompt = "Choose a folder";
    std::string SelectedFolder;  // selected at first; after success the chosen one

    // The path of one of the shell's numbered folders (CSIDL); empty when it has none.
    [[nodiscard]] static std::string GetSpecialFolderLocation(std::int32_t SpecialFolder);

    // Shows the dialog until it is closed. True when a folder with a path was chosen; only then
    // does SelectedFolder change. False, too, when another dialog is open. A RootFolder or
    // SelectedFolder that the shell does not know is left unset; a thread that cannot have OLE gets
    // what dialog the shell shows without it. The object must outlive the call.
    bool Browse();

  private:
    class Dialog;

    const Screen& screen_;
    ShowDialog show_dialog_;
};

}  // namespace tidemark
