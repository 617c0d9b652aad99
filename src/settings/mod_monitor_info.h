#pragma once

#include "platform/geometry.h"
#include "platform/screen.h"

namespace tidemark {

// Helpers that keep a window on a monitor. All in pixels.

// The primary screen.
[[nodiscard]] Rect ScreenRectFallback(const Screen& screen);

// The whole monitor nearest to a point; the primary screen when the system cannot tell.
[[nodiscard]] Rect MonitorRectAtPoint(const Screen& screen, int x, int y);

// Throws ProgramError (overflow) when 32 bits cannot hold the width or the height.
[[nodiscard]] Bounds RectToBounds(const Rect& rect);

// Moves the bounds, in place, onto the monitors at their top left and bottom right corners. The
// size stays; what is larger than a monitor ends at its right and bottom edges and sticks out at
// the left and the top. Throws ProgramError (overflow) when 32 bits cannot hold a corner.
void KeepRectOnMonitor(const Screen& screen, Bounds& bounds);

}  // namespace tidemark
