// The errors window's rows from stamps that really lead there.

#include <gtest/gtest.h>

#include "engine/tidemark_item_collection.h"
#include "errors/error_rows_fixture.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ErrorsOfAStampTest : public ErrorRowsFixture {
  protected:
    void StampAll() {
        for (const auto& item : items) {
            item->Stamp(/*dateLastModified=*/44257.5, /*dateCreated=*/0,
                        /*RemoveReadOnlyAttribute=*/false, /*SyncFolderCreatedDate=*/false);
        }
        system.pump.RunUntilIdle();
    }

    TidemarkItemCollection items{system.Parts()};
};

TEST_F(ErrorsOfAStampTest, LockedDeniedAndVanishedFilesAreListedWithCodeAndText) {
    system.volume.SetMessageText(32, "In use.\r\n");
    for (const char* path : {"C:\\tree\\a.txt", "C:\\tree\\locked.txt", "C:\\tree\\shut.txt",
                             "C:\\tree\\vanishing.txt"}) {
        system.volume.AddFile(path);
    }
    system.volume.Lock("C:\\tree\\locked.txt");
    system.volume.DenyWriting("C:\\tree\\shut.txt");
    items.Add("C:\\tree", nullptr, nullptr);
    // The last file goes between being listed and being stamped.
    system.files.Before({KernelCall::kOpenForTimes, "C:\\tree\\vanishing.txt"},
                        [&] { system.volume.Remove("C:\\tree\\vanishing.txt"); });
    StampAll();
    Show(items.ErrorList());
    EXPECT_THAT(
        Column(ErrorColumn::kName),
        ElementsAre("C:\\tree\\locked.txt", "C:\\tree\\shut.txt", "C:\\tree\\vanishing.txt"));
    EXPECT_THAT(Column(ErrorColumn::kError), ElementsAre("32", "5", "2"));
    EXPECT_EQ(List().At(0).sub_items[1], "In use.");
    EXPECT_EQ(List().At(2).small_icon, 1);
    EXPECT_THAT(system.pump.Failures(), IsEmpty());
}

TEST_F(ErrorsOfAStampTest, AFileListedTwiceOverRaisesTheDuplicateKeyError) {
    system.volume.AddFile("C:\\tree\\locked.txt");
    system.volume.Lock("C:\\tree\\locked.txt");
    items.Add("C:\\tree", nullptr, nullptr);
    items.Add("C:\\tree\\LOCKED.txt", nullptr, nullptr);
    StampAll();
    ASSERT_EQ(items.ErrorList().size(), 2U);
    Show(items.ErrorList());
    EXPECT_THAT(system.pump.Failures(), ElementsAre("Key is not unique in collection"));
    EXPECT_EQ(List().Count(), 1U);

    items.Remove("C:\\tree\\", nullptr);
    Show(items.ErrorList());
    EXPECT_EQ(system.pump.Failures().size(), 1U);
    EXPECT_THAT(Column(ErrorColumn::kName), ElementsAre("C:\\tree\\LOCKED.txt"));
}

TEST_F(ErrorsOfAStampTest, AFirstFileThatVanishedSinceRaisesTheImageListsError) {
    system.volume.AddFile("C:\\locked.txt");
    system.volume.Lock("C:\\locked.txt");
    items.Add("C:\\locked.txt", nullptr, nullptr);
    StampAll();
    system.volume.Remove("C:\\locked.txt");
    Show(items.ErrorList());
    EXPECT_THAT(system.pump.Failures(),
                ElementsAre("ImageList must be initialized before it can be used"));
    EXPECT_EQ(List().Count(), 1U);
}

}  // namespace
}  // namespace tidemark
