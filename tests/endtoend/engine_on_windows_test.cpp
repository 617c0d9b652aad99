#include <memory>
#include <string>
#include <vector>

#include "endtoend/end_to_end.h"
#include "engine/tidemark_item.h"
#include "platform/win32/system_message.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/windows.h"
#include "support/com_apartment.h"

namespace tidemark {
namespace {

// 17 May 2019, 13:45, as a day number and as the time that a file then has.
constexpr double kChosenDate = 43602.0 + (13 * 60 + 45) / 1440.0;
FileTime Chosen() {
    return FromLocal(LocalTime(2019, 5, 17, 13, 45));
}

// The engine in this process, on Windows itself and a real tree.
class EngineOnWindows : public testing::Test {
  protected:
    std::shared_ptr<TidemarkItem> NewItem(const std::string& path) {
        auto item = TidemarkItem::Create(platform_.Parts());
        item->SetRootItem(path);
        return item;
    }
    // Lets messages run until the item has ended what it was asked for.
    static void WaitFor(const TidemarkItem& item) {
        const bool ended = PollUntil(std::chrono::seconds(60), [&item] {
            MSG message;
            while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                ::DispatchMessageW(&message);
            }
            return !item.CountInProgress() && !item.StampInProgress();
        });
        ASSERT_TRUE(ended);
    }
    static void StampAndWait(TidemarkItem& item) {
        item.Stamp(kChosenDate, /*dateCreated=*/0, /*RemoveReadOnlyAttribute=*/false,
                   /*SyncFolderCreatedDate=*/false);
        WaitFor(item);
    }

    ComApartment apartment_;
    Win32Platform platform_{{.dispatch = [](MSG& message) { ::DispatchMessageW(&message); },
                             .on_quit = {},
                             .report_exception = [] { FAIL() << "an exception in a tick"; }}};
    RealTree tree_;
};

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
    const FileTime minute = Chosen();
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

TEST_F(EngineOnWindows, AChainOfAHundredFoldersIsCountedAndStampedToItsEnd) {
    constexpr int kDepth = 100;
    std::string path = "folder 1";
    for (int depth = 2; depth <= kDepth; ++depth) {
        path += "\\folder " + std::to_string(depth);
    }
    tree_.MakeFile(path + "\\at the end.txt");
    tree_.SetTimes(LongAgo());
    const auto item = NewItem(tree_.Root());

    item->Count();
    WaitFor(*item);
    StampAndWait(*item);

    EXPECT_EQ(item->CountString(), "1 file; 101 folders");
    EXPECT_EQ(item->StatusString(), "Complete");
    EXPECT_EQ(item->StampedFolderCount(), kDepth);
    const FileTime minute = Chosen();
    int others = 0;
    for (const auto& [below, entry] : tree_.Entries()) {
        others += entry.written == minute ? 0 : 1;
    }
    EXPECT_EQ(others, 0);
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
        item->Stamp(kChosenDate, /*dateCreated=*/0, /*RemoveReadOnlyAttribute=*/false,
                    /*SyncFolderCreatedDate=*/false);
    }

    for (const auto& item : items) {
        WaitFor(*item);
        ASSERT_EQ(item->CountString(), "no files; 1 folder") << item->RootItem();
        ASSERT_EQ(item->StatusString(), "Complete") << item->RootItem();
        ASSERT_EQ(EntryOf(item->RootItem()).written, Chosen()) << item->RootItem();
    }
}

}  // namespace
}  // namespace tidemark
