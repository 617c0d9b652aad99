#include "lists/list_helpers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "lists/fakes.h"
#include "lists/icon_keys.h"
#include "platform/memory/memory_user_locale.h"

namespace tidemark {
namespace {

using testing::ElementsAre;

class ListHelpersTest : public testing::Test {
  protected:
    MemoryUserLocale locale_{};
    FakeFileSystem file_system_{};
    FakePictures pictures_{file_system_};
    KeyedImageList images_{pictures_};
    ListModel list_{locale_};

    IconKeys keys_{file_system_, locale_};

    void Place(const std::string& path) { AddIcon(images_, keys_.Of(path, ""), path); }
    int Icon(const std::string& path) { return RowIcon(images_, keys_.Of(path, "")); }
};

TEST_F(ListHelpersTest, FindRowIgnoresLetterCaseAndNeverFails) {
    const ListRow& row = list_.Add("c:\\a.txt", "C:\\A.txt");
    EXPECT_EQ(FindRow(list_, "C:\\a.TXT"), &row);
    EXPECT_EQ(FindRow(list_, "C:\\b.txt"), nullptr);
    EXPECT_EQ(FindRow(list_, ""), nullptr);
}

TEST_F(ListHelpersTest, FindOrAddAddsARowUnderTheLowerCasedKey) {
    const std::string path = "C:\\New.txt";
    const ListRow& row = FindOrAddRow(list_, path, path);
    EXPECT_EQ(row.key, "c:\\new.txt");
    EXPECT_EQ(row.text, "C:\\New.txt");
    EXPECT_EQ(list_.Count(), 1U);
}

TEST_F(ListHelpersTest, FindOrAddWithAKeyThatDiffersOnlyInCaseReturnsTheExistingRow) {
    const std::string path = "C:\\A.txt";
    const ListRow& row = FindOrAddRow(list_, path, path);
    EXPECT_EQ(&FindOrAddRow(list_, "c:\\a.TXT", "other"), &row);
    EXPECT_EQ(row.text, "C:\\A.txt");
    EXPECT_EQ(list_.Count(), 1U);
}

TEST_F(ListHelpersTest, KeyExistsTellsOfRowsAndPictures) {
    file_system_.folders = {"C:\\d\\"};
    list_.Add("a", "a");
    Place("C:\\d\\");
    EXPECT_TRUE(KeyExists(list_, "A"));
    EXPECT_FALSE(KeyExists(list_, "b"));
    EXPECT_TRUE(KeyExists(images_, ":"));
    EXPECT_FALSE(KeyExists(images_, ""));
}

TEST_F(ListHelpersTest, TwoTextDocumentsShareOnePictureAndTwoProgramsHaveTwo) {
    file_system_.files = {{"C:\\a.txt", "Text Document"},
                          {"C:\\b.txt", "Text Document"},
                          {"C:\\a.exe", "Application"},
                          {"C:\\b.exe", "Application"}};
    Place("C:\\a.txt");
    Place("C:\\b.txt");
    EXPECT_EQ(images_.Count(), 1);
    Place("C:\\a.exe");
    Place("C:\\b.exe");
    EXPECT_EQ(images_.Count(), 3);
    EXPECT_EQ(Icon("C:\\a.txt"), 1);
    EXPECT_EQ(Icon("C:\\b.txt"), 1);
    EXPECT_EQ(Icon("C:\\a.exe"), 2);
    EXPECT_EQ(Icon("C:\\b.exe"), 3);
    EXPECT_THAT(pictures_.asked, ElementsAre("C:\\a.txt", "C:\\a.exe", "C:\\b.exe"));
}

TEST_F(ListHelpersTest, TheIconOfAMissingPathLeavesTheImageListUnchanged) {
    Place("C:\\gone.txt");
    EXPECT_EQ(images_.Count(), 0);
}

TEST_F(ListHelpersTest, ARowWithoutAPictureOfItsOwnShowsTheFirst) {
    file_system_.files = {{"C:\\a.txt", "Text Document"}, {"C:\\b.bin", "Binary"}};
    file_system_.folders = {"C:\\d\\"};
    Place("C:\\d\\");
    Place("C:\\a.txt");
    EXPECT_EQ(Icon("C:\\gone"), 1);
    EXPECT_EQ(Icon("C:\\b.bin"), 1);
    EXPECT_EQ(Icon("C:\\a.txt"), 2);
}

TEST_F(ListHelpersTest, SelectAllKeepsTheCurrentRowAndClearDeselectsEveryRow) {
    list_.Add("a", "a");
    list_.Add("b", "b");
    list_.NoteCurrent(1);
    SelectAllRows(list_);
    EXPECT_EQ(SelectedRowCount(list_), 2U);
    EXPECT_EQ(list_.CurrentPosition(), 1U);
    ClearRowSelection(list_);
    EXPECT_EQ(SelectedRowCount(list_), 0U);
    EXPECT_EQ(list_.CurrentPosition(), 1U);
}

TEST_F(ListHelpersTest, TheSelectedRowIsTheCurrentOneElseTheFirstSelected) {
    for (const char* key : {"a", "b", "c"}) {
        list_.Add(key, key);
    }
    EXPECT_EQ(SelectedRow(list_), nullptr);
    list_.NoteCurrent(0);
    EXPECT_EQ(SelectedRow(list_), nullptr);
    list_.NoteSelected(1, 1, true);
    list_.NoteSelected(2, 2, true);
    EXPECT_EQ(SelectedRow(list_), &list_.At(1));
    list_.NoteCurrent(2);
    EXPECT_EQ(SelectedRow(list_), &list_.At(2));
}

}  // namespace
}  // namespace tidemark
