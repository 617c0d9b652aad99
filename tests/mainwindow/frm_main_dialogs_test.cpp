// What the menus and the list open, through the system's own dialogs and menus.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cwchar>

#include "controls/ole_session.h"
#include "mainwindow/main_window_fixture.h"
#include "mainwindow/send_to_shortcut.h"
#include "platform/input_bits.h"
#include "platform/win32/wide_text.h"
#include "support/menu_captions.h"
#include "support/modal_driver.h"
#include "support/open_windows.h"
#include "support/park_pointer.h"
#include "support/real_tree.h"
#include "support/refused_windows.h"
#include "support/replaced_import.h"
#include "support/shell_link.h"

// Need the system's main header before them.
#include <commctrl.h>
#include <commdlg.h>
#include <dlgs.h>
#include <shlobj.h>

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MainWindowDialogs : public MainWindowTest {
  protected:
    // The place for names in the file dialog, once the dialog shows a folder.
    static HWND NameEdit() {
        const auto shows_folder = [](HWND child) { return ClassOf(child) == L"SHELLDLL_DefView"; };
        const auto takes_names = [](HWND child) {
            const int id = ::GetDlgCtrlID(child);
            return ClassOf(child) == WC_EDITW && (id == edt1 || id == cmb13);
        };
        return FindBelow(OpenDialog(), shows_folder) != nullptr
                   ? FindBelow(OpenDialog(), takes_names)
                   : nullptr;
    }
    static ModalDriver::Step Type(const std::string& text) {
        return [text] {
            const HWND edit = NameEdit();
            if (edit == nullptr) {
                return false;
            }
            ::SetWindowTextW(edit, WideFromUtf8(text).c_str());
            PressInDialog(IDOK);
            return true;
        };
    }
    // Waits until what was typed has been taken: a folder is gone to, and the place is empty again.
    static ModalDriver::Step WaitUntilTaken() {
        return [] {
            const HWND edit = NameEdit();
            return edit != nullptr && ::GetWindowTextLengthW(edit) == 0;
        };
    }
    // Chooses Add Files and types these texts into its dialog, one after the other.
    void AddFiles(const std::vector<std::string>& texts) {
        std::vector<ModalDriver::Step> steps;
        for (const std::string& text : texts) {
            if (!steps.empty()) {
                steps.push_back(WaitUntilTaken());
            }
            steps.push_back(Type(text));
        }
        ModalDriver driver(std::move(steps), [] { PressInDialog(IDCANCEL); });
        Choose("mnuFile", "mnuFileAddFiles");
        Finish();
    }
    // A real file that the window's own system has, too.
    std::string FileInBoth(const std::string& name) {
        const std::string path = tree_.MakeFile(name);
        system_.volume.AddFile(path);
        return path;
    }

    // The folder that relative paths are read from.
    static std::wstring CurrentFolder() {
        std::array<wchar_t, MAX_PATH> folder{};
        ::GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
        return folder.data();
    }

    OleSession ole_;
    RealTree tree_;
};

