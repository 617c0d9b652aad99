#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/input_bits.h"
#include "platform/program_error.h"
#include "support/held_keys.h"
#include "support/last_resort_recorder.h"
#include "ui/button.h"
#include "ui/list_view_fixture.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(ListViewTest, ArrowKeysSelectAndMoveTheCurrentRow) {
    Fill(5);
    list_->Focus();
    MakeCurrent(0);
    Key(VK_DOWN);
    EXPECT_THAT(Selected(), ElementsAre("row 1"));
    EXPECT_EQ(model_.CurrentPosition(), 1U);
    {
        const HeldKeys held({VK_SHIFT});
        Key(VK_DOWN);
        Key(VK_DOWN);
    }
    EXPECT_THAT(Selected(), ElementsAre("row 1", "row 2", "row 3"));
    EXPECT_EQ(model_.SelectedCount(), 3U);
    EXPECT_EQ(model_.CurrentPosition(), 3U);
    Key(VK_HOME);
    EXPECT_THAT(Selected(), ElementsAre("row 0"));
}

TEST_F(ListViewTest, TheFirstRowIsTheKeyboardsWhenNoneWasTouchedAndIsNotSelected) {
    Button elsewhere;
    elsewhere.Create(form_, {});
    elsewhere.Focus();
    list_->Focus();
    EXPECT_EQ(model_.CurrentPosition(), ListModel::kNoPosition) << "there is no row yet";
    elsewhere.Focus();
    Fill(5);
    EXPECT_EQ(ShownFocus(), -1);
    list_->Focus();
    EXPECT_EQ(ShownFocus(), 0);
    EXPECT_EQ(model_.CurrentPosition(), 0U);
    EXPECT_THAT(Selected(), IsEmpty());
    Key(VK_DOWN);
    EXPECT_THAT(Selected(), ElementsAre("row 1"));
    elsewhere.Focus();
    list_->Focus();
    EXPECT_EQ(ShownFocus(), 1) << "a row that was touched stays";
}

TEST_F(ListViewTest, ClicksSelectOneRowOrARangeOrAddRows) {
    Fill(10);
    Click(Inside(2));
    EXPECT_THAT(Selected(), ElementsAre("row 2"));
    {
        const HeldKeys held({VK_SHIFT});
        Click(Inside(5), MK_SHIFT);
    }
    EXPECT_THAT(Selected(), ElementsAre("row 2", "row 3", "row 4", "row 5"));
    {
        const HeldKeys held({VK_CONTROL});
        Click(Inside(7), MK_CONTROL);
    }
    EXPECT_THAT(Selected(), ElementsAre("row 2", "row 3", "row 4", "row 5", "row 7"));
    Click(Inside(0));
    EXPECT_THAT(Selected(), ElementsAre("row 0"));
    EXPECT_EQ(model_.SelectedCount(), 1U);
}

TEST_F(ListViewTest, AllRowsSelectedFromOutsideAreSelectedInTheModel) {
    Fill(100);
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED;
    item.state = LVIS_SELECTED;
    list_->Send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(model_.SelectedCount(), 100U);
    item.state = 0;
    list_->Send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(model_.SelectedCount(), 0U);
}

TEST_F(ListViewTest, TypingFindsTheRowThatBeginsSo) {
    for (const char* name : {"apple", "banana", "blueberry", "cherry"}) {
        model_.Add(name, name);
    }
    list_->Focus();
    Key(VK_HOME);
    list_->Send(WM_CHAR, 'b', /*repeat count=*/1);
    list_->Send(WM_CHAR, 'l', /*repeat count=*/1);
    EXPECT_THAT(Selected(), ElementsAre("blueberry"));
}

TEST_F(ListViewTest, RowsAreFoundByTheirText) {
    Fill(20);
    LVFINDINFOW find{};
    find.flags = LVFI_STRING;
    find.psz = L"ROW 1";
    EXPECT_EQ(list_->Send(LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&find)),
              1);
    find.psz = L"row 20";
    EXPECT_EQ(list_->Send(LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&find)),
              -1);
}

