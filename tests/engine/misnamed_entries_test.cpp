#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "engine/engine_fixture.h"

namespace tidemark {
namespace {

using testing::IsEmpty;

constexpr const char* kInvalidNameText =
    "|stamp|123|The filename, directory name, or volume label syntax is incorrect.\n";

// Folders may list names that a path cannot hold, as those of other file systems do. Such a name,
// joined to its folder's path, would lead to something that nobody chose.
class MisnamedEntriesTest : public EngineTest {
  protected:
    void SetUp() override {
        system.volume.AddFile("C:\\top\\a.txt");
        system.volume.AddFile("C:\\top\\x\\b.txt");
        system.volume.AddFile("C:\\victim.txt");
        system.volume.AddFile("C:\\outside\\deep\\victim.txt");
    }

    void AddFileListedAs(const std::string& name) {
        system.volume.AddFile("C:\\top\\file");
        system.volume.ListAs("C:\\top\\file", name);
    }

    [[nodiscard]] bool OutsideIsUntouched() const {
        const std::vector<std::string> outside = {
            "C:\\victim.txt", "C:\\outside", "C:\\outside\\deep", "C:\\outside\\deep\\victim.txt"};
        return std::none_of(outside.begin(), outside.end(),
                            [this](const std::string& path) { return IsStamped(path); });
    }
};

TEST_F(MisnamedEntriesTest, AFileWhoseNameLeadsOutOfItsFolderIsListedAndNotStamped) {
    AddFileListedAs("..\\victim.txt");
    const auto item = NewItem("C:\\top");
    item->Count();
    system.pump.RunUntilIdle();
    EXPECT_EQ(item->CountString(), "3 files; 2 folders");
    StampToTheEnd(*item, created_date, /*remove_read_only=*/true);
    EXPECT_EQ(Describe(*item->StampErrors()),
              "C:\\top\\..\xE2\x88\x96victim.txt" + std::string(kInvalidNameText));
    EXPECT_EQ(item->StampedFileCount(), 3);
    EXPECT_EQ(item->StatusString(), "Complete (with errors)");
    EXPECT_TRUE(OutsideIsUntouched());
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt") && IsStamped("C:\\top\\x\\b.txt"));
}

TEST_F(MisnamedEntriesTest, AFolderWhoseNameLeadsOutOfItsFolderIsListedAndNotEntered) {
    system.volume.AddFile("C:\\top\\folder\\inside.txt");
    system.volume.ListAs("C:\\top\\folder", "x\\..\\..\\outside");
    const auto item = NewItem("C:\\top");
    item->Count();
    system.pump.RunUntilIdle();
    EXPECT_EQ(item->CountString(), "2 files; 3 folders");
    StampToTheEnd(*item);
    EXPECT_EQ(Describe(*item->StampErrors()),
              "C:\\top\\x\xE2\x88\x96..\xE2\x88\x96..\xE2\x88\x96outside\\" +
                  std::string(kInvalidNameText));
    EXPECT_EQ(item->StampedFolderCount() + 1, item->FolderCount());
    EXPECT_TRUE(OutsideIsUntouched());
    EXPECT_FALSE(IsStamped("C:\\top\\folder\\inside.txt"));
}

TEST_F(MisnamedEntriesTest, EveryNameThatIsNoComponentIsOneRecordAndTakesNoCall) {
    for (const std::string& name :
         {std::string("x\\b.txt"), std::string("x/b.txt"), std::string("a.txt:stream"),
          std::string("a.txt\0junk", 10), std::string("\0", 1), std::string(), std::string("."),
          std::string("..")}) {
        SCOPED_TRACE(testing::PrintToString(name));
        AddFileListedAs(name);
        system.files.ClearCalls();
        const auto item = NewItem("C:\\top");
        StampToTheEnd(*item);
        ASSERT_EQ(item->StampErrors()->size(), 1U);
        EXPECT_EQ(item->StampErrors()->front()->ErrorNumber, 123);
        EXPECT_FALSE(system.volume.FileExists(item->StampErrors()->front()->ItemName));
        EXPECT_FALSE(system.volume.FolderExists(item->StampErrors()->front()->ItemName));
        EXPECT_EQ(item->StampedFileCount(), 3);
        // The top folder, the one in it and two files.
        EXPECT_EQ(system.files.CallCount(KernelCall::kOpenForTimes), 4U);
    }
}

TEST_F(MisnamedEntriesTest, AFolderWithoutANameIsListedAndNotEntered) {
    system.volume.AddFolder("C:\\top\\folder");
    system.volume.ListAs("C:\\top\\folder", "");
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item);
    EXPECT_EQ(Describe(*item->StampErrors()),
              "C:\\top\\\xE2\x90\x80\\" + std::string(kInvalidNameText));
    EXPECT_EQ(item->StampedFolderCount(), 2);
}

TEST_F(MisnamedEntriesTest, AFolderWhoseNameBeginsWithADotIsLeftOutWhateverFollows) {
    system.volume.AddFolder("C:\\top\\folder");
    system.volume.ListAs("C:\\top\\folder", "..\\outside");
    const auto item = NewItem("C:\\top");
    item->Count();
    system.pump.RunUntilIdle();
    StampToTheEnd(*item);
    EXPECT_EQ(item->FolderCount(), 2);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
    EXPECT_TRUE(OutsideIsUntouched());
}

// Names made of what could lead elsewhere, in trees of three levels.
class RandomNames {
  public:
    explicit RandomNames(std::uint32_t seed) : random_(seed) {}

