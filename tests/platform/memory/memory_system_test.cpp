#include "platform/memory/memory_system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/program_error.h"

namespace tidemark {
namespace {

using testing::ElementsAre;

TEST(FaultyKernelFiles, FailsTheNthCallOnOnePathAndNoOther) {
    MemorySystem system;
    system.volume.AddFile("C:\\a");
    system.volume.AddFile("C:\\b");
    system.files.Fail({KernelCall::kReadAttributes, "C:\\a", 2}, 1117);
    EXPECT_NE(system.files.ReadAttributes("C:\\a"), file_attribute::kInvalid);
    EXPECT_NE(system.files.ReadAttributes("C:\\b"), file_attribute::kInvalid);
    EXPECT_EQ(system.files.ReadAttributes("C:\\a"), file_attribute::kInvalid);
    EXPECT_EQ(system.files.LastError(), 1117U);
    EXPECT_NE(system.files.ReadAttributes("C:\\a"), file_attribute::kInvalid);
    EXPECT_EQ(system.files.LastError(), 0U);
    EXPECT_EQ(system.files.FailureCount(), 1U);
    EXPECT_EQ(system.files.CallCount(KernelCall::kReadAttributes), 4U);
}

TEST(FaultyKernelFiles, KnowsThePathBehindAHandle) {
    MemorySystem system;
    system.volume.AddFile("C:\\a");
    const FileHandle file = system.files.OpenForTimes("C:\\a", kOpenNormal);
    system.files.Fail({KernelCall::kSetCreationTime, "C:\\a", 0}, 5);
    EXPECT_FALSE(system.files.SetCreationTime(file, {3}));
    EXPECT_TRUE(system.files.SetLastWriteTime(file, {4}));
    EXPECT_TRUE(system.files.CloseFile(file));
    EXPECT_EQ(system.files.Calls().back().path, "C:\\a");
}

TEST(FaultyKernelFiles, ActsRightBeforeACall) {
    MemorySystem system;
    system.volume.AddFile("C:\\a");
    system.files.Before({KernelCall::kOpenForTimes, "C:\\a", 0},
                        [&] { system.volume.Remove("C:\\a"); });
    EXPECT_EQ(system.files.OpenForTimes("C:\\a", kOpenNormal), kInvalidFile);
    EXPECT_EQ(system.files.LastError(), system_error::kFileNotFound);
}

TEST(MemoryMessagePump, RunsScriptedActionsAndDueTicksAndKeepsExceptions) {
    struct Sink final : ITimerObjectSink {
        void ITimerObjectSink_Timer() override {
            ++ticks;
            throw ProgramError(error_number::kOverflow, "Overflow");
        }
        int ticks = 0;
    };
    MemorySystem system;
    Sink sink;
    const auto timer = system.pump.Timers().NewTimer(TickKind::kLong);
    timer->SetSink(&sink);
    timer->SetInterval(50);
    timer->SetEnabled(true);
    int acted = 0;
    system.pump.AtCall(2, [&] { ++acted; });
    system.pump.LetPendingMessagesRun();
    EXPECT_EQ(acted, 0);
    system.pump.LetPendingMessagesRun();
    EXPECT_EQ(acted, 1);
    EXPECT_EQ(sink.ticks, 0);
    system.pump.SetMillisecondsPerCall(50);
    system.pump.LetPendingMessagesRun();
    EXPECT_EQ(sink.ticks, 1);
    EXPECT_THAT(system.pump.Failures(), ElementsAre("Overflow"));
    system.pump.Quit();
    system.pump.LetPendingMessagesRun();
    EXPECT_EQ(sink.ticks, 1);
    EXPECT_EQ(system.pump.CallCount(), 4U);
    system.pump.RunFor(100);
    EXPECT_EQ(sink.ticks, 3);
}

TEST(MemoryUserLocale, ReadsDatesInItsOwnOrder) {
    MemoryUserLocale locale;
    EXPECT_EQ(locale.ReadDateTime("03/04/2026"), 46085.0);  // 4 March
    locale.SetDateOrder(MemoryUserLocale::DateOrder::kDayFirst);
    EXPECT_EQ(locale.ReadDateTime("03/04/2026"), 46115.0);  // 3 April
    EXPECT_EQ(locale.ReadDateTime("03/25/2026"), 46106.0);  // no month 25
    locale.SetDateSeparator(".");
    EXPECT_EQ(locale.ReadDateTime("03.04.2026"), 46115.0);
    EXPECT_EQ(locale.ReadDateTime("12:00"), 0.5);
    EXPECT_EQ(locale.ReadDateTime("12:00 AM"), 0.0);
    EXPECT_EQ(locale.ReadDateTime("03/04/2026 6:00 PM"), 46115.75);
    EXPECT_THROW(static_cast<void>(locale.ReadDateTime("02/30/2026x")), ProgramError);
    EXPECT_THROW(static_cast<void>(locale.ReadDateTime("25:00")), ProgramError);
    EXPECT_THROW(static_cast<void>(locale.ReadDateTime("")), ProgramError);
}

TEST(MemoryUserLocale, ReadsTimesWithItsOwnSeparatorAndWithColons) {
    MemoryUserLocale locale;
    EXPECT_THROW(static_cast<void>(locale.ReadDateTime("13.45")), ProgramError);
    locale.SetTimeSeparator(".");
    EXPECT_EQ(locale.TimeSeparator(), ".");
    EXPECT_EQ(locale.ReadDateTime("13.45"), (13 * 60 + 45) / 1440.0);
    EXPECT_EQ(locale.ReadDateTime("13:45"), (13 * 60 + 45) / 1440.0);
    EXPECT_EQ(locale.ReadDateTime("03/04/2026 18.00"), 46085.75);
}

TEST(MemoryUserLocale, LowersAsciiAndLatin1Only) {
    MemoryUserLocale locale;
    EXPECT_EQ(locale.LowerCase("ABC \xC3\x84\xC3\x97\xC3\x9F"), "abc \xC3\xA4\xC3\x97\xC3\x9F");
    EXPECT_EQ(locale.LowerCase("\xD0\x96"), "\xD0\x96");
}

TEST(MemoryFileSystemObject, AnswersByTheVolume) {
    MemorySystem system;
    system.volume.AddFile("C:\\f\\a.txt");
    EXPECT_TRUE(system.file_system.FileExists("c:\\F\\A.TXT"));
    EXPECT_FALSE(system.file_system.FolderExists("C:\\f\\a.txt"));
    EXPECT_TRUE(system.file_system.FolderExists("C:\\f"));
    EXPECT_TRUE(system.file_system.FolderExists("C:\\f\\"));
    EXPECT_FALSE(system.file_system.FileExists(""));
    EXPECT_EQ(system.file_system.TypeName("C:\\f\\a.txt"), "Text Document");
    EXPECT_EQ(system.file_system.DriveCount(), 1);
}

TEST(FileSystemObject, APathExistsThatIsAFileOrAFolder) {
    MemorySystem system;
    system.volume.AddFile("C:\\f\\a");
    EXPECT_TRUE(PathExists(system.file_system, "C:\\f\\a"));
    EXPECT_TRUE(PathExists(system.file_system, "C:\\f"));
    EXPECT_TRUE(PathExists(system.file_system, "C:\\f\\"));
    EXPECT_FALSE(PathExists(system.file_system, "C:\\f\\b"));
    EXPECT_FALSE(PathExists(system.file_system, ""));
}

}  // namespace
}  // namespace tidemark
