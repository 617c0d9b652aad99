#include "ui/list_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "lists/fakes.h"
#include "platform/program_error.h"
#include "platform/win32/wide_text.h"
#include "support/held_keys.h"
#include "support/last_resort_recorder.h"
#include "support/pump.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListViewTest : public testing::Test {
  protected:
    ListViewTest() {
        ControlSpec spec;
        spec.bounds = {10, 10, 460, 300};
        list_->Create(form_, spec,
                      {{"Name", 200}, {"Error", 80, /*right_aligned=*/true}, {"Description", 120}});
        form_.SetVisible(true);
        PumpUntil([this] { return form_.Visible(); });
    }

    static std::string Name(std::size_t i) { return "row " + std::to_string(i); }

    void Fill(std::size_t count) {
        for (std::size_t i = model_.Count(); i < count; ++i) {
            model_.Add(Name(i), Name(i));
        }
    }
    LRESULT Count() const { return list_->Send(LVM_GETITEMCOUNT); }
    std::string Cell(int row, int column) const {
        wchar_t text[512] = L"";
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = 512;
        list_->Send(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return Utf8FromWide(item.pszText);
    }
    bool ShownState(int row, UINT state) const {
        return list_->Send(LVM_GETITEMSTATE, static_cast<WPARAM>(row),
                           static_cast<LPARAM>(state)) != 0;
    }
    LRESULT ShownFocus() const {
        return list_->Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
    }
    RECT RowRect(int row) const {
        RECT rect{};
        rect.left = LVIR_BOUNDS;
        list_->Send(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect));
        return rect;
    }
    Point Inside(int row) const {
        const RECT rect = RowRect(row);
        return {rect.left + 30, (rect.top + rect.bottom) / 2};
    }
    static LPARAM At(Point point) { return MAKELPARAM(point.x, point.y); }
    void Key(int key) const {
        list_->Send(WM_KEYDOWN, static_cast<WPARAM>(key));
        list_->Send(WM_KEYUP, static_cast<WPARAM>(key));
    }
    void Click(Point point, WPARAM keys = 0) const {
        // The list may track the button in a loop of its own, so the release waits in the queue.
        list_->Post(WM_LBUTTONDOWN, MK_LBUTTON | keys, At(point));
        list_->Post(WM_LBUTTONUP, keys, At(point));
        PumpPending();
    }
    // The area that waits to be painted, once everything was.
    void PaintAll() const {
        PumpPending();
        ::UpdateWindow(list_->Handle());
        ::ValidateRect(list_->Handle(), nullptr);
    }
    RECT Unpainted() const {
        RECT rect{};
        ::GetUpdateRect(list_->Handle(), &rect, FALSE);
        return rect;
    }
    std::vector<std::string> Selected() const {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < model_.Count(); ++i) {
            if (model_.At(i).selected) {
                texts.push_back(model_.At(i).text);
            }
        }
        return texts;
    }

    FakeLocale locale_{};
    ListModel model_{locale_};
    ImageList images_{[](const std::string& /*path*/) {
        return UniqueIcon(::CopyIcon(::LoadIconW(nullptr, IDI_APPLICATION)));
    }};
    TestForm form_{};
    std::unique_ptr<ListView> list_ = std::make_unique<ListView>(model_, images_);
};

