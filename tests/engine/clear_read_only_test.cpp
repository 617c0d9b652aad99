#include <cstdint>
#include <string>
#include <utility>

#include "engine/engine_fixture.h"
#include "engine/fault_matrix.h"

namespace tidemark {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

// Stamping with the option to clear the read-only attribute.
class ClearReadOnlyTest : public EngineTest {
  protected:
    void SetUp() override { system.volume.AddFile("C:\\top\\a.txt"); }

    static constexpr std::uint32_t kReadOnlyFile =
        file_attribute::kReadOnly | file_attribute::kArchive;
};

TEST_F(ClearReadOnlyTest, ReadOnlyIsClearedWithExactlyTheseCallsAndStaysCleared) {
    constexpr std::uint32_t kOther = file_attribute::kHidden | file_attribute::kArchive;
    system.volume.AddFile("C:\\ro.txt", file_attribute::kReadOnly | kOther);
    const auto item = NewItem("C:\\ro.txt");
    Stamp(*item, 0, /*remove_read_only=*/true);
    EXPECT_THAT(
        Calls(),
        ElementsAre("ReadAttributes C:\\ro.txt", "WriteAttributes C:\\ro.txt 22", "IsNtFamily",
                    "OpenForTimes C:\\ro.txt 2000080", "LocalToSystemTime local modified",
                    "SetLastWriteTime C:\\ro.txt modified", "CloseFile C:\\ro.txt"));
    EXPECT_EQ(system.volume.AttributesOf("C:\\ro.txt"), kOther);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
}

TEST_F(ClearReadOnlyTest, AttributesWithoutReadOnlyAreNotWritten) {
    const auto item = NewItem("C:\\top\\a.txt");
    Stamp(*item, 0, /*remove_read_only=*/true);
    EXPECT_EQ(system.files.CallCount(KernelCall::kReadAttributes), 1U);
    EXPECT_EQ(system.files.CallCount(KernelCall::kWriteAttributes), 0U);
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt"));
}

TEST_F(ClearReadOnlyTest, AReadOnlyFileIsAnErrorWhenTheAttributeIsToStay) {
    system.volume.AddFile("C:\\ro.txt", file_attribute::kReadOnly);
    const auto item = NewItem("C:\\ro.txt");
    Stamp(*item);
    EXPECT_EQ(Describe(*item->StampErrors()), "C:\\ro.txt|stamp|5|Access is denied.\n");
    EXPECT_EQ(item->StatusString(), "Complete (with errors)");
    EXPECT_EQ(item->StampedFileCount(), 1);
    EXPECT_EQ(Written("C:\\ro.txt"), untouched);
    EXPECT_EQ(system.volume.AttributesOf("C:\\ro.txt"), file_attribute::kReadOnly);
}

// What decides after the write-back is the code, not the result.
TEST_F(ClearReadOnlyTest, ACodeLeftByASuccessfulAttributeWriteIsAFailure) {
    system.volume.AddFile("C:\\ro.txt", file_attribute::kReadOnly);
    system.files.LeaveCode({KernelCall::kWriteAttributes, "C:\\ro.txt", 0}, 234);
    const auto item = NewItem("C:\\ro.txt");
    Stamp(*item, 0, /*remove_read_only=*/true);
    EXPECT_EQ(Describe(*item->StampErrors()), "C:\\ro.txt|stamp|234|More data is available.\n");
    EXPECT_EQ(system.files.CallCount(KernelCall::kOpenForTimes), 0U);
    EXPECT_EQ(Written("C:\\ro.txt"), untouched);
}

TEST_F(ClearReadOnlyTest, AFailedAttributeWriteThatLeavesNoCodeIsNone) {
    system.volume.AddFile("C:\\ro.txt", file_attribute::kReadOnly);
    system.files.Fail({KernelCall::kWriteAttributes, "C:\\ro.txt", 0}, 0);
    const auto item = NewItem("C:\\ro.txt");
    Stamp(*item, 0, /*remove_read_only=*/true);
    EXPECT_EQ(system.files.CallCount(KernelCall::kOpenForTimes), 1U);
    EXPECT_EQ(Describe(*item->StampErrors()), "C:\\ro.txt|stamp|5|Access is denied.\n");
}

TEST_F(ClearReadOnlyTest, OnlyCodesAboveZeroCountAfterAnAttributeWrite) {
    system.volume.AddFile("C:\\ro.txt", file_attribute::kReadOnly);
    system.files.LeaveCode({KernelCall::kWriteAttributes, "C:\\ro.txt", 0}, 0x80070005);
    const auto item = NewItem("C:\\ro.txt");
    Stamp(*item, 0, /*remove_read_only=*/true);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
    EXPECT_TRUE(IsStamped("C:\\ro.txt"));
}

// The item's own path was not listed, so it is asked by the path.
TEST_F(ClearReadOnlyTest, WhatWasListedWithoutTheAttributeIsAskedOnceItIsOpen) {
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, 0, /*remove_read_only=*/true);
    EXPECT_THAT(Calls(), Contains("ReadAttributes C:\\top\\"));
    EXPECT_THAT(Calls(), Not(Contains("ReadAttributes C:\\top\\a.txt")));
    EXPECT_THAT(Calls(), Contains("ReadAttributesOf C:\\top\\a.txt"));
    EXPECT_EQ(system.files.CallCount(KernelCall::kOpenForTimes), 2U);
    EXPECT_EQ(system.files.CallCount(KernelCall::kWriteAttributes), 0U);
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt"));
}

