#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "engine/engine_fixture.h"
#include "engine/tidemark_item_collection.h"
#include "lists/list_model.h"

namespace tidemark {
namespace {

using testing::IsEmpty;

// Each command that a user can give, at each single pump point of a count and the stamp behind it.
// "C:\top" holds 3 files and 2 folders, of which two files cannot be opened.
class CommandsAtPumpPointsTest : public testing::TestWithParam<std::uint64_t> {
  protected:
    // What the item was doing when the command arrived. A stamp may run inside the count that it
    // waited behind.
    struct Moment {
        bool counting = false;
        bool stamp_pending = false;
        bool stamping = false;
        bool stamped = false;
    };

    struct World {
        World() {
            for (const char* path : {"C:\\top\\a.txt", "C:\\top\\sub\\b.txt",
                                     "C:\\top\\sub\\deep\\c.txt", "C:\\other\\d.txt"}) {
                system.volume.AddFile(path);
            }
            system.volume.Lock("C:\\top\\a.txt");
            system.volume.Lock("C:\\top\\sub\\deep\\c.txt");
            system.pump.SetMillisecondsPerCall(GetParam());
            Stamp(*AddAndCount("C:\\top"));
        }

        std::shared_ptr<TidemarkItem> AddAndCount(const std::string& path) {
            const auto item = items->Add(path, &list, nullptr);
            if (!item->CountInProgress() && !item->CountComplete()) {
                item->Count();
            }
            return item;
        }
        static void Stamp(TidemarkItem& item) {
            item.Stamp(DayNumber(2021, 3, 2, 13, 45), 0, false, false);
        }
        [[nodiscard]] std::shared_ptr<TidemarkItem> Top() const { return items->Item("c:\\top\\"); }
        [[nodiscard]] bool IsStamped(const std::string& path) const {
            return system.volume.TimesOf(path).written == SystemTime(2021, 3, 2, 13, 45);
        }

        // Begins to look at what is done from now on.
        void Arrive() {
            for (const KernelCallRecord& call : system.files.Calls()) {
                if (call.call == KernelCall::kSearchFirst) {
                    open_folders.insert(call.path.substr(0, call.path.size() - 3));
                } else if (call.call == KernelCall::kSearchClose) {
                    open_folders.erase(
                        open_folders.find(call.path.substr(0, call.path.size() - 3)));
                }
            }
            system.files.ClearCalls();
        }
        // The files and folders that stamping was tried on since then.
        [[nodiscard]] std::vector<std::string> Tried() const {
            std::vector<std::string> paths;
            for (const KernelCallRecord& call : system.files.Calls()) {
                if (call.call == KernelCall::kOpenForTimes) {
                    paths.push_back(call.path);
                }
            }
            return paths;
        }

        std::multiset<std::string> open_folders;  // that were being listed when the command arrived
        MemorySystem system;
        ListModel list{system.locale};
        std::unique_ptr<TidemarkItemCollection> items =
            std::make_unique<TidemarkItemCollection>(system.Parts());
    };

    static Moment MomentOf(const TidemarkItem& item) {
        const bool pending = TidemarkItemTestPeer::StampPending(item);
        return {item.CountInProgress(), pending, item.StampInProgress() && !pending,
                item.StampComplete()};
    }

    static void ExpectCounted(const TidemarkItem& top) {
        EXPECT_TRUE(top.CountComplete());
        EXPECT_EQ(top.CountString(), "3 files; 3 folders");
    }
    static void ExpectStamped(const World& world) {
        const auto top = world.Top();
        EXPECT_EQ(top->StatusString(), "Complete (with errors)");
        EXPECT_EQ(top->StampedFileCount(), 3);
        EXPECT_EQ(top->StampedFolderCount(), 2);
        ASSERT_EQ(top->StampErrors()->size(), 2U);
        EXPECT_EQ((*top->StampErrors())[0]->ItemName, "C:\\top\\a.txt");
        EXPECT_EQ((*top->StampErrors())[1]->ItemName, "C:\\top\\sub\\deep\\c.txt");
        EXPECT_TRUE(world.IsStamped("C:\\top\\sub\\b.txt"));
        EXPECT_TRUE(world.IsStamped("C:\\top\\sub\\deep\\"));
    }

    // A stamp that runs finishes the folders that it is in; nothing else is done for the item.
    static void ExpectWorkToEnd(const World& world, const Moment& moment) {
        for (const KernelCallRecord& call : world.system.files.Calls()) {
            EXPECT_FALSE(call.call == KernelCall::kSearchFirst && call.path.starts_with("C:\\top"))
                << call.path;
        }
        for (const std::string& path : world.Tried()) {
            const std::size_t folder_end = path.rfind('\\', path.size() - 2) + 1;
            EXPECT_TRUE(moment.stamping) << path;
            EXPECT_TRUE(world.open_folders.contains(path.substr(0, folder_end))) << path;
        }
    }

