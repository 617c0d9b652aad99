#include "platform/win32/system_message.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/program_error.h"
#include "platform/win32/windows.h"

namespace tidemark {
namespace {

TEST(SystemMessage, TellsTheSystemsTextWithoutItsLineBreak) {
    const std::string text = SystemMessage(ERROR_ACCESS_DENIED);
    ASSERT_FALSE(text.empty());
    EXPECT_NE(text.back(), '\n');
    EXPECT_NE(text.back(), '\r');
    EXPECT_EQ(FailureText("Opening", ERROR_ACCESS_DENIED),
              "Opening failed: " + text + " (error 5)");
}

TEST(SystemMessage, CodeWithoutTextLeavesTheCode) {
    EXPECT_EQ(SystemMessage(0x2FFFFFFF), "");
    EXPECT_EQ(FailureText("Opening", 0x2FFFFFFF), "Opening failed: (error 805306367)");
}

TEST(SystemMessage, AFailureIsThrownWithItsCodeAndSentence) {
    try {
        ThrowSystemError(0x80070005, "Opening");
    } catch (const ProgramError& error) {
        EXPECT_EQ(static_cast<std::uint32_t>(error.Number()), 0x80070005);
        EXPECT_EQ(error.Description(), FailureText("Opening", 0x80070005));
    }
}

}  // namespace
}  // namespace tidemark
