#include "engine/tidemark_item_collection.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "engine/engine_fixture.h"
#include "lists/counting_file_system.h"
#include "lists/keyed_image_list.h"
#include "lists/list_model.h"
#include "platform/program_error.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Yields an icon for every path but those without one.
class PicturesOfAllBut final : public PictureStore {
  public:
    bool AddSmallIcon(const std::string& path) override {
        if (without_icon.contains(path)) {
            return false;
        }
        added.push_back(path);
        return true;
    }
    std::vector<std::string> added;
    std::set<std::string> without_icon;
};

class CollectionTest : public EngineTest {
  protected:
    void SetUp() override {
        system.volume.AddFile("C:\\top\\a.txt");
        system.volume.AddFile("C:\\top\\b.txt");
        system.volume.AddFile("C:\\Other\\c.exe");
    }

    std::shared_ptr<TidemarkItem> Add(const std::string& path) {
        return items.Add(path, nullptr, nullptr);
    }
    [[nodiscard]] std::vector<std::string> Paths() const {
        std::vector<std::string> paths;
        for (const auto& item : items) {
            paths.push_back(item->RootItem());
        }
        return paths;
    }
    void CountAll() {
        for (const auto& item : items) {
            item->Count();
        }
        system.pump.RunUntilIdle();
    }

    ListModel list{system.locale};
    PicturesOfAllBut pictures;
    KeyedImageList images{pictures};
    TidemarkItemCollection items{system.Parts()};
};

TEST_F(CollectionTest, AnEmptyCollectionIsNeitherBusyNorComplete) {
    EXPECT_FALSE(items.Busy() || items.BusyCounting() || items.BusyStamping());
    EXPECT_FALSE(items.StampComplete());
    EXPECT_FALSE(items.ErrorsExist());
    EXPECT_FALSE(items.AnyCountComplete() || items.AnyStampCompleteWithNoErrors());
    EXPECT_EQ(items.CountedItems(), 0);
    EXPECT_EQ(items.StampedItems(), 0);
    EXPECT_EQ(items.Count(), 0U);
    EXPECT_THAT(items.ErrorList(), IsEmpty());
    EXPECT_EQ(items.begin(), items.end());
}

TEST_F(CollectionTest, ItemsKeepTheOrderOfAdding) {
    Add("C:\\top");
    Add("C:\\Other\\c.exe");
    Add("C:\\top\\a.txt");
    EXPECT_THAT(Paths(), ElementsAre("C:\\top\\", "C:\\Other\\c.exe", "C:\\top\\a.txt"));
    std::vector<std::string> enumerated;
    for (const auto& item : items.NewEnum()) {
        enumerated.push_back(item->RootItem());
    }
    EXPECT_EQ(enumerated, Paths());
}

TEST_F(CollectionTest, AFolderAddedTwiceInOtherLettersIsOneEntry) {
    const auto first = Add("C:\\TOP");
    EXPECT_EQ(Add("c:\\top\\"), first);
    EXPECT_EQ(items.Count(), 1U);
    EXPECT_EQ(first->RootItem(), "C:\\TOP\\");
    EXPECT_EQ(items.Item("C:\\tOp\\"), first);
    EXPECT_TRUE(items.Exists("c:\\TOP\\"));
    // The key of a folder ends in a backslash.
    EXPECT_FALSE(items.Exists("c:\\top"));
}

TEST_F(CollectionTest, APathThatDoesNotExistIsNotAdded) {
    EXPECT_EQ(items.Add("C:\\none", &list, &images), nullptr);
    EXPECT_EQ(items.Add("", &list, &images), nullptr);
    EXPECT_EQ(items.Count(), 0U);
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_FALSE(list.HoldsItems());
    EXPECT_THAT(pictures.added, IsEmpty());
}

TEST_F(CollectionTest, AddStartsNoCount) {
    const auto item = Add("C:\\top");
    EXPECT_FALSE(item->CountInProgress());
    EXPECT_EQ(system.pump.Timers().NextDue(), std::nullopt);
}