TEST_F(ListViewTest, KeysAreToldWithExactlyTheShiftKeysHeld) {
    std::vector<std::string> told;
    list_->on_key_down = [&](UINT key, int shift) {
        told.push_back(std::to_string(key) + "/" + std::to_string(shift));
    };
    Key('A');
    {
        const HeldKeys held({VK_CONTROL});
        Key('A');
    }
    {
        const HeldKeys held({VK_CONTROL, VK_SHIFT});
        Key('A');
    }
    Key(VK_DELETE);
    EXPECT_THAT(told, ElementsAre("65/0", "65/2", "65/3", "46/0"));
}

TEST_F(ListViewTest, ARightPressSelectsTheRowUnderItAndIsToldWithItsRelease) {
    std::vector<std::string> told;
    const auto tell = [&](const char* what) {
        return [&told, what](const MouseEvent& event) {
            told.push_back(what + std::to_string(event.button));
        };
    };
    list_->on_mouse_down = tell("down ");
    list_->on_mouse_up = tell("up ");
    Fill(5);
    list_->Send(WM_RBUTTONDOWN, MK_RBUTTON, At(Inside(3)));
    EXPECT_THAT(Selected(), ElementsAre("row 3"));
    EXPECT_EQ(model_.CurrentPosition(), 3U);
    list_->Send(WM_RBUTTONUP, 0, At(Inside(3)));
    EXPECT_THAT(told, ElementsAre("down 2", "up 2"));
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_F(ListViewTest, TheMiddleButtonIsToldAndSelectsNothing) {
    std::vector<int> told;
    list_->on_mouse_down = [&](const MouseEvent& event) { told.push_back(event.button); };
    list_->on_mouse_up = [&](const MouseEvent& event) { told.push_back(-event.button); };
    Fill(5);
    list_->Send(WM_MBUTTONDOWN, MK_MBUTTON, At(Inside(3)));
    list_->Send(WM_MBUTTONUP, 0, At(Inside(3)));
    EXPECT_THAT(told, ElementsAre(kMiddleButton, -kMiddleButton));
    EXPECT_EQ(model_.SelectedCount(), 0U);
}

TEST_F(ListViewTest, ARightPressOnASelectedRowKeepsTheSelection) {
    Fill(5);
    model_.SelectAll();
    list_->Send(WM_RBUTTONDOWN, MK_RBUTTON, At(Inside(3)));
    EXPECT_EQ(model_.SelectedCount(), 5U);
    EXPECT_EQ(model_.CurrentPosition(), 3U);
    list_->Send(WM_RBUTTONUP, 0, At(Inside(3)));
}

TEST_F(ListViewTest, ARightPressWithCtrlOrShiftMovesTheCurrentRowAndKeepsTheSelection) {
    Fill(5);
    Click(Inside(1));
    for (const int key : {VK_CONTROL, VK_SHIFT}) {
        const int row = key == VK_CONTROL ? 3 : 4;
        const HeldKeys held({key});
        list_->Send(WM_RBUTTONDOWN, MK_RBUTTON, At(Inside(row)));
        list_->Send(WM_RBUTTONUP, 0, At(Inside(row)));
        EXPECT_THAT(Selected(), ElementsAre("row 1"));
        EXPECT_EQ(model_.CurrentPosition(), static_cast<std::size_t>(row));
        list_->Send(WM_RBUTTONDOWN, MK_RBUTTON, At({50, 250}));
        list_->Send(WM_RBUTTONUP, 0, At({50, 250}));
        EXPECT_THAT(Selected(), ElementsAre("row 1")) << "nor beside the rows";
    }
}

TEST_F(ListViewTest, ARightPressBesideTheRowsSelectsNone) {
    Fill(3);
    model_.SelectAll();
    list_->Send(WM_RBUTTONDOWN, MK_RBUTTON, At({50, 250}));
    EXPECT_EQ(model_.SelectedCount(), 0U);
    list_->Send(WM_RBUTTONUP, 0, At({50, 250}));
}

TEST_F(ListViewTest, AHeldRightButtonMovesOnlyBeyondTheDragDistance) {
    std::vector<int> moves;
    list_->on_mouse_move = [&](const MouseEvent& event) { moves.push_back(event.button); };
    Fill(5);
    const Point at = Inside(1);
    list_->Send(WM_RBUTTONDOWN, MK_RBUTTON, At(at));
    list_->Send(WM_MOUSEMOVE, MK_RBUTTON, At({at.x + 1, at.y}));
    EXPECT_THAT(moves, IsEmpty());
    list_->Send(WM_MOUSEMOVE, MK_RBUTTON, At({at.x + 20, at.y}));
    EXPECT_THAT(moves, ElementsAre(kRightButton));
    list_->Send(WM_RBUTTONUP, 0, At(at));
}

TEST_F(ListViewTest, TheContextKeyTellsWhereTheCurrentRowIs) {
    Fill(5);
    MakeCurrent(2);
    std::vector<Point> told;
    list_->on_context_key = [&](Point at) { told.push_back(at); };
    list_->Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list_->Handle()), -1);
    ASSERT_EQ(told.size(), 1U);
    POINT at{told[0].x, told[0].y};
    ::ScreenToClient(list_->Handle(), &at);
    EXPECT_EQ(at.y, RowRect(2).bottom);
}