TEST_F(MainWindowDialogs, NamesTypedIntoTheFileDialogAreListed) {
    Load();
    const std::string a = FileInBoth("a.txt");
    const std::string b = FileInBoth("b c.txt");
    AddFiles({tree_.Root(), "\"a.txt\" \"b c.txt\""});
    EXPECT_THAT(RowTexts(), ElementsAre(a, b));
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

// What a dialog of the system was asked for.
struct AskedDialog {
    HWND owner = nullptr;
    DWORD flags = 0;
    std::string text;  // a filter's parts are parted by "|"
} asked_dialog;

BOOL WINAPI NoteFileDialog(OPENFILENAMEW* dialog) {
    asked_dialog = {dialog->hwndOwner, dialog->Flags, ""};
    for (const wchar_t* part = dialog->lpstrFilter; *part != L'\0'; part += std::wcslen(part) + 1) {
        asked_dialog.text += Utf8FromWide(part) + "|";
    }
    ::lstrcpyW(dialog->lpstrFile, L"C:\\chosen.txt");
    return TRUE;
}

PIDLIST_ABSOLUTE WINAPI NoteFolderChooser(BROWSEINFOW* dialog) {
    asked_dialog = {dialog->hwndOwner, dialog->ulFlags, Utf8FromWide(dialog->lpszTitle)};
    return nullptr;
}

TEST_F(MainWindowDialogs, TheFileDialogAsksForExistingFilesOfAnyKind) {
    const ReplacedImport file_dialog("GetOpenFileNameW", NoteFileDialog);
    Load();
    system_.volume.AddFile("C:\\chosen.txt");
    Choose("mnuFile", "mnuFileAddFiles");
    Finish();
    EXPECT_EQ(asked_dialog.owner, Main().Handle());
    EXPECT_EQ(asked_dialog.flags, 0x89A04U);
    EXPECT_EQ(asked_dialog.text, "All Files (*.*)|*.*|");
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\chosen.txt"));
}

TEST_F(MainWindowDialogs, TheFolderChooserSaysWhatItsFolderIsFor) {
    const ReplacedImport folder_chooser("SHBrowseForFolderW", NoteFolderChooser);
    Load();
    Choose("mnuFile", "mnuFileAddFolder");
    EXPECT_EQ(asked_dialog.owner, Main().Handle());
    EXPECT_EQ(asked_dialog.flags, 329U);
    EXPECT_EQ(asked_dialog.text, "Select a folder to be stamped.");
}

TEST_F(MainWindowDialogs, TheFileDialogLeavesTheCurrentFolderAsItWas) {
    Load();
    FileInBoth("a.txt");
    const std::wstring before = CurrentFolder();
    AddFiles({tree_.Root(), "\"a.txt\""});
    ASSERT_EQ(RowTexts().size(), 1U);
    EXPECT_EQ(CurrentFolder(), before);
}

TEST_F(MainWindowDialogs, MoreNamesThanTheFileDialogCanReturnAddNothingAndThatIsTold) {
    Load();
    std::string names;
    for (const char letter : std::string("abcdefghijkl")) {
        const std::string name(100, letter);
        FileInBoth(name);
        names.append("\"").append(name).append("\" ");
    }
    AddFiles({tree_.Root(), names});
    EXPECT_THAT(RowTexts(), IsEmpty());
    ASSERT_EQ(boxes_.shown.size(), 1U);
    EXPECT_EQ(boxes_.shown[0].text,
              "Too many files were chosen at once, so none was added. Choose fewer files, or add "
              "their folder.");
    EXPECT_EQ(boxes_.shown[0].icon, BoxIcon::kWarning);
}

TEST_F(MainWindowDialogs, ACancelledFileDialogAddsNothingAndSaysNothing) {
    Load();
    ModalDriver driver({[] { return NameEdit() != nullptr; },
                        [] {
                            PressInDialog(IDCANCEL);
                            return true;
                        }},
                       [] { PressInDialog(IDCANCEL); });
    Choose("mnuFile", "mnuFileAddFiles");
    EXPECT_THAT(RowTexts(), IsEmpty());
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(MainWindowDialogs, AFileDialogThatCannotBeOpenedIsNotTakenForACancelledOne) {
    Load();
    const RefusedWindows no_dialogs(L"#32770");
    bool told = false;
    try {
        Item("mnuFileAddFiles").on_click();
    } catch (const ProgramError& error) {
        told = true;
        EXPECT_EQ(error.Number(), static_cast<std::int32_t>(::CommDlgExtendedError()));
    }
    EXPECT_GT(no_dialogs.Count(), 0);
    EXPECT_THAT(RowTexts(), IsEmpty());
    if (::CommDlgExtendedError() == 0) {
        GTEST_SKIP() << "Wine gives no code for a file dialog that it could not make";
    }
    EXPECT_TRUE(told);
}

TEST_F(MainWindowDialogs, ARightClickOnRowsOfOneFolderShowsTheShellsMenuBelowOpenContainingFolder) {
    Load();
    const std::string path = FileInBoth("a.txt");
    List({path});
    SelectRow(Main().rows.At(0).key);
    std::vector<std::string> captions;
    ModalDriver driver({[&captions] {
                            captions = CaptionsOf(OpenMenu());
                            return OpenMenu() != nullptr;
                        },
                        [&] {
                            // The first entry is the program's own.
                            Main().lvwItems.Post(WM_KEYDOWN, VK_DOWN);
                            Main().lvwItems.Post(WM_KEYDOWN, VK_RETURN);
                            return true;
                        }},
                       [] { ::EndMenu(); });
    // The menu opens at the pointer: in the corner only its border is below it.
    ParkPointer();
    Main().lvwItems.on_mouse_down({.button = kRightButton});
    Main().lvwItems.on_mouse_up({.button = kRightButton});
    ASSERT_GT(captions.size(), 3U) << "the shell's entries are there";
    EXPECT_EQ(captions[0], "Open Containing Folder");
    EXPECT_EQ(captions[1], "-");
    std::string key = path;
    std::transform(key.begin(), key.end(), key.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    EXPECT_THAT(commands_.started, ElementsAre("explorer ,\"" + key + "\",/select"));
}

TEST_F(MainWindowDialogs, TheShortcutIsReadBackAsItWasWritten) {
    ASSERT_TRUE(WriteShortcut("C:\\windows\\notepad.exe", tree_.Root()));
    const auto link = ReadShellLink(tree_.Path("Tidemark Clock.lnk"));
    ASSERT_TRUE(link);
    EXPECT_STRCASEEQ(link->target.c_str(), "C:\\windows\\notepad.exe");
    EXPECT_EQ(link->description, "Sets date/time stamp for files or folders.");
    EXPECT_EQ(link->arguments, "");
    EXPECT_EQ(link->working_folder, "");
}

TEST_F(MainWindowDialogs, AShortcutThatCannotBeWrittenIsNotMade) {
    EXPECT_FALSE(WriteShortcut("C:\\windows\\notepad.exe", ""));
    EXPECT_FALSE(WriteShortcut("C:\\windows\\notepad.exe", tree_.Path("nowhere")));
}

}  // namespace
}  // namespace tidemark
