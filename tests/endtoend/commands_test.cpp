// Every command of the menus, chosen by the keyboard in the program that ships, and what is then
// to be seen.

#include <gmock/gmock.h>

#include <array>
#include <optional>
#include <set>

#include "endtoend/end_to_end.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"
#include "settings/stored_text.h"
#include "support/com_apartment.h"
#include "support/poll_until.h"
#include "support/remote_errors_window.h"
#include "support/shell_link.h"

// Need the system's main header before them.
#include <commctrl.h>
#include <dlgs.h>
#include <shlobj.h>

namespace tidemark {
namespace {

constexpr const wchar_t* kDialogClass = L"#32770";

// The file manager's windows that are there now, whoever opened them.
std::set<HWND> FileManagers() {
    std::set<HWND> windows;
    for (const wchar_t* name : {L"ExplorerWClass", L"CabinetWClass"}) {
        HWND window = nullptr;
        while ((window = ::FindWindowExW(nullptr, window, name, nullptr)) != nullptr) {
            windows.insert(window);
        }
    }
    return windows;
}

// Puts the user's own shortcut on the Send To menu aside while alive.
class SendToGuard {
  public:
    SendToGuard() {
        std::array<wchar_t, MAX_PATH> folder{};
        ::SHGetSpecialFolderPathW(nullptr, folder.data(), CSIDL_SENDTO, FALSE);
        link_ = std::wstring(folder.data()) + L"\\Tidemark Clock.lnk";
        aside_ = link_ + L".aside";
        ::MoveFileW(link_.c_str(), aside_.c_str());
    }
    ~SendToGuard() {
        ::DeleteFileW(link_.c_str());
        ::MoveFileW(aside_.c_str(), link_.c_str());
    }
    SendToGuard(const SendToGuard&) = delete;
    SendToGuard& operator=(const SendToGuard&) = delete;

    [[nodiscard]] std::string Link() const { return Utf8FromWide(link_); }

  private:
    std::wstring link_;
    std::wstring aside_;
};

// One start of the program serves all of the commands: it lists "a.txt", "locked.txt" and "folder".
class CommandsEndToEnd : public EndToEnd {
  protected:
    CommandsEndToEnd() {
        for (const char* file : {"a.txt", "locked.txt", "folder\\one", "by dialog.txt",
                                 "by chooser\\one", "by chooser\\two"}) {
            tree_.MakeFile(file);
        }
        tree_.SetTimes(LongAgo());
    }

    // What the window shows, for a failure's report.
    [[nodiscard]] std::string Shown() const {
        std::string text = "button: " + program_->cmdStamp().Text() +
                           ", status bar:" + program_->StatusBar1().Text() +
                           (program_->MenuIsOpen() ? ", a menu is open" : "") +
                           (program_->Main().Enabled() ? "" : ", disabled");
        for (int row = 0; row < List().Rows(); ++row) {
            text += "\n" + List().Cell(row, 0) + " | " + program_->Contains(row) + " | " +
                    program_->Status(row);
        }
        return text;
    }
    [[nodiscard]] RemoteListView List() const { return program_->lvwItems(); }
    void Choose(char menu, int item) const {
        ASSERT_TRUE(program_->ChooseFromMenu(menu, item, kWait));
    }
    [[nodiscard]] bool WaitForRows(int rows) const {
        return PollUntil(kWait, [&] { return List().Rows() == rows; });
    }
    void ExpectErrorsWindow() const {
        const RemoteErrorsWindow errors(*program_, kWait);
        errors.Close();
        EXPECT_TRUE(PollUntil(kWait, [&] { return !errors.Visible(); }));
    }

