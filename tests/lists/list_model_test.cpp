#include "lists/list_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "lists/fakes.h"
#include "platform/memory/memory_user_locale.h"
#include "platform/program_error.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Writes down what it is told.
class Listener final : public ListModelObserver {
  public:
    std::vector<std::string> told;
    std::vector<std::size_t> columns;  // of changed cells

    void RowChanged(std::size_t position) override {
        told.push_back("row " + std::to_string(position));
    }
    void CellChanged(std::size_t column) override { columns.push_back(column); }
    void RowAppended() override { told.emplace_back("appended"); }
    void RowsChanged() override { told.emplace_back("rows"); }
    void SelectionChanged() override { told.emplace_back("selection"); }
    void SmallIconsAttached() override { told.emplace_back("icons"); }
    void EmptyStateChanged() override { told.emplace_back("empty state"); }
};

class ListModelTest : public testing::Test {
  protected:
    MemoryUserLocale locale_{};
    ListModel list_{locale_};
    Listener listener_{};

    // Adds a row for each text, keyed by it.
    void Fill(const std::vector<std::string>& texts) {
        for (const std::string& text : texts) {
            list_.Add(text, text);
        }
    }
    void Listen() { list_.SetObserver(&listener_); }
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < list_.Count(); ++i) {
            texts.push_back(list_.At(i).text);
        }
        return texts;
    }
    std::vector<std::string> SelectedTexts() const {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < list_.Count(); ++i) {
            if (list_.At(i).selected) {
                texts.push_back(list_.At(i).text);
            }
        }
        return texts;
    }
};

TEST_F(ListModelTest, RowsAreFoundByKeyInAnyLetterCase) {
    const ListRow& row = list_.Add("C:\\File.TXT", "C:\\File.TXT");
    EXPECT_EQ(row.key, "c:\\file.txt");
    EXPECT_EQ(list_.Find("c:\\FILE.txt"), &row);
    EXPECT_EQ(list_.Find("c:\\other"), nullptr);
}

TEST_F(ListModelTest, ARepeatedKeyIsRefusedAndChangesNothing) {
    Fill({"a", "b"});
    Listen();
    try {
        list_.Add("A", "again");
        FAIL() << "no error was raised";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), error_number::kDuplicateKey);
        EXPECT_EQ(error.Description(), "Key is not unique in collection");
    }
    EXPECT_THAT(Texts(), ElementsAre("a", "b"));
    EXPECT_THAT(listener_.told, IsEmpty());
}

TEST_F(ListModelTest, RemovingKeepsTheOrderOfTheRest) {
    Fill({"a", "b", "c", "d", "e"});
    EXPECT_TRUE(list_.Remove("B"));
    EXPECT_TRUE(list_.Remove("e"));
    EXPECT_FALSE(list_.Remove("b"));
    EXPECT_FALSE(list_.Remove("never"));
    EXPECT_EQ(list_.Count(), 3U);
    EXPECT_THAT(Texts(), ElementsAre("a", "c", "d"));
}

TEST_F(ListModelTest, ARemovedKeyCanBeAddedAgainAtTheEnd) {
    Fill({"a", "b"});
    list_.Remove("a");
    list_.Add("a", "anew");
    EXPECT_THAT(Texts(), ElementsAre("b", "anew"));
    EXPECT_EQ(list_.Find("a")->text, "anew");
}

TEST_F(ListModelTest, RowsStayWhereTheyAreInMemory) {
    Fill({"c", "b", "a"});
    const ListRow* const row = list_.Find("a");
    list_.Remove("b");
    list_.Sort(0, /*descending=*/false);
    for (int i = 0; i < 1000; ++i) {
        list_.Add("more" + std::to_string(i), "");
    }
    EXPECT_EQ(list_.Find("a"), row);
    EXPECT_EQ(&list_.At(0), row);
}

