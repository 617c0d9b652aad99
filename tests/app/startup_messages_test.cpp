#include "app/startup_messages.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace tidemark {
namespace {

TEST(MissingRuntimeText, TellsWhatIsMissingAndWhereToGetIt) {
    EXPECT_EQ(MissingRuntimeText(),
              "The Microsoft Scripting Runtime is not available.\n\n"
              "This library is needed for the tidemark to function.\n"
              "You can download the latest version from Microsoft \n"
              "at:  https://www.microsoft.com/download\n\n"
              "The tidemark will now exit.");
}

TEST(StartupErrorText, CarriesNumberDescriptionAndSource) {
    EXPECT_EQ(StartupErrorText(ProgramError(-7, "It broke.")),
              "Error: -7\nIt broke.\n\nSource: main");
}

template <typename Exception>
ProgramError Caught(const Exception& exception) {
    try {
        throw exception;
    } catch (...) {
        return CurrentError();
    }
}

TEST(CurrentError, KeepsTheNumberOfTheProgramsOwnErrors) {
    const ProgramError error = Caught(ProgramError(53, "File not found"));
    EXPECT_EQ(error.Number(), 53);
    EXPECT_EQ(error.Description(), "File not found");
}

TEST(CurrentError, NumbersEverythingElse) {
    EXPECT_EQ(Caught(std::bad_alloc()).Number(), error_number::kOutOfMemory);
    EXPECT_EQ(Caught(std::runtime_error("odd")).Number(), error_number::kInternalError);
    EXPECT_EQ(Caught(std::runtime_error("odd")).Description(), "odd");
    EXPECT_EQ(Caught(5).Number(), error_number::kInternalError);
}

}  // namespace
}  // namespace tidemark
