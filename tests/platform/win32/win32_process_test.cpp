#include "platform/win32/win32_process.h"

#include <gtest/gtest.h>

#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {
namespace {

TEST(Win32ProcessTest, TheCounterMovesWithSleep) {
    Win32Process process;
    const std::uint32_t start = process.MillisecondCounter();
    process.SleepFor(30);
    const std::uint32_t passed = process.MillisecondCounter() - start;
    EXPECT_GE(passed, 20U);
    EXPECT_LT(passed, 10'000U);
}

TEST(Win32ProcessTest, NamesTheExecutableAndItsFolder) {
    Win32Process process;
    const std::string name = process.ExecutableName();
    const std::string folder = process.ExecutableFolder();
    EXPECT_EQ(name.find('\\'), std::string::npos);
    EXPECT_FALSE(folder.ends_with('\\'));
    const DWORD attributes = ::GetFileAttributesW(WideFromUtf8(folder + "\\" + name).c_str());
    ASSERT_NE(attributes, INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(attributes & FILE_ATTRIBUTE_DIRECTORY, 0U);
}

TEST(Win32ProcessTest, ArgumentsLeaveTheProgramsNameOut) {
    Win32Process process;
    const std::string whole = Utf8FromWide(::GetCommandLineW());
    const std::string arguments = process.Arguments();
    EXPECT_TRUE(whole.ends_with(arguments));
    EXPECT_LT(arguments.size(), whole.size());
    EXPECT_EQ(arguments.find(process.ExecutableName()), std::string::npos);
}

TEST(Win32ProcessTest, ReplacesTheErrorMode) {
    Win32Process process;
    const UINT before = ::GetErrorMode();
    process.ReplaceErrorMode(error_mode::kNoFaultErrorBox);
    EXPECT_EQ(::GetErrorMode(), static_cast<UINT>(SEM_NOGPFAULTERRORBOX));
    process.ReplaceErrorMode(before);
}

TEST(Win32ProcessTest, SeesAWaitingQuitWithoutTakingIt) {
    Win32Process process;
    EXPECT_FALSE(process.QuitWaiting());
    ::PostQuitMessage(3);
    EXPECT_TRUE(process.QuitWaiting());
    EXPECT_TRUE(process.QuitWaiting());
    MSG message;
    ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 3U);
    EXPECT_FALSE(process.QuitWaiting());
}

TEST(Win32ProcessTest, AKeyThatNobodyHoldsIsNotDown) {
    Win32Process process;
    EXPECT_GE(process.KeyState(VK_F24), 0);
}

}  // namespace
}  // namespace tidemark
