#pragma once

#include <cstdint>
#include <optional>

#include "platform/timer_queue.h"

namespace tidemark {

// A clock that moves only when told, and the last wake-up that was asked of it.
class ManualClock final : public TimerQueueHost {
  public:
    [[nodiscard]] std::uint64_t Now() override { return now; }
    void WakeAt(std::uint64_t time) noexcept override {
        wake_at = time;
        ++requests;
    }

    std::uint64_t now = 1000;  // milliseconds
    std::optional<std::uint64_t> wake_at;
    int requests = 0;
};

}  // namespace tidemark