TEST_F(ListViewTest, TheContextKeyStaysInTheListWhenTheCurrentRowIsScrolledAway) {
    Fill(1'000);
    std::vector<Point> told;
    list_->on_context_key = [&](Point at) {
        POINT client{at.x, at.y};
        ::ScreenToClient(list_->Handle(), &client);
        told.push_back({client.x, client.y});
    };
    const auto press = [this](std::size_t current, LPARAM shown) {
        MakeCurrent(current);
        list_->Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(shown), FALSE);
        list_->Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list_->Handle()), -1);
    };
    press(0, 999);
    press(999, 0);
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0].y, 0);
    EXPECT_EQ(told[1].y, list_->ClientSize().height);
}

TEST_F(ListViewTest, AHeaderClickTellsItsColumn) {
    std::vector<std::size_t> told;
    list_->on_column_click = [&](std::size_t column) { told.push_back(column); };
    const Window header(reinterpret_cast<HWND>(list_->Send(LVM_GETHEADER)));
    header.Post(WM_LBUTTONDOWN, MK_LBUTTON, At({230, 5}));
    header.Post(WM_LBUTTONUP, 0, At({230, 5}));
    PumpPending();
    EXPECT_THAT(told, ElementsAre(1U));
}

TEST_F(ListViewTest, AnErrorInAHandlerReachesTheLastResortAndTheListGoesOn) {
    const LastResortRecorder recorder;
    list_->on_key_down = [](UINT /*key*/, int /*shift*/) {
        throw ProgramError(error_number::kOverflow, "Overflow");
    };
    Fill(3);
    list_->Focus();
    Key(VK_HOME);
    ASSERT_EQ(recorder.reports.size(), 1U);
    EXPECT_EQ(recorder.reports[0].number, error_number::kOverflow);
    EXPECT_EQ(model_.CurrentPosition(), 0U);
}

TEST_F(ListViewTest, AHandlerMayDestroyTheFormOrTheList) {
    list_->on_key_down = [this](UINT /*key*/, int /*shift*/) { list_.reset(); };
    list_->Send(WM_KEYDOWN, VK_HOME);
    EXPECT_EQ(list_, nullptr);
    Fill(3);

    list_ = std::make_unique<ListView>(model_, images_);
    list_->Create(form_, {}, {{"Name", 100}});
    list_->on_mouse_up = [this](const MouseEvent& /*event*/) { form_.Destroy(); };
    list_->Send(WM_RBUTTONUP, 0, At({5, 5}));
    EXPECT_FALSE(list_->Exists());
    Fill(5);
    model_.SelectAll();
}

}  // namespace
}  // namespace tidemark
