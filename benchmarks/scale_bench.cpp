#include <algorithm>

#include "benchmarks/benchmarks.h"
#include "benchmarks/floor.h"
#include "benchmarks/measure.h"
#include "benchmarks/real_window.h"
#include "benchmarks/tree_files.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

// Small trees are walked so often that a turn has this many entries.
constexpr std::int32_t kEntriesOfATurn = 10'000;
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

    void Turn() {
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
        PrintFigure("scale." + work + "." + name_, milliseconds * 1000.0 / times_ / entries_);
    }

    RealSystem& system_;
    RealWindow window_;
    std::string name_;
    std::wstring wide_path_;
    std::shared_ptr<TidemarkItem> item_;
    std::int32_t entries_ = 0;  // the tree's own folder included
    std::int64_t entries_found_ = 0;
    int times_ = 1;
};

}  // namespace

void ScaleBench(const BenchArguments& arguments) {
    RealSystem system;
    for (int round = 0; round < arguments.rounds; ++round) {
        for (const std::string& path : arguments.trees) {
            ScaleTree(system, path).Turn();
        }
    }
}

}  // namespace tidemark
