#include "platform/win32/win32_command_runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <string>

#include "platform/kernel_files.h"
#include "platform/program_error.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_process.h"
#include "platform/win32/windows.h"
#include "support/poll_until.h"
#include "support/real_tree.h"

namespace tidemark {
namespace {

// A file shows that a program ran. It can be deleted once the program has closed it.
bool CanBeDeletedSoon(const std::string& file) {
    return PollUntil(std::chrono::seconds(20),
                     [&file] { return ::DeleteFileW(WideFromUtf8(file).c_str()) != FALSE; });
}

TEST(Win32CommandRunnerTest, StartsACommandLine) {
    const RealTree tree;
    const std::string file = tree.Path("made by a command");
    Win32CommandRunner().Run("cmd /c type nul > \"" + file + "\"");
    EXPECT_TRUE(CanBeDeletedSoon(file));
}

TEST(Win32CommandRunnerTest, AProgramBesideThisOneIsFound) {
    const RealTree tree;
    const std::string file = tree.Path("names of the tests.xml");
    const std::string self = Win32Process().ExecutableName();
    Win32CommandRunner().Run(self + " --gtest_list_tests --gtest_output=\"xml:" + file + "\"");
    EXPECT_TRUE(CanBeDeletedSoon(file));
}

TEST(Win32CommandRunnerTest, AProgramInTheCurrentFolderIsNotStarted) {
    const RealTree tree;
    const std::string file = tree.Path("made by the wrong program");
    std::array<wchar_t, MAX_PATH> system_folder{};
    ::GetSystemDirectoryW(system_folder.data(), MAX_PATH);
    const std::wstring shell = std::wstring(system_folder.data()) + L"\\cmd.exe";
    const std::wstring stub = WideFromUtf8(tree.Path("only-in-the-current-folder.exe"));
    ASSERT_TRUE(::CopyFileW(shell.c_str(), stub.c_str(), /*bFailIfExists=*/TRUE));
    std::array<wchar_t, MAX_PATH> folder_before{};
    ::GetCurrentDirectoryW(MAX_PATH, folder_before.data());
    ASSERT_TRUE(::SetCurrentDirectoryW(WideFromUtf8(tree.Root()).c_str()));
    std::int32_t code = 0;
    try {
        Win32CommandRunner().Run("only-in-the-current-folder /c type nul > \"" + file + "\"");
    } catch (const ProgramError& error) {
        code = error.Number();
    }
    ::SetCurrentDirectoryW(folder_before.data());
    EXPECT_EQ(code, static_cast<std::int32_t>(system_error::kFileNotFound));
    EXPECT_TRUE(code != 0 || !CanBeDeletedSoon(file)) << "it was started";
}

TEST(Win32CommandRunnerTest, AProgramThatIsNotThereIsToldWithCodeAndCommandLine) {
    try {
        Win32CommandRunner().Run("no-such-program-of-tidemark ,\"C:\\a b\",/select");
        FAIL() << "nothing was thrown";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), static_cast<std::int32_t>(system_error::kFileNotFound));
        EXPECT_THAT(error.Description(),
                    testing::HasSubstr("no-such-program-of-tidemark ,\"C:\\a b\",/select"));
    }
}

TEST(Win32CommandRunnerTest, AnEmptyCommandLineIsAnError) {
    EXPECT_THROW(Win32CommandRunner().Run(""), ProgramError);
}

}  // namespace
}  // namespace tidemark
