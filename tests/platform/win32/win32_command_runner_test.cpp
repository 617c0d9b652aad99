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

// Copies the command processor under a name of its own into a folder, tries to have it started from
// there and expects that it is not found.
void ExpectNotStartedFrom(const std::string& folder) {
    const RealTree tree;
    const std::string file = tree.Path("made by the wrong program");
    std::array<wchar_t, MAX_PATH> system_folder{};
    ::GetSystemDirectoryW(system_folder.data(), MAX_PATH);
    const std::wstring shell = std::wstring(system_folder.data()) + L"\\cmd.exe";
    const std::wstring stub = WideFromUtf8(folder + "\\planted-beside-tidemark.exe");
    ASSERT_TRUE(::CopyFileW(shell.c_str(), stub.c_str(), /*bFailIfExists=*/FALSE));
    std::int32_t code = 0;
    try {
        Win32CommandRunner().Run("planted-beside-tidemark /c type nul > \"" + file + "\"");
    } catch (const ProgramError& error) {
        code = error.Number();
    }
    EXPECT_EQ(code, static_cast<std::int32_t>(system_error::kFileNotFound));
    EXPECT_TRUE(code != 0 || !CanBeDeletedSoon(file)) << "it was started";
    EXPECT_TRUE(CanBeDeletedSoon(Utf8FromWide(stub)));
}

TEST(Win32CommandRunnerTest, AProgramBesideThisOneIsNotStarted) {
    ExpectNotStartedFrom(Win32Process().ExecutableFolder());
}

TEST(Win32CommandRunnerTest, AProgramInTheCurrentFolderIsNotStarted) {
    const RealTree tree;
    std::array<wchar_t, MAX_PATH> folder_before{};
    ::GetCurrentDirectoryW(MAX_PATH, folder_before.data());
    ASSERT_TRUE(::SetCurrentDirectoryW(WideFromUtf8(tree.Root()).c_str()));
    ExpectNotStartedFrom(tree.Root());
    ::SetCurrentDirectoryW(folder_before.data());
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