TEST_F(CollectionTest, AddShowsARowWithTextsAndIcon) {
    items.Add("C:\\Other\\c.exe", &list, &images);
    const auto item = items.Add("C:\\Top", &list, &images);
    ASSERT_EQ(list.Count(), 2U);
    const ListRow& row = list.At(1);
    EXPECT_EQ(row.key, "c:\\top\\");
    EXPECT_EQ(row.text, "C:\\Top\\");
    EXPECT_EQ(row.sub_items[0], "not counted");
    EXPECT_EQ(row.sub_items[1], "Ready");
    EXPECT_EQ(row.small_icon, 2);
    EXPECT_TRUE(list.HoldsItems());
    EXPECT_EQ(list.SmallIcons(), &images);
    EXPECT_THAT(pictures.added, ElementsAre("C:\\Other\\c.exe", "C:\\Top\\"));
    // Adding it again brings the row up to date.
    item->Count();
    EXPECT_EQ(items.Add("c:\\TOP", &list, &images), item);
    EXPECT_EQ(list.Count(), 2U);
    EXPECT_EQ(row.sub_items[0], "at least 1 folder");
    EXPECT_EQ(row.sub_items[1], "Counting");
    EXPECT_EQ(row.text, "C:\\Top\\");
}

TEST_F(CollectionTest, AnImageListWithoutAPictureIsNotAttachedAndTheRowShowsTheFirst) {
    pictures.without_icon = {"C:\\top\\"};
    items.Add("C:\\top", &list, &images);
    EXPECT_EQ(list.SmallIcons(), nullptr);
    EXPECT_EQ(list.At(0).small_icon, 1);
    items.Add("C:\\top\\a.txt", &list, &images);
    EXPECT_EQ(list.SmallIcons(), &images);
}

TEST_F(CollectionTest, AnImageListAttachedBeforeStays) {
    PicturesOfAllBut others;
    KeyedImageList first(others);
    items.Add("C:\\top", &list, &first);
    items.Add("C:\\top\\a.txt", &list, &images);
    EXPECT_EQ(list.SmallIcons(), &first);
}

TEST_F(CollectionTest, ManyFilesOfOneKindTakeOneLookAtTheirType) {
    CountingFileSystem asked{system.file_system};
    Platform platform{system.files, asked, system.pump.Timers(), system.pump, system.locale};
    TidemarkItemCollection many{platform};
    for (int i = 0; i < 100; ++i) {
        const std::string path = "C:\\many\\" + std::to_string(i) + ".txt";
        system.volume.AddFile(path);
        many.Add(path, &list, &images);
    }
    EXPECT_EQ(asked.types_asked, 1U);
    EXPECT_EQ(pictures.added.size(), 1U);
    EXPECT_EQ(list.At(99).small_icon, 1);
}

TEST_F(CollectionTest, WithoutAnImageListTheRowHasNoIcon) {
    items.Add("C:\\top", &list, nullptr);
    EXPECT_EQ(list.At(0).small_icon, 0);
    EXPECT_EQ(list.SmallIcons(), nullptr);
}

TEST_F(CollectionTest, WithoutAListOnlyTheCollectionChanges) {
    items.Add("C:\\top", nullptr, &images);
    EXPECT_EQ(items.Count(), 1U);
    EXPECT_THAT(pictures.added, IsEmpty());
    items.Remove("C:\\top\\", nullptr);
    EXPECT_EQ(items.Count(), 0U);
}

TEST_F(CollectionTest, RemovingTakesTheRowAndTheLastOneEmptiesTheList) {
    items.Add("C:\\top", &list, &images);
    items.Add("C:\\top\\a.txt", &list, &images);
    items.Remove("C:\\TOP\\", &list);
    EXPECT_THAT(Paths(), ElementsAre("C:\\top\\a.txt"));
    EXPECT_EQ(list.Count(), 1U);
    EXPECT_TRUE(list.HoldsItems());
    items.Remove("c:\\top\\A.TXT", &list);
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_FALSE(list.HoldsItems());
    EXPECT_EQ(items.Count(), 0U);
}

TEST_F(CollectionTest, AnItemIsRemovedByTheKeyOfItsOwnRow) {
    items.Add("C:\\top", &list, &images);
    items.Add("C:\\Other\\c.exe", &list, &images);
    items.Remove(list.At(1).key, &list);
    EXPECT_THAT(Paths(), ElementsAre("C:\\top\\"));
    EXPECT_EQ(list.Count(), 1U);
}

TEST_F(CollectionTest, AnUnknownKeyChangesNothing) {
    items.Add("C:\\top", &list, &images);
    items.Remove("C:\\none", &list);
    items.Remove("", &list);
    EXPECT_EQ(items.Count(), 1U);
    EXPECT_EQ(list.Count(), 1U);
    EXPECT_EQ(items.Item("C:\\none"), nullptr);
}