    void Fill(MemoryVolume& volume, const std::string& folder, int depth) {
        for (std::uint32_t i = Below(4); i < 6; ++i) {
            const std::string path = folder + "\\e" + std::to_string(i);
            if (depth > 0 && Below(3) == 0) {
                volume.AddFolder(path);
                Fill(volume, path, depth - 1);
            } else {
                volume.AddFile(path);
            }
            if (Below(3) != 0) {
                volume.ListAs(path, Name());
            }
        }
    }

  private:
    std::uint32_t Below(std::uint32_t end) { return static_cast<std::uint32_t>(random_() % end); }
    std::string Name() {
        static const std::vector<std::string> kPieces = {
            "..",  ".",  "\\",      "/",          ":", std::string(1, '\0'),
            "top", "e1", "e2",      "victim.txt", " ", "C:",
            "*",   "?",  "\\\\?\\", "outside",    "~1"};
        std::string name;
        for (std::uint32_t pieces = Below(6); pieces > 0; --pieces) {
            name += kPieces[Below(static_cast<std::uint32_t>(kPieces.size()))];
        }
        return name;
    }

    std::mt19937 random_;
};

// No component behind the listed folder is "..", and the path is what it looks like.
bool StaysBelow(const std::string& path, const std::string& listed) {
    if (!path.starts_with(listed) || path.find('\0') != std::string::npos) {
        return false;
    }
    std::string_view rest = std::string_view(path).substr(listed.size());
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of("\\/"), rest.size());
        if (rest.substr(0, end) == "..") {
            return false;
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return true;
}

TEST_F(MisnamedEntriesTest, EveryPathHandedToACallBeginsWithTheListedFolderAndStaysBelowIt) {
    for (std::uint32_t seed = 1; seed <= 300 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomNames(seed).Fill(system.volume, "C:\\top", /*depth=*/3);
        system.files.ClearCalls();
        const auto item = NewItem("C:\\top");
        item->Count();
        system.pump.RunUntilIdle();
        StampToTheEnd(*item, created_date, /*remove_read_only=*/seed % 2 == 0);
        for (const KernelCallRecord& call : system.files.Calls()) {
            EXPECT_TRUE(call.path.empty() || StaysBelow(call.path, "C:\\top\\"))
                << NameOf(call.call) << " " << testing::PrintToString(call.path);
        }
        EXPECT_TRUE(OutsideIsUntouched());
        EXPECT_EQ(item->StampedFileCount(), item->FileCount());
        EXPECT_EQ(item->StampedFolderCount() + 1, item->FolderCount());
        system.volume.Remove("C:\\top");
        SetUp();
    }
}

}  // namespace
}  // namespace tidemark
