// What the kernel's file calls keep to, run on every implementation of them.

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "contract/platform_under_test.h"
#include "support/repeated.h"

namespace tidemark {
namespace {

constexpr std::int64_t kTicksPerMinute = 60LL * 10'000'000;
constexpr std::int64_t kTicksPerDay = 24LL * 60 * kTicksPerMinute;
// 29 February 2004, 13:37.
constexpr FileTime kChosen{147'252LL * kTicksPerDay + (13 * 60 + 37) * kTicksPerMinute};

class KernelFilesContract : public PlatformContract {
  protected:
    // Names and attributes of everything in the folder; the search must end in "no more files".
    std::map<std::string, std::uint32_t> List(const std::string& folder) {
        std::map<std::string, std::uint32_t> found;
        FoundEntry entry;
        const SearchHandle search = files_.SearchFirst(folder + "\\*.*", entry);
        EXPECT_NE(search, kInvalidSearch) << folder;
        if (search == kInvalidSearch) {
            return found;
        }
        EXPECT_EQ(files_.LastError(), system_error::kSuccess);
        do {
            EXPECT_TRUE(found.emplace(entry.name, entry.attributes).second) << entry.name;
        } while (files_.SearchNext(search, entry));
        EXPECT_EQ(files_.LastError(), system_error::kNoMoreFiles);
        EXPECT_TRUE(files_.SearchClose(search));
        EXPECT_EQ(files_.LastError(), system_error::kSuccess);
        return found;
    }
    std::set<std::string> Names(const std::string& folder) {
        std::set<std::string> names;
        for (const auto& [name, attributes] : List(folder)) {
            names.insert(name);
        }
        return names;
    }
    FileHandle Open(const std::string& path) {
        return files_.OpenForTimes(path, kOpenNormal | kOpenBackupSemantics);
    }
    // Stamps as the engine does, and tells whether all of it went well.
    bool Stamp(const std::string& path, FileTime time) {
        const FileHandle file = Open(path);
        return file != kInvalidFile && files_.SetLastWriteTime(file, time) &&
               files_.CloseFile(file);
    }
};

TEST_P(KernelFilesContract, AFolderListsItselfItsParentAndEveryEntry) {
    const std::string file = NewFile("plain.txt");
    const std::string folder = NewFolder("sub");
    const auto found = List(system_->Folder());
    EXPECT_THAT(Names(system_->Folder()),
                testing::UnorderedElementsAre(".", "..", "plain.txt", "sub"));
    for (const char* name : {".", "..", "sub"}) {
        EXPECT_NE(found.at(name) & file_attribute::kDirectory, 0U) << name;
    }
    EXPECT_EQ(found.at("plain.txt") & file_attribute::kDirectory, 0U);
}

TEST_P(KernelFilesContract, AnEmptyFolderListsOnlyItselfAndItsParent) {
    EXPECT_THAT(Names(system_->Folder()), testing::UnorderedElementsAre(".", ".."));
}

TEST_P(KernelFilesContract, ASearchAtItsEndLeavesTheEntryAsItWas) {
    FoundEntry entry;
    const SearchHandle search = files_.SearchFirst(Path("*.*"), entry);
    ASSERT_NE(search, kInvalidSearch);
    do {
        entry = {77, "as it was"};
    } while (files_.SearchNext(search, entry));
    EXPECT_EQ(entry.attributes, 77U);
    EXPECT_EQ(entry.name, "as it was");
    EXPECT_TRUE(files_.SearchClose(search));
}

TEST_P(KernelFilesContract, AnEntryIsFoundByItsPathAndNamedAsItsFolderListsIt) {
    static_cast<void>(NewFile("Mixed Case.TXT"));
    static_cast<void>(NewFolder("Sub"));
    static_cast<void>(NewFile("Sub\\inside"));
    FoundEntry entry;
    SearchHandle search = files_.SearchFirst(Path("mixed case.txt"), entry);
    ASSERT_NE(search, kInvalidSearch);
    EXPECT_EQ(entry.name, "Mixed Case.TXT");
    EXPECT_EQ(entry.attributes & file_attribute::kDirectory, 0U);
    EXPECT_FALSE(files_.SearchNext(search, entry));
    EXPECT_EQ(files_.LastError(), system_error::kNoMoreFiles);
    EXPECT_TRUE(files_.SearchClose(search));

    search = files_.SearchFirst(Path("sub"), entry);
    ASSERT_NE(search, kInvalidSearch);
    EXPECT_EQ(entry.name, "Sub");
    EXPECT_NE(entry.attributes & file_attribute::kDirectory, 0U);
    EXPECT_FALSE(files_.SearchNext(search, entry));
    EXPECT_TRUE(files_.SearchClose(search));

    EXPECT_EQ(files_.SearchFirst(Path("missing.txt"), entry), kInvalidSearch);
    EXPECT_EQ(files_.LastError(), system_error::kFileNotFound);
}

TEST_P(KernelFilesContract, NamesOfEveryScriptAreListedAndStamped) {
    const std::vector<std::string> names = {
        ".hidden",
        "..two",
        "a b",
        "caf\xC3\xA9.txt",
        "\xCE\xB5\xCE\xBB\xCE\xBB\xCE\xB7\xCE\xBD",
        "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D",
        "\xE6\xBC\xA2\xE5\xAD\x97.doc",
        "\xF0\x9F\x98\x80.png",
        Repeated("\xE6\xBC\xA2", 85),
        Repeated("n", 255),
    };
    std::set<std::string> expected = {".", ".."};
    for (const std::string& name : names) {
        EXPECT_TRUE(Stamp(NewFile(name), kChosen)) << name;
        EXPECT_EQ(system_->WrittenTime(Path(name)), kChosen) << name;
        expected.insert(name);
    }
    EXPECT_EQ(Names(system_->Folder()), expected);
}

TEST_P(KernelFilesContract, ANameWithALoneSurrogateIsListedAndStampedAsItStands) {
    if (const std::string reason = system_->CannotHoldLoneSurrogates(); !reason.empty()) {
        GTEST_SKIP() << reason;
    }
    const std::string lone = "a\xED\xA0\x80z";
    EXPECT_TRUE(Stamp(NewFile(lone), kChosen));
    EXPECT_EQ(Names(system_->Folder()).count(lone), 1U);
    EXPECT_EQ(system_->WrittenTime(Path(lone)), kChosen);
}

TEST_P(KernelFilesContract, HiddenEntriesAreListedLikeAnyOther) {
    const std::string hidden = NewFile("hidden.txt");
    EXPECT_TRUE(files_.WriteAttributes(hidden, file_attribute::kHidden | file_attribute::kSystem));
    EXPECT_EQ(Names(system_->Folder()).count("hidden.txt"), 1U);
}

TEST_P(KernelFilesContract, ExactlyTheListedEntryIsStamped) {
    for (const auto& [name, altered] : std::map<std::string, std::string>{
             {"dot.", "dot"}, {"blank ", "blank"}, {"nul", ""}, {"com1.txt", ""}}) {
        const FileTime earlier{kChosen.ticks - kTicksPerDay};
        ASSERT_TRUE(Stamp(NewFile(name), earlier)) << name;
        if (!altered.empty()) {
            ASSERT_TRUE(Stamp(NewFile(altered), earlier)) << altered;
        }
        EXPECT_TRUE(Stamp(Path(name), kChosen)) << name;
        EXPECT_EQ(Names(system_->Folder()).count(name), 1U) << name;
        EXPECT_EQ(system_->WrittenTime(Path(name)), kChosen) << name;
        if (!altered.empty()) {
            EXPECT_EQ(system_->WrittenTime(Path(altered)), earlier) << altered;
        }
    }
}

TEST_P(KernelFilesContract, PathsOfFourHundredCharactersWorkInEveryCall) {
    const std::string folder = DeepFolder();
    const std::string file = folder + "\\deep.txt";
    system_->MakeFile(file);
    EXPECT_THAT(Names(folder), testing::UnorderedElementsAre(".", "..", "deep.txt"));
    EXPECT_EQ(files_.ReadAttributes(file) & file_attribute::kDirectory, 0U);
    EXPECT_TRUE(files_.WriteAttributes(file, file_attribute::kReadOnly));
    EXPECT_TRUE(files_.WriteAttributes(file, file_attribute::kNormal));
    EXPECT_TRUE(Stamp(file, kChosen));
    EXPECT_EQ(system_->WrittenTime(file), kChosen);
    EXPECT_TRUE(Stamp(folder + "\\", kChosen));
    EXPECT_EQ(system_->WrittenTime(folder), kChosen);
}

TEST_P(KernelFilesContract, ReadOnlyIsSetAndClearedByAttributes) {
    const std::string file = NewFile("a.txt");
    EXPECT_EQ(files_.ReadAttributes(file) & file_attribute::kReadOnly, 0U);
    EXPECT_TRUE(files_.WriteAttributes(file, file_attribute::kReadOnly));
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);
    const std::uint32_t attributes = files_.ReadAttributes(file);
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);
    EXPECT_NE(attributes & file_attribute::kReadOnly, 0U);
    EXPECT_NE(List(system_->Folder()).at("a.txt") & file_attribute::kReadOnly, 0U);
    EXPECT_TRUE(files_.WriteAttributes(file, attributes & ~file_attribute::kReadOnly));
    EXPECT_EQ(files_.ReadAttributes(file) & file_attribute::kReadOnly, 0U);
}

TEST_P(KernelFilesContract, AnOpenEntryHasTheAttributesOfItsPath) {
    const std::string file = NewFile("a.txt");
    const std::string folder = NewFolder("sub");
    ASSERT_TRUE(files_.WriteAttributes(folder, file_attribute::kReadOnly));
    for (const std::string& path : {file, folder, folder + "\\"}) {
        const FileHandle open = Open(path);
        ASSERT_NE(open, kInvalidFile) << path;
        const std::uint32_t attributes = files_.ReadAttributesOf(open);
        EXPECT_EQ(files_.LastError(), system_error::kSuccess) << path;
        EXPECT_EQ(attributes, files_.ReadAttributes(path)) << path;
        EXPECT_TRUE(files_.CloseFile(open)) << path;
    }
}

TEST_P(KernelFilesContract, AnOpenLinkHasTheAttributesOfWhereItLeadsTo) {
    const std::string folder = NewFolder("target");
    ASSERT_TRUE(files_.WriteAttributes(folder, file_attribute::kReadOnly));
    const std::string link = Path("link");
    if (!system_->MakeFolderLink(link, folder)) {
        GTEST_SKIP() << "links to folders cannot be made here";
    }
    EXPECT_NE(files_.ReadAttributes(link) & file_attribute::kReparsePoint, 0U);
    EXPECT_EQ(files_.ReadAttributes(link) & file_attribute::kReadOnly, 0U);
    EXPECT_NE(List(system_->Folder()).at("link") & file_attribute::kReparsePoint, 0U);
    const FileHandle open = Open(link);
    ASSERT_NE(open, kInvalidFile);
    EXPECT_EQ(files_.ReadAttributesOf(open), files_.ReadAttributes(folder));
    EXPECT_TRUE(files_.CloseFile(open));
}

TEST_P(KernelFilesContract, AnOpenFileShowsAnAttributeThatIsSetMeanwhile) {
    const std::string file = NewFile("a.txt");
    const FileHandle open = Open(file);
    ASSERT_NE(open, kInvalidFile);
    EXPECT_EQ(files_.ReadAttributesOf(open) & file_attribute::kReadOnly, 0U);
    EXPECT_TRUE(files_.WriteAttributes(file, file_attribute::kReadOnly));
    EXPECT_NE(files_.ReadAttributesOf(open) & file_attribute::kReadOnly, 0U);
    EXPECT_TRUE(files_.WriteAttributes(file, file_attribute::kNormal));
    EXPECT_TRUE(files_.CloseFile(open));
}

TEST_P(KernelFilesContract, AReadOnlyFileCannotBeOpened) {
    if (const std::string reason = system_->ReadOnlyFilesOpenAllTheSame(); !reason.empty()) {
        GTEST_SKIP() << reason;
    }
    const std::string file = NewFile("a.txt");
    ASSERT_TRUE(files_.WriteAttributes(file, file_attribute::kReadOnly));
    EXPECT_EQ(Open(file), kInvalidFile);
    EXPECT_EQ(files_.LastError(), system_error::kAccessDenied);
}

TEST_P(KernelFilesContract, TheWriteTimeIsKeptToTheTick) {
    const std::string file = NewFile("a.txt");
    const FileTime time{kChosen.ticks + 1'234'567};
    const FileHandle handle = Open(file);
    ASSERT_NE(handle, kInvalidFile);
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);
    EXPECT_TRUE(files_.SetLastWriteTime(handle, time));
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);
    EXPECT_TRUE(files_.CloseFile(handle));
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);
    EXPECT_EQ(system_->WrittenTime(file), time);
}

