#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "controls/drop_files.h"
#include "controls/fake_shell.h"
#include "lists/list_helpers.h"
#include "mainwindow/main_window_fixture.h"
#include "platform/input_bits.h"
#include "support/com_testing.h"
#include "support/fake_drag_data.h"
#include "support/menu_captions.h"
#include "support/open_windows.h"
#include "support/real_tree.h"
#include "support/shown_list.h"
#include "support/shown_status.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MainWindowList : public MainWindowTest {
  protected:
    MainWindowList() { MakeWindow(screen_, menus_); }
    ~MainWindowList() override { window_.reset(); }

    // Trees of 9, 10 and 1 files, added in this order.
    void LoadTrees() {
        Load();
        AddTree("nine", 9);
        AddTree("ten", 10);
        AddTree("one", 1);
        List({"C:\\trees\\nine", "C:\\trees\\ten", "C:\\trees\\one"});
    }
    // A click on a column's header, as the list tells of it.
    void ClickColumn(int column) {
        NMLISTVIEW click{};
        click.hdr.hwndFrom = Main().lvwItems.Handle();
        click.hdr.code = LVN_COLUMNCLICK;
        click.iSubItem = column;
        Main().Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
    }
    std::vector<std::string> ContainsTexts() {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < Main().rows.Count(); ++i) {
            texts.push_back(Main().rows.At(i).sub_items[0]);
        }
        return texts;
    }
    // Drags files over a window's registered drop target and drops them there.
    DWORD Drop(HWND window, const std::vector<std::string>& paths,
               DWORD allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE) {
        const auto data = ComPtr<FakeDataObject>::Adopt(new FakeDataObject);
        data->bytes = BuildDropFiles(paths);
        return DragAndDrop(window, *data.Get(), {}, allowed);
    }
    // Drags the selected rows out; what the drag offers, and the effects that it allows.
    std::int32_t DragOut(FakeDragData& data) {
        std::int32_t allowed = 0;
        drag_files_ = [&](OleDragDropSink& source, std::int16_t /*button*/) {
            source.StartDrag(data, allowed);
        };
        PressRight();
        Main().lvwItems.on_mouse_move({.button = kRightButton});
        return allowed;
    }
    void PressRight() { Main().lvwItems.on_mouse_down({.button = kRightButton}); }
    void ReleaseRight() { Main().lvwItems.on_mouse_up({.button = kRightButton}); }
    // Presses and releases the right button over the list, and dismisses the popup that opens;
    // its captions.
    std::vector<std::string> CaptionsOfRightClick() {
        PressRight();
        return CaptionsOfPopup([this] { ReleaseRight(); });
    }
    std::vector<std::string> CaptionsOfPopup(const std::function<void()>& open) {
        return tidemark::CaptionsOfPopup(open, [this](HMENU menu) {
            const auto last = static_cast<UINT>(::GetMenuItemCount(menu) - 1);
            enabled_ = (::GetMenuState(menu, last, MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED)) == 0;
        });
    }
    void PressContextKey() {
        const HWND list = Main().lvwItems.Handle();
        Main().lvwItems.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), -1);
    }

    FakePopupMenuSystem menus_;
    bool enabled_ = false;  // of the last entry
};

TEST_F(MainWindowList, ContainsSortsByNumberAndTwiceDescendingAndShowsItsTextsAgain) {
    LoadTrees();
    ClickColumn(1);
    EXPECT_THAT(ContainsTexts(),
                ElementsAre("1 file; 1 folder", "9 files; 1 folder", "10 files; 1 folder"));
    EXPECT_THAT(RowTexts(),
                ElementsAre("C:\\trees\\one\\", "C:\\trees\\nine\\", "C:\\trees\\ten\\"));
    ClickColumn(1);
    EXPECT_THAT(ContainsTexts(),
                ElementsAre("10 files; 1 folder", "9 files; 1 folder", "1 file; 1 folder"));
}

TEST_F(MainWindowList, ContainsSortsByFilesAndFoldersTogether) {
    Load();
    AddTree("folders", 2);
    for (int i = 0; i < 8; ++i) {
        system_.volume.AddFolder(Numbered("C:\\trees\\folders\\d", i));
    }
    AddTree("files", 5);
    List({"C:\\trees\\folders", "C:\\trees\\files"});
    ClickColumn(1);
    EXPECT_THAT(ContainsTexts(), ElementsAre("5 files; 1 folder", "2 files; 9 folders"));
    ClickColumn(1);
    EXPECT_THAT(ContainsTexts(), ElementsAre("2 files; 9 folders", "5 files; 1 folder"));
}

