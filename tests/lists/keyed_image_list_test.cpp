#include "lists/keyed_image_list.h"

#include <gtest/gtest.h>

#include "lists/fakes.h"
#include "platform/program_error.h"

namespace tidemark {
namespace {

class KeyedImageListTest : public testing::Test {
  protected:
    FakeFileSystem file_system_{};
    FakePictures pictures_{file_system_};
    KeyedImageList images_{pictures_};
};

TEST_F(KeyedImageListTest, PicturesAreNumberedFromOneInTheOrderTheyCame) {
    file_system_.files = {{"a", ""}, {"b", ""}};
    images_.Add("first", "a");
    images_.Add("second", "b");
    EXPECT_EQ(images_.Count(), 2);
    EXPECT_EQ(images_.Index("first"), 1);
    EXPECT_EQ(images_.Index("second"), 2);
}

TEST_F(KeyedImageListTest, UnknownAndEmptyKeysHaveNoPicture) {
    file_system_.files = {{"a", ""}};
    images_.Add("", "a");
    EXPECT_EQ(images_.Count(), 1);
    EXPECT_EQ(images_.Index(""), -1);
    EXPECT_EQ(images_.Index("other"), -1);
}

TEST_F(KeyedImageListTest, PicturesWithoutAKeyDoNotShareOne) {
    file_system_.files = {{"a", ""}};
    images_.Add("", "a");
    images_.Add("", "a");
    images_.Add("key", "a");
    EXPECT_EQ(images_.Index("key"), 3);
}

TEST_F(KeyedImageListTest, APathWithoutAnIconAddsNothing) {
    images_.Add("key", "missing");
    EXPECT_EQ(images_.Count(), 0);
    EXPECT_EQ(images_.Index("key"), -1);
}

TEST_F(KeyedImageListTest, ARepeatedKeyIsRefused) {
    file_system_.files = {{"a", ""}};
    images_.Add("key", "a");
    try {
        images_.Add("key", "a");
        FAIL() << "no error was raised";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), error_number::kDuplicateKey);
        EXPECT_EQ(error.Description(), "Key is not unique in collection");
    }
    EXPECT_EQ(images_.Count(), 1);
}

}  // namespace
}  // namespace tidemark
