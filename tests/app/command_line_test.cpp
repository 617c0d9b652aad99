#include "app/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SplitCommandLine, EmptyCommandLineHasNoPaths) {
    EXPECT_THAT(SplitCommandLine(""), IsEmpty());
}

TEST(SplitCommandLine, QuotesKeepBlanksTogether) {
    EXPECT_THAT(SplitCommandLine(R"("C:\My Files\a.txt" C:\b)"),
                ElementsAre(R"(C:\My Files\a.txt)", R"(C:\b)"));
}

TEST(SplitCommandLine, CommaSplitsAPath) {
    EXPECT_THAT(SplitCommandLine(R"(C:\x,y.txt)"), ElementsAre(R"(C:\x)", "y.txt"));
}

TEST(SplitCommandLine, CommaSplitsInsideQuotesToo) {
    EXPECT_THAT(SplitCommandLine(R"("C:\x, y.txt")"), ElementsAre(R"(C:\x)", "y.txt"));
}

TEST(SplitCommandLine, RunsOfBlanksGiveEmptyPaths) {
    EXPECT_THAT(SplitCommandLine("a  b"), ElementsAre("a", "", "b"));
    EXPECT_THAT(SplitCommandLine("a, b"), ElementsAre("a", "", "b"));
    EXPECT_THAT(SplitCommandLine(" a "), ElementsAre("", "a", ""));
    EXPECT_THAT(SplitCommandLine(" "), ElementsAre("", ""));
    EXPECT_THAT(SplitCommandLine(",,"), ElementsAre("", "", ""));
}

TEST(SplitCommandLine, BlanksAtTheEndsOfAQuotedPathAreCutOff) {
    EXPECT_THAT(SplitCommandLine(R"("  a b  ")"), ElementsAre("a b"));
    EXPECT_THAT(SplitCommandLine(R"("   ")"), ElementsAre(""));
}

TEST(SplitCommandLine, QuotesToggleWhereverTheyStandAndAreDropped) {
    EXPECT_THAT(SplitCommandLine(R"(C:\"My Files"\a C:\b)"),
                ElementsAre(R"(C:\My Files\a)", R"(C:\b)"));
    EXPECT_THAT(SplitCommandLine(R"("")"), ElementsAre(""));
    EXPECT_THAT(SplitCommandLine(R"(a""b)"), ElementsAre("ab"));
    EXPECT_THAT(SplitCommandLine(R"(a\"b c\")"), ElementsAre(R"(a\b c\)"));
}

TEST(SplitCommandLine, AnOpenQuoteReachesToTheEnd) {
    EXPECT_THAT(SplitCommandLine(R"(a "b c d)"), ElementsAre("a", "b c d"));
}

TEST(SplitCommandLine, OnlyBlanksSeparate) {
    EXPECT_THAT(SplitCommandLine("a\tb\nc"), ElementsAre("a\tb\nc"));
    EXPECT_THAT(SplitCommandLine("\ta\t"), ElementsAre("\ta\t"));
}

TEST(SplitCommandLine, KeepsTextBeyondAscii) {
    EXPECT_THAT(SplitCommandLine("C:\\日本語 \"C:\\é ü\""), ElementsAre("C:\\日本語", "C:\\é ü"));
}

TEST(SplitCommandLine, HandlesAVeryLongLine) {
    std::string line(32767, 'x');
    line[100] = ' ';
    const std::vector<std::string> paths = SplitCommandLine(line);
    ASSERT_EQ(paths.size(), 2U);
    EXPECT_EQ(paths[0].size(), 100U);
    EXPECT_EQ(paths[1].size(), 32767U - 101);
}

}  // namespace
}  // namespace tidemark