TEST_F(CollectionTest, ARowThatIsGoneAlreadyDoesNotStopTheRemoval) {
    items.Add("C:\\top", &list, &images);
    list.Clear();
    items.Remove("C:\\top\\", &list);
    EXPECT_EQ(items.Count(), 0U);
    EXPECT_FALSE(list.HoldsItems());
}

TEST_F(CollectionTest, ClearCancelsEveryItemAndTakesItsRow) {
    const auto counting = items.Add("C:\\top", &list, &images);
    const auto stamping = items.Add("C:\\Other", &list, &images);
    counting->Count();
    Stamp(*stamping);
    items.Clear(&list);
    EXPECT_EQ(items.Count(), 0U);
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_FALSE(list.HoldsItems());
    EXPECT_FALSE(counting->CountInProgress() || stamping->StampInProgress());
    system.files.ClearCalls();
    system.pump.RunUntilIdle();
    EXPECT_TRUE(system.files.Calls().empty());
    Add("C:\\top");
    EXPECT_THAT(Paths(), ElementsAre("C:\\top\\"));
}

TEST_F(CollectionTest, ClearLeavesRowsThatStandForNoItem) {
    items.Add("C:\\top", &list, &images);
    list.Add("another", "another");
    items.Clear(&list);
    ASSERT_EQ(list.Count(), 1U);
    EXPECT_EQ(list.At(0).text, "another");
    EXPECT_TRUE(list.HoldsItems());
}

TEST_F(CollectionTest, ClearWithoutAListLeavesTheRows) {
    items.Add("C:\\top", &list, &images);
    items.Clear(nullptr);
    EXPECT_EQ(list.Count(), 1U);
}

TEST_F(CollectionTest, ARemovedItemDoesNoFurtherWork) {
    const auto item = Add("C:\\top");
    item->Count();
    Stamp(*item);
    items.Remove("C:\\top\\", nullptr);
    system.pump.RunUntilIdle();
    EXPECT_FALSE(IsStamped("C:\\top\\a.txt"));
    EXPECT_FALSE(item->CountComplete());
}

TEST_F(CollectionTest, AggregatesFollowTheItems) {
    const auto top = Add("C:\\top");
    const auto file = Add("C:\\Other\\c.exe");
    top->Count();
    EXPECT_TRUE(items.Busy() && items.BusyCounting());
    EXPECT_FALSE(items.BusyStamping() || items.AnyCountComplete());
    EXPECT_EQ(items.CountedItems(), 1);
    file->Count();
    EXPECT_TRUE(items.AnyCountComplete());
    system.pump.RunUntilIdle();
    EXPECT_FALSE(items.Busy());
    EXPECT_EQ(items.CountedItems(), 4);

    Stamp(*top);
    EXPECT_TRUE(items.Busy() && items.BusyStamping());
    EXPECT_FALSE(items.BusyCounting() || items.AnyStampCompleteWithNoErrors());
    system.pump.RunUntilIdle();
    EXPECT_EQ(items.StampedItems(), 2);
    EXPECT_TRUE(items.AnyStampCompleteWithNoErrors());
    EXPECT_FALSE(items.StampComplete());
    Stamp(*file);
    EXPECT_TRUE(items.StampComplete());
    EXPECT_EQ(items.StampedItems(), 3);
    EXPECT_FALSE(items.ErrorsExist());
}

TEST_F(CollectionTest, TheTotalsOfWorkAreWhatTheSingleQuestionsAnswer) {
    const auto expect_same = [this](const char* when) {
        const TidemarkItemCollection::Totals totals = items.TotalsOfWork();
        EXPECT_EQ(totals.counting, items.BusyCounting()) << when;
        EXPECT_EQ(totals.stamping, items.BusyStamping()) << when;
        EXPECT_EQ(totals.stamp_complete, items.StampComplete()) << when;
        EXPECT_EQ(totals.counted, items.CountedItems()) << when;
        EXPECT_EQ(totals.stamped, items.StampedItems()) << when;
    };
    expect_same("empty");
    Add("C:\\top\\a.txt");
    const auto folder = Add("C:\\top");
    folder->Count();
    expect_same("counting");
    CountAll();
    expect_same("counted");
    folder->Stamp(38000, 0, false, false);
    expect_same("stamping");
    system.pump.RunUntilIdle();
    expect_same("partly stamped");
    items.Item("C:\\top\\a.txt")->Stamp(38000, 0, false, false);
    expect_same("stamped");
    EXPECT_TRUE(items.TotalsOfWork().stamp_complete);
    items.Remove("C:\\top\\a.txt", nullptr);
    expect_same("one removed");
}

