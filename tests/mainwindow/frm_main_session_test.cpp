#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mainwindow/main_window_fixture.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The end of the user's session: first every window is asked, then told.
class MainWindowAtSessionEnd : public MainWindowTest {
  protected:
    LRESULT Ask() { return Main().Send(WM_QUERYENDSESSION, 0, ENDSESSION_LOGOFF); }
    void Tell(bool ending) { Main().Send(WM_ENDSESSION, ending ? TRUE : FALSE, ENDSESSION_LOGOFF); }
    // Starts a stamp of a tree of five folders with four files in each.
    void StartStampOfFolders() {
        for (int folder = 0; folder < 5; ++folder) {
            AddTree(Numbered("t\\folder", folder), 4);
        }
        List({"C:\\trees\\t"});
        times_before_ = Times();
        Main().cmdStamp_Click();
    }
    // Of the twenty files.
    [[nodiscard]] int StampedFiles() const {
        const std::vector<FileTime> now = Times();
        int stamped = 0;
        for (std::size_t i = 0; i < now.size(); ++i) {
            stamped += now[i] != times_before_[i] ? 1 : 0;
        }
        return stamped;
    }

  private:
    [[nodiscard]] std::vector<FileTime> Times() const {
        std::vector<FileTime> times;
        for (int folder = 0; folder < 5; ++folder) {
            for (int file = 0; file < 4; ++file) {
                times.push_back(
                    Written(Numbered(Numbered("C:\\trees\\t\\folder", folder) + "\\f", file)));
            }
        }
        return times;
    }
    std::vector<FileTime> times_before_;
};

TEST_F(MainWindowAtSessionEnd, IsNeverRefusedAlsoWhileStamping) {
    Load();
    StartStampOfFolders();
    LRESULT answer = FALSE;
    system_.pump.AtCall(10, [&] { answer = Ask(); });
    Finish();
    EXPECT_EQ(answer, TRUE);
    EXPECT_EQ(StampedFiles(), 20);
    EXPECT_TRUE(Main().Exists());
}

TEST_F(MainWindowAtSessionEnd, ChangesNothingWhenAnotherProgramRefusesIt) {
    LoadWithFiles(2);
    settings_.ForgetWrites();
    EXPECT_EQ(Ask(), TRUE);
    Tell(false);
    EXPECT_TRUE(Main().Exists());
    EXPECT_EQ(Main().Items().Count(), 2U);
    EXPECT_THAT(settings_.Writes(), IsEmpty());
    EXPECT_THAT(shut_downs_, IsEmpty());
}

TEST_F(MainWindowAtSessionEnd, SavesTheSettingsAsClosingDoesBeforeItIsAnswered) {
    LoadWithFiles(1);
    Main().lvwItems.SetColumnWidth(2, 88);
    settings_.ForgetWrites();
    Tell(true);
    EXPECT_EQ(settings_.ReadText("3ColumnWidth", ""), "88");
    EXPECT_THAT(shut_downs_, ElementsAre(false));
    EXPECT_FALSE(Main().Exists());
    EXPECT_EQ(closed_, 1);
}

TEST_F(MainWindowAtSessionEnd, EndsAStampWithItsFolderAndTellsNobody) {
    Load();
    StartStampOfFolders();
    int stamped = 0;
    system_.pump.AtCall(25, [&] {
        Tell(true);
        stamped = StampedFiles();
        EXPECT_EQ(system_.volume.OpenFileCount(), 0U);
    });
    Finish();
    EXPECT_GT(stamped, 0);
    EXPECT_LT(stamped, 20);
    // The folder at work is finished, as after a cancel, if the process lives that long.
    EXPECT_LE(StampedFiles() - stamped, 4);
    EXPECT_LT(StampedFiles(), 20);
    EXPECT_THAT(boxes_.shown, IsEmpty());
    EXPECT_THAT(errors_shown_, IsEmpty());
    EXPECT_FALSE(Main().Exists());
}

}  // namespace
}  // namespace tidemark
