#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/message_pump.h"
#include "platform/timer_queue.h"

namespace tidemark {

// The user-interface thread in memory: a clock that moves only when told, the timers on it, and
// the pump that long work asks. Like the real one it lets no exception of a tick or an action out
// into the work that pumps: it is kept for the test to look at.
class MemoryMessagePump final : public MessagePump, private TimerQueueHost {
  public:
    MemoryMessagePump() : timers_(*this) {}

    [[nodiscard]] TimerQueue& Timers() { return timers_; }

    // Runs inside the nth pump call from now (1 is the next), before the ticks that are due.
    void AtCall(std::size_t nth, std::function<void()> action);
    // Forgets the actions whose call has not come.
    void ClearActions() { actions_.clear(); }
    // Runs inside every pump call; empty for none.
    void AtEveryCall(std::function<void()> action) { at_every_call_ = std::move(action); }
    // Milliseconds that pass before each pump call (none at first).
    void SetMillisecondsPerCall(std::uint64_t milliseconds) { per_call_ = milliseconds; }
    // How often SliceIsOver answers no before it answers yes (always no at first).
    void SetAsksPerSlice(std::size_t asks) { asks_per_slice_ = asks; }
    // A quit message was met: from now on pump calls do nothing.
    void Quit() { quit_ = true; }

    // Pump calls made of either kind, those after a quit included.
    [[nodiscard]] std::size_t CallCount() const { return calls_; }
    // Most pump calls that were on the stack at once.
    [[nodiscard]] int DeepestNesting() const { return deepest_; }

    // The message loop. RunFor lets that much time pass and runs every tick as it falls due;
    // RunUntilIdle goes on until no timer is enabled.
    void RunFor(std::uint64_t milliseconds);
    void RunUntilIdle();

    // Descriptions of the exceptions that ticks and actions ended in.
    [[nodiscard]] const std::vector<std::string>& Failures() const { return failures_; }

    void LetPendingMessagesRun() override { Run(TimerQueue::Allowed::kAll); }
    void RunPendingMessagesNow() override { Run(TimerQueue::Allowed::kBriefOnly); }
    void StartSlice() override { asks_ = 0; }
    [[nodiscard]] bool SliceIsOver() override { return ++asks_ > asks_per_slice_; }

  private:
    std::uint64_t Now() override { return now_; }
    void WakeAt(std::uint64_t time) noexcept override { wake_ = time; }
    void RunGuarded(const std::function<void()>& work);
    void Run(TimerQueue::Allowed ticks);
    void RunDueTicks(TimerQueue::Allowed ticks);

    TimerQueue timers_;
    std::uint64_t now_ = 0;
    std::optional<std::uint64_t> wake_;
    std::map<std::size_t, std::vector<std::function<void()>>> actions_;
    std::function<void()> at_every_call_;
    std::uint64_t per_call_ = 0;
    std::size_t calls_ = 0;
    std::size_t asks_ = 0;
    std::size_t asks_per_slice_ = static_cast<std::size_t>(-1);
    int depth_ = 0;
    int deepest_ = 0;
    bool quit_ = false;
    std::vector<std::string> failures_;
};

}  // namespace tidemark
