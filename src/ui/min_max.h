#pragma once

#include "platform/geometry.h"
#include "ui/window_watcher.h"

namespace tidemark {

// Keeps the user from making a window smaller or larger than it should be. Sizes are outer sizes in
// pixels; 0 sets no limit in that direction.
class MinMax : private WindowWatcher {
  public:
    Size minimum;
    Size maximum;
    bool enabled = true;

    // Watches over a window; one window at a time. Throws ProgramError when that cannot be.
    void AttachTo(HWND window) { Watch(window); }

  private:
    LRESULT OnWatched(const WatchedMessage& message) override;
    void Limit(MINMAXINFO& info) const;
};

}  // namespace tidemark
