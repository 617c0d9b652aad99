#pragma once

#include <cstdint>

namespace tidemark {

// What a window's button in the taskbar shows of its work.
struct TaskbarProgress {
    bool working = false;
    std::int64_t done = 0;
    std::int64_t total = 0;  // 0 while it is not known

    friend bool operator==(const TaskbarProgress&, const TaskbarProgress&) = default;
};

}  // namespace tidemark