TEST_P(KernelFilesContract, FoldersAreStampedWithOrWithoutATrailingBackslash) {
    const std::string folder = NewFolder("sub");
    EXPECT_TRUE(Stamp(folder + "\\", kChosen));
    EXPECT_EQ(system_->WrittenTime(folder), kChosen);
    const FileTime later{kChosen.ticks + kTicksPerDay};
    EXPECT_TRUE(Stamp(folder, later));
    EXPECT_EQ(system_->WrittenTime(folder), later);
}

TEST_P(KernelFilesContract, SettingTheCreationTimeLeavesTheWriteTime) {
    const std::string file = NewFile("a.txt");
    ASSERT_TRUE(Stamp(file, kChosen));
    const FileTime created{kChosen.ticks - 10 * kTicksPerDay};
    const FileHandle handle = Open(file);
    EXPECT_TRUE(files_.SetCreationTime(handle, created));
    EXPECT_TRUE(files_.CloseFile(handle));
    EXPECT_EQ(system_->WrittenTime(file), kChosen);
    if (const std::string reason = system_->CannotKeepCreationTimes(); !reason.empty()) {
        GTEST_SKIP() << reason;
    }
    EXPECT_EQ(system_->CreatedTime(file), created);
}

TEST_P(KernelFilesContract, SettingTheWriteTimeLeavesTheCreationTime) {
    if (const std::string reason = system_->CannotKeepCreationTimes(); !reason.empty()) {
        GTEST_SKIP() << reason;
    }
    const std::string file = NewFile("a.txt");
    const FileTime created = system_->CreatedTime(file);
    ASSERT_TRUE(Stamp(file, kChosen));
    EXPECT_EQ(system_->CreatedTime(file), created);
}

