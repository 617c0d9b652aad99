#include "benchmarks/benchmarks.h"
#include "benchmarks/measure.h"
#include "benchmarks/real_window.h"
#include "benchmarks/tree_files.h"
#include "engine/tidemark_item.h"
#include "platform/memory/faulty_kernel_files.h"

namespace tidemark {
namespace {

constexpr std::uint32_t kAccessDenied = 5;

double Grown(std::uint64_t before) {
    return static_cast<double>(OwnMemory()) - static_cast<double>(before);
}

void Stamp(TidemarkItem& item) {
    item.Stamp(kStampDate, kStampDate, /*RemoveReadOnlyAttribute=*/false,
               /*SyncFolderCreatedDate=*/false);
    RunMessagesUntil([&item] { return !item.StampInProgress(); });
}

void MeasureItems(RealSystem& system, const std::string& tree) {
    RealWindow window(system.Plain());
    const std::vector<std::string> paths = FilesIn(tree);
    // What the first items ever bring with them is not theirs.
    window.List({paths.begin(), paths.begin() + 100});
    window.Choose("mnuFileRemoveAll");
    window.WaitForRest();
    const std::uint64_t before = OwnMemory();
    window.List(paths);
    PrintFigure("memory.item", Grown(before) / static_cast<double>(paths.size()));
}

void MeasureErrors(RealSystem& system, const std::string& tree) {
    const Platform plain = system.Plain();
    FaultyKernelFiles files(plain.files);
    files.SetRecording(false);
    files.Fail({.call = KernelCall::kOpenForTimes, .path = {}, .nth = 0}, kAccessDenied);
    const Platform failing{files, plain.file_system, plain.timers, plain.pump, plain.locale};
    const std::shared_ptr<TidemarkItem> item = TidemarkItem::Create(failing);
    item->SetRootItem(tree);
    const std::uint64_t before = OwnMemory();
    Stamp(*item);
    const double grown = Grown(before);
    double texts = 0;
    const std::shared_ptr<const StampErrorList> errors = item->StampErrors();
    for (const auto& error : *errors) {
        texts += static_cast<double>(error->ItemName.size() + error->ErrorDescription.size());
    }
    PrintFigure("memory.error", (grown - texts) / static_cast<double>(errors->size()));
}

void MeasureStamp(RealSystem& system, const std::string& tree) {
    const std::shared_ptr<TidemarkItem> item = TidemarkItem::Create(system.Plain());
    item->SetRootItem(tree);
    const std::uint64_t before = OwnMemory();
    Stamp(*item);
    const double grown = Grown(before);
    if (!item->StampComplete() || item->HasErrors() || item->StampedFileCount() == 0) {
        GiveUp("not everything was stamped");
    }
    PrintFigure("memory.stamp-kb", grown / 1024);
}

}  // namespace

void MemoryBench(const BenchArguments& arguments) {
    RealSystem system;
    MeasureErrors(system, arguments.trees.front());
    MeasureItems(system, arguments.trees.front());
    MeasureStamp(system, arguments.trees.back());
}

}  // namespace tidemark
