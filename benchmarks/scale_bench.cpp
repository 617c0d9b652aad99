#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "benchmarks/benchmarks.h"
#include "benchmarks/floor.h"
#include "benchmarks/measure.h"
#include "benchmarks/real_window.h"
#include "benchmarks/tree_files.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

// Small trees are walked so often that a turn has this many entries, and take more turns: a single
// walk is so short that whatever else the machine does weighs on it.
constexpr std::int32_t kEntriesOfATurn = 10'000;
constexpr int kTurnsOfSmallTrees = 5;
// The pause of an item's timer before each walk, which the floor makes too: a processor that has
// rested is slower at first.
constexpr DWORD kPause = 50;  // milliseconds

class ScaleTree {
  public:
    ScaleTree(RealSystem& system, const std::string& path)
        : system_(system),
          window_(system.Watched()),
          name_(NameOfTree(path)),
          wide_path_(WideFromUtf8(path + "\\")) {
        window_.List({path});
        item_ = *window_.Main().Items().begin();
        entries_ = item_->FileCount() + item_->FolderCount();
        times_ = std::max(1, kEntriesOfATurn / entries_);
    }

    [[nodiscard]] bool IsSmall() const { return times_ > 1; }

    // The figures are named after the tree that is compared and its side in that: "ours" or "base".
    void Turn(const std::string& compared, const std::string& side) {
        figures_ = compared + "." + side;
        double floor = 0;
        for (int i = 0; i < times_; ++i) {
            ::Sleep(kPause);
            floor += TimeOf([this] { entries_found_ = FloorCount(wide_path_); });
        }
        if (entries_found_ != entries_ - 1) {
            GiveUp(name_ + ": the floor found another number of entries");
        }
        Print("floor", floor);
        Print("count", InTicks([this] { window_.Choose("mnuViewRefresh"); }));
        Print("stamp", InTicks([this] { window_.Main().cmdStamp_Click(); }));
        if (!item_->StampComplete() || item_->HasErrors()) {
            GiveUp(name_ + ": the stamp met errors");
        }
    }

  private:
    template <typename Command>
    double InTicks(Command start) {
        system_.Timers().Forget();
        for (int i = 0; i < times_; ++i) {
            start();
            window_.WaitForRest();
        }
        return system_.Timers().LongTicks();
    }

    // Microseconds for each entry.
    void Print(const std::string& work, double milliseconds) {
        PrintFigure("scale." + work + "." + figures_, milliseconds * 1000.0 / times_ / entries_);
    }

    RealSystem& system_;
    RealWindow window_;
    std::string name_;
    std::string figures_;
    std::wstring wide_path_;
    std::shared_ptr<TidemarkItem> item_;
    std::int32_t entries_ = 0;  // the tree's own folder included
    std::int64_t entries_found_ = 0;
    int times_ = 1;
};

}  // namespace

// Each turn of a tree comes right after one of the first tree, which it is compared with: a machine
// may be twice as fast a minute later.
void ScaleBench(const BenchArguments& arguments) {
    RealSystem system;
    const std::string& base = arguments.trees.at(0);
    for (int round = 0; round < arguments.rounds; ++round) {
        for (std::size_t i = 1; i < arguments.trees.size(); ++i) {
            const std::string& path = arguments.trees[i];
            const std::string name = NameOfTree(path);
            const int turns = ScaleTree(system, path).IsSmall() ? kTurnsOfSmallTrees : 1;
            for (int turn = 0; turn < turns; ++turn) {
                ScaleTree(system, base).Turn(name, "base");
                ScaleTree(system, path).Turn(name, "ours");
            }
        }
    }
}

}  // namespace tidemark
