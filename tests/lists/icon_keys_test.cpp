#include "lists/icon_keys.h"

#include <gtest/gtest.h>

#include "lists/counting_file_system.h"
#include "lists/fakes.h"
#include "platform/memory/memory_user_locale.h"

namespace tidemark {
namespace {

class IconKeysTest : public testing::Test {
  protected:
    MemoryUserLocale locale_{};
    FakeFileSystem files_{};
    CountingFileSystem file_system_{files_};
    IconKeys keys_{file_system_, locale_};

    std::string Key(const std::string& path) { return keys_.Of(path, "fallback"); }
};

TEST_F(IconKeysTest, AllFoldersShareOneIconKey) {
    files_.folders = {"C:\\One\\", "C:\\Two.exe\\"};
    EXPECT_EQ(Key("C:\\One\\"), ":");
    EXPECT_EQ(Key("C:\\Two.exe\\"), ":");
}

TEST_F(IconKeysTest, ProgramsAndIconFilesHaveTheirOwnIconKey) {
    files_.files = {{"C:\\Tool.EXE", "Application"}, {"C:\\Art.Ico", "Icon"}};
    EXPECT_EQ(Key("C:\\Tool.EXE"), "c:\\tool.exe");
    EXPECT_EQ(Key("C:\\Art.Ico"), "c:\\art.ico");
}

TEST_F(IconKeysTest, OtherFilesHaveTheirTypeNameAsIconKey) {
    files_.files = {{"C:\\a.txt", "Text Document"},
                    {"C:\\setup.exe.txt", "Text Document"},
                    {"C:\\dir.exe\\plain", "File"},
                    {"C:\\exe", "File"}};
    EXPECT_EQ(Key("C:\\a.txt"), "text document");
    EXPECT_EQ(Key("C:\\setup.exe.txt"), "text document");
    EXPECT_EQ(Key("C:\\dir.exe\\plain"), "file");
    EXPECT_EQ(Key("C:\\exe"), "file");
}

TEST_F(IconKeysTest, APathThatExistsAsNeitherHasTheFallbackAsIconKey) {
    EXPECT_EQ(Key("C:\\gone.exe"), "fallback");
}

TEST_F(IconKeysTest, ATypeIsAskedForOncePerExtension) {
    files_.files = {{"C:\\a.txt", "Text Document"},
                    {"C:\\b.txt", "Text Document"},
                    {"C:\\c.png", "Picture"},
                    {"C:\\plain", "File"},
                    {"C:\\dir.txt\\plain too", "File"}};
    for (const auto& [path, type] : files_.files) {
        EXPECT_EQ(Key(path), locale_.LowerCase(type)) << path;
    }
    EXPECT_EQ(file_system_.types_asked, 3U);
}

TEST_F(IconKeysTest, APathIsLookedUpOnceWhenItIsWhatItLooksLike) {
    files_.files = {{"C:\\a.txt", "Text Document"}};
    files_.folders = {"C:\\d\\", "C:\\e"};
    EXPECT_EQ(Key("C:\\a.txt"), "text document");
    EXPECT_EQ(Key("C:\\d\\"), ":");
    EXPECT_EQ(file_system_.existence_asked, 2U);
    EXPECT_EQ(Key("C:\\e"), ":");
    EXPECT_EQ(file_system_.existence_asked, 4U);
}

TEST_F(IconKeysTest, TheTypeOfAProgramIsNeverAskedFor) {
    files_.files = {{"C:\\One.exe", "Application"}, {"C:\\Two.exe", "Application"}};
    EXPECT_EQ(Key("C:\\One.exe"), "c:\\one.exe");
    EXPECT_EQ(Key("C:\\Two.exe"), "c:\\two.exe");
    EXPECT_EQ(file_system_.types_asked, 0U);
}

TEST_F(IconKeysTest, AFileThatGoesWhileItIsAskedForDoesNotDecideForTheOthers) {
    files_.files = {{"C:\\going.txt", ""}, {"C:\\b.txt", "Text Document"}};
    EXPECT_EQ(Key("C:\\going.txt"), "");
    EXPECT_EQ(Key("C:\\b.txt"), "text document");
}

TEST_F(IconKeysTest, AKeyStaysWhereItIsWhenOthersCome) {
    files_.files = {{"C:\\a.txt", "Text Document"}};
    const std::string& key = keys_.Of("C:\\a.txt", "");
    for (int i = 0; i < 1000; ++i) {
        files_.files.emplace("C:\\" + std::to_string(i) + ".exe", "Application");
        EXPECT_NE(Key("C:\\" + std::to_string(i) + ".exe"), key);
    }
    EXPECT_EQ(&keys_.Of("C:\\a.txt", ""), &key);
    EXPECT_EQ(key, "text document");
}

}  // namespace
}  // namespace tidemark
