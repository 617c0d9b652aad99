#include "controls/shell_item_ids.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace tidemark {
namespace {

std::vector<std::byte> Memory(std::initializer_list<int> values) {
    std::vector<std::byte> memory;
    for (const int value : values) {
        memory.push_back(static_cast<std::byte>(value));
    }
    return memory;
}

// Sizes of the items; -1 alone when the list was refused.
std::vector<int> Sizes(const std::vector<std::byte>& memory) {
    const auto items = SplitItemIds(memory);
    if (!items) {
        return {-1};
    }
    std::vector<int> sizes;
    for (const ShellItemId& item : *items) {
        sizes.push_back(static_cast<int>(item.size()));
    }
    return sizes;
}

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ShellItemIds, ItemsAreReadUpToTheEmptyOneThatEndsThem) {
    const auto memory = Memory({3, 0, 7, 5, 0, 1, 2, 3, 0, 0, 9, 9});
    EXPECT_THAT(Sizes(memory), ElementsAre(3, 5));
    EXPECT_EQ(SplitItemIds(memory)->back().data(), memory.data() + 3);
}

TEST(ShellItemIds, TheEmptyListIsTheDesktop) {
    EXPECT_THAT(Sizes(Memory({0, 0})), IsEmpty());
}

TEST(ShellItemIds, AnItemOfJustItsSizeIsOne) {
    EXPECT_THAT(Sizes(Memory({2, 0, 2, 0, 0, 0})), ElementsAre(2, 2));
}

TEST(ShellItemIds, AListWithoutItsEndIsRefused) {
    for (const auto& memory :
         {Memory({}), Memory({0}), Memory({3, 0, 7}), Memory({3, 0, 7, 0}), Memory({2, 0})}) {
        EXPECT_THAT(Sizes(memory), ElementsAre(-1)) << memory.size();
    }
}

TEST(ShellItemIds, AnItemThatRunsOutOfTheMemoryIsRefused) {
    EXPECT_THAT(Sizes(Memory({3, 0, 7, 255, 255, 1, 0, 0})), ElementsAre(-1));
    EXPECT_THAT(Sizes(Memory({4, 0, 7})), ElementsAre(-1));
}

// It would be met again for ever, or its size read from the middle of itself.
TEST(ShellItemIds, AnItemSmallerThanItsOwnSizeFieldIsRefused) {
    EXPECT_THAT(Sizes(Memory({1, 0, 0, 0})), ElementsAre(-1));
}

TEST(ShellItemIds, ALongListIsReadToItsEnd) {
    std::vector<std::byte> memory;
    for (int i = 0; i < 1000; ++i) {
        const auto more = Memory({4, 1});
        memory.insert(memory.end(), more.begin(), more.end());
        memory.resize(memory.size() + 258);
    }
    memory.resize(memory.size() + 2);
    EXPECT_EQ(Sizes(memory), std::vector<int>(1000, 260));
}

TEST(ShellItemIds, ASingleItemMakesAListOfItsOwn) {
    const auto memory = Memory({3, 0, 7, 5, 0, 1, 2, 3, 0, 0});
    const ShellItemId item = SplitItemIds(memory)->back();
    std::vector<std::byte> list(SizeOfSingleItemList(item), std::byte{0xFF});
    WriteSingleItemList(item, list.data());
    EXPECT_EQ(list, Memory({5, 0, 1, 2, 3, 0, 0}));
    EXPECT_THAT(Sizes(list), ElementsAre(5));
}

}  // namespace
}  // namespace tidemark
