#include <thread>

#include "benchmarks/benchmarks.h"
#include "benchmarks/measure.h"
#include "benchmarks/message_probe.h"
#include "benchmarks/real_window.h"

namespace tidemark {
namespace {

constexpr double kIdleTime = 300;  // milliseconds

void TimeWaits(RealSystem& system, const std::string& tree, int rounds) {
    RealWindow window(system.Plain());
    window.List({tree});
    for (int round = 0; round < rounds; ++round) {
        MessageProbe probe;
        const double start = NowMs();
        RunMessagesUntil([&] { return NowMs() - start >= kIdleTime; });
        PrintFigure("wait.idle", probe.LongestWait());
        probe.Forget();
        window.Choose("mnuViewRefresh");
        window.WaitForRest();
        PrintFigure("wait.count", probe.LongestWait());
        probe.Forget();
        window.Main().cmdStamp_Click();
        window.WaitForRest();
        PrintFigure("wait.stamp", probe.LongestWait());
    }
}

void TimeCancels(RealSystem& system, const std::string& tree, int rounds) {
    RealWindow window(system.Watched());
    window.List({tree});
    const HWND button = window.Main().cmdStamp.Handle();
    for (int round = 0; round < rounds; ++round) {
        window.Main().cmdStamp_Click();
        double pressed = 0;
        std::thread presser([&, round] {
            while (!system.Timers().InLongTick()) {
                ::Sleep(1);
            }
            ::Sleep(static_cast<DWORD>(5 + 7 * round));  // somewhere in a folder
            pressed = NowMs();
            ::PostMessageW(button, BM_CLICK, 0, 0);
        });
        window.WaitForRest();
        presser.join();
        const std::shared_ptr<TidemarkItem> item = *window.Main().Items().begin();
        if (!item->StampCancelled()) {
            GiveUp("the stamp was over before it could be cancelled");
        }
        PrintFigure("cancel", system.Timers().LastEnd() - pressed);
    }
}

}  // namespace

void AnswerBench(const BenchArguments& arguments) {
    RealSystem system;
    TimeWaits(system, arguments.trees.at(0), arguments.rounds);
    TimeCancels(system, arguments.trees.at(1), arguments.rounds);
}

}  // namespace tidemark