TEST_P(KernelFilesContract, TheTimesZeroAndMinusOneLeaveTheTimeAsItIs) {
    const std::string file = NewFile("a.txt");
    ASSERT_TRUE(Stamp(file, kChosen));
    const FileTime created = system_->CreatedTime(file);
    for (const std::int64_t ticks : {0, -1}) {
        const FileHandle handle = Open(file);
        ASSERT_NE(handle, kInvalidFile);
        EXPECT_TRUE(files_.SetLastWriteTime(handle, {ticks})) << ticks;
        EXPECT_TRUE(files_.SetCreationTime(handle, {ticks})) << ticks;
        EXPECT_TRUE(files_.CloseFile(handle));
        EXPECT_EQ(system_->WrittenTime(file), kChosen) << ticks;
        EXPECT_EQ(system_->CreatedTime(file), created) << ticks;
    }
}

TEST_P(KernelFilesContract, ATimeBefore1601IsRefused) {
    if (const std::string reason = system_->TimesBefore1601AreTaken(); !reason.empty()) {
        GTEST_SKIP() << reason;
    }
    const std::string file = NewFile("a.txt");
    ASSERT_TRUE(Stamp(file, kChosen));
    const FileHandle handle = Open(file);
    ASSERT_NE(handle, kInvalidFile);
    EXPECT_FALSE(files_.SetLastWriteTime(handle, {-kTicksPerDay}));
    EXPECT_EQ(files_.LastError(), system_error::kInvalidParameter);
    EXPECT_FALSE(files_.SetCreationTime(handle, {-kTicksPerDay}));
    EXPECT_EQ(files_.LastError(), system_error::kInvalidParameter);
    EXPECT_TRUE(files_.CloseFile(handle));
    EXPECT_EQ(system_->WrittenTime(file), kChosen);
}

