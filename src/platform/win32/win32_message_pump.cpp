#include "platform/win32/win32_message_pump.h"

#include <utility>

#include "platform/win32/system_loop.h"

namespace tidemark {
namespace {

// No message waits longer than this; asking more often would cost more than the work it is asked
// from.
constexpr std::int64_t kLongestWaitMs = 10;

// Even the performance counter costs as much as a good part of listing an entry. It is read at
// every so many asks, or sooner when the system's clock has moved on: that one costs next to
// nothing, but its steps alone (about 16 ms) would be too coarse.
constexpr unsigned kAsksPerReading = 8;

// A flood of messages (a window that never finishes painting) must not stop the work for ever:
// after this long it goes on, and the rest has its turn next time.
constexpr std::int64_t kLongestRunMs = 50;
constexpr std::int64_t kLongestCommandRunMs = 1000;

}  // namespace

Win32MessagePump::Win32MessagePump(std::function<void(MSG&)> dispatch,
                                   std::function<void()> on_quit, Win32TimerSource& timers)
    : dispatch_(std::move(dispatch)), on_quit_(std::move(on_quit)), timers_(timers) {
    LARGE_INTEGER frequency;
    ::QueryPerformanceFrequency(&frequency);
    ticks_per_second_ = frequency.QuadPart;
    last_run_ = Ticks() - ticks_per_second_;
}

void Win32MessagePump::LetPendingMessagesRun() {
    const ULONGLONG clock = ::GetTickCount64();
    if (quit_ || (++asks_ < kAsksPerReading && clock == last_clock_)) {
        return;
    }
    asks_ = 0;
    last_clock_ = clock;
    if (Ticks() - last_run_ >= kLongestWaitMs * ticks_per_second_ / 1000) {
        Run(kLongestRunMs * ticks_per_second_ / 1000, TimerQueue::Allowed::kAll);
    }
}

void Win32MessagePump::RunPendingMessagesNow() {
    if (!quit_) {
        Run(kLongestCommandRunMs * ticks_per_second_ / 1000, TimerQueue::Allowed::kBriefOnly);
    }
}

bool Win32MessagePump::SliceIsOver() {
    return Ticks() - slice_start_ >= kLongestWaitMs * ticks_per_second_ / 1000;
}

std::int64_t Win32MessagePump::Ticks() {
    LARGE_INTEGER now;
    ::QueryPerformanceCounter(&now);
    return now.QuadPart;
}

void Win32MessagePump::Run(std::int64_t longest, TimerQueue::Allowed ticks) {
    const std::int64_t start = Ticks();
    if (InSystemLoop()) {
        last_run_ = start;  // that loop takes the messages, and soon
        return;
    }
    MSG message;
    while (::PeekMessageW(&message, /*hWnd=*/nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) {
            quit_ = true;
            ::PostQuitMessage(static_cast<int>(message.wParam));
            if (on_quit_) {
                on_quit_();
            }
            return;
        }
        // Only the timers' message that is taken here is restricted, not one that a modal loop
        // takes inside `dispatch_`: work goes on while a box stands.
        if (timers_.Receives(message)) {
            timers_.Wake(ticks);
        } else {
            dispatch_(message);
        }
        last_run_ = Ticks();
        // A message that ran this pump inside itself may have met the quit message there.
        if (quit_ || last_run_ - start >= longest) {
            return;
        }
    }
    last_run_ = Ticks();
}

}  // namespace tidemark
