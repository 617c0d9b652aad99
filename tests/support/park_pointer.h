#pragma once

#include "platform/win32/windows.h"

namespace tidemark {

// Takes the pointer to the screen's corner: one that rests over a window or a menu that a test
// opens is reported to it, as a move, whenever the display gets round to that.
inline void ParkPointer() {
    ::SetCursorPos(0, 0);
}

}  // namespace tidemark