// Whichever time is set: one that lands in the wrong place shows here.
TEST_P(KernelFilesContract, SettingATimeLeavesTheAccessTime) {
    const std::string file = NewFile("a.txt");
    const FileTime accessed = system_->AccessedTime(file);
    ASSERT_NE(accessed, kChosen);
    const FileHandle handle = Open(file);
    ASSERT_NE(handle, kInvalidFile);
    EXPECT_TRUE(files_.SetLastWriteTime(handle, kChosen));
    EXPECT_EQ(system_->AccessedTime(file), accessed);
    EXPECT_TRUE(files_.SetCreationTime(handle, {kChosen.ticks - kTicksPerDay}));
    EXPECT_EQ(system_->AccessedTime(file), accessed);
    EXPECT_TRUE(files_.CloseFile(handle));
    EXPECT_EQ(system_->AccessedTime(file), accessed);
}

TEST_P(KernelFilesContract, MissingFilesAndFoldersAreToldApart) {
    FoundEntry entry;
    EXPECT_EQ(files_.SearchFirst(Path("missing\\*.*"), entry), kInvalidSearch);
    EXPECT_EQ(files_.LastError(), system_error::kPathNotFound);

    EXPECT_EQ(files_.ReadAttributes(Path("missing.txt")), file_attribute::kInvalid);
    EXPECT_EQ(files_.LastError(), system_error::kFileNotFound);
    EXPECT_EQ(files_.ReadAttributes(Path("missing\\a.txt")), file_attribute::kInvalid);
    EXPECT_EQ(files_.LastError(), system_error::kPathNotFound);

    EXPECT_FALSE(files_.WriteAttributes(Path("missing.txt"), file_attribute::kInvalid & ~1U));
    EXPECT_EQ(files_.LastError(), system_error::kFileNotFound);

    EXPECT_EQ(Open(Path("missing.txt")), kInvalidFile);
    EXPECT_EQ(files_.LastError(), system_error::kFileNotFound);
    EXPECT_EQ(Open(Path("missing\\a.txt")), kInvalidFile);
    EXPECT_EQ(files_.LastError(), system_error::kPathNotFound);
}