TEST_F(ClearReadOnlyTest, WhatWasListedWithTheAttributeIsNotOpenedBeforeItIsCleared) {
    system.volume.AddFile("C:\\ro\\b.txt", kReadOnlyFile);
    const auto item = NewItem("C:\\ro");
    StampToTheEnd(*item, 0, /*remove_read_only=*/true);
    EXPECT_EQ(system.files.CallCount(KernelCall::kOpenForTimes), 2U);
    EXPECT_TRUE(IsStamped("C:\\ro\\b.txt"));
    EXPECT_EQ(system.volume.AttributesOf("C:\\ro\\b.txt"), file_attribute::kArchive);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
}

TEST_F(ClearReadOnlyTest, AFileThatBecameReadOnlyAfterItWasListedIsCleared) {
    system.files.Before({KernelCall::kOpenForTimes, "C:\\top\\a.txt", 1},
                        [this] { system.volume.WriteAttributes("C:\\top\\a.txt", kReadOnlyFile); });
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, 0, /*remove_read_only=*/true);
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt"));
    EXPECT_EQ(system.volume.AttributesOf("C:\\top\\a.txt"), file_attribute::kArchive);
    EXPECT_EQ(system.volume.OpenFileCount(), 0U);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
}

// Folders open all the same, so only the open one tells.
TEST_F(ClearReadOnlyTest, AFolderThatBecameReadOnlyAfterItWasListedIsCleared) {
    system.volume.AddFolder("C:\\top\\sub");
    system.files.Before({KernelCall::kOpenForTimes, "C:\\top\\sub\\", 1}, [this] {
        system.volume.WriteAttributes("C:\\top\\sub", file_attribute::kReadOnly);
    });
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, 0, /*remove_read_only=*/true);
    EXPECT_TRUE(IsStamped("C:\\top\\sub"));
    EXPECT_EQ(system.volume.AttributesOf("C:\\top\\sub"), file_attribute::kDirectory);
    EXPECT_EQ(system.volume.OpenFileCount(), 0U);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
}

TEST_F(ClearReadOnlyTest, AnOpenFileThatDoesNotTellIsAskedByItsPath) {
    system.files.Fail({KernelCall::kReadAttributesOf, "C:\\top\\a.txt", 0}, 5);
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, 0, /*remove_read_only=*/true);
    EXPECT_THAT(Calls(), Contains("ReadAttributes C:\\top\\a.txt"));
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt"));
    EXPECT_EQ(system.volume.OpenFileCount(), 0U);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
}