    // The dialog that stands open; its owner is disabled meanwhile.
    [[nodiscard]] std::optional<RemoteWindow> WaitForDialog() const {
        const auto dialog = program_->WaitForWindow(kDialogClass, kWait);
        EXPECT_TRUE(dialog);
        EXPECT_TRUE(PollUntil(kWait, [this] { return !program_->Main().Enabled(); }));
        return dialog;
    }
    void EndDialog(const RemoteWindow& dialog, int button) const {
        dialog.Post(WM_COMMAND, static_cast<WPARAM>(button));
        EXPECT_TRUE(PollUntil(kWait, [&] { return !dialog.Exists() || !dialog.Visible(); }));
        EXPECT_TRUE(PollUntil(kWait, [this] { return program_->Main().Enabled(); }));
    }
    // Types into the file dialog where a name is expected, once the dialog shows a folder: it is
    // made piece by piece, and empties that place on its way.
    [[nodiscard]] static bool TypeName(const RemoteWindow& dialog, const std::string& name) {
        const std::wstring text = WideFromUtf8(name);
        return PollUntil(kWait, [&] {
            bool shows_folder = false;
            std::optional<RemoteWindow> edit;
            for (const RemoteWindow& child : dialog.Descendants()) {
                const int id = ::GetDlgCtrlID(child.Handle());
                const std::wstring class_name = child.ClassName();
                shows_folder |= class_name == L"SHELLDLL_DefView" && child.Visible();
                if (class_name == WC_EDITW && (id == edt1 || id == cmb13)) {
                    edit = child;
                }
            }
            if (!shows_folder || !edit) {
                return false;
            }
            // The system carries this one across processes by itself.
            edit->Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
            return edit->Text() == name;
        });
    }
    void SelectInChooser(const RemoteWindow& chooser, const std::string& path) const {
        const std::wstring wide = WideFromUtf8(path);
        const std::size_t size = (wide.size() + 1) * sizeof(wchar_t);
        const RemoteMemory memory(program_->Process(), size);
        memory.Write(0, wide.c_str(), size);
        const std::string name = path.substr(path.rfind('\\') + 1);
        EXPECT_TRUE(PollUntil(kWait, [&] {
            chooser.Send(BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(memory.Address()));
            return SelectedFolder(chooser) == name &&
                   ::IsWindowEnabled(::GetDlgItem(chooser.Handle(), IDOK)) != FALSE;
        }));
    }
    // What the chooser's tree shows as selected.
    [[nodiscard]] std::string SelectedFolder(const RemoteWindow& chooser) const {
        for (const RemoteWindow& child : chooser.Descendants()) {
            if (child.ClassName() != WC_TREEVIEWW) {
                continue;
            }
            std::array<wchar_t, MAX_PATH> text{};
            const RemoteMemory memory(program_->Process(), sizeof(TVITEMW) + sizeof(text));
            TVITEMW item{};
            item.mask = TVIF_TEXT;
            item.hItem = reinterpret_cast<HTREEITEM>(child.Send(TVM_GETNEXTITEM, TVGN_CARET));
            item.pszText = reinterpret_cast<wchar_t*>(memory.Address() + sizeof(TVITEMW));
            item.cchTextMax = static_cast<int>(text.size());
            memory.Write(0, &item, sizeof(item));
            child.Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(memory.Address()));
            memory.Read(sizeof(TVITEMW), text.data(), sizeof(text));
            return Utf8FromWide(text.data());
        }
        return {};
    }
    [[nodiscard]] bool PanelIsAboveList() const {
        return PlaceOf(program_->cmdStamp().Handle()).bottom <= PlaceOf(List().Handle()).top;
    }

  public:
    void AddFilesListsWhatIsTypedIntoItsDialog();
    void AddFolderListsWhatIsChosenAndNothingWhenCancelled();
    void OpenContainingFolderOpensTheFileManager();
    void SelectAllAndSelectNone();
    void RecountCountsAgain();
    void StampStampsAndItsErrorsAreShown();
    void TheThreeRemovals();
    void TheViewArrangesTheWindow();
    void EachOptionTurnsOverAndResetSetsThemBack();
    void CreateSendToShortcutWritesALinkToTheProgram();
    void AboutIsModalAndGoesWithEsc();
    void ExitEndsTheProgram();

  protected:
    RealTree tree_;
    std::optional<RemoteTidemark> program_;
};

TEST_F(CommandsEndToEnd, EveryCommandOfTheMenusDoesWhatItSays) {
    program_.emplace(ProgramPath(), Quoted(tree_.Path("a.txt")) + " " +
                                        Quoted(tree_.Path("locked.txt")) + " " +
                                        Quoted(tree_.Path("folder")));
    ASSERT_TRUE(program_->WaitForCounts(3, kWait));
    // When it goes, it gives the focus to the window.
    ASSERT_TRUE(PollUntil(kWait, [this] { return !program_->Shown(L"frmSplash"); }));

    using Step = void (CommandsEndToEnd::*)();
    const struct {
        const char* name;
        Step run;
    } steps[] = {
        {"Add Files", &CommandsEndToEnd::AddFilesListsWhatIsTypedIntoItsDialog},
        {"Add Folder", &CommandsEndToEnd::AddFolderListsWhatIsChosenAndNothingWhenCancelled},
        {"Select", &CommandsEndToEnd::SelectAllAndSelectNone},
        {"Recount", &CommandsEndToEnd::RecountCountsAgain},
        {"Stamp, Stamping Errors", &CommandsEndToEnd::StampStampsAndItsErrorsAreShown},
        {"Open Containing Folder", &CommandsEndToEnd::OpenContainingFolderOpensTheFileManager},
        {"Remove", &CommandsEndToEnd::TheThreeRemovals},
        {"View", &CommandsEndToEnd::TheViewArrangesTheWindow},
        {"Options", &CommandsEndToEnd::EachOptionTurnsOverAndResetSetsThemBack},
        {"Create Send To Shortcut", &CommandsEndToEnd::CreateSendToShortcutWritesALinkToTheProgram},
        {"About", &CommandsEndToEnd::AboutIsModalAndGoesWithEsc},
        {"Exit", &CommandsEndToEnd::ExitEndsTheProgram},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.name);
        (this->*step.run)();
        if (HasFatalFailure()) {
            return;
        }
    }
}

