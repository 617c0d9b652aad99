#pragma once

#include "ui/window.h"

namespace tidemark {

// Puts the window above all that are not topmost, or back among them. Position, size and
// activation are kept.
void SetTopmost(const Window& window, bool on);

}  // namespace tidemark
