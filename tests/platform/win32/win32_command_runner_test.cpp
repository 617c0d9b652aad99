#include "platform/win32/win32_command_runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/kernel_files.h"
#include "platform/program_error.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {
namespace {

TEST(Win32CommandRunnerTest, StartsACommandLine) {
    wchar_t folder[MAX_PATH];
    ASSERT_NE(::GetTempPathW(MAX_PATH, folder), 0U);
    const std::wstring file =
        std::wstring(folder) + L"tidemark run " + std::to_wstring(::GetCurrentProcessId());
    Win32CommandRunner().Run("cmd /c type nul > \"" + Utf8FromWide(file) + "\"");
    // The file shows that the command ran. It can be deleted once the command has closed it.
    const ULONGLONG limit = ::GetTickCount64() + 20'000;
    bool deleted = ::DeleteFileW(file.c_str()) != FALSE;
    while (!deleted && ::GetTickCount64() < limit) {
        ::Sleep(10);
        deleted = ::DeleteFileW(file.c_str()) != FALSE;
    }
    EXPECT_TRUE(deleted);
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
