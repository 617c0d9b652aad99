#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <functional>
#include <memory>

#include "endtoend/end_to_end.h"
#include "platform/win32/windows.h"
#include "support/local_time.h"
#include "support/paused_thread.h"
#include "support/poll_until.h"
#include "support/repeated.h"

namespace tidemark {
namespace {

// A number of four to six digits as the list shows it.
std::string InThousands(int number) {
    const std::string digits = std::to_string(number);
    return digits.substr(0, digits.size() - 3) + "," + digits.substr(digits.size() - 3);
}

bool IsSameDay(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    return a.wYear == b.wYear && a.wMonth == b.wMonth && a.wDay == b.wDay;
}

// A tree of more than 2,000 entries with everything that is hard about names and places.
void MakeHardTree(RealTree& tree) {
    MakeManyFiles(tree, /*folders=*/40, /*files_in_each=*/50);
    tree.MakeFile("日本語\\文書.txt");
    tree.MakeFile("Ελληνικά\\αρχείο.txt");
    tree.MakeFile("русский\\файл.txt");
    tree.MakeFile("עברית\\קובץ.txt");
    tree.MakeFile("العربية\\ملف.txt");
    tree.MakeFile("emoji\\🌊🕰️.txt");
    // As long as a name can be on the file systems below Wine: 255 bytes.
    tree.MakeFile(Repeated("漢", 85));
    tree.MakeFolder(Repeated("字", 85));
    // A path of more than 400 characters.
    const std::string part(95, 'p');
    tree.MakeFile(part + "\\" + part + "\\" + part + "\\" + part + "\\at the end.txt");
    tree.MakeFolder("empty");
    tree.MakeFolder("nested\\empty");
    tree.MakeFile("with\\.a dot file");
    tree.MakeFile(".dot folder\\untouched.txt");
    tree.MakeFile(".dot folder\\below\\untouched.txt");
    tree.MakeFile("with\\.dot folder below\\untouched.txt");
    tree.MakeFile("locked.txt");
}

class StampEndToEnd : public EndToEnd {
  protected:
    RealTree tree_;
};

TEST_F(StampEndToEnd, StampsEveryEntryOfALargeTreeAndRecordsWhatItCannotStamp) {
    MakeHardTree(tree_);
    RealTree beside;
    const std::string unwritable = UnwritableFile(beside);
    tree_.SetTimes(LongAgo());
    const auto before = tree_.Entries();
    int files = 0;
    int folders = 1;  // the root
    for (const auto& [path, entry] : before) {
        if (!IsInDotFolder(before, path)) {
            ++(entry.folder ? folders : files);
        }
    }
    ASSERT_GE(files, 2000);
    const TreeEntry unwritable_before = unwritable.empty() ? TreeEntry{} : EntryOf(unwritable);
    const LockedFile locked(tree_.Path("locked.txt"));

    std::string arguments = Quoted(tree_.Root());
    if (!unwritable.empty()) {
        arguments.append(" ").append(Quoted(unwritable));
    }
    SYSTEMTIME before_start{};
    ::GetLocalTime(&before_start);
    const RemoteTidemark program = Start(arguments);
    const int rows = unwritable.empty() ? 1 : 2;
    ASSERT_TRUE(program.WaitForCounts(rows, kWait));
    EXPECT_EQ(program.lvwItems().Cell(0, 0), tree_.Root() + "\\");
    EXPECT_EQ(program.Contains(0),
              InThousands(files) + " files; " + std::to_string(folders) + " folders");
    EXPECT_EQ(program.Status(0), "Ready");
    EXPECT_EQ(program.StatusBar1().Text(), "  Ready");
    SYSTEMTIME chosen = program.dtDateLastModified().Time();
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    EXPECT_TRUE(IsSameDay(chosen, before_start) || IsSameDay(chosen, now));
    const SYSTEMTIME time = program.dtTimeLastModified().Time();
    EXPECT_EQ(time.wHour, 1);
    EXPECT_EQ(time.wMinute, 0);

    StampAll(program);

    EXPECT_TRUE(PollUntil(kWait, [&] { return program.Status(0) == "Complete (with errors)"; }))
        << program.Status(0);
    EXPECT_TRUE(PollUntil(kWait, [&] { return program.StatusBar1().Text() == "  Stamp Complete"; }))
        << program.StatusBar1().Text();
    chosen.wHour = 1;
    chosen.wMinute = chosen.wSecond = chosen.wMilliseconds = 0;
    const FileTime minute = FromLocal(chosen);
    const auto after = tree_.Entries();
    ASSERT_EQ(after.size(), before.size());
    std::vector<std::string> wrong;
    for (const auto& [path, entry] : after) {
        const bool kept = path == "locked.txt" || IsInDotFolder(after, path);
        if (!(entry.written == (kept ? LongAgo() : minute))) {
            wrong.push_back(path);
        }
    }
    EXPECT_THAT(wrong, testing::IsEmpty());
    EXPECT_EQ(EntryOf(tree_.Root()).written, minute);
    if (!unwritable.empty()) {
        EXPECT_EQ(program.Contains(1), "1 file");
        EXPECT_EQ(program.Status(1), "Complete (with errors)");
        EXPECT_EQ(EntryOf(unwritable).written, unwritable_before.written);
    }
    Close(program);
    if (unwritable.empty()) {
        GTEST_SKIP() << "a file that may not be written: root opens read-only files all the same, "
                        "and no immutable file is at hand; everything else was shown";
    }
}

TEST_F(StampEndToEnd, StampsTheChosenDateAndMinuteWithoutSeconds) {
    tree_.MakeFile("folder\\file.txt");
    tree_.MakeFile("alone.txt");
    tree_.SetTimes(LongAgo());
    const RemoteTidemark program =
        Start(Quoted(tree_.Path("folder")).append(" ").append(Quoted(tree_.Path("alone.txt"))));
    ASSERT_TRUE(program.WaitForCounts(2, kWait));
    const SYSTEMTIME chosen = LocalTime(2019, 5, 17, 13, 45, 30);
    program.dtDateLastModified().SetTime(chosen);
    program.dtTimeLastModified().SetTime(chosen);

    StampAll(program);

    EXPECT_EQ(program.Status(0), "Complete");
    EXPECT_EQ(program.Status(1), "Complete");
    const FileTime minute = FromLocal(LocalTime(2019, 5, 17, 13, 45));
    EXPECT_EQ(EntryOf(tree_.Path("folder")).written, minute);
    EXPECT_EQ(EntryOf(tree_.Path("folder\\file.txt")).written, minute);
    EXPECT_EQ(EntryOf(tree_.Path("alone.txt")).written, minute);
    EXPECT_EQ(EntryOf(tree_.Root()).written, LongAgo());
    Close(program);
}

TEST_F(StampEndToEnd, WithoutArgumentsTheListIsEmptyAndNothingCanBeStamped) {
    const RemoteTidemark program = Start("");
    EXPECT_TRUE(PollUntil(kWait, [&] { return program.StatusBar1().Text() == "  Ready"; }));
    EXPECT_EQ(program.lvwItems().Rows(), 0);
    EXPECT_FALSE(program.lvwItems().Visible());
    EXPECT_FALSE(program.cmdStamp().Enabled());
    EXPECT_EQ(program.cmdStamp().Text(), "Stamp");
    Close(program);
}

TEST_F(StampEndToEnd, PathsThatDoNotExistAreLeftOut) {
    tree_.MakeFile("file.txt");
    const RemoteTidemark program =
        Start(Quoted(tree_.Path("nowhere")).append(" ").append(Quoted(tree_.Path("file.txt"))));
    ASSERT_TRUE(program.WaitForCounts(1, kWait));
    EXPECT_EQ(program.lvwItems().Cell(0, 0), tree_.Path("file.txt"));
    EXPECT_EQ(program.Contains(0), "1 file");
    EXPECT_TRUE(program.cmdStamp().Enabled());
    Close(program);
}

// A tree that takes the program long enough for something to happen meanwhile.
class LongStampEndToEnd : public StampEndToEnd {
  protected:
    static constexpr int kFolders = 100;
    static constexpr int kFilesInEach = 100;

