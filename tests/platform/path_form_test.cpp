#include "platform/path_form.h"

#include <gtest/gtest.h>

#include <string>

#include "support/repeated.h"

namespace tidemark {
namespace {

TEST(PathForm, AnchorsAreToldApart) {
    EXPECT_EQ(AnchorOf("C:\\"), PathAnchor::kDrive);
    EXPECT_EQ(AnchorOf("z:/a/b"), PathAnchor::kDrive);
    EXPECT_EQ(AnchorOf("\\\\server\\share\\a"), PathAnchor::kShare);
    EXPECT_EQ(AnchorOf("//server/share"), PathAnchor::kShare);
    for (const char* path : {"\\\\?\\C:\\a", "\\\\.\\pipe\\x", "//?/C:/a", "\\??\\C:\\a"}) {
        EXPECT_EQ(AnchorOf(path), PathAnchor::kVerbatim) << path;
    }
    for (const char* path : {"", "a", "a\\b", "C:", "C:a", "\\a", ".", "?:\\a", "\xC3\xA9:\\a"}) {
        EXPECT_EQ(AnchorOf(path), PathAnchor::kRelative) << path;
    }
}

TEST(PathForm, OrdinaryPathsStayAsTheyAre) {
    for (const char* path : {"C:\\",
                             "C:\\a",
                             "C:\\a\\",
                             "C:\\.git\\x",
                             "C:\\a\\.\\b\\..\\c",
                             "C:/a//b",
                             "C:\\a\\*.*",
                             "\\\\server\\share\\a",
                             "\\\\nul\\con.\\a",
                             "C:\\null",
                             "C:\\com",
                             "C:\\com0",
                             "C:\\com10",
                             "C:\\console",
                             "C:\\a.nul",
                             "C:\\ a",
                             "C:\\lpt",
                             "C:\\conin",
                             "\\\\?\\C:\\nul",
                             "\\\\.\\nul"}) {
        EXPECT_FALSE(NeedsExtendedForm(path)) << path;
    }
}

TEST(PathForm, ComponentsThatTheSystemWouldAlterNeedTheExtendedForm) {
    for (const char* path : {"C:\\a.",
                             "C:\\a ",
                             "C:\\a.\\b",
                             "C:\\a \\b",
                             "C:\\...",
                             "C:\\a. .\\",
                             "C:\\nul",
                             "C:\\NUL.txt",
                             "C:\\a\\Con",
                             "C:\\aux\\b",
                             "C:\\prn.tar.gz",
                             "C:\\com1",
                             "C:\\LPT9.x",
                             "C:\\com\xC2\xB9",
                             "C:\\nul .txt",
                             "C:\\nul:x",
                             "C:\\conin$",
                             "C:/a./b",
                             "\\\\server\\share\\nul",
                             "\\\\server\\share\\a."}) {
        EXPECT_TRUE(NeedsExtendedForm(path)) << path;
    }
}

TEST(PathForm, LengthIsMeasuredInUtf16Units) {
    EXPECT_FALSE(NeedsExtendedForm("C:\\" + Repeated("a", 244)));
    EXPECT_TRUE(NeedsExtendedForm("C:\\" + Repeated("a", 245)));
    EXPECT_FALSE(NeedsExtendedForm("C:\\" + Repeated("\xE6\xBC\xA2", 244)));
    EXPECT_TRUE(NeedsExtendedForm("C:\\" + Repeated("\xE6\xBC\xA2", 245)));
    EXPECT_FALSE(NeedsExtendedForm("C:\\" + Repeated("\xF0\x9F\x98\x80", 122)));
    EXPECT_TRUE(NeedsExtendedForm("C:\\a" + Repeated("\xF0\x9F\x98\x80", 122)));
    EXPECT_FALSE(NeedsExtendedForm("\\\\?\\C:\\" + Repeated("a", 300)));
}

TEST(PathForm, TheExtendedFormKeepsComponentsToTheBlank) {
    EXPECT_EQ(ExtendedForm("C:\\a.\\b \\nul"), "\\\\?\\C:\\a.\\b \\nul");
    EXPECT_EQ(ExtendedForm("C:\\a.\\"), "\\\\?\\C:\\a.\\");
    EXPECT_EQ(ExtendedForm("C:\\a\\*.*"), "\\\\?\\C:\\a\\*.*");
    EXPECT_EQ(ExtendedForm("C:\\"), "\\\\?\\C:\\");
    EXPECT_EQ(ExtendedForm("\\\\server\\share\\a."), "\\\\?\\UNC\\server\\share\\a.");
    EXPECT_EQ(ExtendedForm("\\\\server\\share"), "\\\\?\\UNC\\server\\share");
    EXPECT_EQ(ExtendedForm("\\\\server\\share\\"), "\\\\?\\UNC\\server\\share\\");
}

TEST(PathForm, TheExtendedFormResolvesWhatTheSystemNoLongerWould) {
    EXPECT_EQ(ExtendedForm("C:/a/b.txt"), "\\\\?\\C:\\a\\b.txt");
    EXPECT_EQ(ExtendedForm("C:\\a\\\\b"), "\\\\?\\C:\\a\\b");
    EXPECT_EQ(ExtendedForm("C:\\a\\.\\b\\..\\c."), "\\\\?\\C:\\a\\c.");
    EXPECT_EQ(ExtendedForm("C:\\a\\..\\..\\.."), "\\\\?\\C:\\");
    EXPECT_EQ(ExtendedForm("//server/share/../a."), "\\\\?\\UNC\\server\\share\\a.");
}

TEST(PathForm, RelativePathsTellWhichPlaceToAskFor) {
    const auto split = [](std::string_view path) {
        const RelativeParts parts = SplitRelative(path);
        return parts.place + "|" + std::string(parts.rest);
    };
    EXPECT_EQ(split("a\\b"), ".|a\\b");
    EXPECT_EQ(split("C:a"), "C:.|a");
    EXPECT_EQ(split("C:"), "C:.|");
    EXPECT_EQ(split("\\a"), "\\|a");
    EXPECT_EQ(split(""), ".|");
}

TEST(PathForm, TheParentIsTheFolderThatHoldsTheEntry) {
    EXPECT_EQ(ParentPath("C:\\a\\b.txt"), "C:\\a");
    EXPECT_EQ(ParentPath("C:\\a\\b\\"), "C:\\a");
    EXPECT_EQ(ParentPath("C:\\a"), "C:\\");
    EXPECT_EQ(ParentPath("C:\\a\\"), "C:\\");
    EXPECT_EQ(ParentPath("C:/a/b"), "C:/a");
    EXPECT_EQ(ParentPath("C:\\a\\\\b"), "C:\\a");
    EXPECT_EQ(ParentPath("\\\\server\\share\\a"), "\\\\server\\share");
    EXPECT_EQ(ParentPath("a\\b"), "a");
    for (const char* path : {"", "C:", "C:\\", "a", "\\a", "\\\\server\\share", "\\\\server"}) {
        EXPECT_EQ(ParentPath(path), "") << path;
    }
}

}  // namespace
}  // namespace tidemark
