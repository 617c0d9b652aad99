#pragma once

#include <functional>
#include <utility>

#include "platform/timer_object.h"

namespace tidemark {

// Runs a function at each tick.
class FunctionSink final : public ITimerObjectSink {
  public:
    explicit FunctionSink(std::function<void()> action) : action_(std::move(action)) {}
    void ITimerObjectSink_Timer() override { action_(); }

  private:
    std::function<void()> action_;
};

}  // namespace tidemark