// Far more removals than a pass each would allow in a test's time.
TEST_F(ListModelTest, TensOfThousandsOfSingleRemovalsCostOnePass) {
    for (int i = 0; i < 100'000; ++i) {
        list_.Add(std::to_string(i), "");
    }
    Listen();
    for (int i = 0; i < 100'000; i += 2) {
        list_.Remove(std::to_string(i));
    }
    EXPECT_EQ(list_.Count(), 50'000U);
    EXPECT_EQ(list_.At(0).key, "1");
    EXPECT_EQ(list_.At(49'999).key, "99999");
}

TEST_F(ListModelTest, ObserversHearOnlyOfRealChanges) {
    Fill({"a", "b"});
    const ListRow& row = *list_.Find("b");
    Listen();
    list_.SetText(row, "b");
    list_.SetSubItem(row, 0, "");
    list_.SetSmallIcon(row, 0);
    list_.ClearSelection();
    list_.SetHoldsItems(false);
    list_.Sort(0, /*descending=*/false);
    list_.Remove("unknown");
    EXPECT_THAT(listener_.told, IsEmpty());

    list_.SetText(row, "B");
    list_.SetSubItem(row, 1, "status");
    list_.SetSmallIcon(row, 2);
    list_.SelectAll();
    list_.SelectAll();
    list_.SetHoldsItems(true);
    list_.Add("c", "c");
    list_.Sort(0, /*descending=*/true);
    list_.Remove("c");
    list_.Clear();
    list_.Clear();
    EXPECT_THAT(listener_.columns, ElementsAre(0, 2));
    EXPECT_THAT(listener_.told, ElementsAre("row 1", "row 1", "row 1", "selection", "empty state",
                                            "appended", "rows", "rows", "rows"));
}

TEST_F(ListModelTest, AWriteAmongRemovalsStillReachesTheObserver) {
    Fill({"a", "b", "c"});
    const ListRow& row = *list_.Find("c");
    list_.Remove("a");
    Listen();
    list_.SetSubItem(row, 0, "new");
    EXPECT_THAT(listener_.told, ElementsAre("rows"));
    EXPECT_EQ(list_.At(1).sub_items[0], "new");
    list_.SetSubItem(row, 0, "newer");
    EXPECT_EQ(listener_.told.back(), "row 1");
}

TEST_F(ListModelTest, TheSelectionIsCountedThroughEveryChange) {
    Fill({"a", "b", "c", "d"});
    list_.SelectAll();
    EXPECT_EQ(list_.SelectedCount(), 4U);
    list_.NoteSelected(0, 0, false);
    list_.Remove("b");
    EXPECT_EQ(list_.SelectedCount(), 2U);
    list_.NoteSelected(0, 2, true);
    EXPECT_EQ(list_.SelectedCount(), 3U);
    list_.NoteSelected(1, 100, false);
    EXPECT_THAT(SelectedTexts(), ElementsAre("a"));
    list_.ClearSelection();
    EXPECT_EQ(list_.SelectedCount(), 0U);
    list_.SelectAll();
    list_.Clear();
    EXPECT_EQ(list_.SelectedCount(), 0U);
}

TEST_F(ListModelTest, WhatAWindowReportsIsNotToldBack) {
    Fill({"a", "b"});
    Listen();
    list_.NoteSelected(0, 1, true);
    list_.NoteCurrent(1);
    EXPECT_THAT(listener_.told, IsEmpty());
    EXPECT_EQ(list_.SelectedCount(), 2U);
    EXPECT_EQ(list_.CurrentPosition(), 1U);
}

TEST_F(ListModelTest, SelectionAndCurrentRowMoveWithTheirRowsWhenSorted) {
    Fill({"c", "a", "b"});
    list_.NoteSelected(0, 0, true);
    list_.NoteSelected(2, 2, true);
    list_.NoteCurrent(2);
    list_.Sort(0, /*descending=*/false);
    EXPECT_THAT(Texts(), ElementsAre("a", "b", "c"));
    EXPECT_THAT(SelectedTexts(), ElementsAre("b", "c"));
    EXPECT_EQ(list_.Current()->text, "b");
}

TEST_F(ListModelTest, TheRowThatTakesARemovedRowsPlaceBecomesCurrent) {
    Fill({"a", "b", "c", "d"});
    EXPECT_EQ(list_.Current(), nullptr);
    list_.NoteCurrent(1);
    list_.Remove("a");
    EXPECT_EQ(list_.Current()->text, "b");
    list_.Remove("c");
    list_.Remove("b");
    EXPECT_EQ(list_.Current()->text, "d");
    list_.Add("e", "e");
    list_.NoteCurrent(1);
    list_.Remove("e");
    EXPECT_EQ(list_.Current()->text, "d");
    list_.Remove("d");
    EXPECT_EQ(list_.Current(), nullptr);
    EXPECT_EQ(list_.CurrentPosition(), ListModel::kNoPosition);
}

TEST_F(ListModelTest, SortingIgnoresLetterCaseAndKeepsTheOrderOfEqualRows) {
    list_.Add("1", "beta");
    list_.Add("2", "Alpha");
    list_.Add("3", "BETA");
    list_.Add("4", "alpha");
    list_.Sort(0, /*descending=*/false);
    EXPECT_THAT(Texts(), ElementsAre("Alpha", "alpha", "beta", "BETA"));
    list_.Sort(0, /*descending=*/true);
    EXPECT_THAT(Texts(), ElementsAre("beta", "BETA", "Alpha", "alpha"));
}

TEST_F(ListModelTest, SortingKeepsTheOrderOfManyEqualRows) {
    constexpr std::size_t kRows = 1000;  // a few are kept in order by any sort
    for (std::size_t i = 0; i < kRows; ++i) {
        list_.SetItemNumber(list_.Add(std::to_string(i), i % 3 == 0 ? "equal" : "Equal"), i);
    }
    list_.Add("last", "before");
    for (const bool descending : {false, true}) {
        list_.Sort(0, descending);
        const std::size_t first = descending ? 0 : 1;
        for (std::size_t i = 0; i < kRows; ++i) {
            ASSERT_EQ(list_.At(first + i).item_number, i) << (descending ? "descending" : "");
        }
    }
}

TEST_F(ListModelTest, SortingLooksBeyondLongSharedBeginnings) {
    const std::string folder(300, 'x');
    Fill({folder + "\\b-and-what-follows", folder + "\\a", folder, folder + "\\b-and-what-come",
          folder + "\\b-and-what"});
    list_.Sort(0, /*descending=*/false);
    EXPECT_THAT(Texts(),
                ElementsAre(folder, folder + "\\a", folder + "\\b-and-what",
                            folder + "\\b-and-what-come", folder + "\\b-and-what-follows"));
}

TEST_F(ListModelTest, SortingFollowsTheUsersLanguage) {
    Fill({"zebra", "\xC3\xA4pfel", "apfelsine", "Apfel"});
    list_.Sort(0, /*descending=*/false);
    EXPECT_THAT(Texts(), ElementsAre("Apfel", "\xC3\xA4pfel", "apfelsine", "zebra"));
}

TEST_F(ListModelTest, SortingAsksForOneKeyARowAndNoneForARepeatedText) {
    CountingLocale locale;
    ListModel list(locale);
    for (int i = 0; i < 100; ++i) {
        const std::string text = std::to_string(i);
        list.SetSubItem(list.Add(text, text), 0, "Ready");
    }
    list.Sort(0, /*descending=*/true);
    EXPECT_EQ(locale.sort_keys, 100U);
    list.Sort(1, /*descending=*/false);
    EXPECT_EQ(locale.sort_keys, 101U);
}

TEST_F(ListModelTest, RowsCanBeSortedByTheirOtherColumnsAndLaterRowsAreAppended) {
    Fill({"a", "b", "c"});
    list_.SetSubItem(*list_.Find("a"), 0, "2");
    list_.SetSubItem(*list_.Find("b"), 0, "1");
    list_.SetSubItem(*list_.Find("b"), 1, "x");
    list_.Sort(1, /*descending=*/true);
    EXPECT_THAT(Texts(), ElementsAre("a", "b", "c"));
    list_.Sort(1, /*descending=*/false);
    EXPECT_THAT(Texts(), ElementsAre("c", "b", "a"));
    list_.Sort(2, /*descending=*/true);
    EXPECT_THAT(Texts(), ElementsAre("b", "c", "a"));
    list_.Add("0", "0");
    EXPECT_EQ(Texts().back(), "0");
}

TEST_F(ListModelTest, TextIsFoundByItsBeginning) {
    Fill({"apple", "Apricot", "banana"});
    EXPECT_EQ(list_.FindText("AP", {.start = 0}), 0U);
    EXPECT_EQ(list_.FindText("ap", {.start = 1}), 1U);
    EXPECT_EQ(list_.FindText("ap", {.start = 2}), ListModel::kNoPosition);
    EXPECT_EQ(list_.FindText("ap", {.start = 2, .wrap = true}), 0U);
    EXPECT_EQ(list_.FindText("ap", {.start = 3, .wrap = true}), 0U);
    EXPECT_EQ(list_.FindText("c", {.wrap = true}), ListModel::kNoPosition);
    list_.Clear();
    EXPECT_EQ(list_.FindText("a", {.wrap = true}), ListModel::kNoPosition);
}

TEST_F(ListModelTest, TextIsFoundAsAWhole) {
    Fill({"apples", "Apple"});
    EXPECT_EQ(list_.FindText("apple", {.whole = true}), 1U);
    EXPECT_EQ(list_.FindText("app", {.whole = true}), ListModel::kNoPosition);
}

TEST_F(ListModelTest, AnImageListWithoutAPictureIsRefused) {
    FakeFileSystem file_system;
    FakePictures pictures(file_system);
    KeyedImageList images(pictures);
    Listen();
    try {
        list_.AttachSmallIcons(images);
        FAIL() << "no error was raised";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), error_number::kImageListNotInitialised);
        EXPECT_EQ(error.Description(), "ImageList must be initialized before it can be used");
    }
    EXPECT_EQ(list_.SmallIcons(), nullptr);
    EXPECT_THAT(listener_.told, IsEmpty());

    file_system.folders = {"d"};
    images.Add(":", "d");
    list_.AttachSmallIcons(images);
    EXPECT_EQ(list_.SmallIcons(), &images);
    list_.AttachSmallIcons(images);
    EXPECT_THAT(listener_.told, ElementsAre("icons"));
}

}  // namespace
}  // namespace tidemark
