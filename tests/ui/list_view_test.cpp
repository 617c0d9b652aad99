#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/shown_list.h"
#include "ui/list_view_fixture.h"
#include "ui/subclasser.h"

namespace tidemark {
namespace {

using testing::ElementsAre;

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
    // WM_NULL cannot be asked for: as a filter it means every message.
    while (::PeekMessageW(&message, list_->Handle(), 0, 0, PM_REMOVE | PM_QS_POSTMESSAGE)) {
        wakes += message.message == WM_NULL ? 1 : 0;
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
    Select(1);
    MakeCurrent(2);
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
    list_->Send(LVM_ENSUREVISIBLE, 9'999, /*partial is enough=*/FALSE);
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

TEST_F(ListViewTest, OfManyAppendedRowsOnlyThoseInSightAreToBeRedrawn) {
    LRESULT redrawn = 0;
    Subclasser watch;
    watch.RegisterMessages(list_->Handle(), {LVM_REDRAWITEMS});
    watch.WndProc = [&](HWND, UINT, WPARAM first, LPARAM last) -> std::optional<LRESULT> {
        redrawn += last - static_cast<LPARAM>(first) + 1;
        return std::nullopt;
    };
    Fill(10'000);
    EXPECT_EQ(Count(), 10'000);
    EXPECT_GT(redrawn, 0);
    EXPECT_LT(redrawn, 100);
}

TEST_F(ListViewTest, CellsOfRowsNotShownYetAreWrittenWithoutAWordToTheWindow) {
    Fill(2);
    PaintAll();
    int told = 0;
    Subclasser watch;
    watch.RegisterMessages(list_->Handle(), {LVM_SETITEMCOUNT, LVM_GETTOPINDEX, LVM_REDRAWITEMS});
    watch.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        ++told;
        return std::nullopt;
    };
    for (std::size_t i = 2; i < 10; ++i) {
        model_.SetSubItem(model_.Add(Name(i), Name(i)), 1, "new");
    }
    EXPECT_EQ(told, 0);
    EXPECT_EQ(Cell(9, 2), "new");
}

TEST_F(ListViewTest, AnAppendedRowInSightIsPainted) {
    Fill(2);
    PaintAll();
    Fill(3);
    EXPECT_EQ(Count(), 3);
    const RECT unpainted = Unpainted();
    EXPECT_EQ(unpainted.top, RowRect(2).top);
}

TEST_F(ListViewTest, SelectAllSelectsEveryRowAndKeepsTheCurrentOne) {
    Fill(10'000);
    MakeCurrent(7);
    model_.SelectAll();
    EXPECT_EQ(list_->Send(LVM_GETSELECTEDCOUNT), 10'000);
    EXPECT_EQ(ShownFocus(), 7);
    EXPECT_EQ(model_.CurrentPosition(), 7U);
    EXPECT_EQ(model_.SelectedCount(), 10'000U);
    model_.ClearSelection();
    EXPECT_EQ(list_->Send(LVM_GETSELECTEDCOUNT), 0);
    EXPECT_EQ(ShownFocus(), 7);
}

TEST_F(ListViewTest, TheSelectionOfRowsThatMovedIsShownRowByRow) {
    Fill(10);
    for (const std::size_t i : {1U, 3U, 5U, 6U, 7U, 8U, 9U}) {
        Select(i);
    }
    model_.Sort(0, /*descending=*/true);
    EXPECT_THAT(Selected(),
                ElementsAre("row 9", "row 8", "row 7", "row 6", "row 5", "row 3", "row 1"));
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(ShownState(i, LVIS_SELECTED), model_.At(static_cast<std::size_t>(i)).selected)
            << i;
    }
    EXPECT_EQ(model_.SelectedCount(), 7U);
}

TEST_F(ListViewTest, SortingCarriesSelectionAndCurrentRowAlong) {
    Fill(10);
    Select(2);
    Select(4);
    MakeCurrent(4);
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
    Select(499);
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

TEST_F(ListViewTest, OneHeaderShowsTheSortArrow) {
    list_->ShowSortArrow(1, /*descending=*/false);
    EXPECT_EQ(SortArrowOf(*list_, 1), HDF_SORTUP);
    list_->ShowSortArrow(2, /*descending=*/true);
    EXPECT_EQ(SortArrowOf(*list_, 1), 0);
    EXPECT_EQ(SortArrowOf(*list_, 2), HDF_SORTDOWN);
}

TEST_F(ListViewTest, TheSortArrowGoesOnceTheRowsMayBeInAnotherOrder) {
    Fill(5);
    const auto arrow = [this] {
        PumpPending();
        return SortArrowOf(*list_, 0);
    };
    list_->ShowSortArrow(0, /*descending=*/true);
    EXPECT_EQ(arrow(), HDF_SORTDOWN) << "what was added before is sorted";
    model_.SetSubItem(model_.At(1), 0, "of another column");
    model_.Remove(Name(4));
    EXPECT_EQ(arrow(), HDF_SORTDOWN);
    model_.SetText(model_.At(1), "zzz");
    EXPECT_EQ(arrow(), 0);
    list_->ShowSortArrow(0, /*descending=*/true);
    Fill(6);
    EXPECT_EQ(arrow(), 0);
}

TEST_F(ListViewTest, ColumnWidthsAreReadAndWritten) {
    EXPECT_EQ(list_->ColumnWidth(0), 200);
    EXPECT_EQ(list_->ColumnWidth(2), 120);
    list_->SetColumnWidth(2, 333);
    EXPECT_EQ(list_->ColumnWidth(2), 333);
    for (const int too_wide : {32768, 40000, 65535, 65536, 0x7FFFFFFF}) {
        list_->SetColumnWidth(2, too_wide);
        EXPECT_EQ(list_->ColumnWidth(2), 32767) << too_wide;
        list_->SetColumnWidth(2, 333);
    }
}

TEST_F(ListViewTest, IconsShowOnceTheImageListIsAttached) {
    Fill(2);
    EXPECT_EQ(list_->Send(LVM_GETIMAGELIST, LVSIL_SMALL), 0);
    images_.Keyed().Add("key", "any");
    model_.AttachSmallIcons(images_.Keyed());
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

}  // namespace
}  // namespace tidemark