TEST_F(MainWindowList, SortingWhileNothingIsAtWorkDoesNotStartThePoll) {
    LoadTrees();
    const std::size_t calls = system_.pump.CallCount();
    ClickColumn(0);
    Finish();
    EXPECT_EQ(system_.pump.CallCount(), calls);
}

TEST_F(MainWindowList, AnotherColumnSortsAscendingAsText) {
    LoadTrees();
    ClickColumn(1);
    ClickColumn(1);
    ClickColumn(0);
    EXPECT_THAT(RowTexts(),
                ElementsAre("C:\\trees\\nine\\", "C:\\trees\\one\\", "C:\\trees\\ten\\"));
    ClickColumn(0);
    EXPECT_THAT(RowTexts(),
                ElementsAre("C:\\trees\\ten\\", "C:\\trees\\one\\", "C:\\trees\\nine\\"));
}

TEST_F(MainWindowList, SortingHappensOnceAndLaterRowsAreAppended) {
    LoadTrees();
    ClickColumn(0);
    system_.volume.AddFile("C:\\first.txt");
    List({"C:\\first.txt"});
    EXPECT_EQ(RowTexts().back(), "C:\\first.txt");
}

TEST_F(MainWindowList, TheSortArrowGoesWhenRowsAreAddedAndTheNextClickTurnsTheOrderRound) {
    LoadTrees();
    ClickColumn(0);
    ASSERT_EQ(SortArrowOf(Main().lvwItems, 0), HDF_SORTUP);
    Choose("mnuView", "mnuViewRefresh");
    Finish();
    EXPECT_EQ(SortArrowOf(Main().lvwItems, 0), HDF_SORTUP) << "the names are as they were";
    system_.volume.AddFile("C:\\first.txt");
    List({"C:\\first.txt"});
    EXPECT_EQ(SortArrowOf(Main().lvwItems, 0), 0);
    ClickColumn(0);
    EXPECT_EQ(SortArrowOf(Main().lvwItems, 0), HDF_SORTDOWN);
    ClickColumn(1);
    EXPECT_EQ(SortArrowOf(Main().lvwItems, 1), HDF_SORTUP);
}

TEST_F(MainWindowList, SortingFromInsideACountKeepsThePollGoing) {
    Load();
    AddTree("big", 40);
    AddTree("a", 1);
    Main().AddItems({"C:\\trees\\big", "C:\\trees\\a"});
    system_.pump.AtCall(10, [this] { ClickColumn(0); });
    Finish();
    EXPECT_THAT(ContainsTexts(), ElementsAre("1 file; 1 folder", "40 files; 1 folder"));
    EXPECT_EQ(ShownSimpleText(Main().StatusBar1), "  Ready");
}

TEST_F(MainWindowList, DeleteRemovesTheSelectedRowsWhenTheListHasTheFocus) {
    LoadWithFiles(3);
    SelectRow("c:\\data\\file2.txt");
    Main().lvwItems.Focus();
    Press(VK_DELETE);
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\data\\file1.txt", "C:\\data\\file3.txt"));
}

TEST_F(MainWindowList, DeleteElsewhereRemovesNothing) {
    LoadWithFiles(2);
    SelectRow("c:\\data\\file2.txt");
    Main().dtDateLastModified.Focus();
    Press(VK_DELETE);
    EXPECT_EQ(Main().rows.Count(), 2U);
}

TEST_F(MainWindowList, DeleteWithNothingSelectedRemovesNothing) {
    LoadWithFiles(2);
    Main().lvwItems.Focus();
    Press(VK_DELETE);
    EXPECT_EQ(Main().rows.Count(), 2U);
}

TEST_F(MainWindowList, DeletingTheLastRowLeavesTheFocusWhereKeysReachSomething) {
    LoadWithFiles(1);
    SelectRow("c:\\data\\file1.txt");
    Main().lvwItems.Focus();
    Press(VK_DELETE);
    EXPECT_FALSE(Main().lvwItems.Visible());
    EXPECT_TRUE(Main().dtDateLastModified.HasFocus());
}

TEST_F(MainWindowList, FilesAndFoldersDroppedOnTheEmptyLabelAreAdded) {
    Load();
    system_.volume.AddFile("C:\\a.txt");
    AddTree("t", 1);
    EXPECT_EQ(Drop(Main().OLEDropper1.Handle(), {"C:\\a.txt", "C:\\trees\\t"}),
              static_cast<DWORD>(DROPEFFECT_COPY));
    Finish();
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\a.txt", "C:\\trees\\t\\"));
}

