// Stamping for a long time in one process costs it nothing that it does not give back.

#include <memory>
#include <string>
#include <vector>

#include "endtoend/engine_on_windows.h"
#include "support/expect_no_leaks.h"
#include "support/process_resources.h"
#include "support/size_from_environment.h"

namespace tidemark {
namespace {

constexpr std::size_t kMemoryMargin = 512 * 1024;

class Endurance : public EngineOnWindows {
  protected:
    static constexpr int kItems = 50;

    void MakeItems() {
        for (int i = 0; i < kItems; ++i) {
            const std::string folder = "item " + std::to_string(i);
            tree_.MakeFile(folder + "\\a.txt");
            tree_.MakeFile(folder + "\\below\\b.txt");
            items_.push_back(NewItem(tree_.Path(folder)));
        }
    }
    // Stamps every item once.
    void Round() {
        for (const auto& item : items_) {
            item->Stamp(kStampDate, kStampDate, /*RemoveReadOnlyAttribute=*/true,
                        /*SyncFolderCreatedDate=*/false);
        }
        for (const auto& item : items_) {
            WaitFor(*item);
        }
    }

    std::vector<std::shared_ptr<TidemarkItem>> items_;
};

// TIDEMARK_STAMPS sets how many.
TEST_F(Endurance, ThousandsOfStampsLeaveHandlesObjectsWindowsAndMemoryAsTheyWere) {
    const int stamps = SizeFromEnvironment("TIDEMARK_STAMPS", 500);
    MakeItems();
    const LockedFile locked(tree_.Path("item 7\\below\\b.txt"));
    int done = 0;
    for (; done < 100; done += kItems) {
        Round();
    }
    const ProcessResources before = ResourcesNow();
    ASSERT_GT(before.handles, 0);
    ASSERT_GT(before.gdi_objects, 0);
    ASSERT_GT(before.memory, 0U);

    for (; done < stamps; done += kItems) {
        Round();
        for (int i = 0; i < kItems; ++i) {
            ASSERT_EQ(items_[static_cast<std::size_t>(i)]->StatusString(),
                      i == 7 ? "Complete (with errors)" : "Complete");
        }
    }

    ExpectNoLeaks(before, kMemoryMargin);
}

// The one deliberate exception: what fails after it was opened stays open. As it then cannot be
// opened again, it stays at one handle for each entry, however often it is stamped.
TEST_F(Endurance, EachEntryThatFailsAfterItWasOpenedKeepsExactlyOneHandle) {
    constexpr double kDateOfNoFile = 1e12;
    constexpr std::size_t kEntries = 7;
    for (int i = 0; i < 5; ++i) {
        tree_.MakeFile("below\\" + std::to_string(i) + ".txt");
    }
    const auto item = NewItem(tree_.Root());
    const ProcessResources before = ResourcesNow();
    for (int round = 0; round < 3; ++round) {
        item->Stamp(kDateOfNoFile, 0, false, false);
        WaitFor(*item);
        ASSERT_EQ(item->StampErrors()->size(), kEntries);
        EXPECT_EQ(item->StampErrors()->back()->ErrorNumber,
                  round == 0 ? 6 : ERROR_SHARING_VIOLATION);
        EXPECT_EQ(ResourcesNow().handles, before.handles + static_cast<int>(kEntries));
    }
}

}  // namespace
}  // namespace tidemark
