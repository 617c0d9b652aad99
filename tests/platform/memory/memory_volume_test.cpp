#include "platform/memory/memory_volume.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/text.h"

namespace tidemark {
namespace {

using testing::ElementsAre;

class MemoryVolumeTest : public testing::Test {
  protected:
    std::vector<std::string> List(const std::string& folder) {
        std::vector<std::string> names;
        FoundEntry entry;
        const SearchHandle search = volume.SearchFirst(folder + "*.*", entry);
        if (search == kInvalidSearch) {
            return names;
        }
        do {
            names.push_back(entry.name);
        } while (volume.SearchNext(search, entry));
        EXPECT_EQ(volume.LastError(), system_error::kNoMoreFiles);
        EXPECT_TRUE(volume.SearchClose(search));
        return names;
    }

    std::uint32_t OpenError(const std::string& path) {
        const FileHandle file = volume.OpenForTimes(path, kOpenBackupSemantics | kOpenNormal);
        const std::uint32_t error = volume.LastError();
        if (file != kInvalidFile) {
            volume.CloseFile(file);
        }
        return error;
    }

    MemoryVolume volume;
};

TEST_F(MemoryVolumeTest, ListsDotsFirstThenEntriesByName) {
    volume.AddFile("C:\\f\\b.txt");
    volume.AddFolder("C:\\f\\A");
    EXPECT_THAT(List("C:\\f\\"), ElementsAre(".", "..", "A", "b.txt"));
    EXPECT_THAT(List("C:\\"), ElementsAre("f"));
}

TEST_F(MemoryVolumeTest, NamesIgnoreCaseAndKeepTheirs) {
    volume.AddFile("C:\\Folder\\Caf\xC3\x89.txt");
    volume.AddFile("c:\\FOLDER\\caf\xC3\xA9.TXT");
    EXPECT_THAT(List("C:\\folder\\"), ElementsAre(".", "..", "Caf\xC3\x89.txt"));
}

TEST_F(MemoryVolumeTest, MissingEntriesAndMissingFoldersHaveTheirOwnCodes) {
    volume.AddFile("C:\\f\\a.txt");
    EXPECT_EQ(volume.ReadAttributes("C:\\f\\none"), file_attribute::kInvalid);
    EXPECT_EQ(volume.LastError(), system_error::kFileNotFound);
    EXPECT_EQ(volume.ReadAttributes("C:\\none\\a.txt"), file_attribute::kInvalid);
    EXPECT_EQ(volume.LastError(), system_error::kPathNotFound);
    EXPECT_EQ(OpenError("D:\\a.txt"), system_error::kPathNotFound);
    EXPECT_EQ(OpenError("C:\\f\\a.txt\\b"), system_error::kPathNotFound);
    EXPECT_EQ(OpenError("C:\\f\\a?b"), system_error::kInvalidName);
    FoundEntry entry;
    EXPECT_EQ(volume.SearchFirst("C:\\none\\*.*", entry), kInvalidSearch);
    EXPECT_EQ(volume.LastError(), system_error::kPathNotFound);
    EXPECT_FALSE(volume.SearchClose(kInvalidSearch));
    EXPECT_EQ(volume.LastError(), system_error::kInvalidHandle);
}

TEST_F(MemoryVolumeTest, OpeningFollowsAttributesLocksAndSharing) {
    volume.AddFile("C:\\f\\a.txt");
    volume.AddFile("C:\\f\\ro.txt", file_attribute::kReadOnly);
    volume.AddFolder("C:\\f\\ro", file_attribute::kReadOnly);
    EXPECT_EQ(OpenError("C:\\f\\ro.txt"), system_error::kAccessDenied);
    EXPECT_EQ(OpenError("C:\\f\\ro\\"), system_error::kSuccess);
    EXPECT_EQ(volume.OpenForTimes("C:\\f\\ro\\", kOpenNormal), kInvalidFile);
    EXPECT_EQ(volume.LastError(), system_error::kAccessDenied);

    volume.Lock("C:\\f\\a.txt");
    EXPECT_EQ(OpenError("C:\\f\\a.txt"), system_error::kSharingViolation);
    volume.Unlock("C:\\f\\a.txt");
    const FileHandle first = volume.OpenForTimes("C:\\f\\a.txt", kOpenNormal);
    EXPECT_EQ(OpenError("C:\\f\\a.txt"), system_error::kSharingViolation);
    EXPECT_TRUE(volume.CloseFile(first));
    EXPECT_EQ(OpenError("C:\\f\\a.txt"), system_error::kSuccess);
    EXPECT_EQ(volume.OpenFileCount(), 0U);

    volume.DenyWriting("C:\\f\\a.txt");
    EXPECT_EQ(OpenError("C:\\f\\a.txt"), system_error::kAccessDenied);
}

TEST_F(MemoryVolumeTest, SettingOneTimeLeavesTheOthers) {
    volume.AddFile("C:\\a.txt");
    const MemoryTimes before = volume.TimesOf("C:\\a.txt");
    EXPECT_EQ(before, (MemoryTimes{kMemoryBuildTime, kMemoryBuildTime, kMemoryBuildTime}));
    const FileHandle file = volume.OpenForTimes("C:\\a.txt", kOpenNormal);
    EXPECT_TRUE(volume.SetLastWriteTime(file, {7}));
    EXPECT_EQ(volume.TimesOf("C:\\a.txt"), (MemoryTimes{before.created, before.accessed, {7}}));
    EXPECT_TRUE(volume.SetCreationTime(file, {9}));
    EXPECT_EQ(volume.TimesOf("C:\\a.txt"), (MemoryTimes{{9}, before.accessed, {7}}));
    EXPECT_FALSE(volume.SetCreationTime(file, {-5}));
    EXPECT_EQ(volume.LastError(), system_error::kInvalidParameter);
    EXPECT_TRUE(volume.CloseFile(file));
    EXPECT_FALSE(volume.SetLastWriteTime(file, {8}));
    EXPECT_EQ(volume.LastError(), system_error::kInvalidHandle);
}

TEST_F(MemoryVolumeTest, AttributesChangeButNotWhatAnEntryIs) {
    volume.AddFolder("C:\\d", file_attribute::kReadOnly);
    EXPECT_TRUE(volume.WriteAttributes("C:\\d", file_attribute::kHidden));
    EXPECT_EQ(volume.AttributesOf("C:\\d"), file_attribute::kDirectory | file_attribute::kHidden);
    EXPECT_FALSE(volume.WriteAttributes("C:\\gone", 0xFFFFFFFE));
    EXPECT_EQ(volume.LastError(), system_error::kFileNotFound);
}

TEST_F(MemoryVolumeTest, NamesOf255UnitsFitAndLongerOnesDoNot) {
    std::u16string longest(254, u'\u6F22');
    longest.push_back(0xD800);
    const std::string name = Utf8FromUtf16(longest);
    volume.AddFile("C:\\f\\" + name);
    EXPECT_THAT(List("C:\\f\\"), ElementsAre(".", "..", name));
    EXPECT_EQ(OpenError("C:\\f\\" + name), system_error::kSuccess);
    EXPECT_EQ(OpenError("C:\\f\\" + name + "x"), system_error::kInvalidName);
    EXPECT_THROW(volume.AddFile("C:\\f\\" + name + "x"), std::invalid_argument);
}

TEST_F(MemoryVolumeTest, ALinkToItsParentIsEnteredUntilTheSystemGivesUp) {
    volume.AddFolder("C:\\d");
    volume.AddFolderLink("C:\\d\\loop", "C:\\d");
    EXPECT_EQ(volume.ReadAttributes("C:\\d\\loop"),
              file_attribute::kDirectory | file_attribute::kReparsePoint);
    std::string path = "C:\\d\\";
    int levels = 0;
    for (; !List(path).empty() && levels < 1000; ++levels) {
        path += "loop\\";
    }
    EXPECT_EQ(levels, 64);
    EXPECT_EQ(OpenError(path), 1921U);
}

TEST_F(MemoryVolumeTest, AnEntryIsListedUnderTheNameThatItIsGiven) {
    volume.AddFile("C:\\d\\a");
    volume.ListAs("C:\\d\\a", "..\\b");
    EXPECT_THAT(List("C:\\d\\"), ElementsAre(".", "..", "..\\b"));
    EXPECT_TRUE(volume.FileExists("C:\\d\\a"));
    EXPECT_FALSE(volume.FileExists("C:\\d\\..\\b"));
}

TEST_F(MemoryVolumeTest, AVolumeThatNumbersNothingTellsNoIdentity) {
    volume.AddFolder("C:\\d");
    volume.StopNumbering();
    FileIdentity identity{1, 2};
    EXPECT_FALSE(volume.ReadIdentity("C:\\d", identity));
    EXPECT_EQ(volume.LastError(), system_error::kNotSupported);
    EXPECT_EQ(identity, (FileIdentity{1, 2}));
}

TEST_F(MemoryVolumeTest, AListingSeesWhatComesAndGoesBehindIt) {
    volume.AddFile("C:\\d\\a");
    volume.AddFile("C:\\d\\b");
    FoundEntry entry;
    const SearchHandle search = volume.SearchFirst("C:\\d\\*.*", entry);
    volume.Remove("C:\\d\\a");
    volume.AddFile("C:\\d\\c");
    std::vector<std::string> rest;
    while (volume.SearchNext(search, entry)) {
        rest.push_back(entry.name);
    }
    EXPECT_THAT(rest, ElementsAre("..", "b", "c"));
    volume.SearchClose(search);
    EXPECT_EQ(volume.OpenSearchCount(), 0U);
}

TEST_F(MemoryVolumeTest, MovingAFolderTakesItsContentsAlong) {
    volume.AddFile("C:\\d\\sub\\a");
    volume.Move("C:\\d\\sub", "C:\\e\\new");
    EXPECT_TRUE(volume.FileExists("C:\\e\\new\\a"));
    EXPECT_FALSE(volume.FolderExists("C:\\d\\sub"));
}

TEST_F(MemoryVolumeTest, AChainThousandsDeepIsBuiltFoundAndTakenApart) {
    std::string path = "C:\\";
    for (int i = 0; i < 5000; ++i) {
        path += "d\\";
    }
    volume.AddFolder(path);
    EXPECT_TRUE(volume.FolderExists(path));
    volume.Remove("C:\\d");
    EXPECT_FALSE(volume.FolderExists(path));
}

TEST_F(MemoryVolumeTest, LocalTimeIsConvertedByTheZone) {
    volume.SetLocalTimeAhead(-120);
    FileTime system;
    EXPECT_TRUE(volume.LocalToSystemTime({10'000'000'000'000}, system));
    EXPECT_EQ(system.ticks, 10'000'000'000'000 + 72'000'000'000);
}

TEST_F(MemoryVolumeTest, MessageTextsEndInALineBreak) {
    EXPECT_EQ(volume.MessageText(system_error::kAccessDenied), "Access is denied.\r\n");
    EXPECT_EQ(volume.MessageText(0xABCDEF), "");
    EXPECT_NE(volume.LastError(), system_error::kSuccess);
}

}  // namespace
}  // namespace tidemark
