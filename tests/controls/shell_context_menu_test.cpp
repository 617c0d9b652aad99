#include "controls/shell_context_menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "controls/fake_shell.h"
#include "platform/program_error.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ShellContextMenuTest : public ::testing::Test {
  protected:
    ShellContextMenuTest() {
        menu_->MenuItemInvoked = [this](const std::string& caption, std::int32_t data) {
            invoked_.emplace_back(caption, data);
        };
    }
    ~ShellContextMenuTest() override {
        menu_.reset();
        EXPECT_EQ(shell().memory, 0) << "identifier lists leaked";
        EXPECT_EQ(shell().objects, 0) << "shell objects leaked";
        EXPECT_EQ(shell().menus, 0) << "menus leaked";
    }

    FakeShell& shell() { return system_.shell; }
    void AddOwnEntries() {
        menu_->AddMenuItem("Open Containing Folder", 0, 0, 1);
        menu_->AddMenuItem("", MFT_SEPARATOR, 0, 0);
    }
    void Popup(UINT flags = 0, int x = 5, int y = 6) {
        menu_->PopupMenu(form_.Handle(), flags, x, y);
    }
    std::vector<std::string> ShownTexts() {
        return shell().trackings.empty() ? std::vector<std::string>{"(not shown)"}
                                         : shell().trackings.back().texts;
    }

    FakePopupMenuSystem system_;
    TestForm form_;
    std::unique_ptr<ShellContextMenu> menu_ = std::make_unique<ShellContextMenu>(system_);
    std::vector<std::pair<std::string, std::int32_t>> invoked_;
};

TEST_F(ShellContextMenuTest, WithOwnEntriesButNoFilesNothingIsShown) {
    AddOwnEntries();
    Popup();
    EXPECT_THAT(shell().trackings, IsEmpty());
    EXPECT_THAT(shell().parsed, IsEmpty());
}

TEST_F(ShellContextMenuTest, OwnEntriesStandAboveTheShells) {
    AddOwnEntries();
    menu_->AddFile("C:\\dir\\a.txt");
    Popup();
    EXPECT_THAT(ShownTexts(), ElementsAre("Open Containing Folder", "-", "Open", "Properties"));
}

TEST_F(ShellContextMenuTest,
       TheFirstFilesFolderIsBoundLevelByLevelAndAskedForTheOthersByTheirNames) {
    menu_->AddFile("C:\\dir\\sub\\a.txt");
    menu_->AddFile("C:\\dir\\sub\\\u6f6e");
    Popup();
    EXPECT_THAT(shell().parsed, ElementsAre(L"C:\\dir\\sub\\a.txt", L"\u6f6e"));
    EXPECT_THAT(shell().parse_owners, ElementsAre(form_.Handle(), form_.Handle()));
    EXPECT_THAT(shell().bound, ElementsAre(L"C:", L"dir", L"sub"));
    EXPECT_EQ(shell().queried_folder, L"desktop/C:/dir/sub");
    EXPECT_THAT(shell().children, ElementsAre(L"a.txt", L"\u6f6e"));
    EXPECT_EQ(shell().ui_owner, form_.Handle());
}

TEST_F(ShellContextMenuTest, AFileThatItsFolderDoesNotKnowByNameIsAskedOfTheDesktop) {
    shell().nameless = L"b";
    menu_->AddFile("C:\\dir\\a");
    menu_->AddFile("C:\\dir\\b");
    menu_->AddFile("C:\\dir\\sub\\");
    Popup();
    EXPECT_THAT(shell().parsed, ElementsAre(L"C:\\dir\\a", L"b", L"C:\\dir\\b", L"sub"));
    EXPECT_THAT(shell().children, ElementsAre(L"a", L"b", L"sub"));
}

