#pragma once

namespace tidemark {

// Whether a loop of the system's own waits for this thread's keys and mouse: a menu is open, a
// window is being moved or sized, or a SystemLoopScope says so. Whoever takes messages from the
// queue meanwhile takes them away from that loop.
[[nodiscard]] bool InSystemLoop();

// Tells of a loop that the system itself tells nobody of, for as long as this lives: files or a
// scroll bar being dragged, say. Goes around the call that runs the loop, on its thread.
class SystemLoopScope {
  public:
    SystemLoopScope() noexcept;
    SystemLoopScope(const SystemLoopScope&) = delete;
    SystemLoopScope& operator=(const SystemLoopScope&) = delete;
    ~SystemLoopScope();
};

}  // namespace tidemark
