#pragma once

#include "platform/placed_window.h"
#include "platform/screen.h"
#include "platform/settings_store.h"

namespace tidemark {

// Place and size of the main window, kept between runs in twips under the keys Left, Top, Width and
// Height.

// Moves the window to its stored place and size, or to the defaults when `reset`. The values are
// used as they stand: neither the screen nor a minimum limits them. When one is too large for a
// whole number of 32 bits or the window cannot be moved, the window becomes 640 x 480 pixels in the
// middle of the screen. Stores nothing; throws nothing.
//
// The default place is that of a centred window of 640 x 480 pixels; the default size is 640 x 480
// twips, which the window's own minimum size then enlarges.
void LoadWindowPlacement(const SettingsStore& store, const Screen& screen, PlacedWindow& window,
                         bool reset);

// Stores the place and size of a window that is neither minimised nor maximised; does nothing
// otherwise. Throws ProgramError when the system does not tell the window's place or the store
// cannot be written.
void SaveWindowPlacement(SettingsStore& store, const PlacedWindow& window);

// Moves the window to the middle of the primary screen; its size stays. Throws ProgramError as
// PlacedWindow::MoveTo does.
void CenterOnScreen(const Screen& screen, PlacedWindow& window);

}  // namespace tidemark
