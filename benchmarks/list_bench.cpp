#include "benchmarks/benchmarks.h"
#include "benchmarks/measure.h"
#include "benchmarks/real_window.h"
#include "benchmarks/tree_files.h"

namespace tidemark {
namespace {

// One list of one size, from the drop that fills it to the command that empties it.
class ListRound {
  public:
    ListRound(RealWindow& window, std::string size)
        : window_(window), main_(window.Main()), size_(std::move(size)) {}

    void Run(const std::vector<std::string>& paths) {
        Time("add", [&] {
            std::vector<std::string> dropped = paths;
            PrintFigure("list." + size_ + ".drop",
                        TimeOf([&] { main_.AddItems(std::move(dropped)); }));
            RunMessagesUntil([this] { return !main_.Busy(); });
        });
        window_.WaitForRest();
        if (main_.rows.Count() != paths.size()) {
            GiveUp("not every file is in the list");
        }
        Time("poll-same", [this] { main_.oTimer_Timer(); });
        for (std::size_t i = 0; i < main_.rows.Count(); ++i) {
            main_.rows.SetSubItem(main_.rows.At(i), 0, "-");
            main_.rows.SetSubItem(main_.rows.At(i), 1, "-");
        }
        RunPendingMessages();
        Time("poll-changed", [this] { main_.oTimer_Timer(); });
        Time("select-all", [this] { window_.Choose("mnuEditSelectAll"); });
        window_.Choose("mnuEditClearSelections");
        RunPendingMessages();
        for (const char* click : {"sort-name", "sort-name-descending"}) {
            Time(click, [this] { main_.lvwItems.on_column_click(0); });
        }
        Time("sort-contains", [this] { main_.lvwItems.on_column_click(1); });
        Time("sort-status", [this] { main_.lvwItems.on_column_click(2); });
        // A tenth of the rows, each with nine others between it and the next, and then in one run.
        SelectEvery(10, paths.size());
        Time("remove-spread", [this] { window_.Choose("mnuFileRemoveSelected"); });
        SelectEvery(1, paths.size() / 10);
        Time("remove-run", [this] { window_.Choose("mnuFileRemoveSelected"); });
        if (main_.rows.Count() != paths.size() - 2 * (paths.size() / 10)) {
            GiveUp("not every selected row was removed");
        }
        Time("remove-all", [this] { window_.Choose("mnuFileRemoveAll"); });
        window_.WaitForRest();
    }

  private:
    // The command, and what it leaves to be painted.
    template <typename Command>
    void Time(const std::string& name, Command command) {
        PrintFigure("list." + size_ + "." + name, TimeOf([&] {
                        command();
                        RunPendingMessages();
                    }));
    }

    // As the user does: in the window.
    void SelectEvery(std::size_t step, std::size_t end) {
        LVITEMW selected{};
        selected.state = selected.stateMask = LVIS_SELECTED;
        for (std::size_t i = 0; i < end; i += step) {
            main_.lvwItems.Send(LVM_SETITEMSTATE, i, reinterpret_cast<LPARAM>(&selected));
        }
        RunPendingMessages();
    }

    RealWindow& window_;
    frmMain& main_;
    std::string size_;
};

}  // namespace

void ListBench(const BenchArguments& arguments) {
    RealSystem system;
    RealWindow window(system.Plain());
    std::vector<std::vector<std::string>> files;
    for (const std::string& tree : arguments.trees) {
        files.push_back(FilesIn(tree));
    }
    for (int round = 0; round < arguments.rounds; ++round) {
        for (std::size_t i = 0; i < files.size(); ++i) {
            ListRound(window, NameOfTree(arguments.trees[i])).Run(files[i]);
        }
    }
}

}  // namespace tidemark
