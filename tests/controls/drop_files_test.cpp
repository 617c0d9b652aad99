#include "controls/drop_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>

#include "platform/text.h"
#include "support/drop_files_block.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

std::string KeepNarrow(std::string_view name) {
    std::string marked = "<";
    marked.append(name).append(">");
    return marked;
}

std::string Bytes(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

std::optional<std::vector<std::string>> Parse(const std::vector<std::byte>& block) {
    return ParseDropFiles(block, KeepNarrow);
}

TEST(DropFilesTest, ReadsWideNamesInTheirOrder) {
    using namespace std::string_view_literals;
    const auto block = DropFilesBlock(20, true, Bytes(u"C:\\b\0C:\\\u00e4\u6f6e\0\0"sv));
    EXPECT_THAT(Parse(block), Optional(ElementsAre("C:\\b", "C:\\\u00e4\u6f6e")));
}

TEST(DropFilesTest, ReadsNarrowNamesThroughTheDecoder) {
    using namespace std::string_view_literals;
    EXPECT_THAT(Parse(DropFilesBlock(20, false, "C:\\a\0D:\\b\0\0"sv)),
                Optional(ElementsAre("<C:\\a>", "<D:\\b>")));
}

TEST(DropFilesTest, KeepsANameWithALoneSurrogate) {
    const std::u16string name{u'C', u':', u'\\', char16_t{0xD800}, 0, 0};
    const auto paths = Parse(DropFilesBlock(20, true, Bytes(name)));
    ASSERT_TRUE(paths.has_value());
    ASSERT_EQ(paths->size(), 1U);
    EXPECT_EQ(Utf16FromUtf8(paths->front()), name.substr(0, 4));
}

TEST(DropFilesTest, NamesMayStartBehindALongerHeaderAndAtAnOddAddress) {
    using namespace std::string_view_literals;
    const auto block = DropFilesBlock(23, true, std::string("xyz").append(Bytes(u"C:\\a\0\0"sv)));
    EXPECT_THAT(Parse(block), Optional(ElementsAre("C:\\a")));
}

TEST(DropFilesTest, WhatFollowsTheEndOfTheListIsIgnored) {
    using namespace std::string_view_literals;
    EXPECT_THAT(Parse(DropFilesBlock(20, false, "a\0\0rubbish"sv)), Optional(ElementsAre("<a>")));
}

TEST(DropFilesTest, AnEmptyListHoldsNoFiles) {
    using namespace std::string_view_literals;
    EXPECT_THAT(Parse(DropFilesBlock(20, true, Bytes(u"\0\0"sv))), Optional(IsEmpty()));
    EXPECT_THAT(Parse(DropFilesBlock(20, false, "\0"sv)), Optional(IsEmpty()));
    EXPECT_THAT(Parse(DropFilesBlock(20, false, "")), Optional(IsEmpty()));
}

TEST(DropFilesTest, AHeaderThatIsCutOffIsRefused) {
    const auto block = DropFilesBlock(20, true, Bytes(u"C:\\a"));
    for (std::size_t size = 0; size < kDropFilesHeaderSize; ++size) {
        EXPECT_EQ(Parse({block.begin(), block.begin() + static_cast<std::ptrdiff_t>(size)}),
                  std::nullopt);
    }
}

TEST(DropFilesTest, AnOffsetOutsideTheBlockOrInsideTheHeaderIsRefused) {
    using namespace std::string_view_literals;
    for (const std::uint32_t offset : {0U, 4U, 19U, 24U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(Parse(DropFilesBlock(offset, false, "a\0\0"sv)), std::nullopt) << offset;
    }
}

TEST(DropFilesTest, ALastNameWithoutItsEndIsRefusedBecauseItMayBeCutShort) {
    using namespace std::string_view_literals;
    EXPECT_EQ(Parse(DropFilesBlock(20, false, "C:\\Data\\Su"sv)), std::nullopt);
    EXPECT_EQ(Parse(DropFilesBlock(20, false, "C:\\a\0C:\\Data\\Su"sv)), std::nullopt);
    EXPECT_EQ(Parse(DropFilesBlock(20, true, Bytes(u"C:\\a\0C:\\Su"sv))), std::nullopt);
    // Half a unit at the end is no NUL.
    EXPECT_EQ(Parse(DropFilesBlock(20, true, Bytes(u"C:\\a"sv) + std::string(1, '\0'))),
              std::nullopt);
}

TEST(DropFilesTest, OnlyTheFinalNulMayBeMissing) {
    using namespace std::string_view_literals;
    EXPECT_THAT(Parse(DropFilesBlock(20, false, "a\0b\0"sv)), Optional(ElementsAre("<a>", "<b>")));
}

TEST(DropFilesTest, TenThousandNamesSurviveTheRoundTrip) {
    std::vector<std::string> paths;
    for (int i = 0; i < 10000; ++i) {
        paths.push_back("C:\\folder \u6f6e\\file " + std::to_string(i) + ".txt");
    }
    EXPECT_EQ(Parse(BuildDropFiles(paths)), paths);
}

TEST(DropFilesTest, BuildingLeavesOutEmptyPathsAndCutsAtNul) {
    const std::vector<std::string> paths{"", std::string("a\0b", 3), std::string("\0c", 2), "d"};
    EXPECT_THAT(Parse(BuildDropFiles(paths)), Optional(ElementsAre("a", "d")));
}

TEST(DropFilesTest, BuildingNoPathsGivesABlockWithNoFiles) {
    const auto block = BuildDropFiles({});
    EXPECT_EQ(block.size(), kDropFilesHeaderSize + 4);
    EXPECT_THAT(Parse(block), Optional(IsEmpty()));
}

TEST(DropFilesTest, RandomBlocksNeverReadOutsideTheirMemory) {
    std::mt19937 random(7);  // fixed: a failure must come back
    for (int round = 0; round < 20000; ++round) {
        // Exactly as large as it says, on the heap: the sanitizers see every step outside.
        std::vector<std::byte> block(random() % 64);
        for (std::byte& value : block) {
            value = static_cast<std::byte>(random() % 3 == 0 ? 0 : random());
        }
        if (block.size() >= kDropFilesHeaderSize && round % 2 == 0) {
            const auto near_end = static_cast<std::uint32_t>(18 + random() % 48);
            std::memcpy(block.data(), &near_end, sizeof near_end);
        }
        block.shrink_to_fit();
        const auto paths = Parse(block);
        if (paths) {
            for (const std::string& path : *paths) {
                EXPECT_FALSE(path.empty());
                EXPECT_EQ(path.find('\0'), std::string::npos);
            }
        }
    }
}

}  // namespace
}  // namespace tidemark
