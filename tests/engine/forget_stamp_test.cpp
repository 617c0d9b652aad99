// What an item is like once its last stamp is forgotten.

#include "engine/engine_fixture.h"

namespace tidemark {
namespace {

using ForgetStampTest = EngineTest;

TEST_F(ForgetStampTest, ForgettingALastStampLeavesTheCountAlone) {
    system.volume.AddFile("C:\\t\\a");
    system.volume.Lock("C:\\t\\a");
    const auto item = NewItem("C:\\t");
    item->Count();
    system.pump.RunUntilIdle();
    StampToTheEnd(*item);
    ASSERT_EQ(item->StatusString(), "Complete (with errors)");
    item->ForgetStamp();
    EXPECT_EQ(item->StatusString(), "Ready");
    EXPECT_EQ(item->StampedFileCount(), 0);
    EXPECT_FALSE(item->HasErrors());
    EXPECT_EQ(item->CountString(), "1 file; 1 folder");
}

TEST_F(ForgetStampTest, AStampThatRunsTouchesNothingAnyMore) {
    for (const char* path : {"C:\\t\\a", "C:\\t\\b", "C:\\t\\c"}) {
        system.volume.AddFile(path);
    }
    const auto item = NewItem("C:\\t");
    Stamp(*item);
    bool forgotten = false;
    system.pump.AtEveryCall([&] {
        if (!forgotten && item->StampedFileCount() == 1) {
            forgotten = true;
            item->ForgetStamp();
        }
    });
    system.pump.RunUntilIdle();
    ASSERT_TRUE(forgotten);
    EXPECT_TRUE(IsStamped("C:\\t\\a"));
    EXPECT_FALSE(IsStamped("C:\\t\\b"));
    EXPECT_EQ(item->StatusString(), "Ready");
    EXPECT_EQ(item->StampedFileCount(), 0);
}

TEST_F(ForgetStampTest, AStampThatWaitsForItsTickDoesNotBegin) {
    system.volume.AddFile("C:\\t\\a");
    const auto item = NewItem("C:\\t");
    Stamp(*item);
    item->ForgetStamp();
    system.pump.RunUntilIdle();
    EXPECT_FALSE(IsStamped("C:\\t\\a"));
    EXPECT_FALSE(item->StampInProgress());
}

}  // namespace
}  // namespace tidemark
