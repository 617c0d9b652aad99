#include "ui/min_max.h"

#include <commctrl.h>

#include <algorithm>

namespace tidemark {

MinMax::MinMax() {
    subclasser_.WndProc = [this](HWND window, UINT message, WPARAM wparam,
                                 LPARAM lparam) -> std::optional<LRESULT> {
        // The window speaks first, so that the stricter of the two holds.
        const LRESULT result = ::DefSubclassProc(window, message, wparam, lparam);
        Limit(*reinterpret_cast<MINMAXINFO*>(lparam));
        return result;
    };
}

void MinMax::AttachTo(HWND window) {
    subclasser_.RegisterMessages(window, {WM_GETMINMAXINFO});
}

void MinMax::Limit(MINMAXINFO& info) const {
    if (!enabled) {
        return;
    }
    const auto least = [](LONG& value, int limit) {
        value = limit > 0 ? std::max<LONG>(value, limit) : value;
    };
    const auto most = [](LONG& value, int limit) {
        value = limit > 0 ? std::min<LONG>(value, limit) : value;
    };
    least(info.ptMinTrackSize.x, minimum.width);
    least(info.ptMinTrackSize.y, minimum.height);
    most(info.ptMaxTrackSize.x, maximum.width);
    most(info.ptMaxTrackSize.y, maximum.height);
}

}  // namespace tidemark
