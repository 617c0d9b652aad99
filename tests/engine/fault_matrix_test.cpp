#include "engine/fault_matrix.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tidemark::fault_matrix {
namespace {

TEST_F(FaultMatrixTest, EveryFailingCallBecomesOneRecordAndStopsNothing) {
    int runs = 0;
    for (std::size_t step = 0; step < kSteps; ++step) {
        for (const std::uint32_t code : kCodes) {
            for (const Options& options : AllOptions()) {
                for (const bool folder_item : {false, true}) {
                    for (const std::size_t at : FailingEntries(folder_item)) {
                        const Fault fault{static_cast<Step>(step), at, code};
                        SCOPED_TRACE(Describe(fault) + Describe(options) +
                                     (folder_item ? " in a folder" : " as a file"));
                        runs += Run({fault}, options, folder_item) ? 1 : 0;
                        if (HasFailure()) {
                            return;
                        }
                    }
                }
            }
        }
    }
    RecordProperty("runs", runs);
    EXPECT_GT(runs, 2500);
}

// Two failures of one entry, of which the later one may never be met, and of two entries.
TEST_F(FaultMatrixTest, TwoFailuresAreAsGoodAsOne) {
    std::vector<Fault> places;
    for (std::size_t step = 0; step < kSteps; ++step) {
        for (const std::size_t at : FailingEntries(/*folder_item=*/true)) {
            places.push_back({static_cast<Step>(step), at, 0});
        }
    }
    const std::vector<Options> all_options = AllOptions();
    int runs = 0;
    std::size_t turn = 0;
    for (std::size_t one = 0; one < places.size(); ++one) {
        for (std::size_t other = one + 1; other < places.size(); ++other) {
            // All combinations of options in a full run, else two for each pair, each in its turn.
            for (std::size_t i = 0; i < (RunsInFull() ? all_options.size() * kCodes.size() : 2);
                 ++i, ++turn) {
                const Options& options = all_options[(turn * 5) % all_options.size()];
                std::vector<Fault> faults = {places[one], places[other]};
                faults[0].code = kCodes[turn % kCodes.size()];
                faults[1].code = kCodes[(turn * 7 + 4) % kCodes.size()];
                SCOPED_TRACE(Describe(faults[0]) + ", " + Describe(faults[1]) + Describe(options));
                runs += Run(faults, options, /*folder_item=*/true) ? 1 : 0;
                if (HasFailure()) {
                    return;
                }
            }
        }
    }
    RecordProperty("runs", runs);
    EXPECT_GT(runs, 250);
}

// Every entry fails at once, at every step and with every code.
TEST_F(FaultMatrixTest, WhenEveryEntryFailsEveryEntryHasItsRecord) {
    for (std::size_t step = 0; step < kSteps; ++step) {
        for (const std::uint32_t code : kCodes) {
            std::vector<Fault> faults;
            for (std::size_t at = 0; at < FolderEntries().size(); ++at) {
                faults.push_back({static_cast<Step>(step), at, code});
            }
            const bool attributes = static_cast<Step>(step) <= Step::kWriteAttributes;
            SCOPED_TRACE(Describe(faults.front()));
            EXPECT_TRUE(Run(faults, {true, attributes, false, attributes}, /*folder_item=*/true));
        }
    }
}

}  // namespace
}  // namespace tidemark::fault_matrix