TEST_F(CollectionTest, ARowsItemIsTheOneUnderItsKeyWhateverHappensToOthers) {
    for (const char* path : {"C:\\top\\a.txt", "C:\\top\\b.txt", "C:\\Other\\c.exe"}) {
        items.Add(path, &list, nullptr);
    }
    const auto expect_all = [this] {
        for (std::size_t i = 0; i < list.Count(); ++i) {
            const ListRow& row = list.At(i);
            EXPECT_EQ(items.ItemOf(row), items.Item(row.key).get()) << row.key;
        }
    };
    expect_all();
    list.Sort(0, /*descending=*/true);
    expect_all();
    // The collection alone: the row is left without an item, and a new item takes it over.
    items.Remove("C:\\top\\a.txt", nullptr);
    EXPECT_EQ(items.ItemOf(*list.Find("C:\\top\\a.txt")), nullptr);
    expect_all();
    Add("C:\\top\\a.txt");
    EXPECT_NE(items.ItemOf(*list.Find("C:\\top\\a.txt")), nullptr);
    expect_all();
    items.Clear(nullptr);
    EXPECT_EQ(items.ItemOf(list.At(0)), nullptr);
}

TEST_F(CollectionTest, ItemsWithErrorsAreCompleteButNotWithoutErrors) {
    system.volume.Lock("C:\\Other\\c.exe");
    const auto file = Add("C:\\Other\\c.exe");
    Stamp(*file);
    EXPECT_TRUE(items.StampComplete() && items.ErrorsExist());
    EXPECT_FALSE(items.AnyStampCompleteWithNoErrors());
}

TEST_F(CollectionTest, EveryRecordOfEveryItemIsInTheErrorListInOrder) {
    system.volume.Lock("C:\\top\\a.txt");
    system.volume.Lock("C:\\top\\b.txt");
    const auto file = Add("C:\\top\\a.txt");
    const auto folder = Add("C:\\top");
    const auto drive = Add("C:\\");
    for (const auto& item : items) {
        StampToTheEnd(*item);
    }
    const StampErrorList errors = items.ErrorList();
    std::vector<std::string> names;
    for (const auto& error : errors) {
        names.push_back(error->ItemName);
    }
    EXPECT_THAT(names, ElementsAre("C:\\top\\a.txt", "C:\\top\\a.txt", "C:\\top\\b.txt",
                                   "C:\\top\\a.txt", "C:\\top\\b.txt"));
    EXPECT_EQ(errors[0], file->StampErrors()->front());
    EXPECT_EQ(errors[2], folder->StampErrors()->back());
    // The records outlive the items.
    items.Clear(nullptr);
    EXPECT_EQ(errors[4]->ErrorNumber, 32);
}

TEST_F(CollectionTest, SumsThatDoNotFitAreAnOverflow) {
    const auto first = Add("C:\\top");
    const auto second = Add("C:\\Other");
    TidemarkItemTestPeer::SetFileCount(*first, 0x7FFFFFFF);
    TidemarkItemTestPeer::SetStampedFolderCount(*first, 0x7FFFFFFF);
    EXPECT_EQ(items.CountedItems(), 0x7FFFFFFF);
    TidemarkItemTestPeer::SetFolderCount(*second, 1);
    TidemarkItemTestPeer::SetStampedFileCount(*second, 1);
    EXPECT_THROW(static_cast<void>(items.CountedItems()), ProgramError);
    EXPECT_THROW(static_cast<void>(items.StampedItems()), ProgramError);
    EXPECT_THROW(static_cast<void>(items.TotalsOfWork()), ProgramError);
}

TEST_F(CollectionTest, NoOperationRaisesAnEvent) {
    const auto raised = [] { ADD_FAILURE() << "an event was raised"; };
    items.events = {raised, raised, raised, raised, raised};
    Add("C:\\top");
    CountAll();
    for (const auto& item : items) {
        Stamp(*item);
        item->CancelStamp();
    }
    items.Remove("C:\\top\\", nullptr);
    items.Clear(nullptr);
}