TEST_F(ShellContextMenuTest, FilesThatTheDesktopItselfShowsAreAskedByTheirPaths) {
    shell().gathered = L"C:\\desk\\";
    menu_->AddFile("C:\\desk\\a");
    menu_->AddFile("C:\\desk\\b");
    Popup();
    EXPECT_THAT(shell().parsed, ElementsAre(L"C:\\desk\\a", L"C:\\desk\\b"));
    EXPECT_EQ(shell().queried_folder, L"desktop");
    EXPECT_THAT(shell().children, ElementsAre(L"a", L"b"));
}

TEST_F(ShellContextMenuTest, FilesOfTwoFoldersLeaveTheOwnEntriesAloneAndTheShellOut) {
    AddOwnEntries();
    menu_->AddFile("C:\\a\\f1.txt");
    menu_->AddFile("C:\\a\\f2.txt");
    menu_->AddFile("C:\\b\\f1.txt");
    for (const UINT choice : {1U, 2U, 3U, 4U}) {
        shell().choice = choice;
        Popup();
        EXPECT_THAT(ShownTexts(), ElementsAre("Open Containing Folder"));
    }
    EXPECT_THAT(shell().children, IsEmpty());
    EXPECT_THAT(shell().queries, IsEmpty());
    EXPECT_THAT(shell().invocations, IsEmpty());
    EXPECT_THAT(invoked_, ElementsAre(std::pair<std::string, int>{"Open Containing Folder", 1}));
}

TEST_F(ShellContextMenuTest, OneFolderUnderTwoPathsIsOneFolder) {
    menu_->AddFile("C:\\dir\\a");
    shell().gathered = L"C:\\elsewhere\\..\\";
    menu_->AddFile("C:\\elsewhere\\..\\C:\\dir\\c");
    Popup();
    EXPECT_THAT(shell().children, ElementsAre(L"a", L"c"));
}

TEST_F(ShellContextMenuTest, AnItemOfTheDesktopItselfNeedsNoBinding) {
    menu_->AddFile("C:");
    Popup();
    EXPECT_THAT(shell().bound, IsEmpty());
    EXPECT_EQ(shell().queried_folder, L"desktop");
    EXPECT_THAT(shell().children, ElementsAre(L"C:"));
}

TEST_F(ShellContextMenuTest, AFirstPathThatCannotBeParsedShowsNothing) {
    AddOwnEntries();
    menu_->AddFile("C:\\missing");
    menu_->AddFile("C:\\a");
    Popup();
    EXPECT_THAT(shell().trackings, IsEmpty());
    EXPECT_THAT(shell().bound, IsEmpty());
}

TEST_F(ShellContextMenuTest, ALaterPathThatCannotBeParsedDropsOut) {
    menu_->AddFile("C:\\a");
    menu_->AddFile("C:\\missing");
    menu_->AddFile("C:\\b");
    Popup();
    EXPECT_THAT(shell().children, ElementsAre(L"a", L"b"));
    EXPECT_EQ(shell().trackings.size(), 1U);
}

TEST_F(ShellContextMenuTest, AnIdentifierListThatRunsOutOfItsMemoryCountsAsUnparsed) {
    shell().cut_off = L"cut";
    menu_->AddFile("C:\\a");
    menu_->AddFile("C:\\cut");
    Popup();
    EXPECT_THAT(shell().children, ElementsAre(L"a"));
    menu_->Clear();
    menu_->AddFile("C:\\cut");
    menu_->AddFile("C:\\a");
    Popup();
    EXPECT_EQ(shell().trackings.size(), 1U);
}

TEST_F(ShellContextMenuTest, AFolderThatCannotBeBoundShowsNothing) {
    shell().unbindable = L"dir";
    menu_->AddFile("C:\\dir\\a");
    Popup();
    EXPECT_THAT(shell().bound, ElementsAre(L"C:"));
    EXPECT_THAT(shell().trackings, IsEmpty());
}

TEST_F(ShellContextMenuTest, TheEmptyPathOfTheDesktopShowsNothing) {
    menu_->AddFile("");
    Popup();
    EXPECT_THAT(shell().trackings, IsEmpty());
}

