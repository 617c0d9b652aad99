#include "ui/subclasser.h"

#include <algorithm>

#include "ui/last_resort.h"

namespace tidemark {

void Subclasser::RegisterMessages(HWND window, const std::vector<UINT>& messages) {
    if (window == nullptr || window != Watched()) {
        StopSubclassing();
        Watch(window);
    }
    for (const UINT message : messages) {
        if (!Watches(message)) {
            messages_.push_back(message);
        }
    }
}

void Subclasser::StopSubclassing() {
    StopWatching();
    messages_.clear();
}

HWND Subclasser::SubclassedWindow() const {
    return Watched();
}

bool Subclasser::Watches(UINT message) const {
    return std::find(messages_.begin(), messages_.end(), message) != messages_.end();
}

LRESULT Subclasser::OnWatched(const WatchedMessage& message) {
    const bool watched = Watches(message.message);
    if (message.message == WM_NCDESTROY) {
        messages_.clear();
    }
    if (!watched || !WndProc) {
        return message.PassOn();
    }
    // A copy, and nothing of the object after its call: the handler may destroy it.
    const auto handler = WndProc;
    const auto answer = Guarded<std::optional<LRESULT>>(message.window, std::nullopt, [&] {
        return handler(message.window, message.message, message.wparam, message.lparam);
    });
    return answer && message.message != WM_NCDESTROY ? *answer : message.PassOn();
}

}  // namespace tidemark
