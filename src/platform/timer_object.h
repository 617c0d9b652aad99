#pragma once

#include <cstdint>
#include <memory>

namespace tidemark {

// Receives the ticks of a TimerObject.
class ITimerObjectSink {
  public:
    virtual void ITimerObjectSink_Timer() = 0;

  protected:
    ~ITimerObjectSink() = default;
};

// A timer that calls its sink on the user-interface thread each time its interval has passed while
// it is enabled. A one-shot use disables the timer in its first tick; one that does not, and lets
// messages run in its tick, may be called again inside it. Created disabled, without a sink and
// with an interval of one millisecond. Destroying the timer, also from inside its own tick, ends
// its ticks.
class TimerObject {
  public:
    virtual ~TimerObject() = default;

    // The sink is not owned and must outlive its registration; null detaches.
    virtual void SetSink(ITimerObjectSink* sink) = 0;
    // Zero counts as one millisecond. A new interval of an enabled timer starts from now.
    virtual void SetInterval(std::uint32_t milliseconds) = 0;
    // Enabling starts a full interval from now; enabling an enabled timer changes nothing.
    virtual void SetEnabled(bool enabled) = 0;
    [[nodiscard]] virtual bool Enabled() const = 0;
};

// What a timer's ticks are like, which decides how they may nest.
enum class TickKind {
    kLong,   // may work for minutes and lets messages run meanwhile
    kBrief,  // soon done, such as a refresh of the display; long ticks on the stack never delay it
};

// Makes timers. All timers of one source share one system timer; their ticks may nest (a tick that
// lets messages run can see another timer's tick), but only to a bounded depth: a tick held back
// by the bound runs when the stack has unwound.
class TimerSource {
  public:
    virtual ~TimerSource() = default;
    // The source must outlive its timers.
    [[nodiscard]] virtual std::unique_ptr<TimerObject> NewTimer(TickKind kind) = 0;

    // Between the two, which nest, no long tick begins; those that fall due stay due. Brief ticks
    // run as ever.
    virtual void HoldLongTicks() = 0;
    virtual void ReleaseLongTicks() noexcept = 0;
};

// Holds long ticks back while alive: a loop that lets messages run gets through, and does not find
// minutes of other work inside one of its rounds.
class LongTicksHeld {
  public:
    explicit LongTicksHeld(TimerSource& timers) : timers_(timers) { timers_.HoldLongTicks(); }
    LongTicksHeld(const LongTicksHeld&) = delete;
    LongTicksHeld& operator=(const LongTicksHeld&) = delete;
    ~LongTicksHeld() { timers_.ReleaseLongTicks(); }

  private:
    TimerSource& timers_;
};

}  // namespace tidemark
