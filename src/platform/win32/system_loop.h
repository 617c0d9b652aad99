#pragma once

namespace tidemark {

// Whether a loop of the system's own waits for this thread's keys and mouse: a menu is open, or a
// window is being moved or sized. Whoever takes messages from the queue meanwhile takes them away
// from it.
[[nodiscard]] bool InSystemLoop();

}  // namespace tidemark
