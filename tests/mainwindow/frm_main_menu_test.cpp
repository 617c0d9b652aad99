#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controls/ole_session.h"
#include "mainwindow/main_window_fixture.h"
#include "platform/win32/com_object.h"
#include "support/menu_captions.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// Makes no object of its class, whatever is asked for.
class FailingFactory final : public ComObject<IClassFactory> {
  public:
    int asked = 0;

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* /*outer*/, REFIID /*iid*/,
                                             void** object) override {
        ++asked;
        *object = nullptr;
        return E_OUTOFMEMORY;
    }
    HRESULT STDMETHODCALLTYPE LockServer(WINBOOL /*lock*/) override { return S_OK; }

  private:
    ~FailingFactory() override = default;
};

class MainMenu : public MainWindowTest {};

TEST_F(MainMenu, TheBarAndItsMenusReadAsTheyShould) {
    Load();
    const HMENU bar = ::GetMenu(Main().Handle());
    EXPECT_THAT(CaptionsOf(bar), ElementsAre("&File", "&Edit", "&View", "&Options", "&Help"));
    EXPECT_THAT(CaptionsOf(::GetSubMenu(bar, 0)),
                ElementsAre("Open &Containing Folder", "-", "Add &Files...", "Add F&older...",
                            "&Stamp\tEnter", "-", "Re&move Selected", "&Remove Completed",
                            "Remove A&ll", "-", "E&xit"));
    EXPECT_THAT(CaptionsOf(::GetSubMenu(bar, 1)), ElementsAre("Select &All", "Select &None"));
    EXPECT_THAT(CaptionsOf(::GetSubMenu(bar, 2)),
                ElementsAre("Controls On &Top", "Controls On &Bottom", "Date &Created", "-",
                            "&Recount", "Stamping &Errors", "-", "&Always On Top"));
    EXPECT_THAT(CaptionsOf(::GetSubMenu(bar, 3)),
                ElementsAre("Clear &Read-Only Attributes", "Sync &Folder Created Date", "-",
                            "&Prompt When Done", "Clear &Completed Items Automatically",
                            "Show &Errors Automatically", "-", "Create &Send To Shortcut",
                            "Reset O&ptions"));
    EXPECT_THAT(CaptionsOf(::GetSubMenu(bar, 4)), ElementsAre("&About"));
    EXPECT_EQ(Item("mnuLPRemove").Caption(), "&Remove Selected");
    EXPECT_EQ(Item("mnuLPRemoveAll").Caption(), "Remove A&ll");
    EXPECT_EQ(Item("mnuItemPopupOpenContainingFolder").Caption(), "Open &Containing Folder");
    EXPECT_EQ(Item("mnuBadItemPopup1").Caption(), "No valid items selected");
}

TEST_F(MainMenu, WithNothingListedOnlyWhatNeedsNoItemIsEnabled) {
    Load();
    for (const char* top : {"mnuFile", "mnuEdit", "mnuView"}) {
        Open(top);
    }
    for (const char* name : {"mnuFileOpenContainingFolder", "mnuFileStamp", "mnuFileRemoveSelected",
                             "mnuFileRemoveCompleted", "mnuFileRemoveAll", "mnuEditSelectAll",
                             "mnuEditClearSelections", "mnuViewRefresh", "mnuViewErrors"}) {
        EXPECT_FALSE(Item(name).Enabled()) << name;
    }
    for (const char* name :
         {"mnuFileAddFiles", "mnuFileAddFolder", "mnuFileExit", "mnuViewControlsOnTop",
          "mnuViewControlsOnBottom", "mnuViewDateCreated", "mnuViewAlwaysOnTop",
          "mnuOptionsClearReadOnly", "mnuOptionsSyncFolders", "mnuOptionsPrompt",
          "mnuOptionsClearAutomatically", "mnuOptionsShowErrorsAutomatically",
          "mnuOptionsCreateSendTo", "mnuOptionsReset", "mnuHelpAbout"}) {
        EXPECT_TRUE(Item(name).Enabled()) << name;
    }
}