// A link has attributes of its own, which its handle does not tell: that has those of the folder
// behind it, and they stay as they are.
TEST_F(ClearReadOnlyTest, OfALinkItsOwnAttributeIsCleared) {
    constexpr std::uint32_t kAttribute = file_attribute::kReadOnly;
    for (const std::uint32_t behind : {0U, kAttribute}) {
        for (const std::uint32_t own : {0U, kAttribute}) {
            SCOPED_TRACE(behind * 2 + own);
            const std::string name = std::to_string(behind * 2 + own);
            const std::string target = "C:\\target" + name;
            const std::string link = "C:\\top\\link" + name;
            system.volume.AddFolder(target, behind);
            system.volume.AddFolderLink(link, target);
            ASSERT_TRUE(system.volume.WriteAttributes(link, own));
            const auto item = NewItem("C:\\top");
            StampToTheEnd(*item, 0, /*remove_read_only=*/true);
            EXPECT_EQ(system.volume.ReadAttributes(link) & kAttribute, 0U);
            EXPECT_EQ(system.volume.ReadAttributes(target) & kAttribute, behind);
            EXPECT_TRUE(IsStamped(target));
            EXPECT_THAT(*item->StampErrors(), IsEmpty());
        }
    }
}

TEST_F(ClearReadOnlyTest, ALinkThatBecameReadOnlyAfterItWasListedIsCleared) {
    system.volume.AddFolder("C:\\target");
    system.volume.AddFolderLink("C:\\top\\link", "C:\\target");
    bool set = false;
    for (const KernelCall first : {KernelCall::kReadAttributes, KernelCall::kOpenForTimes}) {
        system.files.Before({first, "C:\\top\\link\\", 1}, [this, &set] {
            if (!std::exchange(set, true)) {
                system.volume.WriteAttributes("C:\\top\\link", file_attribute::kReadOnly);
            }
        });
    }
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, 0, /*remove_read_only=*/true);
    EXPECT_TRUE(set);
    EXPECT_EQ(system.volume.ReadAttributes("C:\\top\\link") & file_attribute::kReadOnly, 0U);
    EXPECT_TRUE(IsStamped("C:\\target"));
}

TEST_F(ClearReadOnlyTest, AFileInUseIsOneRecordAndLosesTheAttribute) {
    system.volume.Lock("C:\\top\\a.txt");
    system.volume.AddFile("C:\\top\\b.txt", kReadOnlyFile);
    system.volume.Lock("C:\\top\\b.txt");
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item, 0, /*remove_read_only=*/true);
    ASSERT_EQ(item->StampErrors()->size(), 2U);
    for (const auto& error : *item->StampErrors()) {
        EXPECT_EQ(error->ErrorNumber, 32) << error->ItemName;
    }
    EXPECT_EQ(system.volume.AttributesOf("C:\\top\\b.txt"), file_attribute::kArchive);
}

// An open that fails once, or a handle that cannot be asked, is no failure of the stamp.
TEST_F(ClearReadOnlyTest, WhateverFailsBeforeTheAttributeIsKnownIsDoneAgainByThePath) {
    for (const KernelCall call : {KernelCall::kOpenForTimes, KernelCall::kReadAttributesOf}) {
        for (const std::uint32_t code : fault_matrix::kCodes) {
            SCOPED_TRACE(std::string(NameOf(call)) + " fails with " + std::to_string(code));
            MemorySystem fresh;
            fresh.volume.AddFile("C:\\top\\a.txt");
            fresh.files.Fail({call, "C:\\top\\a.txt", 1}, code);
            const auto item = TidemarkItem::Create(fresh.Parts());
            item->SetRootItem("C:\\top");
            item->Stamp(modified, 0, /*RemoveReadOnlyAttribute=*/true, false);
            fresh.pump.RunUntilIdle();
            EXPECT_EQ(fresh.files.FailureCount(), 1U);
            EXPECT_EQ(fresh.volume.TimesOf("C:\\top\\a.txt").written, modified_time);
            EXPECT_EQ(fresh.volume.OpenFileCount(), 0U);
            EXPECT_EQ(Describe(*item->StampErrors()), "");
        }
    }
}

}  // namespace
}  // namespace tidemark
