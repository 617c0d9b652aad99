#include <algorithm>

#include "benchmarks/benchmarks.h"
#include "benchmarks/measure.h"
#include "benchmarks/real_window.h"
#include "benchmarks/tree_files.h"

namespace tidemark {
namespace {

// Small trees are walked so often that a turn has this many entries.
constexpr std::int32_t kEntriesOfATurn = 10'000;
// Larger ones are walked for minutes when each call to the server is slow: they have two turns.
constexpr std::int32_t kMostForManyRounds = 50'000;
constexpr int kRoundsOfLargeTrees = 2;

class ScaleTree {
  public:
    ScaleTree(RealSystem& system, const std::string& path)
        : system_(system), window_(system.Watched()), name_(NameOfTree(path)) {
        window_.List({path});
        item_ = *window_.Main().Items().begin();
        entries_ = item_->FileCount() + item_->FolderCount();
    }

    void Turn() {
        Time("count", [this] { window_.Choose("mnuViewRefresh"); });
        Time("stamp", [this] { window_.Main().cmdStamp_Click(); });
        if (!item_->StampComplete() || item_->HasErrors()) {
            GiveUp(name_ + ": the stamp met errors");
        }
    }
    [[nodiscard]] bool IsLarge() const { return entries_ > kMostForManyRounds; }

  private:
    template <typename Command>
    void Time(const std::string& work, Command start) {
        const int times = std::max(1, kEntriesOfATurn / entries_);
        system_.Timers().Forget();
        for (int i = 0; i < times; ++i) {
            start();
            window_.WaitForRest();
        }
        PrintFigure("scale." + work + "." + name_,
                    system_.Timers().LongTicks() * 1000.0 / times / entries_);
    }

    RealSystem& system_;
    RealWindow window_;
    std::string name_;
    std::shared_ptr<TidemarkItem> item_;
    std::int32_t entries_ = 0;
};

}  // namespace

void ScaleBench(const BenchArguments& arguments) {
    RealSystem system;
    for (int round = 0; round < arguments.rounds; ++round) {
        for (const std::string& path : arguments.trees) {
            ScaleTree tree(system, path);
            if (round < kRoundsOfLargeTrees || !tree.IsLarge()) {
                tree.Turn();
            }
        }
    }
}

}  // namespace tidemark
