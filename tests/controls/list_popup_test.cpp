#include "controls/list_popup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controls/fake_shell.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ListPopupTest : public ::testing::Test {
  protected:
    void Show(UINT choice = 0) {
        ShellContextMenu popup(system_);
        FillListPopup(popup, {"C:\\a.txt", "C:\\c.txt"}, [this] { ++opened_; });
        system_.shell.choice = choice;
        popup.PopupMenu(form_.Handle(), 0, 5, 6);
    }

    FakePopupMenuSystem system_;
    TestForm form_;
    int opened_ = 0;
};

TEST_F(ListPopupTest, ItHasTheContainingFolderAboveTheShellsEntriesForTheSelection) {
    Show();
    ASSERT_EQ(system_.shell.trackings.size(), 1U);
    EXPECT_THAT(system_.shell.trackings[0].texts,
                ElementsAre("Open Containing Folder", "-", "Open", "Properties"));
    EXPECT_THAT(system_.shell.children, ElementsAre(L"a.txt", L"c.txt"));
    EXPECT_EQ(opened_, 0);
}

TEST_F(ListPopupTest, ItsOwnEntryRunsWhatItWasGiven) {
    Show(/*choice=*/1);
    EXPECT_EQ(opened_, 1);
    EXPECT_THAT(system_.shell.invocations, IsEmpty());
}

TEST_F(ListPopupTest, AnEntryOfTheShellsIsLeftToTheShell) {
    Show(/*choice=*/3);
    EXPECT_EQ(opened_, 0);
    EXPECT_EQ(system_.shell.invocations.size(), 1U);
}

}  // namespace
}  // namespace tidemark
