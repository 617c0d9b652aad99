#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "platform/timer_object.h"

namespace tidemark {

// What a TimerQueue needs of the system: a clock and one timer.
class TimerQueueHost {
  public:
    // Milliseconds on a clock that never goes back.
    [[nodiscard]] virtual std::uint64_t Now() = 0;

    // Asks for one TimerQueue::RunDue at or soon after the given time. A new request replaces the
    // one before. A wake-up that turns out too early does no harm.
    virtual void WakeAt(std::uint64_t time) noexcept = 0;

  protected:
    ~TimerQueueHost() = default;
};

// Timers that share the one timer of their host, in a queue by due time (ties in arming order).
// Arming and disarming take logarithmic time and hardly ever ask the host for anything.
class TimerQueue final : public TimerSource {
  public:
    // Ticks of one kind that may be on the stack at once.
    static constexpr int kMaxLongDepth = 12;
    static constexpr int kMaxBriefDepth = 4;

    // The host is not owned and must outlive the queue.
    explicit TimerQueue(TimerQueueHost& host);
    ~TimerQueue() override;
    TimerQueue(const TimerQueue&) = delete;
    TimerQueue& operator=(const TimerQueue&) = delete;

    [[nodiscard]] std::unique_ptr<TimerObject> NewTimer(TickKind kind) override;
    void HoldLongTicks() override { ++LaneOf(TickKind::kLong).holds; }
    void ReleaseLongTicks() noexcept override;

    // Which ticks a run may start.
    enum class Allowed { kAll, kBriefOnly };

    // Runs the ticks that are due now and allowed, those held back by the nesting bound excepted.
    // Ticks that are not allowed stay due. May be called again from inside a tick. A tick's
    // exception passes through; the ticks behind it stay due.
    void RunDue(Allowed allowed = Allowed::kAll);

    // When the next tick that may run is due; nothing when there is none, or when all there are are
    // held back by the nesting bound or on request.
    [[nodiscard]] std::optional<std::uint64_t> NextDue() const noexcept;

  private:
    class Timer;
    struct RunningTick;

    // Due time, then arming order.
    using Key = std::pair<std::uint64_t, std::uint64_t>;
    struct Lane {
        std::map<Key, Timer*> waiting;
        int depth = 0;
        int max_depth = 0;
        int holds = 0;
        [[nodiscard]] bool MayRun() const {
            return depth < max_depth && holds == 0 && !waiting.empty();
        }
    };

    [[nodiscard]] Lane& LaneOf(TickKind kind);
    [[nodiscard]] const Lane* NextLane(Allowed allowed = Allowed::kAll) const noexcept;
    Key Arm(Timer& timer, TickKind kind, std::uint32_t interval);
    Key Rearm(TickKind kind, const Key& key, std::uint32_t interval);
    void Disarm(TickKind kind, const Key& key);
    void AskForWakeUp() noexcept;

    TimerQueueHost& host_;
    std::array<Lane, 2> lanes_;
    std::uint64_t armed_count_ = 0;
    // The wake-up that the host still owes.
    std::optional<std::uint64_t> asked_;
};

}  // namespace tidemark
