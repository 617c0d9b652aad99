#include "engine/paths.h"

#include <gtest/gtest.h>

#include "platform/memory/memory_system.h"

namespace tidemark {
namespace {

TEST(Paths, AddBackslashAppendsOneOnlyWhereNoneIs) {
    EXPECT_EQ(AddBackslash("C:\\f"), "C:\\f\\");
    EXPECT_EQ(AddBackslash("C:\\f\\"), "C:\\f\\");
    EXPECT_EQ(AddBackslash(""), "\\");
}

TEST(Paths, RemoveBackslashTakesOneAway) {
    EXPECT_EQ(RemoveBackslash("C:\\f\\"), "C:\\f");
    EXPECT_EQ(RemoveBackslash("C:\\f\\\\"), "C:\\f\\");
    EXPECT_EQ(RemoveBackslash("C:\\f"), "C:\\f");
    EXPECT_EQ(RemoveBackslash(""), "");
}

TEST(Paths, StripCrLfTakesOneTrailingPairAndNothingElse) {
    EXPECT_EQ(StripCrLf("text\r\n"), "text");
    EXPECT_EQ(StripCrLf("text\r\n\r\n"), "text\r\n");
    EXPECT_EQ(StripCrLf("text\n"), "text\n");
    EXPECT_EQ(StripCrLf("\r\ntext"), "\r\ntext");
    EXPECT_EQ(StripCrLf("\r\n"), "");
    EXPECT_EQ(StripCrLf(""), "");
}

TEST(Paths, ApiErrorTextIsTheSystemsAndEmptyWithoutOne) {
    MemorySystem system;
    EXPECT_EQ(ApiErrorText(system.files, 5), "Access is denied.\r\n");
    EXPECT_EQ(ApiErrorText(system.files, 0x20000001), "");
}

TEST(Paths, IsWinNTAsksTheSystem) {
    MemorySystem system;
    EXPECT_TRUE(IsWinNT(system.files));
    system.volume.SetNtFamily(false);
    EXPECT_FALSE(IsWinNT(system.files));
}

}  // namespace
}  // namespace tidemark