TEST_F(ShellContextMenuTest, WithoutTheShellsMenuNothingIsChosen) {
    shell().get_ui_object_fails = true;
    shell().choice = 1;
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    Popup();
    EXPECT_THAT(shell().trackings, IsEmpty());
    EXPECT_THAT(invoked_, IsEmpty());
}

TEST_F(ShellContextMenuTest, WithoutAMenuNothingIsChosen) {
    shell().menu_creation_fails = true;
    shell().choice = 1;
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    Popup();
    EXPECT_THAT(shell().queries, IsEmpty());
    EXPECT_THAT(invoked_, IsEmpty());
}

TEST_F(ShellContextMenuTest, TheShellsIdentifiersStartBehindTheOwnOnesAndEndAt2047) {
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    Popup();
    ASSERT_EQ(shell().queries.size(), 1U);
    const FakeShell::Query& query = shell().queries[0];
    EXPECT_TRUE(query.through_second_version);
    EXPECT_EQ(query.position, 0U);
    EXPECT_EQ(query.first, 3U) << "the separator counts";
    EXPECT_EQ(query.last, 2047U);
    EXPECT_EQ(query.flags, static_cast<UINT>(CMF_NORMAL));
}

TEST_F(ShellContextMenuTest, AMenuOfTheFirstVersionIsUsedAsSuch) {
    shell().offers_second_version = false;
    shell().choice = 2;
    menu_->AddFile("C:\\a");
    shell().while_tracking = [this] { form_.Send(WM_INITMENUPOPUP, 0, 0); };
    Popup();
    ASSERT_EQ(shell().queries.size(), 1U);
    EXPECT_FALSE(shell().queries[0].through_second_version);
    EXPECT_EQ(shell().queries[0].first, 1U);
    ASSERT_EQ(shell().invocations.size(), 1U);
    EXPECT_FALSE(shell().invocations[0].through_second_version);
    EXPECT_THAT(shell().menu_messages, IsEmpty());
}

TEST_F(ShellContextMenuTest, WithoutTheShellsEntriesTheOwnOnesAreShownAndNoDefaultIsTouched) {
    shell().query_fails = true;
    shell().choice = 1;
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    Popup();
    EXPECT_THAT(ShownTexts(), ElementsAre("Open Containing Folder", "-"));
    EXPECT_THAT(shell().defaults, IsEmpty());
    EXPECT_THAT(invoked_, ElementsAre(std::pair<std::string, int>{"Open Containing Folder", 1}));
}

TEST_F(ShellContextMenuTest, TheShellsDefaultIsRemovedUnlessAskedFor) {
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    Popup();
    ASSERT_EQ(shell().defaults.size(), 1U);
    EXPECT_EQ(shell().defaults[0].item, static_cast<UINT>(-1));
    EXPECT_TRUE(shell().defaults[0].by_position);
    EXPECT_EQ(shell().defaults[0].items_in_menu, 2) << "before the own entries come in";
    EXPECT_THAT(ShownTexts(), ElementsAre("Open Containing Folder", "-", "Open", "Properties"));
}

TEST_F(ShellContextMenuTest, TheShellsDefaultStaysBoldWhenAskedFor) {
    menu_->UseShellDefault = true;
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    Popup();
    EXPECT_THAT(shell().defaults, IsEmpty());
    EXPECT_THAT(ShownTexts(),
                ElementsAre("Open Containing Folder", "-", "Open (default)", "Properties"));
}

TEST_F(ShellContextMenuTest, AnOwnDefaultWinsInAnyCase) {
    for (const bool use_shell_default : {false, true}) {
        menu_->Clear();
        shell().defaults.clear();
        menu_->UseShellDefault = use_shell_default;
        menu_->AddMenuItem("First", 0, 0, 0);
        menu_->AddMenuItem("Own", 0, MFS_DEFAULT, 0);
        menu_->AddFile("C:\\a");
        Popup();
        EXPECT_EQ(shell().defaults.size(), 1U);
        EXPECT_THAT(ShownTexts(), ElementsAre("First", "Own (default)", "Open", "Properties"));
    }
}

