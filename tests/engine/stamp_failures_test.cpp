#include <algorithm>
#include <cmath>
#include <cstdint>

#include "engine/engine_fixture.h"

namespace tidemark {
namespace {

using testing::IsEmpty;

// What comes of it when an entry cannot be stamped.
class StampFailuresTest : public EngineTest {
  protected:
    void SetUp() override {
        system.volume.AddFile("C:\\top\\a.txt");
        system.volume.AddFile("C:\\top\\sub\\b.txt");
        system.volume.AddFolder("C:\\top\\sub\\deep");
    }
};

TEST_F(StampFailuresTest, AVanishedEntryWithReadOnlyClearingReportsTheAttributeWrite) {
    const auto item = NewItem("C:\\top");
    system.files.Before({KernelCall::kOpenForTimes, "C:\\top\\a.txt", 1},
                        [&] { system.volume.Remove("C:\\top\\a.txt"); });
    StampToTheEnd(*item, 0, /*remove_read_only=*/true);
    EXPECT_EQ(Describe(*item->StampErrors()),
              "C:\\top\\a.txt|stamp|2|The system cannot find the file specified.\n");
    const auto& calls = system.files.Calls();
    const auto write = std::find_if(calls.begin(), calls.end(), [](const auto& call) {
        return call.call == KernelCall::kWriteAttributes;
    });
    ASSERT_NE(write, calls.end());
    EXPECT_EQ(write->argument, 0xFFFFFFFEU);
    EXPECT_TRUE(IsStamped("C:\\top\\sub\\b.txt"));
    EXPECT_EQ(item->StampedFileCount(), 2);
}

TEST_F(StampFailuresTest, AVanishedEntryReportsTheOpen) {
    const auto item = NewItem("C:\\top");
    system.files.Before({KernelCall::kOpenForTimes, "C:\\top\\sub\\", 0},
                        [&] { system.volume.Remove("C:\\top\\sub"); });
    StampToTheEnd(*item);
    EXPECT_EQ(Describe(*item->StampErrors()),
              "C:\\top\\sub\\|stamp|2|The system cannot find the file specified.\n");
    EXPECT_EQ(item->StampedFolderCount(), 1);
    EXPECT_TRUE(item->StampComplete());
}

TEST_F(StampFailuresTest, ALockedFileIsRecordedAndTheWalkGoesOn) {
    system.volume.Lock("C:\\top\\a.txt");
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item);
    EXPECT_EQ(Describe(*item->StampErrors()),
              "C:\\top\\a.txt|stamp|32|The process cannot access the file because it is being "
              "used by another process.\n");
    EXPECT_TRUE(IsStamped("C:\\top\\sub\\b.txt"));
    EXPECT_EQ(item->StampedFileCount(), 2);
    EXPECT_EQ(item->StatusString(), "Complete (with errors)");
}

TEST_F(StampFailuresTest, ACodeWithoutATextHasAnEmptyDescription) {
    system.files.Fail({KernelCall::kOpenForTimes, "C:\\top\\a.txt", 0}, 0xA0001234);
    const auto item = NewItem("C:\\top\\a.txt");
    Stamp(*item);
    ASSERT_EQ(item->StampErrors()->size(), 1U);
    EXPECT_EQ(item->StampErrors()->front()->ErrorNumber, static_cast<std::int32_t>(0xA0001234));
    EXPECT_EQ(item->StampErrors()->front()->ErrorDescription, "");
}

TEST_F(StampFailuresTest, OutsideTheNtFamilyFilesOpenPlainlyAndFailSilently) {
    system.volume.SetNtFamily(false);
    system.volume.Lock("C:\\top\\a.txt");
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item);
    for (const KernelCallRecord& call : system.files.Calls()) {
        if (call.call == KernelCall::kOpenForTimes) {
            EXPECT_EQ(call.argument, kOpenNormal);
        }
    }
    // There folders cannot be opened at all, and say so.
    EXPECT_EQ(Describe(*item->StampErrors()),
              "C:\\top\\|stamp|5|Access is denied.\n"
              "C:\\top\\sub\\|stamp|5|Access is denied.\n"
              "C:\\top\\sub\\deep\\|stamp|5|Access is denied.\n");
    EXPECT_TRUE(IsStamped("C:\\top\\sub\\b.txt"));
    EXPECT_EQ(item->StampedFileCount(), 2);
}

TEST_F(StampFailuresTest, AFailureAfterTheOpenLeavesExactlyThatHandleOpen) {
    system.files.Fail({KernelCall::kSetLastWriteTime, "C:\\top\\a.txt", 0}, 87);
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item);
    EXPECT_EQ(system.volume.OpenFileCount(), 1U);
    EXPECT_EQ(Describe(*item->StampErrors()),
              "C:\\top\\a.txt|stamp|87|The parameter is incorrect.\n");
    // The handle that is still open lets nobody else write, the program included.
    system.files.ClearFaults();
    StampToTheEnd(*item);
    ASSERT_EQ(item->StampErrors()->size(), 1U);
    EXPECT_EQ(item->StampErrors()->front()->ErrorNumber, 32);
    EXPECT_EQ(system.volume.OpenFileCount(), 1U);
}

TEST_F(StampFailuresTest, AFailedCreatedKeepsTheNewLastModified) {
    system.files.Fail({KernelCall::kSetCreationTime, "C:\\top\\a.txt", 0}, 5);
    const auto item = NewItem("C:\\top\\a.txt");
    Stamp(*item, created_date);
    EXPECT_EQ(Written("C:\\top\\a.txt"), modified_time);
    EXPECT_EQ(Created("C:\\top\\a.txt"), untouched);
    EXPECT_EQ(Describe(*item->StampErrors()), "C:\\top\\a.txt|stamp|5|Access is denied.\n");
    EXPECT_EQ(system.files.CallCount(KernelCall::kCloseFile), 0U);
}

TEST_F(StampFailuresTest, AFailedConversionIsThatEntrysFailure) {
    system.files.Fail({KernelCall::kLocalToSystemTime, {}, 1}, 87);
    const auto item = NewItem("C:\\top\\a.txt");
    Stamp(*item);
    EXPECT_EQ(Describe(*item->StampErrors()),
              "C:\\top\\a.txt|stamp|87|The parameter is incorrect.\n");
    EXPECT_EQ(system.volume.OpenFileCount(), 1U);
}

TEST_F(StampFailuresTest, ADateThatNoFileTimeHoldsIsARecordToo) {
    const auto item = NewItem("C:\\top\\a.txt");
    item->Stamp(1e12, 0, false, false);
    EXPECT_EQ(Describe(*item->StampErrors()), "C:\\top\\a.txt|stamp|6|Overflow\n");
    item->Stamp(std::nan(""), 0, false, false);
    ASSERT_EQ(item->StampErrors()->size(), 1U);
}

TEST_F(StampFailuresTest, AFailedCloseIsNoFailureOfTheStamp) {
    system.files.Fail({KernelCall::kCloseFile, "C:\\top\\a.txt", 0}, 6);
    const auto item = NewItem("C:\\top\\a.txt");
    Stamp(*item);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt"));
}

}  // namespace
}  // namespace tidemark
