#include "ui/image_list.h"

#include <gtest/gtest.h>

#include "lists/fakes.h"
#include "lists/icon_keys.h"
#include "lists/list_helpers.h"
#include "platform/memory/memory_user_locale.h"
#include "support/real_tree.h"

namespace tidemark {
namespace {

class ImageListTest : public testing::Test {
  protected:
    void Place(const std::string& path) { AddIcon(images_.Keyed(), keys_.Of(path, ""), path); }
    int Held() const { return ::ImageList_GetImageCount(images_.Handle()); }

    RealTree tree_{};
    MemoryUserLocale locale_{};
    FakeFileSystem file_system_{};
    IconKeys keys_{file_system_, locale_};
    ImageList images_{};
};

TEST_F(ImageListTest, TextDocumentsShareOnePictureAndProgramsHaveTheirOwn) {
    const std::string documents[] = {tree_.MakeFile("a.txt"), tree_.MakeFile("b.txt")};
    const std::string programs[] = {tree_.MakeFile("a.exe"), tree_.MakeFile("b.exe")};
    file_system_.files = {{documents[0], "Text Document"},
                          {documents[1], "Text Document"},
                          {programs[0], "Application"},
                          {programs[1], "Application"}};
    Place(documents[0]);
    Place(documents[1]);
    EXPECT_EQ(Held(), 1);
    Place(programs[0]);
    Place(programs[1]);
    EXPECT_EQ(Held(), 3);
    EXPECT_EQ(images_.Keyed().Count(), 3);
}

TEST_F(ImageListTest, FoldersHaveTheShellsIconToo) {
    file_system_.folders = {tree_.Root() + "\\"};
    Place(tree_.Root() + "\\");
    EXPECT_EQ(Held(), 1);
    EXPECT_EQ(images_.Keyed().Index(":"), 1);
}

TEST_F(ImageListTest, AMissingPathHasNoIconAndAddsNothing) {
    images_.Keyed().Add("key", tree_.Path("gone.txt"));
    EXPECT_EQ(Held(), 0);
    EXPECT_EQ(images_.Keyed().Count(), 0);
}

TEST_F(ImageListTest, APathBeyondTheSystemsOldLimitHasItsIconToo) {
    std::string deep(100, 'd');
    deep += "\\" + std::string(100, 'e') + "\\" + std::string(100, 'f');
    images_.Keyed().Add("file", tree_.MakeFile(deep + "\\a.txt"));
    EXPECT_EQ(images_.Keyed().Index("file"), 1);
    images_.Keyed().Add("folder", tree_.Path(deep) + "\\");
    EXPECT_EQ(images_.Keyed().Index("folder"), 2);
    images_.Keyed().Add("gone", tree_.Path(deep + "\\gone.txt"));
    EXPECT_EQ(Held(), 2);
}

TEST_F(ImageListTest, PicturesAreTheSystemsSmallIconSize) {
    images_.Keyed().Add("key", tree_.MakeFile("a.txt"));
    int width = 0;
    int height = 0;
    ::ImageList_GetIconSize(images_.Handle(), &width, &height);
    EXPECT_EQ(width, ::GetSystemMetrics(SM_CXSMICON));
    EXPECT_EQ(height, ::GetSystemMetrics(SM_CYSMICON));
}

TEST(ImageList, IconsAreGivenBackOnceTheyAreAdded) {
    HICON given = nullptr;
    ImageList images([&](const std::string& /*path*/) {
        given = ::CopyIcon(::LoadIconW(nullptr, IDI_APPLICATION));
        return UniqueIcon(given);
    });
    images.Keyed().Add("key", "any");
    EXPECT_EQ(::ImageList_GetImageCount(images.Handle()), 1);
    ICONINFO info{};
    EXPECT_FALSE(::GetIconInfo(given, &info));
}

}  // namespace
}  // namespace tidemark