    // Making ten thousand files takes longer than any of these tests, so they share them.
    static void SetUpTestSuite() {
        many_ = std::make_unique<RealTree>();
        MakeManyFiles(*many_, kFolders, kFilesInEach);
    }
    static void TearDownTestSuite() { many_.reset(); }
    void SetUp() override { many_->SetTimes(LongAgo()); }
    // How many files and folders below the root have a new time.
    [[nodiscard]] int Stamped() const {
        int stamped = 0;
        for (const auto& [path, entry] : many_->Entries()) {
            stamped += entry.written == LongAgo() ? 0 : 1;
        }
        return stamped;
    }

    // Whether files have a new time. Looks at one of each folder: a look at all of them takes as
    // long as the stamp that is to be met at work.
    [[nodiscard]] static bool StampingFiles() {
        for (int folder = 0; folder < kFolders; ++folder) {
            const std::string file = "many " + std::to_string(folder) + "\\file 0.txt";
            if (!(EntryOf(many_->Path(file)).written == LongAgo())) {
                return true;
            }
        }
        return false;
    }
    // Presses Stamp and acts when files are being stamped, before the program goes on: held up for
    // longer than the stamp takes, a test would act too late. What it posts will be there then.
    static void StartStamping(const RemoteTidemark& program, const std::function<void()>& act) {
        const PausedThread thread(program.Main().Handle());
        program.cmdStamp().Click();
        ASSERT_TRUE(PollUntil(kWait, [&] {
            thread.RunABit();
            return StampingFiles();
        }));
        act();
    }

