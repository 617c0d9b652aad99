#include "errors/frm_errors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

#include "controls/fake_shell.h"
#include "platform/memory/memory_settings_store.h"
#include "platform/memory/memory_system.h"
#include "platform/program_error.h"
#include "platform/win32/wide_text.h"
#include "support/fake_command_runner.h"
#include "support/fake_drag_data.h"
#include "support/held_keys.h"
#include "support/menu_captions.h"
#include "support/modal_driver.h"
#include "support/open_windows.h"
#include "support/pump.h"
#include "support/shown_list.h"
#include "support/shown_status.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Files that every system has, so that the shell has icons and menus for them.
constexpr const char* kProgram = "C:\\windows\\notepad.exe";
constexpr const char* kOther = "C:\\windows\\system32\\kernel32.dll";

class FrmErrorsTest : public testing::Test {
  protected:
    FrmErrorsTest() {
        system_.volume.AddFile(kProgram);
        system_.volume.AddFile(kOther);
        Load();
    }

    void Load() {
        window_ = std::make_unique<frmErrors>(
            ListWindowServices{.platform = platform_,
                               .settings = settings_,
                               .command_runner = commands_,
                               .popup_menus = popups_,
                               .drag_files = [this](OleDragDropSink& source, std::int16_t) {
                                   ++drags_;
                                   source.StartDrag(drag_data_, allowed_);
                               }});
        window_->Form_Load();
    }
    static std::shared_ptr<const StampError> Record(const std::string& path) {
        return std::make_shared<StampError>(StampError{path, false, 32, "In use."});
    }
    void Show(const std::vector<std::string>& paths) {
        StampErrorList errors;
        for (const std::string& path : paths) {
            errors.push_back(Record(path));
        }
        window_->AddFromCollection(std::move(errors));
        window_->SetVisible(true);
        system_.pump.RunFor(ErrorRows::kFillDelay);
    }
    ListModel& Rows() const { return window_->rows->List(); }
    std::string Cell(int row, int column) const {
        return ShownCell(window_->lvwErrors, row, column);
    }
    LPARAM InRow(int row) const {
        const RECT label = PlaceOfRow(window_->lvwErrors, row, LVIR_LABEL);
        return MAKELPARAM(label.left + 5, (label.top + label.bottom) / 2);
    }
    void RightClick(LPARAM at) const {
        window_->lvwErrors.Send(WM_RBUTTONDOWN, MK_RBUTTON, at);
        window_->lvwErrors.Send(WM_RBUTTONUP, 0, at);
    }
    LPARAM BelowTheRows() const {
        return MAKELPARAM(20, window_->lvwErrors.ClientSize().height - 40);
    }

    MemorySystem system_{};
    Platform platform_ = system_.Parts();
    MemorySettingsStore settings_{};
    RecordedCommands commands_{};
    FakePopupMenuSystem popups_{};
    FakeDragData drag_data_{};
    std::int32_t allowed_ = 0;
    int drags_ = 0;
    std::unique_ptr<frmErrors> window_{};
};

TEST_F(FrmErrorsTest, ItIsCreatedHiddenWithItsCaptionAndSize) {
    EXPECT_FALSE(window_->Visible());
    EXPECT_EQ(window_->Text(), "errors: tidemark");
    EXPECT_EQ(window_->Position().width, 640);
    EXPECT_EQ(window_->Position().height, 480);
    EXPECT_EQ(window_->Label1.Text(), "The following errors occurred during stamping:");
    EXPECT_TRUE(window_->StatusBar1.Simple());
}

TEST_F(FrmErrorsTest, TheListHasThreeColumnsWithTheNumbersToTheRight) {
    const auto column = [this](int index) {
        wchar_t text[50] = L"";
        LVCOLUMNW info{};
        info.mask = LVCF_TEXT | LVCF_FMT;
        info.pszText = text;
        info.cchTextMax = 50;
        window_->lvwErrors.Send(LVM_GETCOLUMNW, static_cast<WPARAM>(index),
                                reinterpret_cast<LPARAM>(&info));
        const bool right = (info.fmt & LVCFMT_JUSTIFYMASK) == LVCFMT_RIGHT;
        return Utf8FromWide(text) + (right ? " (right)" : "");
    };
    EXPECT_EQ(column(0), "Name");
    EXPECT_EQ(column(1), "Error (right)");
    EXPECT_EQ(column(2), "Description");
}

