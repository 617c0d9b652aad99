// Thousands of stamps from one main window cost it nothing that it does not give back.

#include <algorithm>

#include "mainwindow/main_window_fixture.h"
#include "support/expect_no_leaks.h"
#include "support/process_resources.h"
#include "support/size_from_environment.h"

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
    ExpectNoLeaks(before, kMemoryMargin);
}

}  // namespace
}  // namespace tidemark
