#include "benchmarks/benchmarks.h"
#include "benchmarks/measure.h"
#include "benchmarks/message_probe.h"
#include "benchmarks/real_window.h"
#include "benchmarks/tree_files.h"
#include "errors/frm_errors.h"

namespace tidemark {
namespace {

StampErrorList RecordsFor(const std::vector<std::string>& paths) {
    StampErrorList records;
    for (const std::string& path : paths) {
        records.push_back(
            std::make_shared<const StampError>(StampError{path, false, 5, "Access is denied."}));
    }
    return records;
}

// What the texts of a record take by themselves.
double BytesOfTexts(const StampErrorList& records) {
    double bytes = 0;
    for (const auto& record : records) {
        bytes += static_cast<double>(record->ItemName.size() + record->ErrorDescription.size());
    }
    return bytes;
}

}  // namespace

void ErrorsBench(const BenchArguments& arguments) {
    RealSystem system;
    const Platform platform = system.Watched();
    RealServices services;
    frmErrors window(services.On(platform));
    window.Form_Load();
    window.SetVisible(true);
    RunPendingMessages();
    std::vector<StampErrorList> records;
    for (const std::string& tree : arguments.trees) {
        records.push_back(RecordsFor(FilesIn(tree)));
    }
    std::size_t most_rows = 0;
    for (int round = 0; round < arguments.rounds; ++round) {
        for (std::size_t i = 0; i < records.size(); ++i) {
            const std::string name = "errors." + NameOfTree(arguments.trees[i]);
            MessageProbe probe;
            system.Timers().Forget();
            const std::size_t count = records[i].size();
            const std::uint64_t before = OwnMemory();
            window.AddFromCollection(records[i]);
            RunMessagesUntil([&] {
                return window.rows->List().Count() == count && !system.Timers().InLongTick() &&
                       system.Timers().LongTicks() > 0;
            });
            RunPendingMessages();
            PrintFigure(name + ".fill", system.Timers().LongTicks());
            PrintFigure(name + ".wait", probe.LongestWait());
            // Each list that is longer than all before grows by the rows it has more.
            if (count > most_rows) {
                const auto more = static_cast<double>(count - most_rows);
                const double grown = static_cast<double>(OwnMemory()) - static_cast<double>(before);
                PrintFigure(name + ".row-bytes",
                            grown / more - BytesOfTexts(records[i]) / static_cast<double>(count));
                most_rows = count;
            }
        }
    }
    window.Unload();
}

}  // namespace tidemark
