#include "lists/shell_services.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lists/fakes.h"
#include "platform/memory/memory_user_locale.h"

namespace tidemark {
namespace {

// Keeps which paths it was asked about.
class AskedFileSystem : public FakeFileSystem {
  public:
    bool FileExists(const std::string& path) override {
        asked.push_back(path);
        return FakeFileSystem::FileExists(path);
    }
    std::vector<std::string> asked;
};

class ShellServicesTest : public testing::Test {
  protected:
    void AddFile(const std::string& path) {
        file_system_.files[path] = "File";
        list_.Add(path, path);
    }
    void AddFolder(const std::string& path) {
        file_system_.folders.insert(path);
        list_.Add(path, path);
    }
    [[nodiscard]] std::string Command() { return ContainingFolderCommand(&list_, file_system_); }
    [[nodiscard]] bool OneFolder() {
        return SelectedPathsInOneFolder(list_, file_system_).has_value();
    }

    MemoryUserLocale locale_;
    AskedFileSystem file_system_;
    ListModel list_{locale_};
};

TEST_F(ShellServicesTest, CommandIsEmptyWithoutAListOrASelection) {
    EXPECT_EQ(ContainingFolderCommand(nullptr, file_system_), "");
    EXPECT_EQ(Command(), "");
    AddFile(R"(c:\a.txt)");
    EXPECT_EQ(Command(), "");
    list_.NoteCurrent(0);
    EXPECT_EQ(Command(), "");
}

TEST_F(ShellServicesTest, CommandKeepsAPathWithBlanksWhole) {
    AddFile(R"(c:\my files\a b.txt)");
    list_.NoteSelected(0, 0, true);
    EXPECT_EQ(Command(), R"(explorer ,"c:\my files\a b.txt",/select)");
}

TEST_F(ShellServicesTest, CommandForAFolderHasTheSameForm) {
    AddFolder(R"(c:\photos\)");
    list_.NoteSelected(0, 0, true);
    EXPECT_EQ(Command(), R"(explorer ,"c:\photos\",/select)");
}

TEST_F(ShellServicesTest, CommandIsEmptyForAPathDeletedAfterItWasListed) {
    AddFile(R"(c:\a.txt)");
    list_.NoteSelected(0, 0, true);
    file_system_.files.clear();
    EXPECT_EQ(Command(), "");
}

TEST_F(ShellServicesTest, CommandTakesTheRowTheKeyboardActsOn) {
    AddFile(R"(c:\a)");
    AddFile(R"(c:\b)");
    AddFile(R"(c:\c)");
    list_.SelectAll();
    list_.NoteCurrent(1);
    EXPECT_EQ(Command(), R"(explorer ,"c:\b",/select)");
}

TEST_F(ShellServicesTest, CommandTakesTheFirstSelectedRowWhenTheCurrentOneIsNotSelected) {
    AddFile(R"(c:\a)");
    AddFile(R"(c:\b)");
    AddFile(R"(c:\c)");
    list_.NoteSelected(1, 1, true);
    list_.NoteSelected(2, 2, true);
    list_.NoteCurrent(0);
    EXPECT_EQ(Command(), R"(explorer ,"c:\b",/select)");
}

TEST_F(ShellServicesTest, AnEmptySelectionCountsAsOneFolder) {
    AddFile(R"(c:\a\1)");
    AddFile(R"(c:\b\1)");
    EXPECT_TRUE(OneFolder());
    EXPECT_TRUE(file_system_.asked.empty());
}

TEST_F(ShellServicesTest, FilesAndFoldersOfOneFolderLieInOneFolder) {
    AddFile(R"(c:\a\1)");
    AddFolder(R"(c:\a\sub\)");
    AddFile(R"(c:\a\2)");
    list_.SelectAll();
    EXPECT_TRUE(OneFolder());
}

TEST_F(ShellServicesTest, ThePathsOfOneFolderAreGivenInListOrderAndEachIsTestedOnce) {
    AddFile(R"(c:\a\2)");
    AddFile(R"(c:\a\1)");
    AddFile(R"(c:\a\3)");
    list_.NoteSelected(0, 1, true);
    EXPECT_EQ(SelectedPathsInOneFolder(list_, file_system_),
              (std::vector<std::string>{R"(c:\a\2)", R"(c:\a\1)"}));
    EXPECT_EQ(file_system_.asked, (std::vector<std::string>{R"(c:\a\2)", R"(c:\a\1)"}));
}

TEST_F(ShellServicesTest, UnselectedRowsDoNotCount) {
    AddFile(R"(c:\a\1)");
    AddFile(R"(c:\b\1)");
    AddFile(R"(c:\a\2)");
    list_.NoteSelected(0, 0, true);
    list_.NoteSelected(2, 2, true);
    EXPECT_TRUE(OneFolder());
}

TEST_F(ShellServicesTest, DifferentParentsEndTheWalk) {
    AddFile(R"(c:\a\1)");
    AddFile(R"(c:\b\1)");
    AddFile(R"(c:\a\2)");
    list_.SelectAll();
    EXPECT_FALSE(OneFolder());
    EXPECT_EQ(file_system_.asked, (std::vector<std::string>{R"(c:\a\1)", R"(c:\b\1)"}));
}

TEST_F(ShellServicesTest, AFolderAndAFileInsideItDoNotLieInOneFolder) {
    AddFolder(R"(c:\a\)");
    AddFile(R"(c:\a\1)");
    list_.SelectAll();
    EXPECT_FALSE(OneFolder());
}

TEST_F(ShellServicesTest, AVanishedRowEndsTheWalk) {
    AddFile(R"(c:\a\1)");
    AddFile(R"(c:\a\2)");
    AddFile(R"(c:\a\3)");
    file_system_.files.erase(R"(c:\a\2)");
    list_.SelectAll();
    EXPECT_FALSE(OneFolder());
    EXPECT_EQ(file_system_.asked, (std::vector<std::string>{R"(c:\a\1)", R"(c:\a\2)"}));
}

TEST_F(ShellServicesTest, ParentsAreComparedWithoutRegardToCase) {
    AddFile(R"(c:\a\1)");
    file_system_.files[R"(c:\a\2)"] = "File";
    list_.Add(R"(C:\A\2)", R"(C:\A\2)");
    list_.SelectAll();
    EXPECT_TRUE(OneFolder());
}

TEST_F(ShellServicesTest, SelectedPathsThatExistAreGivenInListOrder) {
    AddFile(R"(c:\a\2)");
    AddFile(R"(c:\a\1)");
    AddFolder(R"(c:\b\)");
    AddFile(R"(c:\a\gone)");
    EXPECT_TRUE(ExistingSelectedPaths(list_, file_system_).empty());
    list_.SelectAll();
    list_.NoteSelected(1, 1, false);
    file_system_.files.erase(R"(c:\a\gone)");
    EXPECT_EQ(ExistingSelectedPaths(list_, file_system_),
              (std::vector<std::string>{R"(c:\a\2)", R"(c:\b\)"}));
}

}  // namespace
}  // namespace tidemark
