// What the file-system object keeps to, run on every implementation of it.

#include <gtest/gtest.h>

#include <string>

#include "contract/platform_under_test.h"

namespace tidemark {
namespace {

class FileSystemObjectContract : public PlatformContract {
  protected:
    FileSystemObject& object_ = platform_.file_system;
};

TEST_P(FileSystemObjectContract, ThereIsADrive) {
    EXPECT_GE(object_.DriveCount(), 1);
    EXPECT_EQ(object_.DriveCount(), object_.DriveCount());
}

TEST_P(FileSystemObjectContract, FilesAndFoldersAreToldApart) {
    const std::string file = NewFile("a.txt");
    const std::string folder = NewFolder("sub");
    EXPECT_TRUE(object_.FileExists(file));
    EXPECT_FALSE(object_.FolderExists(file));
    EXPECT_TRUE(object_.FolderExists(folder));
    EXPECT_TRUE(object_.FolderExists(folder + "\\"));
    EXPECT_FALSE(object_.FileExists(folder));
    EXPECT_FALSE(object_.FileExists(folder + "\\"));
}

TEST_P(FileSystemObjectContract, WhatIsNotThereDoesNotExist) {
    for (const std::string& path :
         {std::string(), Path("missing"), Path("missing\\a.txt"), Path("*.*"), Path("a?.txt")}) {
        EXPECT_FALSE(object_.FileExists(path)) << path;
        EXPECT_FALSE(object_.FolderExists(path)) << path;
        EXPECT_EQ(object_.TypeName(path), "") << path;
    }
}

TEST_P(FileSystemObjectContract, LetterCaseDoesNotMatter) {
    const std::string file = NewFile("Mixed.Txt");
    EXPECT_TRUE(object_.FileExists(Path("mIXED.tXT")));
}

TEST_P(FileSystemObjectContract, LongPathsAndUnusualNamesExist) {
    const std::string folder = DeepFolder();
    const std::string file = folder + "\\deep.txt";
    system_->MakeFile(file);
    EXPECT_TRUE(object_.FileExists(file));
    EXPECT_FALSE(object_.FolderExists(file));
    EXPECT_TRUE(object_.FolderExists(folder));
    EXPECT_TRUE(object_.FolderExists(folder + "\\"));
    EXPECT_FALSE(object_.FileExists(folder + "\\missing.txt"));
    EXPECT_NE(object_.TypeName(file), "");
    EXPECT_NE(object_.TypeName(folder), "");
    EXPECT_NE(object_.TypeName(folder + "\\"), object_.TypeName(file));
    for (const char* name : {"\xF0\x9F\x98\x80.png", "dot.", "nul.txt"}) {
        const std::string path = NewFile(name);
        EXPECT_TRUE(object_.FileExists(path)) << name;
        EXPECT_FALSE(object_.FolderExists(path)) << name;
    }
    EXPECT_FALSE(object_.FileExists(Path("dot")));
}

TEST_P(FileSystemObjectContract, FilesOfOneKindShareTheirTypeName) {
    const std::string first = object_.TypeName(NewFile("a.txt"));
    EXPECT_NE(first, "");
    EXPECT_EQ(object_.TypeName(NewFile("b.txt")), first);
    EXPECT_NE(object_.TypeName(NewFile("c.other")), first);
    const std::string folder = NewFolder("sub");
    EXPECT_NE(object_.TypeName(folder), "");
    EXPECT_NE(object_.TypeName(folder), first);
    EXPECT_EQ(object_.TypeName(folder + "\\"), object_.TypeName(folder));
}

TIDEMARK_ON_EVERY_PLATFORM(FileSystemObjectContract);

}  // namespace
}  // namespace tidemark