TEST_F(ShellContextMenuTest, TheRecordsOfOwnEntriesAreOfTheFirstVersion) {
    menu_->AddMenuItem("T\u00efde", MFT_RADIOCHECK, MFS_CHECKED, -7);
    menu_->AddMenuItem("not shown", MFT_SEPARATOR | MFT_RIGHTORDER, MFS_DEFAULT, 8);
    menu_->AddMenuItem("Last", 0, MFS_GRAYED, 9);
    menu_->AddFile("C:\\a");
    Popup();
    ASSERT_EQ(shell().inserted.size(), 3U);
    const UINT size = sizeof(void*) == 4 ? 44 : 72;

    const FakeShell::InsertedItem& first = shell().inserted[0];
    EXPECT_EQ(first.position, 0U);
    EXPECT_EQ(first.record.cbSize, size);
    EXPECT_EQ(first.record.fMask, 0x13U);
    EXPECT_EQ(first.record.fType, static_cast<UINT>(MFT_RADIOCHECK));
    EXPECT_EQ(first.record.fState, static_cast<UINT>(MFS_CHECKED));
    EXPECT_EQ(first.record.wID, 1U);
    EXPECT_EQ(first.record.hSubMenu, nullptr);
    EXPECT_EQ(first.record.hbmpChecked, nullptr);
    EXPECT_EQ(first.record.hbmpUnchecked, nullptr);
    EXPECT_EQ(static_cast<std::int32_t>(first.record.dwItemData), -7);
    EXPECT_EQ(first.text, L"T\u00efde");
    EXPECT_EQ(first.record.cch, 4U);

    const FakeShell::InsertedItem& separator = shell().inserted[1];
    EXPECT_EQ(separator.position, 1U);
    EXPECT_EQ(separator.record.cbSize, size);
    EXPECT_EQ(separator.record.fMask, 0x12U);
    EXPECT_EQ(separator.record.fType, 0x800U);
    EXPECT_EQ(separator.record.fState, 0U);
    EXPECT_EQ(separator.record.wID, 0U);
    EXPECT_EQ(separator.text, L"");
    EXPECT_EQ(separator.record.cch, 0U);
    EXPECT_EQ(separator.record.dwItemData, 8U);

    const FakeShell::InsertedItem& last = shell().inserted[2];
    EXPECT_EQ(last.position, 2U);
    EXPECT_EQ(last.record.wID, 3U) << "a separator occupies an index";
    EXPECT_EQ(last.record.fState, static_cast<UINT>(MFS_GRAYED));
}

TEST_F(ShellContextMenuTest, TheMenuIsTrackedAtThePointForAChoice) {
    menu_->AddFile("C:\\a");
    Popup(TPM_RIGHTBUTTON, 12, 34);
    ASSERT_EQ(shell().trackings.size(), 1U);
    EXPECT_EQ(shell().trackings[0].flags, static_cast<UINT>(TPM_RIGHTBUTTON | TPM_RETURNCMD));
    EXPECT_EQ(shell().trackings[0].point.x, 12);
    EXPECT_EQ(shell().trackings[0].point.y, 34);
    EXPECT_EQ(shell().trackings[0].owner, form_.Handle());
    EXPECT_EQ(shell().cursor_questions, 0);
}

TEST_F(ShellContextMenuTest, TwiceMinusOneMeansThePointer) {
    shell().cursor = {77, 88};
    menu_->AddFile("C:\\a");
    Popup(0, -1, -1);
    EXPECT_EQ(shell().trackings.back().point.x, 77);
    EXPECT_EQ(shell().trackings.back().point.y, 88);
}

TEST_F(ShellContextMenuTest, MinusOneOnOneAxisIsAPosition) {
    shell().cursor = {77, 88};
    menu_->AddFile("C:\\a");
    Popup(0, -1, 5);
    EXPECT_EQ(shell().trackings.back().point.x, -1);
    EXPECT_EQ(shell().trackings.back().point.y, 5);
    Popup(0, 5, -1);
    EXPECT_EQ(shell().trackings.back().point.x, 5);
    EXPECT_EQ(shell().trackings.back().point.y, -1);
    EXPECT_EQ(shell().cursor_questions, 0);
}

