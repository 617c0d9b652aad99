#pragma once

#include <chrono>
#include <functional>

namespace tidemark {

// Routes messages as the program's loop does until the condition holds; false when it does not
// within the time.
bool PumpUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = std::chrono::seconds(10));

// Routes what is waiting now.
void PumpPending();

}  // namespace tidemark
