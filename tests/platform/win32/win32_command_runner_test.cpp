#include "platform/win32/win32_command_runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "platform/kernel_files.h"
#include "platform/program_error.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"
#include "support/poll_until.h"
#include "support/real_tree.h"

namespace tidemark {
namespace {

TEST(Win32CommandRunnerTest, StartsACommandLine) {
    const RealTree tree;
    const std::string file = tree.Path("made by a command");
    Win32CommandRunner().Run("cmd /c type nul > \"" + file + "\"");
    // The file shows that the command ran. It can be deleted once the command has closed it.
    EXPECT_TRUE(PollUntil(std::chrono::seconds(20),
                          [&file] { return ::DeleteFileW(WideFromUtf8(file).c_str()) != FALSE; }));
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
