#pragma once

#include "ui/list_view.h"

namespace tidemark {

// Gives a row of a list's window states (LVIS_ bits) and takes them, as the user does: the window
// has changed, and the model hears of it.
inline void ChangeRowState(const ListView& list, std::size_t row, UINT state, bool on) {
    LVITEMW item{};
    item.state = on ? state : 0;
    item.stateMask = state;
    list.Send(LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
}

}  // namespace tidemark
