#include "platform/arguments.h"

#include <gtest/gtest.h>

namespace tidemark {
namespace {

TEST(ArgumentsOf, DropsTheProgramAndTheBlanksAfterIt) {
    EXPECT_EQ(ArgumentsOf(R"(tidemark.exe C:\a C:\b)"), R"(C:\a C:\b)");
    EXPECT_EQ(ArgumentsOf(R"("C:\Program Files\tidemark.exe"  "C:\a b")"), R"("C:\a b")");
    EXPECT_EQ(ArgumentsOf("tidemark.exe\tC:\\a"), R"(C:\a)");
}

TEST(ArgumentsOf, KeepsBlanksFurtherOn) {
    EXPECT_EQ(ArgumentsOf("tidemark.exe a  b "), "a  b ");
}

TEST(ArgumentsOf, IsEmptyWithoutArguments) {
    EXPECT_EQ(ArgumentsOf(""), "");
    EXPECT_EQ(ArgumentsOf("tidemark.exe"), "");
    // What the Explorer gives on a double-click.
    EXPECT_EQ(ArgumentsOf(R"("C:\Program Files\tidemark.exe" )"), "");
}

TEST(ArgumentsOf, AnUnclosedQuoteMakesEverythingTheName) {
    EXPECT_EQ(ArgumentsOf(R"("C:\Program Files\tidemark.exe C:\a)"), "");
}

TEST(ArgumentsOf, QuotesInsideTheNameKeepItTogether) {
    EXPECT_EQ(ArgumentsOf(R"(C:\"Program Files"\tidemark.exe C:\a)"), R"(C:\a)");
}

TEST(ProgramOf, IsTheFirstWordWithoutQuotes) {
    EXPECT_EQ(ProgramOf(R"(explorer ,"C:\a b",/select)"), "explorer");
    EXPECT_EQ(ProgramOf("explorer\t/e"), "explorer");
    EXPECT_EQ(ProgramOf(R"("C:\Program Files\tidemark.exe"  "C:\a b")"),
              R"(C:\Program Files\tidemark.exe)");
    EXPECT_EQ(ProgramOf(R"(C:\"Program Files"\tidemark.exe C:\a)"),
              R"(C:\Program Files\tidemark.exe)");
}

TEST(ProgramOf, IsEmptyWhereTheCommandLineBeginsWithABlankOrNotAtAll) {
    EXPECT_EQ(ProgramOf(""), "");
    EXPECT_EQ(ProgramOf(" explorer"), "");
}

}  // namespace
}  // namespace tidemark