TEST_F(FrmErrorsTest, WidthsAreThoseOfTheStoreAndSavedWhenTheProgramUnloadsTheWindow) {
    EXPECT_EQ(window_->Columns().ColumnWidth(0), 300);
    EXPECT_EQ(window_->Columns().ColumnWidth(1), 50);
    EXPECT_EQ(window_->Columns().ColumnWidth(2), 400);
    window_->Columns().SetColumnWidth(1, 77);
    window_->Close();
    EXPECT_EQ(settings_.ReadText("2ErrorColumnWidth", "none"), "none");
    window_->Unload();
    EXPECT_FALSE(window_->Exists());
    EXPECT_EQ(settings_.ReadText("1ErrorColumnWidth", "none"), "300");
    EXPECT_EQ(settings_.ReadText("2ErrorColumnWidth", "none"), "77");
    EXPECT_EQ(settings_.ReadText("3ErrorColumnWidth", "none"), "400");
    window_->Unload();

    Load();
    EXPECT_EQ(window_->Columns().ColumnWidth(1), 77);
}

TEST_F(FrmErrorsTest, AStoreThatRefusesTheWidthsKeepsTheWindowFromNoEnd) {
    settings_.FailWrites(5);
    EXPECT_THROW(window_->Unload(), ProgramError);
    EXPECT_FALSE(window_->Exists());
}

TEST_F(FrmErrorsTest, TheListFollowsTheWindowAndOverlapsTheStatusBarByTwoPixels) {
    window_->SetVisible(true);
    for (const Size size : {Size{640, 480}, Size{900, 700}, Size{400, 300}}) {
        window_->Move({10, 10, size.width, size.height});
        const Bounds list = window_->lvwErrors.Position();
        EXPECT_EQ(list.left, 0);
        EXPECT_EQ(list.top, window_->Label1.Position().Bottom() + 4);
        EXPECT_EQ(list.width, window_->ClientSize().width);
        EXPECT_EQ(list.Bottom(), window_->StatusBar1.Position().top + 2);
    }
}

TEST_F(FrmErrorsTest, TheLayoutSurvivesMinimising) {
    window_->SetVisible(true);
    const Bounds before = window_->lvwErrors.Position();
    ::ShowWindow(window_->Handle(), SW_MINIMIZE);
    ::ShowWindow(window_->Handle(), SW_RESTORE);
    EXPECT_EQ(window_->lvwErrors.Position(), before);
}

TEST_F(FrmErrorsTest, RowsAndStatusAreShown) {
    Show({kProgram, kOther, "C:\\gone.txt"});
    EXPECT_EQ(window_->lvwErrors.Send(LVM_GETITEMCOUNT), 3);
    EXPECT_EQ(Cell(0, 0), kProgram);
    EXPECT_EQ(Cell(2, 0), "C:\\gone.txt");
    EXPECT_EQ(Cell(2, 1), "32");
    EXPECT_EQ(Cell(2, 2), "In use.");
    EXPECT_EQ(ShownSimpleText(window_->StatusBar1), "  3 items had errors.");
    EXPECT_EQ(window_->lvwErrors.Send(LVM_GETIMAGELIST, LVSIL_SMALL),
              reinterpret_cast<LRESULT>(window_->ImageList1.Handle()));
    EXPECT_EQ(Rows().At(2).small_icon, 1);
}

TEST_F(FrmErrorsTest, ClosingHidesTheWindowAndStopsTheFillWhichAnswersMessagesMeanwhile) {
    system_.pump.AtEveryCall(PumpPending);
    system_.pump.AtCall(4, [this] { window_->Post(WM_CLOSE); });
    Show({kProgram, kOther, "C:\\3.txt", "C:\\4.txt", "C:\\5.txt"});
    EXPECT_TRUE(window_->Exists());
    EXPECT_FALSE(window_->Visible());
    EXPECT_EQ(window_->lvwErrors.Send(LVM_GETITEMCOUNT), 5);
    EXPECT_EQ(Rows().At(0).text, kProgram);
    EXPECT_EQ(Rows().At(4).text, "");

    Show({kOther});
    EXPECT_TRUE(window_->Visible());
    EXPECT_EQ(window_->lvwErrors.Send(LVM_GETITEMCOUNT), 1);
    EXPECT_EQ(Cell(0, 0), kOther);
}

TEST_F(FrmErrorsTest, ClosingLetsPendingMessagesRun) {
    Show({kProgram});
    const std::size_t calls = system_.pump.CallCount();
    bool hidden = false;
    system_.pump.AtCall(1, [&] { hidden = !window_->Visible(); });
    window_->Close();
    EXPECT_EQ(system_.pump.CallCount(), calls + 1);
    EXPECT_TRUE(hidden) << "after the window has gone from sight";
}

