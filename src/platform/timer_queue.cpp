#include "platform/timer_queue.h"

#include <algorithm>
#include <cstddef>

namespace tidemark {

class TimerQueue::Timer final : public TimerObject {
  public:
    Timer(TimerQueue& queue, TickKind kind) : queue_(queue), kind_(kind) {}
    ~Timer() override { Timer::SetEnabled(false); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    void SetSink(ITimerObjectSink* sink) override { sink_ = sink; }

    void SetInterval(std::uint32_t milliseconds) override {
        interval_ = std::max<std::uint32_t>(milliseconds, 1);
        if (key_) {
            Rearm();
        }
    }

    void SetEnabled(bool enabled) override {
        if (enabled == Enabled()) {
            return;
        }
        if (enabled) {
            key_ = queue_.Arm(*this, kind_, interval_);
        } else {
            queue_.Disarm(kind_, *key_);
            key_.reset();
        }
    }

    [[nodiscard]] bool Enabled() const override { return key_.has_value(); }

    // Starts the interval of an enabled timer afresh.
    void Rearm() { key_ = queue_.Rearm(kind_, *key_, interval_); }

    [[nodiscard]] ITimerObjectSink* Sink() const { return sink_; }
    [[nodiscard]] TickKind Kind() const { return kind_; }

  private:
    TimerQueue& queue_;
    TickKind kind_;
    std::uint32_t interval_ = 1;
    ITimerObjectSink* sink_ = nullptr;
    // Where it stands in the queue; empty while disabled.
    std::optional<Key> key_;
};

// One tick on the stack. When it leaves, however it leaves, ticks it held back get their wake-up.
struct TimerQueue::RunningTick {
    RunningTick(TimerQueue& queue, Lane& lane) : queue_(queue), lane_(lane) { ++lane_.depth; }
    ~RunningTick() {
        --lane_.depth;
        queue_.AskForWakeUp();
    }
    RunningTick(const RunningTick&) = delete;
    RunningTick& operator=(const RunningTick&) = delete;

  private:
    TimerQueue& queue_;
    Lane& lane_;
};

TimerQueue::TimerQueue(TimerQueueHost& host) : host_(host) {
    LaneOf(TickKind::kLong).max_depth = kMaxLongDepth;
    LaneOf(TickKind::kBrief).max_depth = kMaxBriefDepth;
}

TimerQueue::~TimerQueue() = default;

std::unique_ptr<TimerObject> TimerQueue::NewTimer(TickKind kind) {
    return std::make_unique<Timer>(*this, kind);
}

void TimerQueue::ReleaseLongTicks() noexcept {
    --LaneOf(TickKind::kLong).holds;
    AskForWakeUp();
}

void TimerQueue::RunDue(Allowed allowed) {
    asked_.reset();
    // One reading for the whole run: a timer that is armed in here waits for the next one, so that
    // ticks which arm each other cannot keep the message loop out for ever.
    const std::uint64_t now = host_.Now();
    for (const Lane* lane = NextLane(allowed); lane != nullptr; lane = NextLane(allowed)) {
        const auto& [key, timer] = *lane->waiting.begin();
        if (key.first > now) {
            break;
        }
        // The tick may destroy the timer: nothing of it is touched from here on.
        ITimerObjectSink* const sink = timer->Sink();
        Lane& running = LaneOf(timer->Kind());
        timer->Rearm();
        if (sink != nullptr) {
            const RunningTick tick(*this, running);
            sink->ITimerObjectSink_Timer();
        }
    }
    AskForWakeUp();
}

std::optional<std::uint64_t> TimerQueue::NextDue() const noexcept {
    const Lane* const lane = NextLane();
    if (lane == nullptr) {
        return std::nullopt;
    }
    return lane->waiting.begin()->first.first;
}

TimerQueue::Lane& TimerQueue::LaneOf(TickKind kind) {
    return lanes_[static_cast<std::size_t>(kind)];
}

// The lane whose first tick may run and is due before the other's; null when none may run.
const TimerQueue::Lane* TimerQueue::NextLane(Allowed allowed) const noexcept {
    const Lane* next = nullptr;
    for (const Lane& lane : lanes_) {
        const bool held = allowed == Allowed::kBriefOnly &&
                          &lane == &lanes_[static_cast<std::size_t>(TickKind::kLong)];
        if (!held && lane.MayRun() &&
            (next == nullptr || lane.waiting.begin()->first < next->waiting.begin()->first)) {
            next = &lane;
        }
    }
    return next;
}

TimerQueue::Key TimerQueue::Arm(Timer& timer, TickKind kind, std::uint32_t interval) {
    const Key key{host_.Now() + interval, ++armed_count_};
    LaneOf(kind).waiting.emplace(key, &timer);
    AskForWakeUp();
    return key;
}

// Moves the entry as it is, so that nothing can fail half-way.
TimerQueue::Key TimerQueue::Rearm(TickKind kind, const Key& key, std::uint32_t interval) {
    Lane& lane = LaneOf(kind);
    auto entry = lane.waiting.extract(key);
    entry.key() = Key{host_.Now() + interval, ++armed_count_};
    const Key rearmed = entry.key();
    lane.waiting.insert(std::move(entry));
    AskForWakeUp();
    return rearmed;
}

void TimerQueue::Disarm(TickKind kind, const Key& key) {
    LaneOf(kind).waiting.erase(key);
}

// A wake-up that is owed already and comes no later will do: asking the system costs more than
// everything else in here, and an idle wake-up now and then costs nothing.
void TimerQueue::AskForWakeUp() noexcept {
    const std::optional<std::uint64_t> due = NextDue();
    if (due && (!asked_ || *due < *asked_)) {
        asked_ = due;
        host_.WakeAt(*due);
    }
}

}  // namespace tidemark
