// Which file or folder a path leads to, on every implementation.

#include <string>
#include <utility>

#include "contract/platform_under_test.h"

namespace tidemark {
namespace {

using FileIdentityContract = PlatformContract;

TEST_P(FileIdentityContract, EveryPathToAFileOrFolderTellsTheSameIdentity) {
    const std::string folder = NewFolder("sub");
    const std::string file = NewFile("sub\\a.txt");
    FileIdentity first;
    FileIdentity second;
    for (const auto& [path, other] :
         {std::pair(folder, folder + "\\"), std::pair(folder, Path("SUB\\..\\sub")),
          std::pair(file, Path("Sub\\A.TXT"))}) {
        ASSERT_TRUE(files_.ReadIdentity(path, first)) << path;
        EXPECT_EQ(files_.LastError(), system_error::kSuccess);
        ASSERT_TRUE(files_.ReadIdentity(other, second)) << other;
        EXPECT_EQ(first, second) << path << " " << other;
    }
    ASSERT_TRUE(files_.ReadIdentity(folder, second));
    EXPECT_FALSE(first == second);
    ASSERT_TRUE(files_.ReadIdentity(system_->Folder(), first));
    EXPECT_FALSE(first == second);
}

TEST_P(FileIdentityContract, AnIdentityIsReadWhileOthersKeepTheFileForThemselves) {
    const std::string file = NewFile("a.txt");
    FileIdentity identity;
    system_->Lock(file);
    EXPECT_TRUE(files_.ReadIdentity(file, identity));
    system_->Unlock();
    const FileHandle open = files_.OpenForTimes(file, kOpenNormal);
    ASSERT_NE(open, kInvalidFile);
    EXPECT_TRUE(files_.ReadIdentity(file, identity));
    EXPECT_TRUE(files_.CloseFile(open));
}

TEST_P(FileIdentityContract, WhatIsMissingHasNoIdentity) {
    FileIdentity identity{1, 2};
    EXPECT_FALSE(files_.ReadIdentity(Path("missing"), identity));
    EXPECT_EQ(files_.LastError(), system_error::kFileNotFound);
    EXPECT_EQ(identity, (FileIdentity{1, 2}));
}

TEST_P(FileIdentityContract, ALinkHasTheIdentityOfWhereItLeadsTo) {
    const std::string folder = NewFolder("target");
    const std::string link = Path("link");
    if (!system_->MakeFolderLink(link, folder)) {
        GTEST_SKIP() << "links to folders cannot be made here";
    }
    FileIdentity of_folder;
    FileIdentity of_link;
    ASSERT_TRUE(files_.ReadIdentity(folder, of_folder));
    ASSERT_TRUE(files_.ReadIdentity(link + "\\", of_link));
    EXPECT_EQ(of_folder, of_link);
}

TIDEMARK_ON_EVERY_PLATFORM(FileIdentityContract);

}  // namespace
}  // namespace tidemark
