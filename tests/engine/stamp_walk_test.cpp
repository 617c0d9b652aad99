#include <cstdint>
#include <string>
#include <vector>

#include "engine/engine_fixture.h"
#include "platform/text.h"

namespace tidemark {
namespace {

using testing::IsEmpty;

// A stamp's way over a folder and all that may lie below it.
class StampWalkTest : public EngineTest {
  protected:
    void SetUp() override {
        system.volume.AddFile("C:\\top\\a.txt");
        system.volume.AddFile("C:\\top\\sub\\b.txt");
    }
};

TEST_F(StampWalkTest, AFolderThatCannotBeListedAddsNoRecord) {
    system.volume.DenyListing("C:\\top\\sub");
    const auto item = NewItem("C:\\top");
    StampToTheEnd(*item);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
    EXPECT_TRUE(IsStamped("C:\\top\\sub"));
    EXPECT_FALSE(IsStamped("C:\\top\\sub\\b.txt"));
    EXPECT_TRUE(item->StampComplete());
}

TEST_F(StampWalkTest, CancelIsNoticedOnEntryToAFolderOnly) {
    system.volume.AddFile("C:\\top\\z.txt");
    const auto item = NewItem("C:\\top");
    Stamp(*item);
    // Call 3 is before "." in the top folder.
    system.pump.AtCall(3, [&] {
        item->CancelStamp();
        EXPECT_EQ(item->StatusString(), "Ready");
    });
    system.pump.RunUntilIdle();
    EXPECT_TRUE(item->StampCancelled());
    EXPECT_FALSE(item->StampComplete() || item->StampInProgress());
    EXPECT_TRUE(IsStamped("C:\\top\\a.txt") && IsStamped("C:\\top\\z.txt"));
    EXPECT_TRUE(IsStamped("C:\\top\\sub"));
    EXPECT_FALSE(IsStamped("C:\\top\\sub\\b.txt"));
    EXPECT_EQ(item->StampedFileCount(), 2);
    EXPECT_EQ(item->StampedFolderCount(), 1);
    EXPECT_EQ(item->StatusString(), "Ready");
}

TEST_F(StampWalkTest, CancelWhileOnlyPendingDropsTheStampUnmarked) {
    const auto item = NewItem("C:\\top");
    Stamp(*item);
    item->CancelStamp();
    system.pump.RunUntilIdle();
    EXPECT_TRUE(IsStamped("C:\\top"));
    EXPECT_FALSE(IsStamped("C:\\top\\a.txt"));
    EXPECT_FALSE(item->StampCancelled() || item->StampComplete() || item->StampInProgress());
}

TEST_F(StampWalkTest, CancelStampLeavesACountAlone) {
    const auto item = NewItem("C:\\top");
    item->Count();
    Stamp(*item);
    item->CancelStamp();
    system.pump.RunUntilIdle();
    EXPECT_TRUE(item->CountComplete());
    EXPECT_FALSE(IsStamped("C:\\top\\a.txt"));
}

TEST_F(StampWalkTest, AwkwardNamesAreStampedUnderTheirOwnNames) {
    std::u16string longest(255, u'\u6F22');
    std::u16string emoji;
    for (int i = 0; i < 127; ++i) {
        emoji += u"\U0001F600";
    }
    const std::vector<std::u16string> names = {longest,
                                               std::u16string(87, u'\u8A9E') + u".txt",
                                               emoji,
                                               std::u16string{u'l', 0xD800, u'x'},
                                               std::u16string{0xDC00},
                                               std::u16string{0xDFFF, 0xD800},
                                               u"e\u0301\u0323 combining",
                                               u"\u05D0\u05D1\u202E\u0627 right to left",
                                               u"trailing dot.",
                                               u"trailing blank ",
                                               u"100% & more, 'quoted'; (x)",
                                               u"con.txt",
                                               u"nul"};
    for (const std::u16string& name : names) {
        system.volume.AddFile("C:\\names\\" + Utf8FromUtf16(name));
        system.volume.AddFile("C:\\names\\folder-" + Utf8FromUtf16(name.substr(0, 240)) + "\\in");
    }
    const auto item = NewItem("C:\\names");
    item->Count();
    system.pump.RunUntilIdle();
    StampToTheEnd(*item, created_date);
    EXPECT_EQ(item->FileCount(), static_cast<std::int32_t>(2 * names.size()));
    EXPECT_EQ(item->StampedFileCount(), item->FileCount());
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
    for (const std::u16string& name : names) {
        const std::string path = "C:\\names\\" + Utf8FromUtf16(name);
        EXPECT_TRUE(IsStamped(path));
        EXPECT_EQ(Created(path), created_time);
        EXPECT_TRUE(IsStamped("C:\\names\\folder-" + Utf8FromUtf16(name.substr(0, 240)) + "\\in"));
    }
}

TEST_F(StampWalkTest, ErrorsKeepAwkwardNamesWhole) {
    const std::string path = "C:\\names\\" + Utf8FromUtf16(std::u16string{u'a', 0xD801, u'b'});
    system.volume.AddFile(path);
    system.volume.Lock(path);
    const auto item = NewItem("C:\\names");
    StampToTheEnd(*item);
    ASSERT_EQ(item->StampErrors()->size(), 1U);
    EXPECT_EQ(item->StampErrors()->front()->ItemName, path);
}

TEST_F(StampWalkTest, ALinkToItsOwnParentEndsWhereTheSystemEndsIt) {
    system.volume.AddFile("C:\\loop\\x.txt");
    system.volume.AddFolderLink("C:\\loop\\self", "C:\\loop");
    const auto item = NewItem("C:\\loop");
    item->Count();
    system.pump.RunUntilIdle();
    EXPECT_TRUE(item->CountComplete());
    EXPECT_EQ(item->FolderCount(), 65);
    EXPECT_EQ(item->FileCount(), 64);
    StampToTheEnd(*item);
    EXPECT_TRUE(item->StampComplete());
    EXPECT_EQ(item->StampedFolderCount() + 1, item->FolderCount());
    ASSERT_EQ(item->StampErrors()->size(), 1U);
    EXPECT_EQ(item->StampErrors()->front()->ErrorNumber, 1921);
}

TEST_F(StampWalkTest, ALinkToItsOwnParentCanBeCancelled) {
    system.volume.AddFolderLink("C:\\top\\zelf", "C:\\top");
    const auto item = NewItem("C:\\top");
    item->Count();
    system.pump.AtCall(60, [&] { item->CancelCount(); });
    system.pump.RunUntilIdle();
    EXPECT_TRUE(item->CountCancelled());
    EXPECT_LT(item->FolderCount(), 40);
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
}

class DeepChainTest : public EngineTest, public testing::WithParamInterface<int> {};

TEST_P(DeepChainTest, IsCountedAndStampedToItsEnd) {
    std::string path = "C:\\";
    for (int i = 0; i < GetParam(); ++i) {
        path += "d\\";
    }
    system.volume.AddFile(path + "last.txt");
    system.files.SetRecording(false);
    const auto item = NewItem("C:\\d");
    item->Count();
    system.pump.RunUntilIdle();
    StampToTheEnd(*item);
    EXPECT_TRUE(item->CountComplete() && item->StampComplete());
    EXPECT_EQ(item->FolderCount(), GetParam());
    EXPECT_EQ(item->StampedFolderCount(), GetParam() - 1);
    EXPECT_EQ(item->StampedFileCount(), 1);
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
    EXPECT_TRUE(IsStamped(path + "last.txt"));
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Depths, DeepChainTest, testing::Values(1, 1000, 5000),
                         testing::PrintToStringParamName());

// Entries that come, go and change while their folder is being listed.
TEST_F(StampWalkTest, EntriesThatChangeUnderTheWalkStopNothing) {
    for (char c = 'a'; c <= 'j'; ++c) {
        system.volume.AddFile(std::string("C:\\churn\\") + c + "\\file");
    }
    const auto item = NewItem("C:\\churn");
    Stamp(*item);
    system.pump.AtCall(20, [&] { system.volume.Remove("C:\\churn\\d"); });
    system.pump.AtCall(22, [&] {
        system.volume.Remove("C:\\churn\\e");
        system.volume.AddFile("C:\\churn\\e");
    });
    system.pump.AtCall(24, [&] { system.volume.Move("C:\\churn\\f", "C:\\churn\\z"); });
    system.pump.AtCall(26, [&] { system.volume.AddFile("C:\\churn\\g\\new"); });
    system.pump.RunUntilIdle();
    EXPECT_TRUE(item->StampComplete());
    EXPECT_THAT(*item->StampErrors(), IsEmpty());
    for (const char* path : {"C:\\churn\\c\\file", "C:\\churn\\e", "C:\\churn\\g\\new",
                             "C:\\churn\\z\\file", "C:\\churn\\j\\file"}) {
        EXPECT_TRUE(IsStamped(path)) << path;
    }
}

}  // namespace
}  // namespace tidemark
