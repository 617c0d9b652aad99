#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/benchmarks.h"
#include "benchmarks/floor.h"
#include "benchmarks/measure.h"
#include "benchmarks/real_window.h"
#include "benchmarks/tree_files.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

// A tree is walked so often that a turn has this many entries.
constexpr std::int32_t kEntriesOfATurn = 10'000;
// The pause of an item's timer before each walk, which the floor makes too: a processor that has
// rested is slower at first.
constexpr DWORD kPause = 50;  // milliseconds

// Folders that are listed together, counted and stamped one after the other.
class ScaleTrees {
  public:
    ScaleTrees(RealSystem& system, const std::vector<std::string>& folders)
        : system_(system), window_(system.Watched()), folders_(folders) {
        window_.List(folders);
        for (const std::shared_ptr<TidemarkItem>& item : window_.Main().Items()) {
            entries_ += item->FileCount() + item->FolderCount();
        }
        times_ = std::max(1, kEntriesOfATurn / entries_);
    }

    // The figures are named after what is compared and the side in that: "ours" or "base".
    void Turn(const std::string& compared, const std::string& side) {
        figures_ = compared + "." + side;
        Print("floor", Floor());
        Print("count", InTicks([this] { window_.Choose("mnuViewRefresh"); }));
        Print("stamp", InTicks([this] { window_.Main().cmdStamp_Click(); }));
        for (const std::shared_ptr<TidemarkItem>& item : window_.Main().Items()) {
            if (!item->StampComplete() || item->HasErrors()) {
                GiveUp(item->RootItem() + ": the stamp met errors");
            }
        }
    }

  private:
    double Floor() {
        double took = 0;
        for (int i = 0; i < times_; ++i) {
            auto found = static_cast<std::int64_t>(folders_.size());
            ::Sleep(kPause);
            for (const std::string& folder : folders_) {
                const std::wstring path = WideFromUtf8(folder + "\\");
                took += TimeOf([&] { found += FloorCount(path); });
            }
            if (found != entries_) {
                GiveUp(figures_ + ": the floor found another number of entries");
            }
        }
        return took;
    }

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
    std::vector<std::string> folders_;
    std::string figures_;
    std::int32_t entries_ = 0;  // the folders themselves included
    int times_ = 1;
};

// Each turn comes right after one of the base, which it is compared with: a machine may be twice as
// fast a minute later.
void Compare(RealSystem& system, const std::string& base, const std::vector<std::string>& folders,
             const std::string& name) {
    ScaleTrees(system, {base}).Turn(name, "base");
    ScaleTrees(system, folders).Turn(name, "ours");
}

}  // namespace

void ScaleBench(const BenchArguments& arguments) {
    RealSystem system;
    for (int round = 0; round < arguments.rounds; ++round) {
        for (std::size_t i = 1; i < arguments.trees.size(); ++i) {
            const std::string& tree = arguments.trees[i];
            Compare(system, arguments.trees.at(0), {tree}, NameOfTree(tree));
        }
    }
}

void SmallBench(const BenchArguments& arguments) {
    RealSystem system;
    const std::string& base = arguments.trees.at(0);
    const std::vector<std::string> folders = FoldersIn(base);
    for (int round = 0; round < arguments.rounds; ++round) {
        Compare(system, base, folders, "together");
        Compare(system, base, {folders.at(0)}, "alone");
    }
}

}  // namespace tidemark