TEST_F(MainWindowList, FilesDroppedOnTheListAreAppended) {
    LoadWithFiles(1);
    system_.volume.AddFile("C:\\a.txt");
    EXPECT_EQ(Drop(Main().lvwItems.Handle(), {"C:\\a.txt"}), static_cast<DWORD>(DROPEFFECT_COPY));
    Finish();
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\data\\file1.txt", "C:\\a.txt"));
}

TEST_F(MainWindowList, FilesOfASourceThatOnlyMovesAreAddedAndItHearsOfNoMove) {
    LoadWithFiles(1);
    system_.volume.AddFile("C:\\a.txt");
    EXPECT_EQ(Drop(Main().lvwItems.Handle(), {"C:\\a.txt"}, DROPEFFECT_MOVE),
              static_cast<DWORD>(DROPEFFECT_NONE));
    Finish();
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\data\\file1.txt", "C:\\a.txt"));
}

TEST_F(MainWindowList, ADropWithoutAFileIsRefused) {
    LoadWithFiles(1);
    EXPECT_EQ(Drop(Main().lvwItems.Handle(), {}), static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_EQ(Drop(Main().OLEDropper1.Handle(), {}), static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_EQ(Main().rows.Count(), 1U);
}

TEST_F(MainWindowList, DraggingOutOffersTheSelectedPathsThatExistInRowOrder) {
    LoadWithFiles(4);
    for (const char* key : {"c:\\data\\file4.txt", "c:\\data\\file1.txt", "c:\\data\\file2.txt"}) {
        SelectRow(key);
    }
    system_.volume.Remove("C:\\data\\file2.txt");
    FakeDragData data;
    EXPECT_EQ(DragOut(data), kDropEffectCopy | kDropEffectMove);
    EXPECT_THAT(data.Files(), ElementsAre("c:\\data\\file1.txt", "c:\\data\\file4.txt"));
}

TEST_F(MainWindowList, DraggingOutPathsThatAreGoneGivesAnEmptyFileList) {
    LoadWithFiles(1);
    SelectRow("c:\\data\\file1.txt");
    system_.volume.Remove("C:\\data\\file1.txt");
    FakeDragData data({"what was there before"});
    DragOut(data);
    EXPECT_THAT(data.Files(), IsEmpty());
}

TEST_F(MainWindowList, ARightClickWithNoSelectionSaysSo) {
    LoadWithFiles(2);
    EXPECT_THAT(CaptionsOfRightClick(), ElementsAre("No valid items selected"));
    EXPECT_TRUE(Main().lvwItems.HasFocus());
}

TEST_F(MainWindowList, ARightClickOnRowsOfTwoFoldersOffersTheContainingFolder) {
    LoadWithFiles(1);
    AddTree("t", 1);
    List({"C:\\trees\\t\\f0"});
    SelectRow("c:\\data\\file1.txt");
    SelectRow("c:\\trees\\t\\f0");
    EXPECT_THAT(CaptionsOfRightClick(), ElementsAre("Open &Containing Folder"));
    EXPECT_TRUE(enabled_);
    EXPECT_EQ(Item("mnuItemPopupOpenContainingFolder").tag.substr(0, 11), "explorer ,\"");
    Item("mnuItemPopupOpenContainingFolder").Click();
    EXPECT_THAT(commands_.started, ElementsAre(Item("mnuItemPopupOpenContainingFolder").tag));
}

TEST_F(MainWindowList, ARightClickOnARowThatIsGoneCannotOpenItsFolder) {
    LoadWithFiles(1);
    SelectRow("c:\\data\\file1.txt");
    system_.volume.Remove("C:\\data\\file1.txt");
    EXPECT_THAT(CaptionsOfRightClick(), ElementsAre("Open &Containing Folder"));
    EXPECT_FALSE(enabled_);
}

TEST_F(MainWindowList, ARightClickOnRowsOfOneFolderShowsTheShellsMenuForThem) {
    LoadWithFiles(3);
    SelectRow("c:\\data\\file3.txt");
    SelectRow("c:\\data\\file1.txt");
    PressRight();
    ReleaseRight();
    ASSERT_EQ(menus_.shell.trackings.size(), 1U);
    EXPECT_THAT(menus_.shell.trackings[0].texts,
                ElementsAre("Open Containing Folder", "-", "Open", "Properties"));
    EXPECT_THAT(menus_.shell.children, ElementsAre(L"file1.txt", L"file3.txt"));
    ASSERT_EQ(menus_.shell.defaults.size(), 1U);
    EXPECT_EQ(menus_.shell.defaults[0].item, static_cast<UINT>(-1)) << "no entry is bold";
    EXPECT_THAT(commands_.started, IsEmpty());
}

TEST_F(MainWindowList, TheOwnEntryAboveTheShellsOpensTheContainingFolder) {
    LoadWithFiles(2);
    SelectRow("c:\\data\\file2.txt");
    menus_.shell.choice = 1;
    PressRight();
    ReleaseRight();
    EXPECT_THAT(commands_.started, ElementsAre("explorer ,\"c:\\data\\file2.txt\",/select"));
}

TEST_F(MainWindowList, TheOwnEntryDoesNothingInAWindowThatClosedUnderItsMenu) {
    LoadWithFiles(1);
    SelectRow("c:\\data\\file1.txt");
    menus_.shell.choice = 1;
    menus_.shell.while_tracking = [this] { Main().Close(); };
    PressRight();
    ReleaseRight();
    EXPECT_EQ(closed_, 1);
    EXPECT_THAT(commands_.started, IsEmpty());
}

TEST_F(MainWindowList, AReleaseWithoutAPressOverTheListPopsNothingUp) {
    LoadWithFiles(1);
    Main().lvwItems.on_mouse_up({.button = kRightButton});
    EXPECT_EQ(OpenPopup(), nullptr);
}

TEST_F(MainWindowList, AReleaseOfTheLeftButtonLeavesTheRightButtonsClickToCome) {
    LoadWithFiles(1);
    PressRight();
    Main().lvwItems.on_mouse_up({.button = kLeftButton});
    EXPECT_THAT(CaptionsOfPopup([this] { ReleaseRight(); }),
                ElementsAre("No valid items selected"));
    EXPECT_THAT(CaptionsOfPopup([this] { ReleaseRight(); }), IsEmpty()) << "once for each press";
}

TEST_F(MainWindowList, TheContextKeyOpensThePopupOfARightClick) {
    LoadWithFiles(1);
    const auto press_key = [this] { PressContextKey(); };
    EXPECT_THAT(CaptionsOfPopup(press_key), ElementsAre("No valid items selected"));
    AddTree("t", 1);
    List({"C:\\trees\\t\\f0"});
    SelectAllRows(Main().rows);
    EXPECT_THAT(CaptionsOfPopup(press_key), ElementsAre("Open &Containing Folder"));
}

TEST_F(MainWindowList, FilesOfTwoFoldersAreNeverGivenToTheShell) {
    RealTree tree;
    MakeWindow(screen_, popup_menus_);  // the shell's own
    Load();
    std::vector<std::string> listed;
    for (const char* name : {"a\\f1.txt", "b\\x one.txt"}) {
        listed.push_back(tree.MakeFile(name));
        system_.volume.AddFile(listed.back());
    }
    List(listed);
    SelectAllRows(Main().rows);
    EXPECT_THAT(CaptionsOfRightClick(), ElementsAre("Open &Containing Folder"));
    EXPECT_THAT(CaptionsOfPopup([this] { PressContextKey(); }),
                ElementsAre("Open &Containing Folder"));
}

TEST_F(MainWindowList, MovingTheHeldRightButtonDragsTheSelectedFiles) {
    LoadWithFiles(1);
    SelectRow("c:\\data\\file1.txt");
    // The button is not really down, so that the drag ends at once, in a drop on the list itself.
    POINT over_list{20, 100};
    ::ClientToScreen(Main().lvwItems.Handle(), &over_list);
    ::SetCursorPos(over_list.x, over_list.y);
    // A dropped file that is known has its row refreshed.
    const auto dropped_by_move = [this](std::int16_t button) {
        Main().rows.SetSubItem(Main().rows.At(0), 1, "out of date");
        Main().lvwItems.on_mouse_move({.button = button});
        return Main().rows.At(0).sub_items[1] == "Ready";
    };
    EXPECT_FALSE(dropped_by_move(kRightButton)) << "not pressed over the list";
    PressRight();
    EXPECT_FALSE(dropped_by_move(kLeftButton));
    EXPECT_TRUE(dropped_by_move(kRightButton));
    EXPECT_EQ(Main().rows.Count(), 1U);
}

TEST_F(MainWindowList, TheListSelectsFullRowsAndHasAClientEdge) {
    Load();
    const auto style = static_cast<DWORD>(Main().lvwItems.Send(LVM_GETEXTENDEDLISTVIEWSTYLE));
    EXPECT_NE(style & LVS_EX_FULLROWSELECT, 0U);
    EXPECT_NE(Main().lvwItems.ExtendedStyle() & WS_EX_CLIENTEDGE, 0U);
    EXPECT_NE(Main().OLEDropper1.ExtendedStyle() & WS_EX_CLIENTEDGE, 0U);
    EXPECT_EQ(Main().lvwItems.Style() & LVS_SINGLESEL, 0U);
}

}  // namespace
}  // namespace tidemark