TEST_F(MainMenu, WithNothingSelectedRemoveSelectedAndOpenContainingFolderAreDisabled) {
    LoadWithFiles(2);
    Open("mnuFile");
    EXPECT_FALSE(Item("mnuFileRemoveSelected").Enabled());
    EXPECT_FALSE(Item("mnuFileOpenContainingFolder").Enabled());
    EXPECT_TRUE(Item("mnuFileRemoveAll").Enabled());
    Open("mnuEdit");
    EXPECT_TRUE(Item("mnuEditSelectAll").Enabled());
    EXPECT_FALSE(Item("mnuEditClearSelections").Enabled());
}

TEST_F(MainMenu, OpenContainingFolderRunsTheCommandThatOpeningTheMenuPrepared) {
    LoadWithFiles(2);
    SelectRow("c:\\data\\file2.txt");
    Choose("mnuFile", "mnuFileOpenContainingFolder");
    EXPECT_THAT(commands_.started, ElementsAre("explorer ,\"c:\\data\\file2.txt\",/select"));
    system_.volume.Remove("C:\\data\\file2.txt");
    Open("mnuFile");
    EXPECT_FALSE(Item("mnuFileOpenContainingFolder").Enabled());
}

TEST_F(MainMenu, RemoveSelectedTakesEverySelectedRowAndNoOther) {
    LoadWithFiles(4);
    SelectRow("c:\\data\\file1.txt");
    SelectRow("c:\\data\\file3.txt");
    Choose("mnuFile", "mnuFileRemoveSelected");
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\data\\file2.txt", "C:\\data\\file4.txt"));
    EXPECT_EQ(Main().Items().Count(), 2U);
}

TEST_F(MainMenu, TheListPopupRemovesAsTheFileMenuDoes) {
    LoadWithFiles(3);
    SelectRow("c:\\data\\file2.txt");
    Item("mnuLPRemove").Click();
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\data\\file1.txt", "C:\\data\\file3.txt"));
    Item("mnuLPRemoveAll").Click();
    EXPECT_THAT(RowTexts(), IsEmpty());
    EXPECT_EQ(Main().Items().Count(), 0U);
    EXPECT_FALSE(Main().cmdStamp.Enabled());
}

