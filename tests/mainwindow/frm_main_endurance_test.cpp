// Thousands of stamps from one main window cost it nothing that it does not give back.

#include <algorithm>

#include "mainwindow/main_window_fixture.h"
#include "support/process_resources.h"

namespace tidemark {
namespace {

class MainWindowEndurance : public MainWindowTest {
  protected:
    static constexpr std::size_t kMemoryMargin = 1024 * 1024;

    // What a user does: stamps, is told, opens a menu, takes an item away and adds it again.
    void Round(int round) {
        Main().cmdStamp_Click();
        Finish();
        ASSERT_TRUE(Main().Items().StampComplete());
        ASSERT_EQ(Main().Items().ErrorList().size(), 1U);
        boxes_.shown.clear();
        errors_shown_.clear();
        Open("mnuFile");
        if (round % 10 == 0) {
            SelectRow("c:\\data\\file1.txt");
            Choose("mnuFile", "mnuFileRemoveSelected");
            List({"C:\\data\\file1.txt"});
        }
    }
};

// TIDEMARK_STAMPS sets how many.
TEST_F(MainWindowEndurance, StampsLeaveHandlesObjectsWindowsMenusAndMemoryAsTheyWere) {
    const int stamps = SizeFromEnvironment("TIDEMARK_STAMPS", 90);
    const int first = std::min(100, stamps / 3);
    LoadWithFiles(3);
    AddTree("tree", 5);
    List({"C:\\trees\\tree"});
    system_.files.SetRecording(false);
    system_.volume.Lock("C:\\trees\\tree\\f3");
    int round = 0;
    for (; round < first; ++round) {
        Round(round);
    }
    const ProcessResources before = ResourcesNow();
    ASSERT_GT(before.handles, 0);
    ASSERT_GT(before.gdi_objects, 0);
    ASSERT_GT(before.windows, 10);
    ASSERT_GT(before.memory, 0U);
    for (; round < stamps; ++round) {
        Round(round);
        if (HasFatalFailure()) {
            return;
        }
    }
    const ProcessResources after = ResourcesNow();
    EXPECT_EQ(after.handles, before.handles);
    EXPECT_EQ(after.gdi_objects, before.gdi_objects);
    EXPECT_EQ(after.user_objects, before.user_objects);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_LT(after.memory, before.memory + kMemoryMargin);
}

}  // namespace
}  // namespace tidemark
