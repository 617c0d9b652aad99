#pragma once

#include "platform/geometry.h"

namespace tidemark {

// Where the errors window's list goes: under the label and as wide as the window, reaching two
// pixels over the upper edge of the status bar, where the list's own border would double it.
[[nodiscard]] inline Bounds ErrorsListBounds(const Bounds& label, int inner_width,
                                             int status_bar_top) {
    return {0, label.Bottom() + 4, inner_width, status_bar_top - (label.Bottom() + 2)};
}

}  // namespace tidemark