TEST_P(KernelFilesContract, HandlesThatAreNoneAreRefused) {
    EXPECT_FALSE(files_.SearchClose(kInvalidSearch));
    EXPECT_EQ(files_.LastError(), system_error::kInvalidHandle);
    FoundEntry entry;
    EXPECT_FALSE(files_.SearchNext(kInvalidSearch, entry));
    EXPECT_EQ(files_.LastError(), system_error::kInvalidHandle);

    const FileHandle closed = Open(NewFile("a.txt"));
    ASSERT_TRUE(files_.CloseFile(closed));
    EXPECT_FALSE(files_.SetLastWriteTime(closed, kChosen));
    EXPECT_EQ(files_.LastError(), system_error::kInvalidHandle);
    EXPECT_FALSE(files_.SetCreationTime(closed, kChosen));
    EXPECT_EQ(files_.LastError(), system_error::kInvalidHandle);
    EXPECT_EQ(files_.ReadAttributesOf(closed), file_attribute::kInvalid);
    EXPECT_EQ(files_.LastError(), system_error::kInvalidHandle);
    EXPECT_FALSE(files_.CloseFile(closed));
    EXPECT_EQ(files_.LastError(), system_error::kInvalidHandle);
}

TEST_P(KernelFilesContract, AFileThatAnotherProgramHoldsIsASharingViolation) {
    const std::string file = NewFile("held.txt");
    system_->Lock(file);
    EXPECT_EQ(Open(file), kInvalidFile);
    EXPECT_EQ(files_.LastError(), system_error::kSharingViolation);
    EXPECT_EQ(files_.ReadAttributes(file) & file_attribute::kDirectory, 0U);
    system_->Unlock();
    EXPECT_TRUE(Stamp(file, kChosen));
}

TEST_P(KernelFilesContract, AFileOpenForTimesLetsOthersReadButNotWrite) {
    const std::string file = NewFile("a.txt");
    const FileHandle first = Open(file);
    ASSERT_NE(first, kInvalidFile);
    EXPECT_EQ(Open(file), kInvalidFile);
    EXPECT_EQ(files_.LastError(), system_error::kSharingViolation);
    EXPECT_TRUE(files_.CloseFile(first));
    EXPECT_TRUE(Stamp(file, kChosen));
}

