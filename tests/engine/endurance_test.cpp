#include <cstddef>

#include "engine/engine_fixture.h"
#include "engine/tidemark_item_collection.h"
#include "lists/list_model.h"
#include "support/size_from_environment.h"

#if defined(__SANITIZE_ADDRESS__)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace tidemark {
namespace {

// Bytes that the program holds, exact; 0 where nobody counts them.
std::size_t BytesHeld() {
#if defined(__SANITIZE_ADDRESS__)
    return __sanitizer_get_current_allocated_bytes();
#else
    return 0;
#endif
}

class EnduranceTest : public EngineTest {
  protected:
    void SetUp() override {
        system.files.SetRecording(false);
        for (const char* path : {"C:\\a\\1", "C:\\a\\b\\2", "C:\\a\\b\\3", "C:\\c\\4", "C:\\5"}) {
            system.volume.AddFile(path);
        }
    }
    // A list is made, counted, stamped and cleared.
    void Round() {
        for (const char* path : {"C:\\a", "C:\\c", "C:\\5"}) {
            items.Add(path, &list, nullptr)->Count();
        }
        for (const auto& item : items) {
            item->Stamp(modified, created_date, true, true);
        }
        system.pump.RunUntilIdle();
        static_cast<void>(items.ErrorList());
        items.Clear(&list);
    }

    ListModel list{system.locale};
    TidemarkItemCollection items{system.Parts()};
};

// TIDEMARK_STAMPS sets how many.
TEST_F(EnduranceTest, ThousandsOfStampsLeaveNothingBehind) {
    const int stamps = SizeFromEnvironment("TIDEMARK_STAMPS", 1500);
    constexpr int kItems = 3;
    system.volume.Lock("C:\\a\\b\\3");
    int done = 0;
    for (; done < 100; done += kItems) {
        Round();
    }
    const std::size_t before = BytesHeld();
    for (; done < stamps; done += kItems) {
        Round();
    }
    EXPECT_EQ(BytesHeld(), before);
    EXPECT_EQ(system.volume.OpenFileCount(), 0U);
    EXPECT_EQ(system.volume.OpenSearchCount(), 0U);
    EXPECT_EQ(system.pump.Timers().NextDue(), std::nullopt);
    EXPECT_EQ(list.Count(), 0U);
}

// A row that stays keeps the list from ever being empty, which would start it anew.
TEST_F(EnduranceTest, RowsThatComeAndGoBesideOneThatStaysLeaveNothingBehind) {
    items.Add("C:\\c", &list, nullptr);
    const auto come_and_go = [this](int times) {
        for (int i = 0; i < times; ++i) {
            items.Add("C:\\a", &list, nullptr);
            items.Add("C:\\5", &list, nullptr);
            items.Remove("C:\\a\\", &list);
            items.Remove("C:\\5", &list);
        }
    };
    come_and_go(10);
    const std::size_t before = BytesHeld();
    come_and_go(1000);
    EXPECT_EQ(BytesHeld(), before);
    EXPECT_EQ(items.Count(), 1U);
    EXPECT_EQ(list.Count(), 1U);
}

// The one deliberate exception, and its bound: an entry that is open already cannot be opened
// again.
TEST_F(EnduranceTest, EachEntryThatFailsAfterItWasOpenedKeepsExactlyOneHandle) {
    system.files.Fail({KernelCall::kSetLastWriteTime, "C:\\a\\1", 0}, 1117);
    system.files.Fail({KernelCall::kSetCreationTime, "C:\\a\\b\\", 0}, 1117);
    system.files.Fail({KernelCall::kSetCreationTime, "C:\\5", 0}, 112);
    for (int round = 0; round < 100; ++round) {
        Round();
        ASSERT_EQ(system.volume.OpenFileCount(), 3U);
    }
}

}  // namespace
}  // namespace tidemark
