#include "ui/menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/program_error.h"
#include "support/menu_captions.h"
#include "support/open_windows.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;

const std::vector<MenuRow>& Table() {
    static const std::vector<MenuRow> table = {
        {0, "mnuFile", "&File"},     {1, "mnuFileOpen", "&Open"},
        {1, "mnuFileZ1", "-"},       {1, "mnuFileExit", "E&xit"},
        {0, "mnuListPopup", "list"}, {1, "mnuLPRemove", "&Remove"},
        {0, "mnuView", "&View"},     {1, "mnuViewTop", "Controls On &Top"},
    };
    return table;
}

class MenuTest : public ::testing::Test {
  protected:
    MenuTest() { form_.SetMenuBar(&menu_); }

    Menu menu_{Table()};
    TestForm form_;
};

TEST_F(MenuTest, TheBarHoldsTheMenusAndTheirItemsInTableOrder) {
    const HMENU bar = ::GetMenu(form_.Handle());
    ASSERT_EQ(bar, menu_.Bar());
    EXPECT_THAT(CaptionsOf(bar), ElementsAre("&File", "list", "&View"));
    EXPECT_THAT(CaptionsOf(::GetSubMenu(bar, 0)), ElementsAre("&Open", "-", "E&xit"));
}

TEST_F(MenuTest, ItemsAreReachedByNameAndAnUnknownNameIsRefused) {
    EXPECT_EQ(menu_["mnuFileExit"].Caption(), "E&xit");
    EXPECT_THROW((void)menu_["mnuNoSuch"], ProgramError);
}

TEST_F(MenuTest, ARepeatedNameAndAnItemOutsideAMenuAreRefused) {
    EXPECT_THROW(Menu({{0, "mnuA", "a"}, {1, "mnuA", "b"}}), ProgramError);
    EXPECT_THROW(Menu({{1, "mnuA", "a"}}), ProgramError);
}

TEST_F(MenuTest, StatesAreThoseTheUserSees) {
    MenuItem& item = menu_["mnuViewTop"];
    const HMENU view = ::GetSubMenu(menu_.Bar(), 2);
    EXPECT_TRUE(item.Enabled());
    EXPECT_FALSE(item.Checked());
    item.SetEnabled(false);
    item.SetChecked(true);
    const UINT state = ::GetMenuState(view, 0, MF_BYPOSITION);
    EXPECT_NE(state & MF_GRAYED, 0U);
    EXPECT_NE(state & MF_CHECKED, 0U);
    EXPECT_FALSE(item.Enabled());
    EXPECT_TRUE(item.Checked());
    ::CheckMenuItem(view, item.Id(), MF_BYCOMMAND | MF_UNCHECKED);
    EXPECT_FALSE(item.Checked()) << "a state changed outside is seen too";
    item.SetEnabled(true);
    EXPECT_TRUE(item.Enabled());
}

TEST_F(MenuTest, ATopLevelMenuIsDisabledAsAWhole) {
    menu_["mnuView"].SetEnabled(false);
    EXPECT_NE(::GetMenuState(menu_.Bar(), 2, MF_BYPOSITION) & MF_GRAYED, 0U);
    EXPECT_FALSE(menu_["mnuView"].Enabled());
}

TEST_F(MenuTest, ACaptionChangesWithItsShortcutTextAndKeepsTheState) {
    MenuItem& item = menu_["mnuFileOpen"];
    item.SetEnabled(false);
    item.SetCaption("&Stamp\tEnter");
    EXPECT_EQ(CaptionsOf(::GetSubMenu(menu_.Bar(), 0)).at(0), "&Stamp\tEnter");
    EXPECT_EQ(item.Caption(), "&Stamp\tEnter");
    EXPECT_FALSE(item.Enabled());
}

TEST_F(MenuTest, AHiddenMenuLeavesTheBarAndComesBackToItsPlace) {
    MenuItem& popup = menu_["mnuListPopup"];
    popup.SetVisible(false);
    ASSERT_EQ(::GetMenuItemCount(menu_.Bar()), 2);
    EXPECT_EQ(CaptionsOf(menu_.Bar()).at(1), "&View");
    menu_["mnuLPRemove"].SetEnabled(false);
    EXPECT_FALSE(menu_["mnuLPRemove"].Enabled()) << "its items keep their states";
    popup.SetCaption("renamed");
    popup.SetVisible(true);
    EXPECT_EQ(CaptionsOf(menu_.Bar()).at(1), "renamed");
    EXPECT_FALSE(menu_["mnuLPRemove"].Enabled());
}

