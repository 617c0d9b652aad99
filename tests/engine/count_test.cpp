#include <string>

#include "engine/engine_fixture.h"
#include "platform/program_error.h"

namespace tidemark {
namespace {

using testing::ElementsAre;

class CountTest : public EngineTest {
  protected:
    void SetUp() override {
        system.volume.AddFile("C:\\top\\a.txt");
        system.volume.AddFile("C:\\top\\b.txt", file_attribute::kHidden | file_attribute::kSystem);
        system.volume.AddFile("C:\\top\\sub\\c.txt", file_attribute::kReadOnly);
        system.volume.AddFolder("C:\\top\\sub\\empty");
    }

    void CountToTheEnd(TidemarkItem& item) {
        item.Count();
        system.pump.RunUntilIdle();
    }
};

TEST_F(CountTest, ANewItemIsEmptyAndReady) {
    const auto item = TidemarkItem::Create(system.Parts());
    EXPECT_EQ(item->RootItem(), "");
    EXPECT_EQ(item->CountString(), "not counted");
    EXPECT_EQ(item->StatusString(), "Ready");
    EXPECT_FALSE(item->CountInProgress() || item->CountComplete() || item->CountCancelled());
    EXPECT_FALSE(item->StampInProgress() || item->StampComplete() || item->StampCancelled());
    EXPECT_EQ(item->FileCount() + item->FolderCount(), 0);
    EXPECT_EQ(item->StampedFileCount() + item->StampedFolderCount(), 0);
    ASSERT_NE(item->StampErrors(), nullptr);
    EXPECT_TRUE(item->StampErrors()->empty());
}

TEST_F(CountTest, FoldersEndInABackslashAndFilesNever) {
    EXPECT_EQ(NewItem("C:\\top")->RootItem(), "C:\\top\\");
    EXPECT_EQ(NewItem("C:\\top\\")->RootItem(), "C:\\top\\");
    EXPECT_EQ(NewItem("c:\\TOP\\A.txt")->RootItem(), "c:\\TOP\\A.txt");
    EXPECT_EQ(NewItem("C:")->RootItem(), "C:\\");
}

TEST_F(CountTest, APathThatIsNeitherFileNorFolderChangesNothing) {
    const auto item = NewItem("C:\\top");
    CountToTheEnd(*item);
    item->SetRootItem("C:\\none");
    EXPECT_EQ(item->RootItem(), "C:\\top\\");
    EXPECT_TRUE(item->CountComplete());
    EXPECT_EQ(item->FileCount(), 3);
    const auto nothing = NewItem("C:\\none");
    CountToTheEnd(*nothing);
    EXPECT_EQ(nothing->CountString(), "not counted");
    EXPECT_EQ(nothing->StatusString(), "Ready");
}

TEST_F(CountTest, APathThatIsNothingLeavesWorkThatWaitsAndTheErrors) {
    system.volume.Lock("C:\\top\\");
    const auto item = NewItem("C:\\top");
    item->Count();
    Stamp(*item);
    const auto errors = item->StampErrors();
    ASSERT_EQ(errors->size(), 1U);  // the folder itself, at once
    item->SetRootItem("C:\\none");
    EXPECT_EQ(item->RootItem(), "C:\\top\\");
    EXPECT_TRUE(item->CountInProgress() && item->StampInProgress());
    EXPECT_EQ(item->FolderCount(), 1);
    EXPECT_EQ(item->StampErrors(), errors);
    EXPECT_EQ(errors->size(), 1U);
    system.pump.RunUntilIdle();
    EXPECT_EQ(item->CountString(), "3 files; 3 folders");
    EXPECT_EQ(item->StatusString(), "Complete (with errors)");
    EXPECT_EQ(item->StampErrors(), errors);
    EXPECT_EQ(errors->size(), 2U);  // and the read-only file
    EXPECT_TRUE(IsStamped("C:\\top\\b.txt"));
}

TEST_F(CountTest, TheEmptyPathForgetsCountsAndErrorsAndKeepsThePath) {
    system.volume.Lock("C:\\top\\a.txt");
    const auto item = NewItem("C:\\top");
    CountToTheEnd(*item);
    StampToTheEnd(*item);
    const auto errors = item->StampErrors();
    EXPECT_EQ(errors->size(), 2U);  // the locked file and the read-only one
    item->SetRootItem("");
    EXPECT_EQ(item->RootItem(), "C:\\top\\");
    EXPECT_EQ(item->CountString(), "not counted");
    EXPECT_EQ(item->StatusString(), "Ready");
    EXPECT_EQ(item->FileCount() + item->StampedFileCount(), 0);
    EXPECT_NE(item->StampErrors(), errors);
    EXPECT_TRUE(item->StampErrors()->empty());
    EXPECT_EQ(errors->size(), 2U);
}

TEST_F(CountTest, ANewPathForgetsWhatWasKnownOfTheOldOne) {
    const auto item = NewItem("C:\\top");
    CountToTheEnd(*item);
    item->SetRootItem("C:\\top\\a.txt");
    EXPECT_EQ(item->RootItem(), "C:\\top\\a.txt");
    EXPECT_EQ(item->CountString(), "not counted");
    EXPECT_EQ(item->FolderCount(), 0);
}

TEST_F(CountTest, AFileIsCountedAtOnceWithoutATick) {
    const auto item = NewItem("C:\\top\\a.txt");
    item->Count();
    EXPECT_EQ(item->CountString(), "1 file");
    EXPECT_TRUE(item->CountComplete());
    EXPECT_EQ(item->FolderCount(), 0);
    EXPECT_EQ(system.pump.Timers().NextDue(), std::nullopt);
    EXPECT_EQ(system.pump.CallCount(), 0U);
}

TEST_F(CountTest, AFolderIsCountedInATickFiftyMillisecondsLater) {
    const auto item = NewItem("C:\\top");
    item->Count();
    EXPECT_TRUE(item->CountInProgress());
    EXPECT_FALSE(item->CountComplete());
    EXPECT_EQ(item->CountString(), "at least 1 folder");
    EXPECT_EQ(item->StatusString(), "Counting");
    EXPECT_TRUE(system.files.Calls().empty());
    system.pump.RunFor(49);
    EXPECT_TRUE(system.files.Calls().empty());
    system.pump.RunFor(1);
    EXPECT_FALSE(item->CountInProgress());
    EXPECT_TRUE(item->CountComplete());
    EXPECT_EQ(item->FileCount(), 3);
    EXPECT_EQ(item->FolderCount(), 3);
    EXPECT_EQ(item->CountString(), "3 files; 3 folders");
    EXPECT_EQ(item->StatusString(), "Ready");
    EXPECT_EQ(system.pump.Timers().NextDue(), std::nullopt);
}

TEST_F(CountTest, DotFoldersAreLeftOutAndDotFilesCounted) {
    system.volume.AddFile("C:\\top\\.hidden\\deep\\x");
    system.volume.AddFile("C:\\top\\.profile");
    const auto item = NewItem("C:\\top");
    CountToTheEnd(*item);
    EXPECT_EQ(item->FileCount(), 4);
    EXPECT_EQ(item->FolderCount(), 3);
    for (const KernelCallRecord& call : system.files.Calls()) {
        EXPECT_EQ(call.path.find(".hidden"), std::string::npos);
    }
}

TEST_F(CountTest, AnItemWhoseOwnNameBeginsWithADotIsCounted) {
    system.volume.AddFile("C:\\.dot\\x");
    const auto item = NewItem("C:\\.dot");
    CountToTheEnd(*item);
    EXPECT_EQ(item->CountString(), "1 file; 1 folder");
}

TEST_F(CountTest, ARootWithoutDotsIsCounted) {
    const auto item = NewItem("C:\\");
    CountToTheEnd(*item);
    EXPECT_EQ(item->CountString(), "3 files; 4 folders");
}

TEST_F(CountTest, CountTextsFollowTheNumbers) {
    const auto item = NewItem("C:\\top\\sub\\empty");
    CountToTheEnd(*item);
    EXPECT_EQ(item->CountString(), "no files; 1 folder");
    const auto text = [&](std::int32_t files, std::int32_t folders) {
        TidemarkItemTestPeer::SetFileCount(*item, files);
        TidemarkItemTestPeer::SetFolderCount(*item, folders);
        return item->CountString();
    };
    EXPECT_EQ(text(0, 0), "no files");
    EXPECT_EQ(text(1, 0), "1 file");
    EXPECT_EQ(text(2, 1), "2 files; 1 folder");
    EXPECT_EQ(text(1234, 56), "1,234 files; 56 folders");
    EXPECT_EQ(text(0, 1000), "no files; 1,000 folders");
    item->Count();
    EXPECT_EQ(text(0, 0), "counting");
    EXPECT_EQ(text(0, 1), "at least 1 folder");
    EXPECT_EQ(text(1, 0), "at least 1 file");
    EXPECT_EQ(text(1234, 56), "at least 1,234 files; 56 folders");
    system.locale.SetThousandsSeparator(".");
    EXPECT_EQ(text(1234, 1), "at least 1.234 files; 1 folder");
}

TEST_F(CountTest, MessagesRunOnEntryToFoldersAndBeforeAndAfterEveryEntry) {
    const auto item = NewItem("C:\\top\\sub\\empty");
    std::vector<std::string> trace;
    system.pump.AtEveryCall(
        [&] { trace.push_back("pump after " + std::to_string(system.files.Calls().size())); });
    CountToTheEnd(*item);
    std::vector<std::string> calls;
    for (const KernelCallRecord& call : system.files.Calls()) {
        calls.push_back(std::string(NameOf(call.call)) + " " + call.path);
    }
    const std::string pattern = "C:\\top\\sub\\empty\\*.*";
    EXPECT_THAT(calls, ElementsAre("SearchFirst " + pattern, "SearchNext " + pattern,
                                   "SearchNext " + pattern, "SearchClose " + pattern));
    // In the tick and on entry; before and after "."; before and after "..".
    EXPECT_THAT(trace, ElementsAre("pump after 0", "pump after 0", "pump after 1", "pump after 1",
                                   "pump after 2", "pump after 2"));
}

TEST_F(CountTest, CountingRecordsNoErrorsAndClosesEvenAFailedSearch) {
    system.volume.DenyListing("C:\\top\\sub");
    const auto item = NewItem("C:\\top");
    CountToTheEnd(*item);
    EXPECT_TRUE(item->CountComplete());
    EXPECT_EQ(item->CountString(), "2 files; 2 folders");
    EXPECT_TRUE(item->StampErrors()->empty());
    EXPECT_EQ(system.files.CallCount(KernelCall::kSearchFirst), 2U);
    EXPECT_EQ(system.files.CallCount(KernelCall::kSearchClose), 2U);
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
}

TEST_F(CountTest, CancelFinishesTheFolderBeingListedAndEntersNoOther) {
    system.volume.AddFile("C:\\top\\z.txt");
    const auto item = NewItem("C:\\top");
    // Call 3 is before ".", in the top folder.
    system.pump.AtCall(3, [&] {
        EXPECT_EQ(item->StatusString(), "Counting");
        item->CancelCount();
        EXPECT_EQ(item->CountString(), "not counted");
    });
    CountToTheEnd(*item);
    EXPECT_TRUE(item->CountCancelled());
    EXPECT_FALSE(item->CountComplete() || item->CountInProgress());
    EXPECT_EQ(item->FileCount(), 3);
    EXPECT_EQ(item->FolderCount(), 2);
    EXPECT_EQ(item->CountString(), "not counted");
    EXPECT_EQ(item->StatusString(), "Ready");
}

TEST_F(CountTest, CancelWhileOnlyPendingDropsTheCountUnmarked) {
    const auto item = NewItem("C:\\top");
    item->Count();
    item->CancelCount();
    EXPECT_FALSE(item->CountInProgress() || item->CountCancelled());
    system.pump.RunUntilIdle();
    EXPECT_TRUE(system.files.Calls().empty());
    EXPECT_EQ(item->CountString(), "not counted");
    EXPECT_EQ(item->FolderCount(), 1);
}

TEST_F(CountTest, CancelCountDropsAPendingStampToo) {
    const auto item = NewItem("C:\\top");
    item->Count();
    Stamp(*item);
    EXPECT_TRUE(item->CountInProgress() && item->StampInProgress());
    item->CancelCount();
    EXPECT_FALSE(item->CountInProgress() || item->StampInProgress());
    system.pump.RunUntilIdle();
    EXPECT_TRUE(IsStamped("C:\\top\\"));
    EXPECT_FALSE(IsStamped("C:\\top\\a.txt"));
    EXPECT_FALSE(item->CountCancelled() || item->StampCancelled());
    EXPECT_EQ(item->StatusString(), "Ready");
}

TEST_F(CountTest, APendingCountRunsBeforeAPendingStamp) {
    const auto item = NewItem("C:\\top");
    item->Count();
    Stamp(*item);
    system.pump.RunFor(50);
    EXPECT_TRUE(item->CountComplete());
    EXPECT_FALSE(item->StampComplete());
    EXPECT_TRUE(item->StampInProgress());
    system.pump.RunFor(50);
    EXPECT_TRUE(item->StampComplete());
    EXPECT_TRUE(IsStamped("C:\\top\\sub\\empty\\"));
}

TEST_F(CountTest, CountDiscardsWhatAStampLeft) {
    system.volume.Lock("C:\\top\\a.txt");
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item);
    EXPECT_EQ(item->StatusString(), "Complete (with errors)");
    item->Count();
    EXPECT_EQ(item->StatusString(), "Counting");
    EXPECT_EQ(item->StampedFileCount(), 0);
    EXPECT_TRUE(item->StampErrors()->empty());
    EXPECT_FALSE(item->StampComplete());
}

TEST_F(CountTest, AnEntryThatCannotBeFetchedDoesNotHideThoseBehindIt) {
    system.files.Fail({KernelCall::kSearchNext, "C:\\top\\*.*", 2}, 1117);
    system.files.Fail({KernelCall::kSearchNext, "C:\\top\\*.*", 3}, 234);
    const auto item = NewItem("C:\\top");
    CountToTheEnd(*item);
    EXPECT_EQ(item->CountString(), "3 files; 3 folders");
    EXPECT_EQ(system.files.FailureCount(), 2U);
}

TEST_F(CountTest, ASearchThatIsBrokenForGoodEndsTheFolderAndNotTheWalk) {
    system.files.Fail({KernelCall::kSearchNext, "C:\\top\\sub\\*.*", 0}, 59);
    const auto item = NewItem("C:\\top");
    CountToTheEnd(*item);
    EXPECT_TRUE(item->CountComplete());
    EXPECT_EQ(item->CountString(), "2 files; 2 folders");
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
}

TEST_F(CountTest, ASearchThatRecoversFromItsFailuresLosesNothing) {
    // The most failures in a row that are put up with, twice, with an entry in between.
    constexpr std::size_t kInARow = 15;
    for (std::size_t i = 1; i <= kInARow; ++i) {
        system.files.Fail({KernelCall::kSearchNext, "C:\\top\\*.*", i}, 59);
        system.files.Fail({KernelCall::kSearchNext, "C:\\top\\*.*", kInARow + 1 + i}, 59);
    }
    const auto item = NewItem("C:\\top");
    CountToTheEnd(*item);
    EXPECT_EQ(system.files.FailureCount(), 2 * kInARow);
    EXPECT_EQ(item->CountString(), "3 files; 3 folders");
}

TEST_F(CountTest, MessagesRunBetweenTheTriesOfASearchThatFails) {
    const auto calls_of_a_count = [this] {
        const std::size_t before = system.pump.CallCount();
        CountToTheEnd(*NewItem("C:\\top"));
        return system.pump.CallCount() - before;
    };
    const std::size_t without_failures = calls_of_a_count();
    for (std::size_t i = 1; i <= 15; ++i) {
        system.files.Fail({KernelCall::kSearchNext, "C:\\top\\*.*", i}, 59);
    }
    EXPECT_EQ(calls_of_a_count(), without_failures + 15);
}

TEST_F(CountTest, ACountAgainBetweenFailedTriesEndsTheOldOneAtOnce) {
    system.files.Fail({KernelCall::kSearchNext, "C:\\top\\sub\\*.*", 0}, 59);
    const auto item = NewItem("C:\\top");
    item->Count();
    system.files.Before({KernelCall::kSearchNext, "C:\\top\\sub\\*.*", 3},
                        [&] { system.pump.AtCall(1, [&] { item->Count(); }); });
    system.pump.RunUntilIdle();
    EXPECT_EQ(item->CountString(), "2 files; 2 folders");
    EXPECT_EQ(system.files.FailureCount(), 3U + 16U);
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
}

TEST_F(CountTest, ACancelBetweenFailedTriesFinishesTheFolderAndEntersNoOther) {
    for (const std::size_t nth : {1U, 2U, 3U}) {
        system.files.Fail({KernelCall::kSearchNext, "C:\\top\\*.*", nth}, 59);
    }
    const auto item = NewItem("C:\\top");
    item->Count();
    system.files.Before({KernelCall::kSearchNext, "C:\\top\\*.*", 2},
                        [&] { system.pump.AtCall(1, [&] { item->CancelCount(); }); });
    system.pump.RunUntilIdle();
    EXPECT_EQ(system.files.FailureCount(), 3U);
    EXPECT_TRUE(item->CountCancelled());
    EXPECT_EQ(item->FileCount(), 2);
    EXPECT_EQ(item->FolderCount(), 2);
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
}

TEST_F(CountTest, OverflowEndsTheCountNeitherRunningNorComplete) {
    const auto item = NewItem("C:\\top");
    item->Count();
    TidemarkItemTestPeer::SetFileCount(*item, 0x7FFFFFFF);
    system.pump.RunUntilIdle();
    EXPECT_THAT(system.pump.Failures(), ElementsAre("Overflow"));
    EXPECT_EQ(item->FileCount(), 0x7FFFFFFF);
    EXPECT_FALSE(item->CountInProgress() || item->CountComplete() || item->CountCancelled());
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);

