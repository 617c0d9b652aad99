#include "platform/memory/memory_message_pump.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace tidemark {

void MemoryMessagePump::AtCall(std::size_t nth, std::function<void()> action) {
    actions_[calls_ + nth].push_back(std::move(action));
}

void MemoryMessagePump::Run(TimerQueue::Allowed ticks) {
    ++calls_;
    if (quit_) {
        return;
    }
    deepest_ = std::max(deepest_, ++depth_);
    now_ += per_call_;
    if (const auto due = actions_.extract(calls_)) {
        for (const auto& action : due.mapped()) {
            RunGuarded(action);
        }
    }
    if (at_every_call_) {
        RunGuarded(at_every_call_);
    }
    RunDueTicks(ticks);
    --depth_;
}

void MemoryMessagePump::RunFor(std::uint64_t milliseconds) {
    const std::uint64_t end = now_ + milliseconds;
    while (wake_ && *wake_ <= end) {
        now_ = std::max(now_, *wake_);
        RunDueTicks(TimerQueue::Allowed::kAll);
    }
    now_ = std::max(now_, end);
}

void MemoryMessagePump::RunUntilIdle() {
    while (wake_) {
        now_ = std::max(now_, *wake_);
        RunDueTicks(TimerQueue::Allowed::kAll);
    }
}

void MemoryMessagePump::RunGuarded(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& error) {
        failures_.emplace_back(error.what());
    }
}

// Only when the queue asked to be woken, as the real system does.
void MemoryMessagePump::RunDueTicks(TimerQueue::Allowed ticks) {
    if (wake_ && *wake_ <= now_) {
        wake_.reset();
        RunGuarded([this, ticks] { timers_.RunDue(ticks); });
    }
}

}  // namespace tidemark
