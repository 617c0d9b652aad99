#include "platform/timer_queue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/function_sink.h"
#include "support/manual_clock.h"

namespace tidemark {
namespace {

class TimerQueueTest : public testing::Test {
  protected:
    // Moves the clock as a system timer would: from wake-up to wake-up.
    void Advance(std::uint64_t milliseconds) {
        const std::uint64_t end = clock_.now + milliseconds;
        while (clock_.wake_at && *clock_.wake_at <= end) {
            clock_.now = std::max(clock_.now, *clock_.wake_at);
            clock_.wake_at.reset();
            queue_.RunDue();
        }
        clock_.now = end;
    }

    std::unique_ptr<TimerObject> Armed(ITimerObjectSink& sink, std::uint32_t interval,
                                       TickKind kind = TickKind::kLong) {
        auto timer = queue_.NewTimer(kind);
        timer->SetSink(&sink);
        timer->SetInterval(interval);
        timer->SetEnabled(true);
        return timer;
    }

    ManualClock clock_;
    TimerQueue queue_{clock_};
    std::string log_;
};

TEST_F(TimerQueueTest, ATimerStartsDisabledAndAsksForNothing) {
    const auto timer = queue_.NewTimer(TickKind::kLong);
    EXPECT_FALSE(timer->Enabled());
    EXPECT_EQ(clock_.requests, 0);
    EXPECT_EQ(queue_.NextDue(), std::nullopt);
}

TEST_F(TimerQueueTest, TicksComeOnceEachTimeTheIntervalHasPassed) {
    FunctionSink sink([&] { log_ += std::to_string(clock_.now) + " "; });
    const auto timer = Armed(sink, 50);
    Advance(49);
    EXPECT_EQ(log_, "");
    Advance(1);
    EXPECT_EQ(log_, "1050 ");
    Advance(100);
    EXPECT_EQ(log_, "1050 1100 1150 ");
}

TEST_F(TimerQueueTest, ALateTickIsNotMadeUpFor) {
    int ticks = 0;
    FunctionSink sink([&] { ++ticks; });
    const auto timer = Armed(sink, 50);
    clock_.now += 1000;
    queue_.RunDue();
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(queue_.NextDue(), clock_.now + 50);
}

TEST_F(TimerQueueTest, DisablingInTheFirstTickMakesItOneShot) {
    int ticks = 0;
    std::unique_ptr<TimerObject> timer;
    FunctionSink sink([&] {
        ++ticks;
        timer->SetEnabled(false);
    });
    timer = Armed(sink, 50);
    Advance(500);
    EXPECT_EQ(ticks, 1);
    EXPECT_FALSE(timer->Enabled());
    timer->SetEnabled(true);
    Advance(500);
    EXPECT_EQ(ticks, 2);
}

TEST_F(TimerQueueTest, EnablingAnEnabledTimerDoesNotDelayIt) {
    int ticks = 0;
    FunctionSink sink([&] { ++ticks; });
    const auto timer = Armed(sink, 50);
    Advance(40);
    timer->SetEnabled(true);
    Advance(10);
    EXPECT_EQ(ticks, 1);
}

TEST_F(TimerQueueTest, ANewIntervalOfAnEnabledTimerStartsFromNow) {
    int ticks = 0;
    FunctionSink sink([&] { ++ticks; });
    const auto timer = Armed(sink, 50);
    Advance(40);
    timer->SetInterval(30);
    Advance(29);
    EXPECT_EQ(ticks, 0);
    Advance(1);
    EXPECT_EQ(ticks, 1);
}

TEST_F(TimerQueueTest, AnIntervalOfZeroDoesNotSpin) {
    int ticks = 0;
    FunctionSink sink([&] { ++ticks; });
    const auto timer = Armed(sink, 0);
    Advance(3);
    EXPECT_EQ(ticks, 3);
}

TEST_F(TimerQueueTest, TicksRunByDueTimeAndThenInArmingOrder) {
    FunctionSink a([&] { log_ += 'a'; });
    FunctionSink b([&] { log_ += 'b'; });
    FunctionSink c([&] { log_ += 'c'; });
    FunctionSink d([&] { log_ += 'd'; });
    const auto late = Armed(a, 80);
    const auto first = Armed(b, 50);
    const auto second = Armed(c, 50, TickKind::kBrief);
    const auto third = Armed(d, 50);
    clock_.now += 80;
    queue_.RunDue();
    EXPECT_EQ(log_, "bcda");
}

TEST_F(TimerQueueTest, ATimerWithoutASinkTicksForNobody) {
    FunctionSink sink([&] { log_ += 'x'; });
    const auto timer = Armed(sink, 50);
    timer->SetSink(nullptr);
    Advance(200);
    EXPECT_EQ(log_, "");
    EXPECT_TRUE(timer->Enabled());
    timer->SetSink(&sink);
    Advance(50);
    EXPECT_EQ(log_, "x");
}

TEST_F(TimerQueueTest, ATickMayDestroyItsOwnAndOtherTimers) {
    std::unique_ptr<TimerObject> own;
    std::unique_ptr<TimerObject> other;
    FunctionSink never([&] { log_ += '!'; });
    FunctionSink sink([&] {
        log_ += 'x';
        own.reset();
        other.reset();
    });
    own = Armed(sink, 50);
    other = Armed(never, 50);
    Advance(500);
    EXPECT_EQ(log_, "x");
    EXPECT_EQ(queue_.NextDue(), std::nullopt);
}

TEST_F(TimerQueueTest, ATickMayDisableAndRearmOtherTimers) {
    std::unique_ptr<TimerObject> dropped;
    std::unique_ptr<TimerObject> restarted;
    std::unique_ptr<TimerObject> one_shot;
    FunctionSink never([&] { log_ += '!'; });
    FunctionSink again([&] {
        log_ += 'r';
        restarted->SetEnabled(false);
    });
    FunctionSink sink([&] {
        log_ += 'x';
        one_shot->SetEnabled(false);
        dropped->SetEnabled(false);
        restarted->SetEnabled(false);
        restarted->SetEnabled(true);
    });
    one_shot = Armed(sink, 50);
    dropped = Armed(never, 50);
    restarted = Armed(again, 50);
    Advance(50);
    EXPECT_EQ(log_, "x");
    Advance(50);
    EXPECT_EQ(log_, "xr");
}

TEST_F(TimerQueueTest, TimersThatArmEachOtherDoNotKeepOneRunGoingForEver) {
    std::unique_ptr<TimerObject> ping;
    std::unique_ptr<TimerObject> pong;
    int ticks = 0;
    FunctionSink sink([&] {
        ++ticks;
        ping->SetEnabled(false);
        ping->SetEnabled(true);
        pong->SetEnabled(false);
        pong->SetEnabled(true);
    });
    ping = Armed(sink, 1);
    pong = Armed(sink, 1);
    clock_.now += 10;
    queue_.RunDue();
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(queue_.NextDue(), clock_.now + 1);
}

// Ticks that let messages run, as a walk over folders does: each wakes the queue inside itself.
class NestingTimers {
  public:
    NestingTimers(TimerQueue& queue, ManualClock& clock, int count) : queue_(queue), clock_(clock) {
        for (int i = 0; i < count; ++i) {
            sinks_.push_back(std::make_unique<FunctionSink>([this, i] { Tick(i); }));
            timers_.push_back(queue.NewTimer(TickKind::kLong));
            timers_.back()->SetSink(sinks_.back().get());
            timers_.back()->SetInterval(50);
            timers_.back()->SetEnabled(true);
        }
    }

