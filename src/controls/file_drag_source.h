#pragma once

#include <cstdint>

#include "controls/ole_drag_drop.h"

namespace tidemark {

// Runs a drag and drop operation that starts in a window of this thread, and returns when it has
// ended. `source` hears of it in this order: StartDrag (fill the data, say what is allowed),
// GiveFeedback as targets choose, SetData when a format without data is asked for, CompleteDrag
// with the effect. When StartDrag allows nothing, no drag starts and nothing else is heard.
//
// `button` holds the bits of the mouse buttons that are down and drag; the files are dropped when
// they are let go. Returns the effect, 0 when nothing was dropped. A move is the source's business:
// the program never deletes a file for it. `source` may not go during the drag. Throws ProgramError
// when OLE is not to be had; an exception of `source` goes to the last resort.
std::int32_t DragFiles(OleDragDropSink& source, std::int16_t button);

}  // namespace tidemark
