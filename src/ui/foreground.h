#pragma once

#include "ui/window.h"

namespace tidemark {

// Whether the user may be shown something in front: the window in front is one of this process, or
// none is.
[[nodiscard]] bool UserIsHere();

// Flashes the window's button in the taskbar until the window comes to the front.
void AskForAttention(const Window& window);

// While alive, the window's button in the taskbar flashes if the user was in another program at the
// beginning. For the time of a modal box, which must not be missed and must not take the keys that
// the user types elsewhere.
class AttentionWhileAway {
  public:
    explicit AttentionWhileAway(const Window& window);
    AttentionWhileAway(const AttentionWhileAway&) = delete;
    AttentionWhileAway& operator=(const AttentionWhileAway&) = delete;
    ~AttentionWhileAway();

  private:
    Window window_;
};

}  // namespace tidemark
