#include "app/version_text.h"

#include <gtest/gtest.h>

namespace tidemark {
namespace {

TEST(VersionText, PadsTheBuildNumberToFourDigits) {
    EXPECT_EQ(VersionText(1, 0, 7), "version 1.0  build 0007");
    EXPECT_EQ(VersionText(2, 1, 47), "version 2.1  build 0047");
    EXPECT_EQ(VersionText(0, 0, 0), "version 0.0  build 0000");
    EXPECT_EQ(VersionText(1, 12, 9999), "version 1.12  build 9999");
}

TEST(VersionText, ShowsALongBuildNumberInFull) {
    EXPECT_EQ(VersionText(1, 0, 12345), "version 1.0  build 12345");
}

}  // namespace
}  // namespace tidemark
