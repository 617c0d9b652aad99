#pragma once

#include <cstdint>

#include "ui/window.h"

namespace tidemark {

// Sets how opaque a whole window is: 0 is invisible, 255 opaque. Throws ProgramError with the
// system's code when the system cannot do that for this window.
void SetOpacity(const Window& window, std::uint8_t opacity);

}  // namespace tidemark