TEST_F(FrmErrorsTest, UnloadingDuringAFillEndsIt) {
    system_.pump.AtCall(4, [this] { window_->Unload(); });
    Show({kProgram, kOther, "C:\\3.txt", "C:\\4.txt"});
    EXPECT_FALSE(window_->Exists());
    EXPECT_THAT(system_.pump.Failures(), IsEmpty());
}

TEST_F(FrmErrorsTest, LoadedAgainItFillsAgain) {
    Show({kOther, kProgram});
    window_->Destroy();
    window_->Form_Load();
    EXPECT_EQ(window_->lvwErrors.Send(LVM_GETITEMCOUNT), 0);
    Show({kProgram});
    EXPECT_EQ(window_->lvwErrors.Send(LVM_GETITEMCOUNT), 1);
    EXPECT_EQ(Cell(0, 0), kProgram);
    EXPECT_EQ(Cell(0, 2), "In use.");
    EXPECT_EQ(ShownSimpleText(window_->StatusBar1), "  1 items had errors.");
}

TEST_F(FrmErrorsTest, LoadedAgainDuringAFillItShowsOnlyWhatComesNext) {
    system_.pump.AtCall(4, [this] {
        window_->Destroy();
        window_->Form_Load();
    });
    Show({kProgram, kOther, "C:\\3.txt", "C:\\4.txt"});
    EXPECT_EQ(window_->lvwErrors.Send(LVM_GETITEMCOUNT), 0);
    EXPECT_EQ(ShownSimpleText(window_->StatusBar1), "");
    Show({kOther});
    EXPECT_EQ(Cell(0, 0), kOther);
    EXPECT_THAT(system_.pump.Failures(), IsEmpty());
}

TEST_F(FrmErrorsTest, CtrlASelectsAllRowsAndNoOtherKeyDoes) {
    Show({kProgram, kOther, "C:\\gone.txt"});
    const auto press = [this](std::initializer_list<int> held) {
        const HeldKeys keys(held);
        window_->lvwErrors.Send(WM_KEYDOWN, 'A');
        window_->lvwErrors.Send(WM_KEYUP, 'A');
    };
    press({});
    press({VK_CONTROL, VK_SHIFT});
    press({VK_CONTROL, VK_MENU});
    EXPECT_EQ(Rows().SelectedCount(), 0U);
    press({VK_CONTROL});
    EXPECT_EQ(Rows().SelectedCount(), 3U);
    EXPECT_EQ(window_->lvwErrors.Send(LVM_GETSELECTEDCOUNT), 3);
}

TEST_F(FrmErrorsTest, AHeaderClickSortsAndShowsTheArrow) {
    Show({kProgram, "C:\\a.txt"});
    window_->lvwErrors.on_column_click(0);
    EXPECT_EQ(Cell(0, 0), "C:\\a.txt");
    window_->lvwErrors.on_column_click(0);
    EXPECT_EQ(Cell(0, 0), kProgram);
    EXPECT_EQ(SortArrowOf(window_->lvwErrors, 0), HDF_SORTDOWN);
}

TEST_F(FrmErrorsTest, TheArrowGoesWithTheNextErrorsAndTheNextClickTurnsTheOrderRound) {
    Show({kProgram, "C:\\a.txt"});
    window_->lvwErrors.on_column_click(0);
    ASSERT_EQ(SortArrowOf(window_->lvwErrors, 0), HDF_SORTUP);
    Show({"C:\\a.txt", kProgram});
    EXPECT_EQ(SortArrowOf(window_->lvwErrors, 0), 0);
    window_->lvwErrors.on_column_click(0);
    EXPECT_EQ(SortArrowOf(window_->lvwErrors, 0), HDF_SORTDOWN);
    EXPECT_EQ(Cell(0, 0), kProgram);
    window_->lvwErrors.on_column_click(1);
    EXPECT_EQ(SortArrowOf(window_->lvwErrors, 1), HDF_SORTUP) << "numbers are sorted by value";
}

TEST_F(FrmErrorsTest, ARightClickWithoutASelectionOffersOnlyTheInertEntry) {
    Show({kProgram});
    std::vector<std::string> entries;
    const ModalDriver driver({[&entries] {
                                 entries = CaptionsOf(OpenMenu());
                                 return OpenMenu() != nullptr && ::EndMenu();
                             }},
                             [] { ::EndMenu(); });
    RightClick(BelowTheRows());
    EXPECT_THAT(entries, ElementsAre("No valid items selected"));
    EXPECT_THAT(popups_.shell.trackings, IsEmpty());
    EXPECT_TRUE(window_->lvwErrors.HasFocus());
}