TEST_F(ListViewTest, TenThousandRowsShowTheModelsTexts) {
    Fill(10'000);
    const ListRow& row = model_.At(9'999);
    model_.SetSubItem(row, 0, "32");
    model_.SetSubItem(row, 1, "caf\xC3\xA9 \xF0\x9F\x98\x80");
    EXPECT_EQ(Count(), 10'000);
    EXPECT_EQ(Cell(0, 0), "row 0");
    EXPECT_EQ(Cell(9'999, 0), "row 9999");
    EXPECT_EQ(Cell(9'999, 1), "32");
    EXPECT_EQ(Cell(9'999, 2), "caf\xC3\xA9 \xF0\x9F\x98\x80");
}

TEST_F(ListViewTest, AnyNumberOfChangesWakesTheWindowOnce) {
    PumpPending();
    Fill(100);
    model_.Remove(Name(3));
    model_.SelectAll();
    int wakes = 0;
    MSG message{};
    while (::PeekMessageW(&message, list_->Handle(), WM_NULL, WM_NULL, PM_REMOVE)) {
        ++wakes;
    }
    EXPECT_EQ(wakes, 1);
    EXPECT_EQ(Count(), 99);
}

TEST_F(ListViewTest, ATextLongerThanAnyPathOfOldIsShownWhole) {
    const std::string path(400, 'p');
    model_.Add(path, path);
    EXPECT_EQ(Cell(0, 0), path);
}

TEST_F(ListViewTest, RowsThatWereThereBeforeTheWindowAreShown) {
    Fill(3);
    model_.SetSelected(1, true);
    model_.SetCurrent(2);
    TestForm other;
    ListView list(model_, images_);
    list.Create(other, {}, {{"Name", 100}});
    EXPECT_EQ(list.Send(LVM_GETITEMCOUNT), 3);
    EXPECT_EQ(list.Send(LVM_GETITEMSTATE, 1, LVIS_SELECTED), static_cast<LRESULT>(LVIS_SELECTED));
    EXPECT_EQ(list.Send(LVM_GETITEMSTATE, 2, LVIS_FOCUSED), static_cast<LRESULT>(LVIS_FOCUSED));
}

TEST_F(ListViewTest, AChangedCellRepaintsItsRowOnly) {
    Fill(10'000);
    PaintAll();
    model_.SetSubItem(model_.At(2), 1, "new");
    const RECT unpainted = Unpainted();
    const RECT row = RowRect(2);
    EXPECT_EQ(unpainted.top, row.top);
    EXPECT_EQ(unpainted.bottom, row.bottom);
}

TEST_F(ListViewTest, ChangesOutOfSightRepaintNothing) {
    Fill(10'000);
    PaintAll();
    for (std::size_t i = 1'000; i < 10'000; ++i) {
        model_.SetSubItem(model_.At(i), 1, "new");
    }
    const RECT unpainted = Unpainted();
    EXPECT_TRUE(::IsRectEmpty(&unpainted));
}

TEST_F(ListViewTest, WritesThatChangeNothingRepaintNothing) {
    Fill(10);
    PaintAll();
    for (std::size_t i = 0; i < 10; ++i) {
        model_.SetText(model_.At(i), Name(i));
    }
    const RECT unpainted = Unpainted();
    EXPECT_TRUE(::IsRectEmpty(&unpainted));
}

TEST_F(ListViewTest, ScrollingMovesWhatIsInSight) {
    Fill(10'000);
    list_->EnsureVisible(9'999);
    PaintAll();
    model_.SetSubItem(model_.At(9'999), 1, "new");
    RECT unpainted = Unpainted();
    EXPECT_EQ(unpainted.bottom, RowRect(9'999).bottom);
    PaintAll();
    model_.SetSubItem(model_.At(0), 1, "new");
    unpainted = Unpainted();
    EXPECT_TRUE(::IsRectEmpty(&unpainted));
}

TEST_F(ListViewTest, RowsAppendedOutOfSightRepaintNothing) {
    Fill(10'000);
    PaintAll();
    Fill(10'010);
    EXPECT_EQ(Count(), 10'010);
    const RECT unpainted = Unpainted();
    EXPECT_TRUE(::IsRectEmpty(&unpainted));
}

TEST_F(ListViewTest, AnAppendedRowInSightIsPainted) {
    Fill(2);
    PaintAll();
    Fill(3);
    EXPECT_EQ(Count(), 3);
    const RECT unpainted = Unpainted();
    EXPECT_EQ(unpainted.top, RowRect(2).top);
}

TEST_F(ListViewTest, ArrowKeysSelectAndMoveTheCurrentRow) {
    Fill(5);
    list_->Focus();
    model_.SetCurrent(0);
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

TEST_F(ListViewTest, SelectAllSelectsEveryRowAndKeepsTheCurrentOne) {
    Fill(10'000);
    model_.SetCurrent(7);
    model_.SelectAll();
    EXPECT_EQ(list_->Send(LVM_GETSELECTEDCOUNT), 10'000);
    EXPECT_EQ(ShownFocus(), 7);
    EXPECT_EQ(model_.CurrentPosition(), 7U);
    EXPECT_EQ(model_.SelectedCount(), 10'000U);
    model_.ClearSelection();
    EXPECT_EQ(list_->Send(LVM_GETSELECTEDCOUNT), 0);
    EXPECT_EQ(ShownFocus(), 7);
}

TEST_F(ListViewTest, SelectionByTheProgramIsShownRowByRow) {
    Fill(10);
    for (const std::size_t i : {1U, 3U, 5U, 6U, 7U, 8U, 9U}) {
        model_.SetSelected(i, true);
    }
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(ShownState(i, LVIS_SELECTED), model_.At(static_cast<std::size_t>(i)).selected)
            << i;
    }
    EXPECT_EQ(model_.SelectedCount(), 7U);
}

TEST_F(ListViewTest, SortingCarriesSelectionAndCurrentRowAlong) {
    Fill(10);
    model_.SetSelected(2, true);
    model_.SetSelected(4, true);
    model_.SetCurrent(4);
    EXPECT_EQ(ShownFocus(), 4);
    model_.Sort(0, /*descending=*/true);
    EXPECT_EQ(Cell(0, 0), "row 9");
    EXPECT_EQ(list_->Send(LVM_GETSELECTEDCOUNT), 2);
    EXPECT_TRUE(ShownState(7, LVIS_SELECTED));
    EXPECT_TRUE(ShownState(5, LVIS_SELECTED));
    EXPECT_EQ(ShownFocus(), 5);
    EXPECT_THAT(Selected(), ElementsAre("row 4", "row 2"));
}

TEST_F(ListViewTest, RemovedRowsTakeTheirSelectionWithThem) {
    Fill(1'000);
    model_.SelectAll();
    for (std::size_t i = 0; i < 1'000; i += 2) {
        model_.Remove(Name(i));
    }
    EXPECT_EQ(Count(), 500);
    EXPECT_EQ(list_->Send(LVM_GETSELECTEDCOUNT), 500);
    EXPECT_EQ(Cell(1, 0), "row 3");
    model_.ClearSelection();
    model_.SetSelected(499, true);
    EXPECT_TRUE(ShownState(499, LVIS_SELECTED));
    model_.Remove(Name(999));
    EXPECT_EQ(Count(), 499);
    EXPECT_EQ(list_->Send(LVM_GETSELECTEDCOUNT), 0);
    EXPECT_EQ(model_.SelectedCount(), 0U);
}

TEST_F(ListViewTest, AClearedListIsEmptyAndCanBeFilledAgain) {
    Fill(100);
    model_.SelectAll();
    EXPECT_EQ(Count(), 100);
    model_.Clear();
    EXPECT_EQ(Count(), 0);
    Fill(2);
    EXPECT_EQ(Count(), 2);
    EXPECT_EQ(list_->Send(LVM_GETSELECTEDCOUNT), 0);
    EXPECT_EQ(ShownFocus(), -1);
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

TEST_F(ListViewTest, ARightPressOnASelectedRowKeepsTheSelection) {
    Fill(5);
    model_.SelectAll();
    list_->Send(WM_RBUTTONDOWN, MK_RBUTTON, At(Inside(3)));
    EXPECT_EQ(model_.SelectedCount(), 5U);
    EXPECT_EQ(model_.CurrentPosition(), 3U);
    list_->Send(WM_RBUTTONUP, 0, At(Inside(3)));
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
    model_.SetCurrent(2);
    std::vector<Point> told;
    list_->on_context_key = [&](Point at) { told.push_back(at); };
    list_->Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list_->Handle()), -1);
    ASSERT_EQ(told.size(), 1U);
    POINT at{told[0].x, told[0].y};
    ::ScreenToClient(list_->Handle(), &at);
    EXPECT_EQ(at.y, RowRect(2).bottom);
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

TEST_F(ListViewTest, OneHeaderShowsTheSortArrow) {
    const auto format = [this](int column) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        const Window header(reinterpret_cast<HWND>(list_->Send(LVM_GETHEADER)));
        header.Send(HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
        return item.fmt & (HDF_SORTUP | HDF_SORTDOWN);
    };
    list_->ShowSortArrow(1, /*descending=*/false);
    EXPECT_EQ(format(1), HDF_SORTUP);
    list_->ShowSortArrow(2, /*descending=*/true);
    EXPECT_EQ(format(1), 0);
    EXPECT_EQ(format(2), HDF_SORTDOWN);
}

TEST_F(ListViewTest, ColumnWidthsAreReadAndWritten) {
    EXPECT_EQ(list_->ColumnWidth(0), 200);
    EXPECT_EQ(list_->ColumnWidth(2), 120);
    list_->SetColumnWidth(2, 333);
    EXPECT_EQ(list_->ColumnWidth(2), 333);
}

TEST_F(ListViewTest, IconsShowOnceTheImageListIsAttached) {
    Fill(2);
    EXPECT_EQ(list_->Send(LVM_GETIMAGELIST, LVSIL_SMALL), 0);
    images_.Keyed().Add("key", "any");
    model_.AttachSmallIcons(&images_.Keyed());
    EXPECT_EQ(list_->Send(LVM_GETIMAGELIST, LVSIL_SMALL),
              reinterpret_cast<LRESULT>(images_.Handle()));
    model_.SetSmallIcon(model_.At(1), 1);
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = 1;
    list_->Send(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(item.iImage, 0);
    item.iItem = 0;
    list_->Send(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(item.iImage, I_IMAGENONE);
}

TEST_F(ListViewTest, TheEmptyStateSwitchIsToldToTheContainer) {
    int told = 0;
    list_->on_empty_state_changed = [&] { ++told; };
    model_.SetHoldsItems(true);
    model_.SetHoldsItems(true);
    EXPECT_EQ(told, 1);
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
