#pragma once

#include <array>
#include <string>

#include "platform/win32/wide_text.h"
#include "ui/status_bar.h"
// After the system's main header.
#include <commctrl.h>

namespace tidemark {

// What a status bar itself shows in a part of its present mode.
inline std::string ShownText(const StatusBar& bar, WPARAM part) {
    std::array<wchar_t, 200> text{};
    bar.Send(SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text.data()));
    return Utf8FromWide(text.data());
}

// What it shows in simple mode; in the other one, nothing.
inline std::string ShownSimpleText(const StatusBar& bar) {
    if (!bar.Simple()) {
        return {};
    }
    // Systems differ in the part under which the simple text is read.
    const std::string simple = ShownText(bar, SB_SIMPLEID);
    return simple.empty() ? ShownText(bar, 0) : simple;
}

// The right edge of its first panel.
inline int FirstPanelWidth(const StatusBar& bar) {
    std::array<int, 2> right_edges{};
    bar.Send(SB_GETPARTS, right_edges.size(), reinterpret_cast<LPARAM>(right_edges.data()));
    return right_edges[0];
}

}  // namespace tidemark
