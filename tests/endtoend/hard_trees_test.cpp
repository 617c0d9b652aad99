// Names and trees that are hard to walk, on the real system. Each has a quick form here and a long
// one that the environment asks for.

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "controls/drop_files.h"
#include "endtoend/engine_on_windows.h"
#include "platform/win32/wide_text.h"
#include "support/below_wine.h"
#include "support/folder_link.h"
#include "support/poll_until.h"
#include "support/size_from_environment.h"

namespace tidemark {
namespace {

class HardTrees : public EngineOnWindows {
  protected:
    // Counts and stamps the tree, and expects every entry to have the new time.
    void ExpectAllStamped(int files, int folders) {
        tree_.SetTimes(LongAgo());
        const auto item = NewItem(tree_.Root());
        item->Count();
        WaitFor(*item);
        StampAndWait(*item);
        EXPECT_EQ(item->FileCount(), files);
        EXPECT_EQ(item->FolderCount(), folders);
        EXPECT_EQ(item->StampedFileCount(), files);
        EXPECT_EQ(item->StampedFolderCount() + 1, folders);
        EXPECT_EQ(item->StatusString(), "Complete");
        int others = 0;
        for (const auto& [below, entry] : tree_.Entries()) {
            others += entry.written == StampTime() ? 0 : 1;
        }
        EXPECT_EQ(others, 0);
    }
};

// TIDEMARK_CHAIN sets how many; names of one character keep even 1,000 within what the system
// below can name.
TEST_F(HardTrees, ALongChainOfFoldersIsCountedAndStampedToItsEnd) {
    const int depth = SizeFromEnvironment("TIDEMARK_CHAIN", 100);
    std::string path = "d";
    for (int i = 1; i < depth; ++i) {
        path += "\\d";
    }
    tree_.MakeFile(path + "\\e");
    ExpectAllStamped(1, depth + 1);
}

TEST_F(HardTrees, PathsAcrossEveryLengthLimitAreStamped) {
    int folders = 1;
    int files = 0;
    std::string below;
    const auto length = [&] { return static_cast<int>(tree_.Path(below).size()); };
    // Folders up to a base, then files whose paths end right at, before and behind each limit.
    for (const int limit : {248, 260, 512, 1024, 2000}) {
        while (length() < limit - 130) {
            if (!below.empty()) {
                below += '\\';
            }
            below.append(100, 'p');
            ++folders;
        }
        for (const int total : {limit - 1, limit, limit + 1}) {
            std::string file = below;
            file += '\\';
            file.append(static_cast<std::size_t>(total - length() - 1), 'f');
            tree_.MakeFile(file);
            ++files;
        }
    }
    ExpectAllStamped(files, folders);
}

// Every kind of name that the system below can hold; the others are tried on a volume in memory.
// The last four are other names, or none, when they are given without the prefix of long paths.
TEST_F(HardTrees, AwkwardNamesAreStampedListedWhenTheyFailAndComeBackFromADrag) {
    const std::vector<std::string> names = {
        "漢字かな交じり文",
        "🌊 🕰️",
        "e\u0301\u0323 combining",
        "אב\u202Eا right to left",
        " leading blank",
        "100% &more &&%s%n",
        "a,b, c",
        "'quoted' `x` (1) [2] {3}; = + ^ ~ !",
        "\u200B\uFEFFzero\u00A0width",
        std::string(200, 'n'),
        "trailing dot.",
        "trailing blank ",
        "nul",
        "com1.txt",
    };
    std::vector<std::string> keys;
    for (const std::string& name : names) {
        const std::string file = name + "\\" + name;
        tree_.MakeFile(file);
        keys.push_back(platform_.Parts().locale.LowerCase(tree_.Path(file)));
    }
    const auto count = static_cast<int>(names.size());
    ExpectAllStamped(count, count + 1);

    const auto dropped = ParseDropFiles(BuildDropFiles(keys),
                                        [](std::string_view) { return std::string("(not wide)"); });
    ASSERT_EQ(dropped, keys);
    for (const std::string& path : *dropped) {
        const auto item = NewItem(path);
        StampAndWait(*item);
        EXPECT_EQ(item->RootItem(), path);
        EXPECT_EQ(item->StatusString(), "Complete");
        EXPECT_EQ(EntryOf(path).written, StampTime()) << path;
    }

    // Each file fails where it stands, under its name as it stands.
    for (const std::string& name : names) {
        const LockedFile locked(tree_.Path(name + "\\" + name));
        const auto item = NewItem(tree_.Path(name));
        StampAndWait(*item);
        ASSERT_EQ(item->StampErrors()->size(), 1U) << name;
        EXPECT_EQ(item->StampErrors()->front()->ItemName, tree_.Path(name + "\\" + name));
        EXPECT_EQ(item->StampErrors()->front()->ErrorNumber, ERROR_SHARING_VIOLATION);
        EXPECT_FALSE(item->StampErrors()->front()->ErrorDescription.empty());
    }
}

TEST_F(HardTrees, LinksToFoldersThatTheyLieInAreStampedAndNotEntered) {
    tree_.MakeFile("up\\other.txt");
    tree_.MakeFile("up\\listed\\sub\\file.txt");
    tree_.SetTimes(LongAgo());
    const std::string listed = tree_.Path("up\\listed");
    const FolderLink self(listed, "self", ".");
    const FolderLink above(listed, "above", "..");
    const FolderLink back(listed + "\\sub", "back", "..");
    if (!self.Exists() || !above.Exists() || !back.Exists()) {
        GTEST_SKIP() << "no link to a folder can be made here";
    }
    const auto item = NewItem(listed);
    item->Count();
    WaitFor(*item);
    EXPECT_EQ(item->CountString(), "1 file; 5 folders");
    StampAndWait(*item);
    EXPECT_EQ(item->StatusString(), "Complete");
    EXPECT_EQ(item->StampedFolderCount() + 1, item->FolderCount());
    EXPECT_EQ(EntryOf(tree_.Path("up\\listed\\sub\\file.txt")).written, StampTime());
    EXPECT_EQ(EntryOf(tree_.Path("up\\other.txt")).written, LongAgo());
}

TEST_F(HardTrees, ALinkToAFolderThatItDoesNotLieInIsEntered) {
    tree_.MakeFile("elsewhere\\file.txt");
    tree_.MakeFolder("listed");
    tree_.SetTimes(LongAgo());
    const FolderLink link(tree_.Path("listed"), "link", "..\\elsewhere");
    if (!link.Exists()) {
        GTEST_SKIP() << "no link to a folder can be made here";
    }
    const auto item = NewItem(tree_.Path("listed"));
    StampAndWait(*item);
    EXPECT_EQ(EntryOf(tree_.Path("elsewhere\\file.txt")).written, StampTime());
}

// Windows has no file system that holds such names; below Wine any may lie in a folder.
TEST_F(HardTrees, NamesThatLeadOutOfTheFolderAreListedAndNothingOutsideIsTouched) {
    if (!OnWine()) {
        GTEST_SKIP() << "only Wine lists names that hold a separator";
    }
    tree_.MakeFile("victim.txt");
    tree_.MakeFile("outside\\deep.txt");
    tree_.MakeFile("listed\\x\\inside.txt");
    tree_.SetTimes(LongAgo());
    // In single quotes, inside double ones, no backslash means anything but itself.
    RunBelowWine(
        "sh -c \"cd listed; mkdir 'x\\..\\..\\outside'; >'..\\victim.txt'; >'a:b'; >made\"",
        tree_.Root());
    ASSERT_TRUE(PollUntil(std::chrono::seconds(10), [this] {
        return ::GetFileAttributesW(WideFromUtf8(tree_.Path("listed\\made")).c_str()) !=
               INVALID_FILE_ATTRIBUTES;
    }));
    const auto item = NewItem(tree_.Path("listed"));
    item->Count();
    WaitFor(*item);
    EXPECT_EQ(item->CountString(), "4 files; 3 folders");
    StampAndWait(*item);
    RunBelowWine("rm -r listed", tree_.Root());

    EXPECT_EQ(item->StatusString(), "Complete (with errors)");
    std::vector<std::string> failed;
    for (const auto& error : *item->StampErrors()) {
        failed.push_back(error->ItemName.substr(item->RootItem().size()));
        EXPECT_EQ(error->ErrorNumber, ERROR_INVALID_NAME);
        EXPECT_FALSE(error->ErrorDescription.empty());
    }
    EXPECT_THAT(failed, testing::UnorderedElementsAre("..∖victim.txt", "a∶b", "x∖..∖..∖outside\\"));
    for (const char* outside : {"victim.txt", "outside", "outside\\deep.txt"}) {
        EXPECT_EQ(EntryOf(tree_.Path(outside)).written, LongAgo()) << outside;
    }
    EXPECT_TRUE(PollUntil(std::chrono::seconds(10), [this] {
        return ::GetFileAttributesW(WideFromUtf8(tree_.Path("listed")).c_str()) ==
               INVALID_FILE_ATTRIBUTES;
    }));
}

// TIDEMARK_BIG_FOLDER names a prepared folder with nothing but files, TIDEMARK_BIG_FOLDER_FILES how
// many: making so many through this system takes too long.
TEST_F(HardTrees, AFolderWithVeryManyFilesIsCountedAndStampedWhole) {
    int files = 500;
    std::string path = tree_.Root();
    if (const char* prepared = std::getenv("TIDEMARK_BIG_FOLDER")) {
        path = prepared;
        files = SizeFromEnvironment("TIDEMARK_BIG_FOLDER_FILES", 0);
    } else {
        for (int i = 0; i < files; ++i) {
            tree_.MakeFile(std::to_string(i));
        }
    }
    const auto item = NewItem(path);
    item->Count();
    WaitFor(*item);
    StampAndWait(*item);
    EXPECT_EQ(item->FileCount(), files);
    EXPECT_EQ(item->StampedFileCount(), files);
    EXPECT_EQ(item->StatusString(), "Complete");
}

}  // namespace
}  // namespace tidemark