TEST_F(ShellContextMenuTest, AChosenShellEntryIsCarriedOutByTheShellAndRaisesNoEvent) {
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    shell().choice = 4;
    Popup();
    ASSERT_EQ(shell().invocations.size(), 1U);
    EXPECT_TRUE(shell().invocations[0].through_second_version);
    const CMINVOKECOMMANDINFO& info = shell().invocations[0].info;
    EXPECT_EQ(info.cbSize, sizeof(void*) == 4 ? 36U : sizeof(CMINVOKECOMMANDINFO));
    EXPECT_EQ(info.fMask, 0U);
    EXPECT_EQ(info.hwnd, form_.Handle());
    EXPECT_EQ(info.lpVerb, MAKEINTRESOURCEA(1)) << "the second of the shell's entries";
    EXPECT_EQ(info.lpParameters, nullptr);
    EXPECT_EQ(info.lpDirectory, nullptr);
    EXPECT_EQ(info.nShow, SW_SHOWNORMAL);
    EXPECT_EQ(info.dwHotKey, 0U);
    EXPECT_EQ(info.hIcon, nullptr);
    EXPECT_THAT(invoked_, IsEmpty());
}

TEST_F(ShellContextMenuTest, TheFirstShellEntryHasTheOffsetZero) {
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    shell().choice = 3;
    Popup();
    ASSERT_EQ(shell().invocations.size(), 1U);
    EXPECT_EQ(shell().invocations[0].info.lpVerb, nullptr);
}

TEST_F(ShellContextMenuTest, AChosenOwnEntryIsReportedAfterTheMenuHasGone) {
    menu_->AddMenuItem("One", 0, 0, 11);
    menu_->AddMenuItem("", MFT_SEPARATOR, 0, 0);
    menu_->AddMenuItem("Thr\u00e9e", 0, 0, -33);
    menu_->AddFile("C:\\a");
    shell().choice = 3;
    int menus_at_event = -1;
    menu_->MenuItemInvoked = [&](const std::string& caption, std::int32_t data) {
        invoked_.emplace_back(caption, data);
        menus_at_event = shell().menus;
        menu_->Clear();
    };
    Popup();
    EXPECT_THAT(invoked_, ElementsAre(std::pair<std::string, int>{"Thr\u00e9e", -33}));
    EXPECT_EQ(menus_at_event, 0);
    EXPECT_THAT(shell().invocations, IsEmpty());
}

TEST_F(ShellContextMenuTest, ACancelledMenuDoesNothing) {
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    Popup();
    EXPECT_THAT(shell().invocations, IsEmpty());
    EXPECT_THAT(invoked_, IsEmpty());
}

TEST_F(ShellContextMenuTest, TheShellsMenuGetsTheMenuMessagesOfTheOwnerWhileItIsUp) {
    std::vector<UINT> seen_by_window;
    form_.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_INITMENUPOPUP || message == WM_USER) {
            seen_by_window.push_back(message);
            return 0;
        }
        return std::nullopt;
    };
    shell().while_tracking = [this] {
        form_.Send(WM_INITMENUPOPUP, 1, 2);
        MEASUREITEMSTRUCT measure{};
        form_.Send(WM_MEASUREITEM, 3, reinterpret_cast<LPARAM>(&measure));
        DRAWITEMSTRUCT draw{};
        form_.Send(WM_DRAWITEM, 5, reinterpret_cast<LPARAM>(&draw));
        form_.Send(WM_USER, 7, 8);
    };
    menu_->AddFile("C:\\a");
    Popup();
    ASSERT_EQ(shell().menu_messages.size(), 3U);
    EXPECT_EQ(shell().menu_messages[0].message, static_cast<UINT>(WM_INITMENUPOPUP));
    EXPECT_EQ(shell().menu_messages[0].wparam, 1U);
    EXPECT_EQ(shell().menu_messages[0].lparam, 2);
    EXPECT_EQ(shell().menu_messages[1].message, static_cast<UINT>(WM_MEASUREITEM));
    EXPECT_EQ(shell().menu_messages[2].message, static_cast<UINT>(WM_DRAWITEM));
    EXPECT_THAT(seen_by_window, ElementsAre(WM_INITMENUPOPUP, WM_USER))
        << "messages go on to the window";

    form_.Send(WM_INITMENUPOPUP, 1, 2);
    EXPECT_EQ(shell().menu_messages.size(), 3U) << "the menu has closed";
}