    int depth = 0;
    int deepest = 0;
    std::vector<int> order;

  private:
    void Tick(int index) {
        timers_[static_cast<std::size_t>(index)]->SetEnabled(false);
        deepest = std::max(deepest, ++depth);
        clock_.wake_at.reset();
        queue_.RunDue();
        --depth;
        order.push_back(index);
    }

    TimerQueue& queue_;
    ManualClock& clock_;
    std::vector<std::unique_ptr<FunctionSink>> sinks_;
    std::vector<std::unique_ptr<TimerObject>> timers_;
};

TEST_F(TimerQueueTest, FiveThousandNestingTicksAllRunWithinTheBound) {
    NestingTimers timers(queue_, clock_, 5000);
    clock_.now += 50;
    queue_.RunDue();
    EXPECT_EQ(timers.order.size(), 5000U);
    EXPECT_EQ(timers.deepest, TimerQueue::kMaxLongDepth);
    EXPECT_EQ(queue_.NextDue(), std::nullopt);
}

TEST_F(TimerQueueTest, ATickHeldBackByTheBoundAsksForItsWakeUpWhenTheStackUnwinds) {
    std::vector<std::unique_ptr<FunctionSink>> sinks;
    std::vector<std::unique_ptr<TimerObject>> timers;
    std::optional<std::uint64_t> asked_at_the_bound;
    std::optional<std::uint64_t> asked_after_it;
    bool held_back_ran = false;
    // The timers come due one inside the other, so that each level's run has nothing else to do.
    for (int i = 0; i < TimerQueue::kMaxLongDepth; ++i) {
        sinks.push_back(std::make_unique<FunctionSink>([&, i] {
            const auto index = static_cast<std::size_t>(i);
            timers[index]->SetEnabled(false);
            if (i + 1 < TimerQueue::kMaxLongDepth) {
                timers[index + 1]->SetEnabled(true);
            } else {
                timers.back()->SetEnabled(true);
            }
            clock_.now += 50;
            clock_.wake_at.reset();
            queue_.RunDue();
            if (i + 1 == TimerQueue::kMaxLongDepth) {
                asked_at_the_bound = clock_.wake_at;
                EXPECT_FALSE(held_back_ran);
                EXPECT_EQ(queue_.NextDue(), std::nullopt);
            } else if (i + 2 == TimerQueue::kMaxLongDepth) {
                asked_after_it = clock_.wake_at;
            }
        }));
    }
    sinks.push_back(std::make_unique<FunctionSink>([&] {
        held_back_ran = true;
        timers.back()->SetEnabled(false);
    }));
    for (const auto& sink : sinks) {
        timers.push_back(queue_.NewTimer(TickKind::kLong));
        timers.back()->SetSink(sink.get());
        timers.back()->SetInterval(50);
    }
    timers.front()->SetEnabled(true);
    clock_.now += 50;
    queue_.RunDue();
    EXPECT_EQ(asked_at_the_bound, std::nullopt);
    EXPECT_NE(asked_after_it, std::nullopt);
    Advance(0);
    EXPECT_TRUE(held_back_ran);
}

TEST_F(TimerQueueTest, LongTicksOnHoldStayDueWhileBriefOnesRun) {
    int brief_ticks = 0;
    int long_ticks = 0;
    FunctionSink refresh([&] { ++brief_ticks; });
    FunctionSink work([&] { ++long_ticks; });
    const auto brief = Armed(refresh, 400, TickKind::kBrief);
    const auto before = Armed(work, 50);
    auto outer = std::make_unique<LongTicksHeld>(queue_);
    auto inner = std::make_unique<LongTicksHeld>(queue_);
    const auto meanwhile = Armed(work, 50);
    Advance(1000);
    EXPECT_EQ(brief_ticks, 2);
    inner.reset();
    Advance(400);
    EXPECT_EQ(brief_ticks, 3);
    EXPECT_EQ(long_ticks, 0);
    brief->SetEnabled(false);
    clock_.wake_at.reset();
    EXPECT_EQ(queue_.NextDue(), std::nullopt) << "a held tick asks for no wake-up";

    outer.reset();
    ASSERT_NE(clock_.wake_at, std::nullopt);
    EXPECT_LE(*clock_.wake_at, clock_.now);
    Advance(0);
    EXPECT_EQ(long_ticks, 2);
}

TEST_F(TimerQueueTest, AHoldThatATickPutsOnReachesTheTicksBehindIt) {
    std::unique_ptr<LongTicksHeld> held;
    FunctionSink first([&] {
        log_ += "first ";
        held = std::make_unique<LongTicksHeld>(queue_);
    });
    FunctionSink second([&] { log_ += "second "; });
    const auto one = Armed(first, 50);
    const auto other = Armed(second, 50);
    Advance(50);
    EXPECT_EQ(log_, "first ");
    one->SetEnabled(false);
    held.reset();
    Advance(0);
    EXPECT_EQ(log_, "first second ");
}

TEST_F(TimerQueueTest, BriefTicksRunOnTopOfAStackFullOfLongOnes) {
    std::vector<std::unique_ptr<FunctionSink>> sinks;
    std::vector<std::unique_ptr<TimerObject>> timers;
    int brief_ticks = 0;
    int long_ticks = 0;
    FunctionSink refresh([&] { ++brief_ticks; });
    const auto brief = Armed(refresh, 400, TickKind::kBrief);
    for (int i = 0; i <= TimerQueue::kMaxLongDepth; ++i) {
        sinks.push_back(std::make_unique<FunctionSink>([&, i] {
            timers[static_cast<std::size_t>(i)]->SetEnabled(false);
            ++long_ticks;
            if (long_ticks == TimerQueue::kMaxLongDepth) {
                clock_.now += 400;
                queue_.RunDue();
                EXPECT_EQ(brief_ticks, 1);
                EXPECT_EQ(long_ticks, TimerQueue::kMaxLongDepth);
            } else {
                queue_.RunDue();
            }
        }));
        timers.push_back(Armed(*sinks.back(), 50));
    }
    clock_.now += 50;
    queue_.RunDue();
    EXPECT_EQ(brief_ticks, 1);
    EXPECT_EQ(long_ticks, TimerQueue::kMaxLongDepth + 1);
}

TEST_F(TimerQueueTest, APeriodicBriefTickThatLetsMessagesRunIsBoundedToo) {
    int depth = 0;
    int deepest = 0;
    FunctionSink sink([&] {
        deepest = std::max(deepest, ++depth);
        clock_.now += 50;
        queue_.RunDue();
        --depth;
    });
    const auto timer = Armed(sink, 50, TickKind::kBrief);
    clock_.now += 50;
    queue_.RunDue();
    EXPECT_EQ(deepest, TimerQueue::kMaxBriefDepth);
}

TEST_F(TimerQueueTest, LongTicksThatAreNotAllowedStayDueWhileBriefOnesRun) {
    FunctionSink work([&] { log_ += "long "; });
    FunctionSink refresh([&] { log_ += "brief "; });
    const auto long_timer = Armed(work, 50);
    const auto brief_timer = Armed(refresh, 60, TickKind::kBrief);
    clock_.now += 60;
    queue_.RunDue(TimerQueue::Allowed::kBriefOnly);
    EXPECT_EQ(log_, "brief ");
    ASSERT_TRUE(clock_.wake_at.has_value());
    EXPECT_LE(*clock_.wake_at, clock_.now) << "what was held back asks again at once";
    queue_.RunDue();
    EXPECT_EQ(log_, "brief long ");
}

TEST_F(TimerQueueTest, AnExceptionPassesThroughAndTheTicksBehindItStillCome) {
    std::unique_ptr<TimerObject> failing;
    FunctionSink sink([&] {
        failing->SetEnabled(false);
        throw std::runtime_error("tick");
    });
    FunctionSink next([&] { log_ += 'n'; });
    failing = Armed(sink, 50);
    const auto behind = Armed(next, 50);
    clock_.now += 50;
    clock_.wake_at.reset();
    EXPECT_THROW(queue_.RunDue(), std::runtime_error);
    EXPECT_EQ(log_, "");
    ASSERT_TRUE(clock_.wake_at);
    EXPECT_LE(*clock_.wake_at, clock_.now);
    Advance(0);
    EXPECT_EQ(log_, "n");
}

TEST_F(TimerQueueTest, ExceptionsDoNotUseUpTheNestingDepth) {
    FunctionSink sink([&] { throw std::runtime_error("tick"); });
    const auto timer = Armed(sink, 50);
    for (int i = 0; i < 3 * TimerQueue::kMaxLongDepth; ++i) {
        clock_.now += 50;
        EXPECT_THROW(queue_.RunDue(), std::runtime_error);
    }
}

TEST_F(TimerQueueTest, AnEarlierWakeUpReplacesALaterOneAndALaterOneIsNotAskedFor) {
    FunctionSink sink([] {});
    const auto slow = Armed(sink, 400);
    EXPECT_EQ(clock_.wake_at, 1400U);
    const auto quick = Armed(sink, 50);
    EXPECT_EQ(clock_.wake_at, 1050U);
    const auto between = Armed(sink, 100);
    EXPECT_EQ(clock_.wake_at, 1050U);
    EXPECT_EQ(clock_.requests, 2);
}

TEST_F(TimerQueueTest, AWakeUpThatIsTooEarlyRunsNothingAndIsAskedForAgain) {
    int ticks = 0;
    FunctionSink sink([&] { ++ticks; });
    const auto slow = Armed(sink, 400);
    { const auto quick = Armed(sink, 50); }
    Advance(50);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(clock_.wake_at, 1400U);
    Advance(350);
    EXPECT_EQ(ticks, 1);
}

TEST_F(TimerQueueTest, AHundredThousandTimersAskTheSystemForNextToNothing) {
    constexpr std::size_t kCount = 100000;
    std::size_t ticks = 0;
    std::vector<std::unique_ptr<TimerObject>> timers;
    timers.reserve(kCount);
    FunctionSink sink([&] { ++ticks; });
    for (std::size_t i = 0; i < kCount; ++i) {
        clock_.now += static_cast<std::uint64_t>(i % 97 == 0);
        timers.push_back(Armed(sink, 50 + static_cast<std::uint32_t>(i % 13)));
    }
    // From the far end, which a queue that searches its entries would not finish in time.
    timers.resize(kCount / 2);
    clock_.now += 100;
    queue_.RunDue();
    EXPECT_EQ(ticks, kCount / 2);
    EXPECT_LE(clock_.requests, 20);
}

}  // namespace
}  // namespace tidemark