    using Command = std::function<void(World&)>;
    using Check = std::function<void(const World&, const Moment&)>;

    // Runs the command at the first pump point, at the second, and so on to the last.
    static void AtEachPumpPoint(const Command& command, const Check& check) {
        Moment met;
        for (std::size_t call = 1;; ++call) {
            World world;
            bool arrived = false;
            Moment moment;
            world.system.pump.AtCall(call, [&] {
                arrived = true;
                moment = MomentOf(*world.Top());
                world.Arrive();
                command(world);
            });
            world.system.pump.RunUntilIdle();
            if (!arrived) {
                EXPECT_TRUE(met.counting && met.stamp_pending && met.stamping);
                return;
            }
            met.counting |= moment.counting;
            met.stamp_pending |= moment.stamp_pending;
            met.stamping |= moment.stamping;
            SCOPED_TRACE("at pump call " + std::to_string(call));
            check(world, moment);
            EXPECT_EQ(world.system.volume.OpenSearchCount(), 0U);
            EXPECT_EQ(world.system.volume.OpenFileCount(), 0U);
            EXPECT_THAT(world.system.pump.Failures(), IsEmpty());
            EXPECT_EQ(world.system.pump.Timers().NextDue(), std::nullopt);
            if (world.items != nullptr) {
                EXPECT_FALSE(world.items->Busy());
                EXPECT_EQ(world.list.Count(), world.items->Count());
            }
            if (HasFailure()) {
                return;
            }
        }
    }
};

TEST_P(CommandsAtPumpPointsTest, AddingAnotherItemDisturbsNothing) {
    AtEachPumpPoint([](World& world) { world.AddAndCount("C:\\other"); },
                    [](const World& world, const Moment&) {
                        ExpectCounted(*world.Top());
                        ExpectStamped(world);
                        EXPECT_EQ(world.items->Item("c:\\other\\")->CountString(),
                                  "1 file; 1 folder");
                    });
}

TEST_P(CommandsAtPumpPointsTest, AddingTheSameItemAgainDisturbsNothing) {
    AtEachPumpPoint([](World& world) { world.AddAndCount("C:\\TOP\\"); },
                    [](const World& world, const Moment&) {
                        ExpectCounted(*world.Top());
                        ExpectStamped(world);
                        EXPECT_EQ(world.items->Count(), 1U);
                    });
}

TEST_P(CommandsAtPumpPointsTest, AnotherItemsStampDisturbsNothing) {
    AtEachPumpPoint([](World& world) { World::Stamp(*world.AddAndCount("C:\\other")); },
                    [](const World& world, const Moment&) {
                        ExpectCounted(*world.Top());
                        ExpectStamped(world);
                        EXPECT_EQ(world.items->Item("c:\\other\\")->StatusString(), "Complete");
                        EXPECT_TRUE(world.IsStamped("C:\\other\\d.txt"));
                    });
}

TEST_P(CommandsAtPumpPointsTest, RemovingTheItemEndsItsWork) {
    AtEachPumpPoint([](World& world) { world.items->Remove("C:\\top\\", &world.list); },
                    [](const World& world, const Moment& moment) {
                        EXPECT_EQ(world.items->Count(), 0U);
                        ExpectWorkToEnd(world, moment);
                    });
}

TEST_P(CommandsAtPumpPointsTest, ClearingEndsAllWorkAndTheListIsReadyForMore) {
    AtEachPumpPoint(
        [](World& world) {
            world.items->Clear(&world.list);
            world.AddAndCount("C:\\other");
        },
        [](const World& world, const Moment& moment) {
            EXPECT_EQ(world.items->Count(), 1U);
            EXPECT_EQ(world.items->Item("c:\\other\\")->CountString(), "1 file; 1 folder");
            ExpectWorkToEnd(world, moment);
        });
}

TEST_P(CommandsAtPumpPointsTest, ClosingEndsEverythingWithoutAnotherMessage) {
    AtEachPumpPoint(
        [](World& world) {
            world.items->Clear(&world.list);
            world.items.reset();
            world.system.pump.Quit();
        },
        [](const World& world, const Moment& moment) {
            EXPECT_EQ(world.list.Count(), 0U);
            ExpectWorkToEnd(world, moment);
        });
}

TEST_P(CommandsAtPumpPointsTest, CancellingTheCountDropsTheStampBehindItAndNothingElse) {
    AtEachPumpPoint([](World& world) { world.Top()->CancelCount(); },
                    [](const World& world, const Moment& moment) {
                        const auto top = world.Top();
                        EXPECT_EQ(top->CountComplete(), !moment.counting);
                        EXPECT_EQ(top->CountString(),
                                  moment.counting ? "not counted" : "3 files; 3 folders");
                        if (moment.stamp_pending) {
                            EXPECT_EQ(top->StatusString(), "Ready");
                            EXPECT_TRUE(world.IsStamped("C:\\top\\"));  // at once, not in a tick
                            EXPECT_FALSE(world.IsStamped("C:\\top\\sub\\"));
                        } else {
                            ExpectStamped(world);
                        }
                    });
}

TEST_P(CommandsAtPumpPointsTest, CancellingTheStampLeavesTheCount) {
    AtEachPumpPoint(
        [](World& world) { world.Top()->CancelStamp(); },
        [](const World& world, const Moment& moment) {
            const auto top = world.Top();
            ExpectCounted(*top);
            EXPECT_EQ(top->StampComplete(), moment.stamped);
            EXPECT_EQ(top->StampCancelled(), moment.stamping);
            if (moment.stamped) {
                ExpectStamped(world);
            } else {
                // What was stamped stays stamped, and its errors stay listed.
                EXPECT_EQ(top->StatusString(),
                          top->StampErrors()->empty() ? "Ready" : "Ready (with errors)");
                EXPECT_EQ(world.IsStamped("C:\\top\\sub\\deep\\"), top->StampedFolderCount() == 2);
            }
        });
}

TEST_P(CommandsAtPumpPointsTest, ARecountCountsAllAndLetsAStampThatRunsFinish) {
    AtEachPumpPoint([](World& world) { world.Top()->Count(); },
                    [](const World& world, const Moment& moment) {
                        ExpectCounted(*world.Top());
                        EXPECT_EQ(world.Top()->StampComplete(), moment.stamping);
                        EXPECT_EQ(world.IsStamped("C:\\top\\sub\\deep\\"), !moment.stamp_pending);
                    });
}

TEST_P(CommandsAtPumpPointsTest, StampingAgainStampsAllOnce) {
    AtEachPumpPoint([](World& world) { World::Stamp(*world.Top()); },
                    [](const World& world, const Moment&) {
                        ExpectCounted(*world.Top());
                        ExpectStamped(world);
                    });
}

TEST_P(CommandsAtPumpPointsTest, TheEmptyPathEndsTheWorkAndForgetsIt) {
    AtEachPumpPoint([](World& world) { world.Top()->SetRootItem(""); },
                    [](const World& world, const Moment&) {
                        const auto top = world.Top();
                        EXPECT_EQ(top->CountString(), "not counted");
                        EXPECT_EQ(top->StatusString(), "Ready");
                        EXPECT_EQ(top->FileCount() + top->FolderCount(), 0);
                        EXPECT_EQ(top->StampedFileCount() + top->StampedFolderCount(), 0);
                        EXPECT_THAT(world.Tried(), IsEmpty());
                    });
}

TEST_P(CommandsAtPumpPointsTest, AnotherPathEndsTheWorkOnTheOldOne) {
    AtEachPumpPoint(
        [](World& world) {
            const auto top = world.Top();
            top->SetRootItem("C:\\other");
            EXPECT_EQ(top->FileCount() + top->FolderCount(), 0);
        },
        [](const World& world, const Moment&) {
            const auto top = world.Top();
            EXPECT_EQ(top->RootItem(), "C:\\other\\");
            EXPECT_EQ(top->CountString(), "not counted");
            EXPECT_EQ(top->StatusString(), "Ready");
            EXPECT_EQ(top->FileCount() + top->FolderCount(), 0);
            EXPECT_EQ(top->StampedFileCount() + top->StampedFolderCount(), 0);
            EXPECT_THAT(world.Tried(), IsEmpty());
            EXPECT_FALSE(world.IsStamped("C:\\other\\d.txt"));
        });
}

TEST_P(CommandsAtPumpPointsTest, APathThatIsNeitherFileNorFolderDisturbsNothing) {
    AtEachPumpPoint(
        [](World& world) {
            const auto top = world.Top();
            const auto errors = top->StampErrors();
            const auto known = [&] {
                return std::tuple(top->CountString(), top->StatusString(), top->FileCount(),
                                  top->FolderCount(), top->StampedFileCount(),
                                  top->StampedFolderCount(), errors->size());
            };
            const auto before = known();
            top->SetRootItem("C:\\nowhere");
            EXPECT_EQ(top->RootItem(), "C:\\top\\");
            EXPECT_EQ(top->StampErrors(), errors);
            EXPECT_EQ(known(), before);
        },
        [](const World& world, const Moment&) {
            ExpectCounted(*world.Top());
            ExpectStamped(world);
        });
}

// Milliseconds between two pump points: with 0 no tick nests into another; with 60 each does.
INSTANTIATE_TEST_SUITE_P(NestingOfTicks, CommandsAtPumpPointsTest, testing::Values(0, 13, 60));

}  // namespace
}  // namespace tidemark
