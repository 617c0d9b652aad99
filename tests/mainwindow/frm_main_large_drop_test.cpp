// Ten thousand paths in one drop, and what a poll of such a list repaints.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controls/drop_files.h"
#include "mainwindow/main_window_fixture.h"
#include "support/com_testing.h"
#include "support/shown_list.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;

class MainWindowLargeList : public MainWindowTest {
  protected:
    static constexpr int kPaths = 10000;

    void DropThem() {
        std::vector<std::string> paths;
        for (int i = 0; i < kPaths; ++i) {
            paths.push_back(Numbered("C:\\data\\file", i));
            system_.volume.AddFile(paths.back());
        }
        system_.files.SetRecording(false);
        const auto data = ComPtr<FakeDataObject>::Adopt(new FakeDataObject);
        data->bytes = BuildDropFiles(paths);
        ASSERT_EQ(DragAndDrop(Main().OLEDropper1.Handle(), *data.Get()),
                  static_cast<DWORD>(DROPEFFECT_COPY));
    }
    // What of the list waits to be painted; empty when nothing does.
    [[nodiscard]] RECT Unpainted() {
        RECT rect{};
        ::GetUpdateRect(Main().lvwItems.Handle(), &rect, FALSE);
        return rect;
    }
};

TEST_F(MainWindowLargeList, TenThousandPathsOfOneDropAreAllListedAfterTheDropReturned) {
    Load();
    system_.pump.SetAsksPerSlice(100);
    DropThem();
    const std::size_t rows_at_return = Main().rows.Count();
    Finish();
    EXPECT_EQ(rows_at_return, 120U) << "the drop returns after one slice";
    EXPECT_EQ(Main().rows.Count(), static_cast<std::size_t>(kPaths));
    EXPECT_EQ(Main().Items().CountedItems(), kPaths);

    // Nothing has changed: the poll leaves the picture alone.
    PumpPending();
    ::UpdateWindow(Main().lvwItems.Handle());
    Main().oTimer_Timer();
    const RECT nothing = Unpainted();
    EXPECT_TRUE(::IsRectEmpty(&nothing));

    // One row in sight has: no other is painted.
    const ListRow& row = Main().rows.At(2);
    Main().rows.SetSubItem(row, 1, "out of date");
    ::UpdateWindow(Main().lvwItems.Handle());
    Main().oTimer_Timer();
    const RECT changed = Unpainted();
    const RECT place = PlaceOfRow(Main().lvwItems, 2);
    EXPECT_EQ(row.sub_items[1], "Ready");
    EXPECT_FALSE(::IsRectEmpty(&changed));
    EXPECT_GE(changed.top, place.top);
    EXPECT_LE(changed.bottom, place.bottom);

    // A row far below has: nothing is painted.
    ::UpdateWindow(Main().lvwItems.Handle());
    Main().rows.SetSubItem(Main().rows.At(kPaths - 1), 1, "out of date");
    Main().oTimer_Timer();
    const RECT out_of_sight = Unpainted();
    EXPECT_TRUE(::IsRectEmpty(&out_of_sight));
}

TEST_F(MainWindowLargeList, ASelectionStaysWithItsRowsWhenOthersGoAndComeInsideATick) {
    LoadWithFiles(4);
    AddTree("t", 30);
    system_.volume.AddFile("C:\\data\\file0.txt");
    SelectRow("c:\\data\\file3.txt");
    Main().AddItems({"C:\\trees\\t"});
    system_.pump.AtCall(5, [this] {  // in the middle of the count
        Main().AddItems({"C:\\data\\file0.txt"});
        SelectRow("c:\\data\\file3.txt", false);
        SelectRow("c:\\data\\file1.txt");
        Choose("mnuFile", "mnuFileRemoveSelected");
        SelectRow("c:\\data\\file3.txt");
    });
    Finish();
    EXPECT_THAT(RowTexts(),
                ElementsAre("C:\\data\\file2.txt", "C:\\data\\file3.txt", "C:\\data\\file4.txt",
                            "C:\\trees\\t\\", "C:\\data\\file0.txt"));
    Choose("mnuFile", "mnuFileRemoveSelected");
    EXPECT_EQ(Main().rows.Find("c:\\data\\file3.txt"), nullptr);
    EXPECT_EQ(Main().rows.Count(), 4U);
    EXPECT_EQ(Main().rows.At(2).sub_items[0], "30 files; 1 folder");
    for (const auto& item : Main().Items()) {
        EXPECT_TRUE(item->CountComplete());
    }
}

}  // namespace
}  // namespace tidemark