TEST_P(KernelFilesContract, AReaderThatLetsOthersWriteDoesNotStopAStamp) {
    const std::string file = NewFile("read.txt");
    ASSERT_TRUE(system_->StartReading(file));
    EXPECT_TRUE(Stamp(file, kChosen)) << files_.LastError();
    system_->StopReading();
    EXPECT_EQ(system_->WrittenTime(file), kChosen);
}

TEST_P(KernelFilesContract, AReaderMayStartWhileAFileIsOpenForTimes) {
    const std::string file = NewFile("read.txt");
    const FileHandle handle = Open(file);
    ASSERT_NE(handle, kInvalidFile);
    EXPECT_TRUE(system_->StartReading(file));
    system_->StopReading();
    EXPECT_TRUE(files_.CloseFile(handle));
}

TEST_P(KernelFilesContract, AFolderNeedsBackupSemanticsToBeOpened) {
    const std::string folder = NewFolder("sub");
    EXPECT_EQ(files_.OpenForTimes(folder, kOpenNormal), kInvalidFile);
    EXPECT_EQ(files_.LastError(), system_error::kAccessDenied);
}

TEST_P(KernelFilesContract, ACallThatSucceedsLeavesNoEarlierError) {
    const std::string file = NewFile("a.txt");
    const auto fail = [&] { return files_.ReadAttributes(Path("missing.txt")); };
    FoundEntry entry;

    EXPECT_EQ(fail(), file_attribute::kInvalid);
    EXPECT_NE(files_.ReadAttributes(file), file_attribute::kInvalid);
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);

    EXPECT_EQ(fail(), file_attribute::kInvalid);
    const SearchHandle search = files_.SearchFirst(Path("*.*"), entry);
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);
    EXPECT_EQ(fail(), file_attribute::kInvalid);
    EXPECT_TRUE(files_.SearchNext(search, entry));
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);
    EXPECT_EQ(fail(), file_attribute::kInvalid);
    EXPECT_TRUE(files_.SearchClose(search));
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);

    EXPECT_EQ(fail(), file_attribute::kInvalid);
    FileTime system_time;
    EXPECT_TRUE(files_.LocalToSystemTime(kChosen, system_time));
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);

    EXPECT_EQ(fail(), file_attribute::kInvalid);
    EXPECT_TRUE(files_.IsNtFamily());
    EXPECT_EQ(files_.LastError(), system_error::kSuccess);
}

// The system's own conversion goes by the clock of today: a time of the other half of the year
// is moved by the same number of minutes.
TEST_P(KernelFilesContract, SummerAndWinterTimesAreConvertedAlike) {
    std::set<std::int64_t> biases;
    for (const int month : {0, 2, 4, 6, 8, 10}) {
        const FileTime local{kChosen.ticks + month * 30 * kTicksPerDay};
        FileTime system_time;
        ASSERT_TRUE(files_.LocalToSystemTime(local, system_time));
        biases.insert(local.ticks - system_time.ticks);
    }
    ASSERT_EQ(biases.size(), 1U);
    EXPECT_EQ(*biases.begin() % kTicksPerMinute, 0);
    EXPECT_LE(std::abs(*biases.begin()), 15 * 60 * kTicksPerMinute);
}

TEST_P(KernelFilesContract, EveryErrorTheProgramMeetsHasAText) {
    for (const std::uint32_t code :
         {system_error::kFileNotFound, system_error::kPathNotFound, system_error::kAccessDenied,
          system_error::kSharingViolation}) {
        const std::string text = files_.MessageText(code);
        EXPECT_GT(text.size(), 2U) << code;
        EXPECT_TRUE(text.ends_with("\r\n")) << code;
        EXPECT_EQ(text.find('\0'), std::string::npos) << code;
    }
    EXPECT_EQ(files_.MessageText(0x2FFFFFFF), "");
}

TIDEMARK_ON_EVERY_PLATFORM(KernelFilesContract);

}  // namespace
}  // namespace tidemark
