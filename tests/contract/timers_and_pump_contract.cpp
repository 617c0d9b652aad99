// What timers and the message pump keep to, run on every implementation of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "contract/platform_under_test.h"
#include "platform/timer_queue.h"
#include "support/function_sink.h"

namespace tidemark {
namespace {

class TimersContract : public PlatformContract {
  protected:
    std::unique_ptr<TimerObject> Armed(ITimerObjectSink& sink, std::uint32_t interval) {
        auto timer = platform_.timers.NewTimer(TickKind::kLong);
        timer->SetSink(&sink);
        timer->SetInterval(interval);
        timer->SetEnabled(true);
        return timer;
    }
};

TEST_P(TimersContract, AnEnabledTimerTicksAgainAndAgain) {
    int ticks = 0;
    FunctionSink sink([&] { ++ticks; });
    const auto timer = Armed(sink, 20);
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(system_->RunUntil([&] { return ticks >= 3; }));
    EXPECT_TRUE(timer->Enabled());
}

TEST_P(TimersContract, LongTicksOnHoldRunWhenTheyAreReleased) {
    int refreshes = 0;
    int works = 0;
    FunctionSink refresh([&] { ++refreshes; });
    FunctionSink work([&] { ++works; });
    auto brief = platform_.timers.NewTimer(TickKind::kBrief);
    brief->SetSink(&refresh);
    brief->SetInterval(20);
    brief->SetEnabled(true);
    {
        const LongTicksHeld held(platform_.timers);
        const auto before = Armed(work, 20);
        EXPECT_TRUE(system_->RunUntil([&] { return refreshes >= 5; }));
    }
    EXPECT_EQ(works, 0) << "disarmed while they were held";
    const auto timer = Armed(work, 20);
    {
        const LongTicksHeld held(platform_.timers);
        refreshes = 0;
        EXPECT_TRUE(system_->RunUntil([&] { return refreshes >= 5; }));
        EXPECT_EQ(works, 0);
        brief->SetEnabled(false);
    }
    EXPECT_TRUE(system_->RunUntil([&] { return works >= 1; }));
}

TEST_P(TimersContract, DisablingInTheFirstTickMakesItOneShot) {
    int ticks = 0;
    int others = 0;
    std::unique_ptr<TimerObject> timer;
    FunctionSink sink([&] {
        ++ticks;
        timer->SetEnabled(false);
    });
    FunctionSink other([&] { ++others; });
    timer = Armed(sink, 20);
    const auto witness = Armed(other, 20);
    EXPECT_TRUE(system_->RunUntil([&] { return others >= 5; }));
    EXPECT_EQ(ticks, 1);
}

TEST_P(TimersContract, ShorterIntervalsTickFirst) {
    std::string order;
    std::vector<std::unique_ptr<TimerObject>> timers;
    std::vector<std::unique_ptr<FunctionSink>> sinks;
    for (const std::uint32_t interval : {320U, 20U, 170U}) {
        const std::size_t index = timers.size();
        sinks.push_back(std::make_unique<FunctionSink>([&, index, interval] {
            timers[index]->SetEnabled(false);
            order += std::to_string(interval) + " ";
        }));
        timers.push_back(Armed(*sinks.back(), interval));
    }
    EXPECT_TRUE(system_->RunUntil([&] { return order.size() >= 11; }));
    EXPECT_EQ(order, "20 170 320 ");
}

TEST_P(TimersContract, ADestroyedTimerTicksNoMore) {
    int ticks = 0;
    int others = 0;
    FunctionSink sink([&] { ++ticks; });
    FunctionSink other([&] { ++others; });
    auto timer = Armed(sink, 20);
    const auto witness = Armed(other, 20);
    timer.reset();
    EXPECT_TRUE(system_->RunUntil([&] { return others >= 3; }));
    EXPECT_EQ(ticks, 0);
}

TEST_P(TimersContract, TicksThatLetMessagesRunNestOnlyToABoundedDepthAndAllRun) {
    constexpr std::size_t kCount = 100;
    std::vector<std::unique_ptr<TimerObject>> timers;
    std::vector<std::unique_ptr<FunctionSink>> sinks;
    int depth = 0;
    int deepest = 0;
    std::size_t finished = 0;
    for (std::size_t i = 0; i < kCount; ++i) {
        sinks.push_back(std::make_unique<FunctionSink>([&, i] {
            timers[i]->SetEnabled(false);
            deepest = std::max(deepest, ++depth);
            // Until the bound is reached each tick gives the next one time to come in.
            for (int wait = 0; wait < 200 && deepest < TimerQueue::kMaxLongDepth; ++wait) {
                system_->PassTime();
                platform_.pump.LetPendingMessagesRun();
            }
            platform_.pump.RunPendingMessagesNow();
            --depth;
            ++finished;
        }));
    }
    for (const auto& sink : sinks) {
        timers.push_back(Armed(*sink, 20));
    }
    EXPECT_TRUE(system_->RunUntil([&] { return finished == kCount; }));
    EXPECT_EQ(deepest, TimerQueue::kMaxLongDepth);
}

TEST_P(TimersContract, AnExceptionOfATickIsReportedAndTheOthersGoOn) {
    std::unique_ptr<TimerObject> failing;
    int ticks = 0;
    FunctionSink sink([&] {
        failing->SetEnabled(false);
        throw std::runtime_error("a tick failed");
    });
    FunctionSink other([&] { ++ticks; });
    failing = Armed(sink, 20);
    const auto witness = Armed(other, 20);
    EXPECT_TRUE(system_->RunUntil([&] { return ticks >= 2; }));
    EXPECT_EQ(system_->ReportedExceptions(), 1U);
}

TIDEMARK_ON_EVERY_PLATFORM(TimersContract);

class PumpContract : public PlatformContract {
  protected:
    MessagePump& pump_ = platform_.pump;
};

TEST_P(PumpContract, AMessageRunsInsideTheWorkThatAsks) {
    bool ran = false;
    system_->Post([&] { ran = true; });
    EXPECT_FALSE(ran);
    system_->PassTime();
    // Work asks again and again; a few asks at most go by unheard.
    for (int ask = 0; ask < 10; ++ask) {
        pump_.LetPendingMessagesRun();
    }
    EXPECT_TRUE(ran);
}

TEST_P(PumpContract, ASingleCommandNeedNotWait) {
    pump_.RunPendingMessagesNow();
    bool ran = false;
    system_->Post([&] { ran = true; });
    pump_.RunPendingMessagesNow();
    EXPECT_TRUE(ran);
}

TEST_P(PumpContract, DueTicksRunInsideTheWorkThatAsks) {
    int ticks = 0;
    FunctionSink sink([&] { ++ticks; });
    const auto timer = platform_.timers.NewTimer(TickKind::kLong);
    timer->SetSink(&sink);
    timer->SetInterval(20);
    timer->SetEnabled(true);
    for (int i = 0; i < 200 && ticks == 0; ++i) {
        system_->PassTime();
        pump_.LetPendingMessagesRun();
    }
    EXPECT_GT(ticks, 0);
}

TEST_P(PumpContract, ACommandThatLetsMessagesRunStartsNoLongTick) {
    int longs = 0;
    int briefs = 0;
    FunctionSink long_sink([&] { ++longs; });
    FunctionSink brief_sink([&] { ++briefs; });
    const auto armed = [&](TickKind kind, ITimerObjectSink& sink) {
        auto timer = platform_.timers.NewTimer(kind);
        timer->SetSink(&sink);
        timer->SetInterval(20);
        timer->SetEnabled(true);
        return timer;
    };
    const auto long_timer = armed(TickKind::kLong, long_sink);
    const auto brief_timer = armed(TickKind::kBrief, brief_sink);
    for (int i = 0; i < 200 && briefs < 3; ++i) {
        system_->PassTime();
        pump_.RunPendingMessagesNow();
    }
    EXPECT_GE(briefs, 3);
    EXPECT_EQ(longs, 0);
    // It is still due: the message loop runs it.
    EXPECT_TRUE(system_->RunUntil([&] { return longs > 0; }));
}

TEST_P(PumpContract, AModalLoopThatACommandsMessageOpensRunsLongTicks) {
    int ticks = 0;
    FunctionSink sink([&] { ++ticks; });
    const auto timer = platform_.timers.NewTimer(TickKind::kLong);
    timer->SetSink(&sink);
    timer->SetInterval(20);
    timer->SetEnabled(true);
    bool ran = false;
    system_->Post([&] { ran = system_->RunUntil([&] { return ticks > 0; }); });
    pump_.RunPendingMessagesNow();
    EXPECT_TRUE(ran);
}

TEST_P(PumpContract, NothingRunsAfterAQuit) {
    system_->PostQuit();
    pump_.RunPendingMessagesNow();
    bool ran = false;
    system_->Post([&] { ran = true; });
    system_->PassTime();
    for (int ask = 0; ask < 10; ++ask) {
        pump_.LetPendingMessagesRun();
    }
    pump_.RunPendingMessagesNow();
    EXPECT_FALSE(ran);
}

TIDEMARK_ON_EVERY_PLATFORM(PumpContract);

}  // namespace
}  // namespace tidemark