void CommandsEndToEnd::AddFilesListsWhatIsTypedIntoItsDialog() {
    Choose('f', kAddFiles);
    const auto dialog = WaitForDialog();
    ASSERT_TRUE(dialog);
    ASSERT_TRUE(TypeName(*dialog, tree_.Path("by dialog.txt")));
    EndDialog(*dialog, IDOK);
    ASSERT_TRUE(program_->WaitForCounts(4, kWait));
    EXPECT_EQ(List().Cell(3, 0), tree_.Path("by dialog.txt"));
}

void CommandsEndToEnd::AddFolderListsWhatIsChosenAndNothingWhenCancelled() {
    Choose('f', kAddFolder);
    auto chooser = WaitForDialog();
    ASSERT_TRUE(chooser);
    EXPECT_EQ(chooser->Text(), "Add Folder");
    EndDialog(*chooser, IDCANCEL);
    EXPECT_EQ(List().Rows(), 4);

    tree_.SettleAccessTimes();
    Choose('f', kAddFolder);
    chooser = WaitForDialog();
    ASSERT_TRUE(chooser);
    SelectInChooser(*chooser, tree_.Path("by chooser"));
    EndDialog(*chooser, IDOK);
    ASSERT_TRUE(program_->WaitForCounts(5, kWait));
    EXPECT_EQ(List().Cell(4, 0), tree_.Path("by chooser") + "\\");
    EXPECT_EQ(program_->Contains(4), "2 files; 1 folder");
}

void CommandsEndToEnd::OpenContainingFolderOpensTheFileManager() {
    const std::set<HWND> before = FileManagers();
    List().Select({0});
    Choose('f', kOpenContainingFolder);
    HWND manager = nullptr;
    ASSERT_TRUE(PollUntil(kWait, [&] {
        for (const HWND window : FileManagers()) {
            manager = before.contains(window) ? manager : window;
        }
        return manager != nullptr;
    }));
    EXPECT_TRUE(PollUntil(kWait, [&] { return ::IsWindowVisible(manager) != FALSE; }));
    ::PostMessageW(manager, WM_CLOSE, 0, 0);
    EXPECT_TRUE(PollUntil(kWait, [&] { return ::IsWindow(manager) == FALSE; }));
}

void CommandsEndToEnd::SelectAllAndSelectNone() {
    Choose('e', kSelectAll);
    EXPECT_TRUE(PollUntil(kWait, [this] { return List().SelectedCount() == 5; }));
    Choose('e', kSelectNone);
    EXPECT_TRUE(PollUntil(kWait, [this] { return List().SelectedCount() == 0; }));
}

void CommandsEndToEnd::RecountCountsAgain() {
    tree_.MakeFile("by chooser\\three");
    Choose('v', kRecount);
    EXPECT_TRUE(PollUntil(kWait, [this] { return program_->Contains(4) == "3 files; 1 folder"; }));
}

void CommandsEndToEnd::StampStampsAndItsErrorsAreShown() {
    const LockedFile locked(tree_.Path("locked.txt"));
    Choose('f', kStamp);
    ASSERT_EQ(program_->WaitForBox(kWait).value_or("no message"),
              "Stamp complete.\r\n\r\nRemove completed items?")
        << Shown();
    ASSERT_TRUE(program_->AnswerBox(IDNO, kWait));
    ExpectErrorsWindow();  // by itself
    EXPECT_EQ(List().Rows(), 5);
    EXPECT_TRUE(
        PollUntil(kWait, [this] { return program_->Status(1) == "Complete (with errors)"; }));
    EXPECT_FALSE(EntryOf(tree_.Path("a.txt")).written == LongAgo());
    EXPECT_FALSE(EntryOf(tree_.Path("folder\\one")).written == LongAgo());
    EXPECT_EQ(EntryOf(tree_.Path("locked.txt")).written, LongAgo());
    Choose('v', kErrors);
    ExpectErrorsWindow();
}

void CommandsEndToEnd::TheThreeRemovals() {
    List().Select({2});
    Choose('f', kRemoveSelected);
    ASSERT_TRUE(WaitForRows(4));
    EXPECT_EQ(List().Cell(2, 0), tree_.Path("by dialog.txt"));
    Choose('f', kRemoveCompleted);
    ASSERT_TRUE(WaitForRows(1));
    EXPECT_EQ(List().Cell(0, 0), tree_.Path("locked.txt")) << "it had an error";
    Choose('f', kRemoveAll);
    ASSERT_TRUE(WaitForRows(0));
    EXPECT_TRUE(PollUntil(kWait, [this] { return !List().Visible(); }));
    EXPECT_FALSE(program_->cmdStamp().Enabled());
}

