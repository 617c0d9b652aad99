#include "app/startup_messages.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace tidemark
