#pragma once

#include <chrono>

#include "platform/win32/windows.h"

namespace tidemark {

// Asks every few milliseconds until the condition holds; false when it does not within the time.
template <typename Condition>
[[nodiscard]] bool PollUntil(std::chrono::milliseconds limit, Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        ::Sleep(5);
    }
    return true;
}

}  // namespace tidemark