TEST_F(FrmErrorsTest, ARightClickOnRowsThatExistShowsTheOwnEntryAboveTheShells) {
    Show({kProgram});
    RightClick(InRow(0));
    ASSERT_THAT(popups_.shell.trackings, SizeIs(1));
    EXPECT_THAT(popups_.shell.trackings[0].texts,
                ElementsAre("Open Containing Folder", "-", "Open (default)", "Properties"));
    EXPECT_THAT(popups_.shell.defaults, IsEmpty());
    EXPECT_THAT(commands_.started, IsEmpty());
}

TEST_F(FrmErrorsTest, ARightClickOnRowsThatAreGoneShowsNoMenu) {
    Show({kProgram, "C:\\gone.txt"});
    RightClick(InRow(1));
    EXPECT_EQ(Rows().SelectedCount(), 1U);
    EXPECT_THAT(popups_.shell.trackings, IsEmpty());
}

TEST_F(FrmErrorsTest, ARightClickLeavesOutSelectedRowsThatAreGone) {
    Show({"C:\\gone.txt", kProgram});
    Rows().SelectAll();
    RightClick(InRow(0));
    EXPECT_THAT(popups_.shell.children, ElementsAre(L"notepad.exe"));
}

TEST_F(FrmErrorsTest, TheOwnEntryOpensTheContainingFolderOfTheSelectedRow) {
    Show({kProgram, kOther});
    popups_.shell.choice = 1;
    RightClick(InRow(1));
    EXPECT_THAT(commands_.started,
                ElementsAre("explorer ,\"c:\\windows\\system32\\kernel32.dll\",/select"));
}

TEST_F(FrmErrorsTest, ReleasingTheButtonWithoutAPressInTheListShowsNothing) {
    Show({kProgram});
    Rows().SelectAll();
    window_->lvwErrors.Send(WM_RBUTTONUP, 0, InRow(0));
    EXPECT_THAT(popups_.shell.trackings, IsEmpty());
}

TEST_F(FrmErrorsTest, TheContextKeyShowsTheSameMenuAtTheRowAndGivesTheListTheFocus) {
    Show({kProgram});
    Rows().SelectAll();
    popups_.shell.cursor = {321, 123};
    ::SetFocus(nullptr);
    window_->lvwErrors.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window_->lvwErrors.Handle()),
                            -1);
    EXPECT_TRUE(window_->lvwErrors.HasFocus());
    ASSERT_THAT(popups_.shell.trackings, SizeIs(1));
    RECT list{};
    ::GetWindowRect(window_->lvwErrors.Handle(), &list);
    EXPECT_TRUE(::PtInRect(&list, popups_.shell.trackings[0].point));
    EXPECT_EQ(popups_.shell.cursor_questions, 0);
}

TEST_F(FrmErrorsTest, TheMenuOfARightClickIsTheListsAndOpensAtThePointer) {
    Show({kProgram});
    popups_.shell.cursor = {321, 123};
    RightClick(InRow(0));
    ASSERT_THAT(popups_.shell.trackings, SizeIs(1));
    const FakeShell::Tracking& menu = popups_.shell.trackings[0];
    EXPECT_EQ(menu.owner, window_->lvwErrors.Handle());
    EXPECT_EQ(menu.flags, static_cast<UINT>(TPM_RETURNCMD));
    EXPECT_EQ(menu.point.x, 321);
    EXPECT_EQ(menu.point.y, 123);
}

TEST_F(FrmErrorsTest, TheLabelRightBeforeTheListNamesIt) {
    EXPECT_EQ(::GetWindow(window_->lvwErrors.Handle(), GW_HWNDPREV), window_->Label1.Handle());
    EXPECT_EQ(window_->Label1.Text(), "The following errors occurred during stamping:");
}

TEST_F(FrmErrorsTest, OnlyAHeldRightButtonDragsTheFilesThatExist) {
    Show({kProgram, "C:\\gone.txt", kOther});
    Rows().SelectAll();
    const LPARAM at = InRow(0);
    const LPARAM further = at + MAKELPARAM(30, 0);
    window_->lvwErrors.Send(WM_MOUSEMOVE, MK_LBUTTON, further);
    EXPECT_EQ(drags_, 0);
    window_->lvwErrors.Send(WM_RBUTTONDOWN, MK_RBUTTON, at);
    window_->lvwErrors.Send(WM_MOUSEMOVE, MK_RBUTTON | MK_LBUTTON, further);
    EXPECT_EQ(drags_, 0);
    window_->lvwErrors.Send(WM_MOUSEMOVE, MK_RBUTTON, further);
    EXPECT_EQ(drags_, 1);
    EXPECT_THAT(drag_data_.Files(),
                ElementsAre("c:\\windows\\notepad.exe", "c:\\windows\\system32\\kernel32.dll"));
    EXPECT_EQ(allowed_, 3);
}