void CommandsEndToEnd::TheViewArrangesTheWindow() {
    EXPECT_TRUE(PanelIsAboveList());
    Choose('v', kControlsOnBottom);
    EXPECT_TRUE(PollUntil(kWait, [this] {
        return PlaceOf(List().Handle()).bottom <= PlaceOf(program_->cmdStamp().Handle()).top;
    }));
    EXPECT_TRUE(WaitForStored("ControlsOnTop", "False"));
    Choose('v', kControlsOnTop);
    EXPECT_TRUE(PollUntil(kWait, [this] { return PanelIsAboveList(); }));
    EXPECT_TRUE(WaitForStored("ControlsOnTop", "True"));

    EXPECT_FALSE(program_->chkCreated().Visible());
    const LONG list_top = PlaceOf(List().Handle()).top;
    Choose('v', kDateCreated);
    EXPECT_TRUE(PollUntil(kWait, [&] { return PlaceOf(List().Handle()).top > list_top; }));
    EXPECT_TRUE(program_->chkCreated().Visible());
    EXPECT_TRUE(program_->dtDateCreated().Visible());
    EXPECT_TRUE(program_->dtTimeCreated().Visible());
    Choose('v', kDateCreated);
    EXPECT_TRUE(PollUntil(kWait, [&] { return PlaceOf(List().Handle()).top == list_top; }));
    EXPECT_FALSE(program_->dtDateCreated().Visible());

    for (const bool on : {true, false}) {
        Choose('v', kAlwaysOnTop);
        EXPECT_TRUE(WaitForStored("AlwaysOnTop", TextFromTruth(on)));
    }
}

void CommandsEndToEnd::EachOptionTurnsOverAndResetSetsThemBack() {
    const struct {
        int item;
        const char* key;
        bool at_first;
    } options[] = {{kClearReadOnly, "ClearReadOnlyAttribute", false},
                   {kSyncFolders, "SyncFolderCreatedDates", true},
                   {kPrompt, "PromptWhenDone", true},
                   {kClearAutomatically, "ClearAutomatically", true},
                   {kShowErrors, "ShowErrorsAutomatically", true}};
    for (const auto& option : options) {
        Choose('o', option.item);
        EXPECT_TRUE(WaitForStored(option.key, TextFromTruth(!option.at_first))) << option.key;
    }
    for (const int answer : {IDNO, IDYES}) {
        Choose('o', kReset);
        ASSERT_EQ(program_->WaitForBox(kWait).value_or("no message"),
                  "Set default visuals and options?");
        ASSERT_TRUE(program_->AnswerBox(answer, kWait));
        for (const auto& option : options) {
            EXPECT_TRUE(
                WaitForStored(option.key, TextFromTruth(option.at_first == (answer == IDYES))))
                << option.key;
        }
    }
}

void CommandsEndToEnd::CreateSendToShortcutWritesALinkToTheProgram() {
    const ComApartment com;
    const SendToGuard guard;
    Choose('o', kCreateSendTo);
    EXPECT_EQ(program_->WaitForBox(kWait).value_or("no message"),
              "Shortcut created.\r\n\r\nThe program is listed as 'Tidemark Clock' on your Send To "
              "menu.");
    ASSERT_TRUE(program_->AnswerBox(IDOK, kWait));
    const auto link = ReadShellLink(guard.Link());
    ASSERT_TRUE(link);
    EXPECT_STRCASEEQ(link->target.c_str(), ProgramPath().c_str());
    EXPECT_EQ(link->description, "Sets date/time stamp for files or folders.");
    EXPECT_EQ(link->arguments, "");
    EXPECT_EQ(link->working_folder, "");
}

void CommandsEndToEnd::AboutIsModalAndGoesWithEsc() {
    Choose('h', kAbout);
    const auto about = program_->WaitForWindow(L"frmAbout", kWait);
    ASSERT_TRUE(about);
    EXPECT_EQ(about->Text(), "about: tidemark");
    EXPECT_FALSE(program_->Main().Enabled());
    about->Post(WM_KEYDOWN, VK_ESCAPE);
    EXPECT_TRUE(PollUntil(kWait, [&] { return !about->Exists(); }));
    EXPECT_TRUE(PollUntil(kWait, [this] { return program_->Main().Enabled(); }));
}

void CommandsEndToEnd::ExitEndsTheProgram() {
    ASSERT_TRUE(program_->OpenMenu('f', kWait));
    program_->Main().Post(WM_KEYDOWN, 'X');
    EXPECT_EQ(program_->Process().WaitForExit(kWait), 0U);
}

}  // namespace
}  // namespace tidemark
