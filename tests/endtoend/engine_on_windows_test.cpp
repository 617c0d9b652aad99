#include "endtoend/engine_on_windows.h"

#include <memory>
#include <string>
#include <vector>

#include "endtoend/end_to_end.h"
#include "platform/win32/system_message.h"

namespace tidemark {
namespace {

TEST_F(EngineOnWindows, ALockedFileBecomesARecordWithTheSystemsCodeAndText) {
    tree_.MakeFile("before.txt");
    tree_.MakeFile("locked.txt");
    tree_.MakeFile("z\\after.txt");
    tree_.SetTimes(LongAgo());
    const LockedFile locked(tree_.Path("locked.txt"));
    const auto item = NewItem(tree_.Root());

    StampAndWait(*item);

    EXPECT_TRUE(item->StampComplete());
    EXPECT_EQ(item->StatusString(), "Complete (with errors)");
    ASSERT_EQ(item->StampErrors()->size(), 1U);
    const StampError& error = *item->StampErrors()->front();
    EXPECT_EQ(error.ItemName, tree_.Path("locked.txt"));
    EXPECT_FALSE(error.CountError);
    EXPECT_EQ(error.ErrorNumber, ERROR_SHARING_VIOLATION);
    EXPECT_EQ(error.ErrorDescription, SystemMessage(ERROR_SHARING_VIOLATION));
    EXPECT_FALSE(error.ErrorDescription.empty());
    const FileTime minute = StampTime();
    for (const auto& [path, entry] : tree_.Entries()) {
        EXPECT_EQ(entry.written, path == "locked.txt" ? LongAgo() : minute) << path;
    }
}

TEST_F(EngineOnWindows, AFileThatMayNotBeWrittenBecomesARecordWithTheSystemsCodeAndText) {
    const std::string path = UnwritableFile(tree_);
    if (path.empty()) {
        GTEST_SKIP() << "root opens read-only files all the same, and no immutable file is at hand";
    }
    const TreeEntry before = EntryOf(path);
    const auto item = NewItem(path);

    StampAndWait(*item);

    EXPECT_TRUE(item->StampComplete());
    ASSERT_EQ(item->StampErrors()->size(), 1U);
    const StampError& error = *item->StampErrors()->front();
    EXPECT_EQ(error.ItemName, path);
    EXPECT_EQ(error.ErrorNumber, ERROR_ACCESS_DENIED);
    EXPECT_EQ(error.ErrorDescription, SystemMessage(ERROR_ACCESS_DENIED));
    EXPECT_FALSE(error.ErrorDescription.empty());
    EXPECT_EQ(EntryOf(path).written, before.written);
}

// Each folder is an item of its own, and all their ticks are due at about the same time.
TEST_F(EngineOnWindows, AThousandFoldersAtOnceAreAllCountedAndStamped) {
    // Few beside each other: finding one name takes Wine a look at all that are in its folder.
    constexpr int kGroups = 20;
    constexpr int kFolders = 1000;
    std::vector<std::shared_ptr<TidemarkItem>> items;
    for (int i = 0; i < kFolders; ++i) {
        const std::string below =
            "group " + std::to_string(i % kGroups) + "\\folder " + std::to_string(i);
        tree_.MakeFolder(below);
        items.push_back(NewItem(tree_.Path(below)));
    }
    tree_.SetTimes(LongAgo());

    for (const auto& item : items) {
        item->Count();
        item->Stamp(kStampDate, /*dateCreated=*/0, /*RemoveReadOnlyAttribute=*/false,
                    /*SyncFolderCreatedDate=*/false);
    }

    for (const auto& item : items) {
        WaitFor(*item);
        ASSERT_EQ(item->CountString(), "no files; 1 folder") << item->RootItem();
        ASSERT_EQ(item->StatusString(), "Complete") << item->RootItem();
        ASSERT_EQ(EntryOf(item->RootItem()).written, StampTime()) << item->RootItem();
    }
}

}  // namespace
}  // namespace tidemark