TEST_F(ShellContextMenuTest, AMenuInsideAnotherOfTheSameObjectLeavesThatOneItsMessages) {
    TestForm other;
    for (const HWND inner_owner : {form_.Handle(), other.Handle()}) {
        bool nested = false;
        shell().menu_messages.clear();
        shell().while_tracking = [&] {
            if (std::exchange(nested, true)) {
                return;
            }
            form_.Send(WM_INITMENUPOPUP, 1, 0);
            menu_->PopupMenu(inner_owner, 0, 7, 8);
            form_.Send(WM_INITMENUPOPUP, 2, 0);
        };
        menu_->Clear();
        menu_->AddFile("C:\\a");
        Popup();
        ASSERT_EQ(shell().menu_messages.size(), 2U);
        EXPECT_EQ(shell().menu_messages[1].wparam, 2U);
        form_.Send(WM_INITMENUPOPUP, 3, 0);
        EXPECT_EQ(shell().menu_messages.size(), 2U) << "both have closed";
    }
}

TEST_F(ShellContextMenuTest, AnOwnerDestroyedUnderItsMenuIsToldToTheShell) {
    menu_->AddFile("C:\\a");
    shell().while_tracking = [this] { form_.Destroy(); };
    Popup();
    ASSERT_EQ(shell().menu_messages.size(), 1U);
    EXPECT_EQ(shell().menu_messages[0].message, static_cast<UINT>(WM_DESTROY));
}

TEST_F(ShellContextMenuTest, WhatChangesWhileTheMenuIsUpDoesNotChangeTheChoice) {
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    shell().choice = 1;
    shell().while_tracking = [this] { menu_->Clear(); };
    Popup();
    EXPECT_THAT(invoked_, ElementsAre(std::pair<std::string, int>{"Open Containing Folder", 1}));
}

TEST_F(ShellContextMenuTest, APathIsHeldOnceWhateverTheCaseOfItsLetters) {
    menu_->AddFile("C:\\A.txt");
    menu_->AddFile("c:\\a.txt");
    menu_->AddFile("C:\\\u00c4");
    menu_->AddFile("C:\\\u00e4");
    Popup();
    EXPECT_THAT(shell().parsed, ElementsAre(L"C:\\A.txt", L"\u00c4"));
}

TEST_F(ShellContextMenuTest, ItCanBeUsedAgainAfterClear) {
    AddOwnEntries();
    menu_->AddFile("C:\\a");
    Popup();
    menu_->Clear();
    Popup();
    EXPECT_EQ(shell().trackings.size(), 1U) << "no files, no menu";
    menu_->AddFile("C:\\a");
    menu_->AddMenuItem("Other", 0, 0, 2);
    Popup();
    EXPECT_THAT(ShownTexts(), ElementsAre("Other", "Open", "Properties"));
    EXPECT_EQ(shell().queries.back().first, 2U);
}

TEST_F(ShellContextMenuTest, AWindowThatIsGoneIsAnError) {
    menu_->AddFile("C:\\a");
    const HWND gone = form_.Handle();
    form_.Destroy();
    EXPECT_THROW(menu_->PopupMenu(gone, 0, 0, 0), ProgramError);
    EXPECT_THAT(shell().trackings, IsEmpty());
}

}  // namespace
}  // namespace tidemark