TEST_F(MenuTest, AHiddenMenuKeepsItsStateAndTakesNewOnes) {
    MenuItem& popup = menu_["mnuListPopup"];
    popup.SetEnabled(false);
    popup.SetVisible(false);
    EXPECT_FALSE(popup.Enabled());
    popup.SetVisible(true);
    EXPECT_FALSE(popup.Enabled());
    EXPECT_NE(::GetMenuState(menu_.Bar(), 1, MF_BYPOSITION) & MF_GRAYED, 0U);
    popup.SetVisible(false);
    popup.SetEnabled(true);
    EXPECT_TRUE(popup.Enabled());
    popup.SetVisible(true);
    EXPECT_EQ(::GetMenuState(menu_.Bar(), 1, MF_BYPOSITION) & MF_GRAYED, 0U);
}

TEST_F(MenuTest, ACommandRunsTheItemsHandler) {
    int clicks = 0;
    menu_["mnuFileOpen"].on_click = [&] { ++clicks; };
    form_.Send(WM_COMMAND, menu_["mnuFileOpen"].Id());
    EXPECT_EQ(clicks, 1);
    form_.Send(WM_COMMAND, menu_["mnuFileExit"].Id());
    form_.Send(WM_COMMAND, 5);
    EXPECT_EQ(clicks, 1);
}

TEST_F(MenuTest, ADisabledItemRunsNothing) {
    int clicks = 0;
    MenuItem& item = menu_["mnuFileOpen"];
    item.on_click = [&] { ++clicks; };
    item.SetEnabled(false);
    form_.Send(WM_COMMAND, item.Id());
    item.Click();
    EXPECT_EQ(clicks, 0);
    item.SetEnabled(true);
    item.Click();
    EXPECT_EQ(clicks, 1);
}

TEST_F(MenuTest, OpeningAMenuRunsItsOwnHandlerOnly) {
    std::string opened;
    menu_["mnuFile"].on_open = [&] { opened += "file "; };
    menu_["mnuView"].on_open = [&] { opened += "view "; };
    form_.Send(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(::GetSubMenu(menu_.Bar(), 2)),
               MAKELPARAM(2, FALSE));
    UniqueMenu stranger(::CreatePopupMenu());
    form_.Send(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(stranger.Get()), MAKELPARAM(0, FALSE));
    EXPECT_EQ(opened, "view ");
}

TEST_F(MenuTest, APopupRefreshesItsStatesAndRunsTheChosenItem) {
    menu_["mnuListPopup"].SetVisible(false);
    form_.SetVisible(true);
    std::string happened;
    menu_["mnuListPopup"].on_open = [&] { happened += "open "; };
    menu_["mnuLPRemove"].on_click = [&] { happened += "remove "; };
    // The menu's own loop takes the keys posted here.
    form_.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_ENTERIDLE) {
            form_.on_message = nullptr;
            form_.Post(WM_KEYDOWN, VK_DOWN);
            form_.Post(WM_KEYDOWN, VK_RETURN);
        }
        return std::nullopt;
    };
    menu_.PopUp(menu_["mnuListPopup"], form_, {60, 60});
    EXPECT_EQ(happened, "open remove ");
}

TEST_F(MenuTest, ADismissedPopupRunsNothing) {
    form_.SetVisible(true);
    int clicks = 0;
    menu_["mnuLPRemove"].on_click = [&] { ++clicks; };
    form_.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_ENTERIDLE) {
            ::EndMenu();
        }
        return std::nullopt;
    };
    menu_.PopUp(menu_["mnuListPopup"], form_, {60, 60});
    EXPECT_EQ(clicks, 0);
}

TEST_F(MenuTest, APopupOpensAtThePointerWhenAskedTo) {
    form_.SetVisible(true);
    ::SetCursorPos(321, 234);
    POINT pointer{};
    ::GetCursorPos(&pointer);
    RECT shown_at{};
    form_.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_ENTERIDLE) {
            ::GetWindowRect(OpenPopup(), &shown_at);
            ::EndMenu();
        }
        return std::nullopt;
    };
    menu_.PopUp(menu_["mnuListPopup"], form_, kAtPointer);
    EXPECT_EQ(shown_at.left, pointer.x);
    EXPECT_EQ(shown_at.top, pointer.y);
}

TEST_F(MenuTest, TheMenuOutlivesTheFormThatShowedIt) {
    form_.Destroy();
    EXPECT_EQ(::GetMenuItemCount(menu_.Bar()), 3);
    menu_["mnuViewTop"].SetChecked(true);
    EXPECT_TRUE(menu_["mnuViewTop"].Checked());
    menu_["mnuView"].SetVisible(false);
}

TEST_F(MenuTest, EachItemCarriesAText) {
    menu_["mnuFileOpen"].tag = "explorer";
    EXPECT_EQ(menu_["mnuFileOpen"].tag, "explorer");
    EXPECT_EQ(menu_["mnuFileExit"].tag, "");
}

}  // namespace
}  // namespace tidemark