    static std::unique_ptr<RealTree> many_;
};
std::unique_ptr<RealTree> LongStampEndToEnd::many_;

TEST_F(LongStampEndToEnd, CancelEndsARunningStampWithoutAMessage) {
    const RemoteTidemark program = Start(Quoted(many_->Root()));
    ASSERT_TRUE(program.WaitForCounts(1, kWait));
    const RemoteWindow button = program.cmdStamp();
    const RemoteWindow date = program.dtDateLastModified();
    StartStamping(program, [&] {
        std::array<wchar_t, 16> text{};
        ::InternalGetWindowText(button.Handle(), text.data(), static_cast<int>(text.size()));
        EXPECT_STREQ(text.data(), L"Cancel");
        EXPECT_FALSE(date.Enabled());
        button.Click();
    });

    // List and status bar may still say so from before the stamp.
    ASSERT_TRUE(PollUntil(kWait, [&] { return button.Text() == "Stamp"; }));
    ASSERT_TRUE(PollUntil(kWait, [&] { return program.Status(0) == "Ready"; }));
    EXPECT_TRUE(PollUntil(kWait, [&] { return program.StatusBar1().Text() == "  Ready"; }));
    EXPECT_TRUE(program.dtDateLastModified().Enabled());
    EXPECT_FALSE(program.ProgressBar1().Visible());
    EXPECT_EQ(program.WaitForBox(std::chrono::milliseconds(0)), std::nullopt);
    const int stamped = Stamped();
    EXPECT_GT(stamped, 0);
    EXPECT_LT(stamped, kFolders * (kFilesInEach + 1));
    Close(program);
}

TEST_F(LongStampEndToEnd, CancelBeforeTheContentsAreReachedLeavesThemUntouched) {
    const RemoteTidemark program = Start(Quoted(many_->Root()));
    ASSERT_TRUE(program.WaitForCounts(1, kWait));
    const RemoteWindow button = program.cmdStamp();
    // The second press is waiting when the first has only stamped the root.
    {
        const PausedThread thread(program.Main().Handle());
        button.Click();
        button.Click();
    }
    ASSERT_TRUE(PollUntil(kWait, [&] { return !(EntryOf(many_->Root()).written == LongAgo()); }));
    ASSERT_TRUE(PollUntil(kWait, [&] {
        return program.cmdStamp().Text() == "Stamp" && program.Status(0) == "Ready";
    }));
    EXPECT_EQ(Stamped(), 0);
    Close(program);
}

TEST_F(LongStampEndToEnd, ClosingTheWindowDuringAStampEndsTheProgram) {
    const RemoteTidemark program = Start(Quoted(many_->Root()));
    ASSERT_TRUE(program.WaitForCounts(1, kWait));
    const RemoteWindow window = program.Main();
    StartStamping(program, [&] { window.Close(); });
    EXPECT_EQ(program.Process().WaitForExit(kWait), 0U);
    EXPECT_LT(Stamped(), kFolders * (kFilesInEach + 1));
}

TEST_F(LongStampEndToEnd, ClosingTheWindowRightAfterTheStartEndsTheProgram) {
    const RemoteTidemark program = Start(Quoted(many_->Root()));
    Close(program);
}

}  // namespace
}  // namespace tidemark
