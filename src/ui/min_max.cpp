#include "ui/min_max.h"

#include <algorithm>

namespace tidemark {

LRESULT MinMax::OnWatched(const WatchedMessage& message) {
    if (message.message != WM_GETMINMAXINFO) {
        return message.PassOn();
    }
    // The window speaks first, so that the stricter of the two holds.
    const auto info = reinterpret_cast<MINMAXINFO*>(message.lparam);
    const LRESULT result = message.PassOn();
    Limit(*info);
    return result;
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
