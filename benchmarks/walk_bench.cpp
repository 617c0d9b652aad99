#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/benchmarks.h"
#include "benchmarks/floor.h"
#include "benchmarks/measure.h"
#include "benchmarks/real_window.h"
#include "benchmarks/tree_files.h"
#include "engine/tidemark_item.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

// One turn of a floor, and what it found.
void TimeFloor(const std::string& name, std::int64_t entries,
               const std::function<std::int64_t()>& floor) {
    std::int64_t found = 0;
    const double took = TimeOf([&] { found = floor(); });
    if (found != entries) {
        GiveUp(name + ": the floor found " + std::to_string(found) + " entries, not " +
               std::to_string(entries));
    }
    PrintFigure(name, took);
}

// The engine without a window: one item, stamped in its own tick.
class EngineAlone {
  public:
    EngineAlone(RealSystem& system, const std::string& tree)
        : system_(system), item_(TidemarkItem::Create(system.Watched())) {
        item_->SetRootItem(tree);
    }

    void TimeStamp(const std::string& name, double created, bool clear_read_only, bool sync) {
        system_.Timers().Forget();
        item_->Stamp(kStampDate, created, clear_read_only, sync);
        RunMessagesUntil([this] { return !item_->StampInProgress(); });
        if (!item_->StampComplete() || item_->HasErrors()) {
            GiveUp(name + ": the stamp met errors");
        }
        PrintFigure(name + ".ours", system_.Timers().LongTicks());
    }

  private:
    RealSystem& system_;
    std::shared_ptr<TidemarkItem> item_;
};

}  // namespace

void WalkBench(const BenchArguments& arguments) {
    const std::string tree = arguments.trees.at(0) + "\\";
    const std::wstring wide_tree = WideFromUtf8(tree);
    RealSystem system;
    std::int64_t entries = 0;
    {
        RealWindow window(system.Watched());
        window.List({tree});
        const std::shared_ptr<TidemarkItem> item = *window.Main().Items().begin();
        entries = std::int64_t{item->FileCount()} + item->FolderCount() - 1;  // the tree's own
        for (int round = 0; round < arguments.rounds; ++round) {
            TimeFloor("count.floor", entries, [&] { return FloorCount(wide_tree); });
            system.Timers().Forget();
            window.Choose("mnuViewRefresh");
            window.WaitForRest();
            PrintFigure("count.ours", system.Timers().LongTicks());
        }
        for (int round = 0; round < arguments.rounds; ++round) {
            TimeFloor("stamp.floor", entries, [&] { return FloorStamp(wide_tree); });
            system.Timers().Forget();
            window.Main().cmdStamp_Click();
            window.WaitForRest();
            if (!item->StampComplete() || item->HasErrors()) {
                GiveUp("the stamp met errors");
            }
            PrintFigure("stamp.ours", system.Timers().LongTicks());
        }
    }
    EngineAlone engine(system, tree);
    for (int round = 0; round < arguments.rounds; ++round) {
        TimeFloor("stamp-clearing.floor", entries, [&] { return FloorStamp(wide_tree); });
        engine.TimeStamp("stamp-clearing", kStampDate, /*clear_read_only=*/true, /*sync=*/false);
        TimeFloor("stamp-syncing.floor", entries, [&] { return FloorStamp(wide_tree); });
        engine.TimeStamp("stamp-syncing", 0, /*clear_read_only=*/false, /*sync=*/true);
    }
}

void FilesBench(const BenchArguments& arguments) {
    constexpr std::size_t kFiles = 5000;
    std::vector<std::string> paths = FilesIn(arguments.trees.at(0));
    paths.resize(std::min(paths.size(), kFiles));
    std::vector<std::wstring> wide_paths;
    for (const std::string& path : paths) {
        wide_paths.push_back(WideFromUtf8(path));
    }
    RealSystem system;
    RealWindow window(system.Plain());
    window.List(paths);
    for (int round = 0; round < arguments.rounds; ++round) {
        PrintFigure("files.floor", TimeOf([&] { FloorStampFiles(wide_paths); }));
        // Listed files are stamped inside the press of the button.
        PrintFigure("files.ours", TimeOf([&] { window.Main().cmdStamp_Click(); }));
        if (!window.Main().Items().StampComplete() || window.Main().Items().ErrorsExist()) {
            GiveUp("the stamp met errors");
        }
        window.WaitForRest();
    }
}

}  // namespace tidemark