TEST_F(CollectionTest, EnumerationSurvivesWhateverHappensToTheCollection) {
    for (char c = 'a'; c <= 'h'; ++c) {
        system.volume.AddFile(std::string("C:\\many\\") + c);
        Add(std::string("C:\\many\\") + c);
    }
    std::string met;
    for (const auto& item : items) {
        met += item->RootItem().back();
        if (met == "b") {
            FAIL() << "began in the middle";
        }
        if (met == "ab") {
            // Behind, at hand and ahead; enough for the gaps to be closed.
            for (const char* path :
                 {"C:\\many\\a", "C:\\many\\b", "C:\\many\\c", "C:\\many\\d", "C:\\many\\f"}) {
                items.Remove(path, nullptr);
            }
            EXPECT_EQ(item->RootItem(), "C:\\many\\b");
            Add("C:\\top\\a.txt");
        }
    }
    EXPECT_EQ(met, "abeght");
    met.clear();
    for (const auto& item : items) {
        met += item->RootItem().back();
        items.Clear(nullptr);
        EXPECT_FALSE(item->RootItem().empty());
    }
    EXPECT_EQ(met, "e");
}

TEST_F(CollectionTest, TheItemsOfAMomentLeaveOutWhatComesLaterAndWhatIsGone) {
    for (const char* path : {"C:\\top\\a.txt", "C:\\top\\b.txt"}) {
        Add(path);
    }
    std::vector<std::string> met;
    for (const auto& item : items.ItemsNow()) {
        met.push_back(item->RootItem());
        Add("C:\\Other\\c.exe");
        items.Remove("C:\\top\\b.txt", nullptr);
        Add("C:\\top\\b.txt");
    }
    EXPECT_THAT(met, ElementsAre("C:\\top\\a.txt"));
    EXPECT_THAT(Paths(), ElementsAre("C:\\top\\a.txt", "C:\\Other\\c.exe", "C:\\top\\b.txt"));
}

TEST_F(CollectionTest, EnumerationSurvivesTheCollection) {
    auto gone = std::make_unique<TidemarkItemCollection>(system.Parts());
    gone->Add("C:\\top", nullptr, nullptr);
    gone->Add("C:\\Other", nullptr, nullptr);
    auto at = gone->begin();
    gone.reset();
    EXPECT_EQ((*at)->RootItem(), "C:\\top\\");
    ++at;
    EXPECT_EQ(at, std::default_sentinel);
}

TEST_F(CollectionTest, DestructionCancelsTheWorkOfItsItems) {
    auto gone = std::make_unique<TidemarkItemCollection>(system.Parts());
    const auto item = gone->Add("C:\\top", nullptr, nullptr);
    item->Count();
    gone.reset();
    EXPECT_FALSE(item->CountInProgress());
}

// What an item and a record take beyond their texts.
TEST_F(CollectionTest, ItemsAndRecordsAreSmall) {
    EXPECT_LE(sizeof(TidemarkItem), 384U);
    EXPECT_LE(sizeof(StampError), 128U);
}

TEST_F(CollectionTest, AskingForErrorsOfItemsWithoutAnyMakesNone) {
    const auto item = Add("C:\\top");
    EXPECT_FALSE(item->HasErrors());
    EXPECT_TRUE(item->StampErrors()->empty());
    EXPECT_FALSE(items.ErrorsExist());
    EXPECT_THAT(items.ErrorList(), IsEmpty());
}

TEST_F(CollectionTest, RemovingManyAmongManyLeavesTheOthersInTheirOrder) {
    constexpr int kItems = 20'000;
    std::vector<std::string> paths;
    for (int i = 0; i < kItems; ++i) {
        paths.push_back("C:\\many\\file" + std::to_string(i));
        system.volume.AddFile(paths.back());
        items.Add(paths.back(), &list, nullptr);
    }
    ASSERT_EQ(items.Count(), static_cast<std::size_t>(kItems));
    for (int i = 0; i < kItems; i += 2) {
        items.Remove(paths[static_cast<std::size_t>(i)], &list);
    }
    EXPECT_EQ(items.Count(), static_cast<std::size_t>(kItems / 2));
    EXPECT_EQ(list.Count(), items.Count());
    int expected = 1;
    for (const auto& item : items) {
        ASSERT_EQ(item->RootItem(), paths[static_cast<std::size_t>(expected)]);
        expected += 2;
    }
    EXPECT_EQ(expected, kItems + 1);
    EXPECT_NE(items.Item(paths[19'999]), nullptr);
    EXPECT_EQ(items.Item(paths[19'998]), nullptr);
}

}  // namespace
}  // namespace tidemark
