#pragma once

#include <functional>

#include "platform/timer_queue.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/windows.h"

namespace tidemark {

struct MessageWindowTraits {
    using Type = HWND;
    static Type None() noexcept { return nullptr; }
    static void Close(Type window) noexcept { ::DestroyWindow(window); }
};

// All timers of a thread on one system timer, which an unseen window receives. Ticks run wherever
// the thread dispatches messages; long ones do not begin inside a loop of the system's own. To be
// made and destroyed on that thread.
class Win32TimerSource final : public TimerSource, private TimerQueueHost {
  public:
    // `report_exception` is called with a tick's exception being handled: none may leave the
    // window procedure. Throws ProgramError when the system gives no window or timer.
    explicit Win32TimerSource(std::function<void()> report_exception);
    ~Win32TimerSource() override;
    Win32TimerSource(const Win32TimerSource&) = delete;
    Win32TimerSource& operator=(const Win32TimerSource&) = delete;

    [[nodiscard]] std::unique_ptr<TimerObject> NewTimer(TickKind kind) override {
        return queue_.NewTimer(kind);
    }
    void HoldLongTicks() override { queue_.HoldLongTicks(); }
    void ReleaseLongTicks() noexcept override { queue_.ReleaseLongTicks(); }

    // Whether the message is the one by which the system wakes this source.
    [[nodiscard]] bool Receives(const MSG& message) const;
    // Answers that message: runs the ticks that are due and allowed. No exception leaves.
    void Wake(TimerQueue::Allowed allowed);

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w_param,
                                            LPARAM l_param);

    [[nodiscard]] std::uint64_t Now() override { return ::GetTickCount64(); }
    void WakeAt(std::uint64_t time) noexcept override;

    std::function<void()> report_exception_;
    // Whether the queue asked for a wake-up since the last one began.
    bool wake_up_set_ = false;
    UniqueHandle<MessageWindowTraits> window_;
    TimerQueue queue_{*this};
};

}  // namespace tidemark