    CountToTheEnd(*item);
    EXPECT_TRUE(item->CountComplete());
}

TEST_F(CountTest, FolderCounterOverflowClosesEverySearchOnTheWay) {
    system.volume.AddFolder("C:\\top\\sub\\empty\\more");
    const auto item = NewItem("C:\\top");
    item->Count();
    TidemarkItemTestPeer::SetFolderCount(*item, 0x7FFFFFFD);
    system.pump.RunUntilIdle();
    EXPECT_THAT(system.pump.Failures(), ElementsAre("Overflow"));
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
    // The innermost search is closed first.
    std::vector<std::string> closed;
    for (const KernelCallRecord& call : system.files.Calls()) {
        if (call.call == KernelCall::kSearchClose) {
            closed.push_back(call.path);
        }
    }
    EXPECT_THAT(closed,
                ElementsAre("C:\\top\\sub\\empty\\*.*", "C:\\top\\sub\\*.*", "C:\\top\\*.*"));
}

TEST_F(CountTest, OverflowOfTheProgressSumIsRaised) {
    const auto item = NewItem("C:\\top");
    Stamp(*item);
    TidemarkItemTestPeer::SetStampedFileCount(*item, 0x7FFFFFFF);
    TidemarkItemTestPeer::SetStampedFolderCount(*item, 1);
    EXPECT_THROW(static_cast<void>(item->StatusString()), ProgramError);
}

}  // namespace
}  // namespace tidemark