TEST_F(MainMenu, ASendToShortcutThatCannotBeMadeIsPassedOverInSilence) {
    const OleSession ole;
    Load();
    const auto factory = ComPtr<FailingFactory>::Adopt(new FailingFactory);
    DWORD cookie = 0;
    ASSERT_EQ(::CoRegisterClassObject(CLSID_ShellLink, factory.Get(), CLSCTX_INPROC_SERVER,
                                      REGCLS_MULTIPLEUSE, &cookie),
              S_OK);
    Choose("mnuOptions", "mnuOptionsCreateSendTo");
    ::CoRevokeClassObject(cookie);
    EXPECT_EQ(factory->asked, 1);
    EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(MainMenu, RemoveCompletedLeavesAnItemThatCompletedWithErrors) {
    LoadWithFiles(3);
    system_.volume.Lock("C:\\data\\file2.txt");
    boxes_.answer = BoxAnswer::kNo;
    Item("mnuOptionsShowErrorsAutomatically").SetChecked(false);
    Choose("mnuFile", "mnuFileStamp");
    Finish();
    ASSERT_TRUE(Main().Items().Item("c:\\data\\file2.txt")->StampComplete());
    Choose("mnuFile", "mnuFileRemoveCompleted");
    EXPECT_THAT(RowTexts(), ElementsAre("C:\\data\\file2.txt"));
    Open("mnuFile");
    EXPECT_FALSE(Item("mnuFileRemoveCompleted").Enabled());
}

// At once, not only when the next poll comes.
TEST_F(MainMenu, RemovingTheLastRowsByTheirKeysSetsTheControlsBack) {
    LoadWithFiles(2);
    SelectRow("c:\\data\\file1.txt");
    SelectRow("c:\\data\\file2.txt");
    Choose("mnuFile", "mnuFileRemoveSelected");
    EXPECT_FALSE(Main().cmdStamp.Enabled());
    EXPECT_FALSE(Item("mnuFileStamp").Enabled());
    EXPECT_FALSE(Main().lvwItems.Visible());

    List({"C:\\data\\file1.txt"});
    Item("mnuOptionsPrompt").SetChecked(false);
    Item("mnuOptionsClearAutomatically").SetChecked(false);
    Main().cmdStamp.Click();
    Finish();
    Choose("mnuFile", "mnuFileRemoveCompleted");
    EXPECT_FALSE(Main().cmdStamp.Enabled());
}

TEST_F(MainMenu, RemoveAllEmptiesListAndCollection) {
    LoadWithFiles(3);
    Choose("mnuFile", "mnuFileRemoveAll");
    EXPECT_THAT(RowTexts(), IsEmpty());
    EXPECT_EQ(Main().Items().Count(), 0U);
    EXPECT_FALSE(Main().cmdStamp.Enabled());
}

TEST_F(MainMenu, SelectAllAndSelectNone) {
    LoadWithFiles(3);
    Choose("mnuEdit", "mnuEditSelectAll");
    EXPECT_EQ(Main().rows.SelectedCount(), 3U);
    Choose("mnuEdit", "mnuEditClearSelections");
    EXPECT_EQ(Main().rows.SelectedCount(), 0U);
}

TEST_F(MainMenu, RecountIsDisabledUntilAnItemHasFinishedCounting) {
    Load();
    AddTree("a", 2);
    Main().AddItems({"C:\\trees\\a"});
    Open("mnuView");
    EXPECT_FALSE(Item("mnuViewRefresh").Enabled());
    Finish();
    Open("mnuView");
    EXPECT_TRUE(Item("mnuViewRefresh").Enabled());
}

TEST_F(MainMenu, RecountCountsEveryItemFromScratch) {
    Load();
    AddTree("a", 2);
    List({"C:\\trees\\a"});
    EXPECT_EQ(Main().rows.At(0).sub_items[0], "2 files; 1 folder");
    AddTree("a", 3);
    Choose("mnuView", "mnuViewRefresh");
    EXPECT_EQ(Main().rows.At(0).sub_items[0], "2 files; 1 folder");
    Finish();
    EXPECT_EQ(Main().rows.At(0).sub_items[0], "3 files; 1 folder");
}

TEST_F(MainMenu, StampingErrorsShowsEveryErrorAndFollowsAlwaysOnTop) {
    LoadWithFiles(2);
    Item("mnuOptionsPrompt").SetChecked(false);
    Item("mnuOptionsShowErrorsAutomatically").SetChecked(false);
    Item("mnuOptionsClearAutomatically").SetChecked(false);
    system_.volume.Lock("C:\\data\\file1.txt");
    Choose("mnuFile", "mnuFileStamp");
    Finish();
    EXPECT_THAT(errors_shown_, IsEmpty());
    Choose("mnuView", "mnuViewErrors");
    ASSERT_THAT(errors_shown_, SizeIs(1));
    ASSERT_THAT(errors_shown_[0], SizeIs(1));
    EXPECT_EQ(errors_shown_[0][0]->ItemName, "C:\\data\\file1.txt");
    EXPECT_FALSE(errors_topmost_);
    Choose("mnuView", "mnuViewAlwaysOnTop");
    Choose("mnuView", "mnuViewErrors");
    EXPECT_TRUE(errors_topmost_);
}

TEST_F(MainMenu, AlwaysOnTopTurnsItsCheckMarkOverAndStoresIt) {
    Load();
    Choose("mnuView", "mnuViewAlwaysOnTop");
    EXPECT_TRUE(Item("mnuViewAlwaysOnTop").Checked());
    EXPECT_EQ(settings_.ReadText("AlwaysOnTop", ""), "True");
    Choose("mnuView", "mnuViewAlwaysOnTop");
    EXPECT_FALSE(Item("mnuViewAlwaysOnTop").Checked());
    EXPECT_EQ(settings_.ReadText("AlwaysOnTop", ""), "False");
}

TEST_F(MainMenu, EachOptionItemTurnsItsCheckMarkOverAndStoresIt) {
    Load();
    const std::vector<std::pair<const char*, const char*>> options = {
        {"mnuOptionsClearReadOnly", "ClearReadOnlyAttribute"},
        {"mnuOptionsSyncFolders", "SyncFolderCreatedDates"},
        {"mnuOptionsPrompt", "PromptWhenDone"},
        {"mnuOptionsClearAutomatically", "ClearAutomatically"},
        {"mnuOptionsShowErrorsAutomatically", "ShowErrorsAutomatically"}};
    for (const auto& [name, key] : options) {
        const bool before = Item(name).Checked();
        Choose("mnuOptions", name);
        EXPECT_EQ(Item(name).Checked(), !before) << name;
        EXPECT_EQ(settings_.ReadText(key, ""), before ? "False" : "True") << name;
        Choose("mnuOptions", name);
        EXPECT_EQ(Item(name).Checked(), before) << name;
    }
}

TEST_F(MainMenu, ResetOptionsAnsweredNoChangesNothing) {
    Load();
    Choose("mnuOptions", "mnuOptionsPrompt");
    boxes_.answer = BoxAnswer::kNo;
    Choose("mnuOptions", "mnuOptionsReset");
    EXPECT_THAT(boxes_.shown, ElementsAre(BoxRequest{.text = "Set default visuals and options?",
                                                     .buttons = BoxButtons::kYesNo,
                                                     .icon = BoxIcon::kQuestion,
                                                     .default_button = 2}));
    EXPECT_FALSE(Item("mnuOptionsPrompt").Checked());
}

TEST_F(MainMenu, ResetOptionsSetsEveryDefaultAndTheColumnWidthsOfBothWindows) {
    Load();
    for (const char* name :
         {"mnuOptionsPrompt", "mnuOptionsSyncFolders", "mnuOptionsClearReadOnly"}) {
        Choose("mnuOptions", name);
    }
    Choose("mnuView", "mnuViewDateCreated");
    Choose("mnuView", "mnuViewControlsOnBottom");
    boxes_.answer = BoxAnswer::kYes;
    Choose("mnuOptions", "mnuOptionsReset");
    EXPECT_TRUE(Item("mnuOptionsPrompt").Checked());
    EXPECT_TRUE(Item("mnuOptionsSyncFolders").Checked());
    EXPECT_FALSE(Item("mnuOptionsClearReadOnly").Checked());
    EXPECT_FALSE(Item("mnuViewDateCreated").Checked());
    EXPECT_TRUE(Item("mnuViewControlsOnTop").Checked());
    EXPECT_FALSE(Item("mnuViewControlsOnBottom").Checked());
    EXPECT_EQ(Main().lvwItems.ColumnWidth(0), 300);
    EXPECT_EQ(Main().lvwItems.ColumnWidth(1), 150);
    EXPECT_EQ(Main().lvwItems.ColumnWidth(2), 100);
    EXPECT_THAT(errors_columns_.widths, ElementsAre(300, 50, 400));
    EXPECT_EQ(Main().picControls.Position().top, 0);
    EXPECT_EQ(Main().lvwItems.Position().top, Main().picControls.Position().height);
}

TEST_F(MainMenu, AboutFollowsAlwaysOnTop) {
    Load();
    Choose("mnuHelp", "mnuHelpAbout");
    Choose("mnuView", "mnuViewAlwaysOnTop");
    Choose("mnuHelp", "mnuHelpAbout");
    EXPECT_THAT(about_shown_, ElementsAre(false, true));
}

TEST_F(MainMenu, ExitShutsDownWithTheMainWindow) {
    Load();
    Choose("mnuFile", "mnuFileExit");
    EXPECT_THAT(shut_downs_, ElementsAre(true, false));
    EXPECT_FALSE(Main().Exists());
    EXPECT_EQ(closed_, 1);
}

}  // namespace
}  // namespace tidemark
