#pragma once

#include <cstdint>
#include <functional>

#include "platform/message_pump.h"
#include "platform/win32/win32_timer_source.h"
#include "platform/win32/windows.h"

namespace tidemark {

// The thread's message queue, let run from inside long work. A loop of the system's own, for an
// open menu or a drag, keeps its messages.
class Win32MessagePump final : public MessagePump {
  public:
    // `dispatch` is given each message and does with it what the message loop does (dialog keys,
    // accelerators, translation); it lets no exception out. `on_quit` is called once, when a quit
    // message is met, so that work under way can be cancelled. `timers` is not owned and must
    // outlive the pump.
    Win32MessagePump(std::function<void(MSG&)> dispatch, std::function<void()> on_quit,
                     Win32TimerSource& timers);

    void LetPendingMessagesRun() override;
    void RunPendingMessagesNow() override;
    void StartSlice() override { slice_start_ = Ticks(); }
    [[nodiscard]] bool SliceIsOver() override;

  private:
    [[nodiscard]] static std::int64_t Ticks();
    void Run(std::int64_t longest, TimerQueue::Allowed ticks);

    std::function<void(MSG&)> dispatch_;
    std::function<void()> on_quit_;
    Win32TimerSource& timers_;
    bool quit_ = false;
    // Since the performance counter was read last.
    unsigned asks_ = 0;
    ULONGLONG last_clock_ = 0;
    std::int64_t ticks_per_second_ = 0;
    // When messages last had their turn.
    std::int64_t last_run_ = 0;
    std::int64_t slice_start_ = 0;
};

}  // namespace tidemark
