// Names and trees that are hard to walk, on the real system. Each has a quick form here and a long
// one that the environment asks for.

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include "endtoend/engine_on_windows.h"
#include "support/process_resources.h"

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