TEST_F(FrmErrorsTest, ADragThatTookTheReleaseForgetsTheRightPress) {
    Show({kProgram});
    const LPARAM at = InRow(0);
    const LPARAM further = at + MAKELPARAM(30, 0);
    window_->lvwErrors.Send(WM_RBUTTONDOWN, MK_RBUTTON, at);
    window_->lvwErrors.Send(WM_MOUSEMOVE, MK_RBUTTON, further);
    ASSERT_EQ(drags_, 1);
    // Pressed elsewhere and moved in.
    window_->lvwErrors.Send(WM_MOUSEMOVE, MK_RBUTTON, at);
    EXPECT_EQ(drags_, 1);
    window_->lvwErrors.Send(WM_RBUTTONUP, 0, at);
    EXPECT_THAT(popups_.shell.trackings, IsEmpty());
}

TEST_F(FrmErrorsTest, ADragGivenUpWithTheButtonHeldLeavesTheReleaseToTheList) {
    Show({kProgram});
    const LPARAM at = InRow(0);
    window_->lvwErrors.Send(WM_RBUTTONDOWN, MK_RBUTTON, at);
    {
        const HeldKeys button({VK_RBUTTON});
        window_->lvwErrors.Send(WM_MOUSEMOVE, MK_RBUTTON, at + MAKELPARAM(30, 0));
    }
    ASSERT_EQ(drags_, 1);
    window_->lvwErrors.Send(WM_RBUTTONUP, 0, at);
    EXPECT_THAT(popups_.shell.trackings, SizeIs(1));
}

TEST_F(FrmErrorsTest, ADragGivenUpWithTheButtonHeldIsNotFollowedByAnother) {
    Show({kProgram});
    const LPARAM at = InRow(0);
    const auto press = [&] { window_->lvwErrors.Send(WM_RBUTTONDOWN, MK_RBUTTON, at); };
    const auto move = [&](int by) {
        const HeldKeys button({VK_RBUTTON});
        window_->lvwErrors.Send(WM_MOUSEMOVE, MK_RBUTTON, at + MAKELPARAM(by, 0));
    };
    press();
    move(30);
    move(60);
    move(90);
    EXPECT_EQ(drags_, 1);
    window_->lvwErrors.Send(WM_RBUTTONUP, 0, at);
    press();
    move(30);
    EXPECT_EQ(drags_, 2) << "pressed anew";
}

TEST_F(FrmErrorsTest, ARightButtonThatWasNotPressedInTheListDragsNothing) {
    Show({kProgram});
    Rows().SelectAll();
    window_->lvwErrors.Send(WM_MOUSEMOVE, MK_RBUTTON, InRow(0) + MAKELPARAM(30, 0));
    window_->lvwErrors.Send(WM_MOUSEMOVE, MK_RBUTTON, InRow(0) + MAKELPARAM(60, 0));
    EXPECT_EQ(drags_, 0);
}

TEST_F(FrmErrorsTest, TheReleaseOfAnyButtonForgetsTheRightPress) {
    Show({kProgram});
    const LPARAM at = InRow(0);
    const LPARAM further = at + MAKELPARAM(30, 0);
    for (const UINT release : {WM_LBUTTONUP, WM_MBUTTONUP, WM_RBUTTONUP}) {
        window_->lvwErrors.Send(WM_RBUTTONDOWN, MK_RBUTTON, at);
        EXPECT_EQ(Rows().SelectedCount(), 1U);
        popups_.shell.trackings.clear();
        window_->lvwErrors.Send(release, MK_RBUTTON, at);
        EXPECT_THAT(popups_.shell.trackings, SizeIs(release == WM_RBUTTONUP ? 1 : 0)) << release;
        window_->lvwErrors.Send(WM_MOUSEMOVE, MK_RBUTTON, further);
        EXPECT_EQ(drags_, 0) << release;
        // No popup either, now that the press is forgotten.
        popups_.shell.trackings.clear();
        window_->lvwErrors.Send(WM_RBUTTONUP, 0, further);
        EXPECT_THAT(popups_.shell.trackings, IsEmpty()) << release;
    }
}

}  // namespace
}  // namespace tidemark
