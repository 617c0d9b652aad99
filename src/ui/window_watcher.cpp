#include "ui/window_watcher.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/program_error.h"

namespace tidemark {

// Everyone who watches one window. It is there as long as someone does, or a message is on its way.
class WatchChain : public std::enable_shared_from_this<WatchChain> {
  public:
    explicit WatchChain(HWND window) : window_(window) {}

    // The chain of a window with the watcher added to it; null when the window cannot be watched.
    static std::shared_ptr<WatchChain> Join(HWND window, WindowWatcher& watcher) {
        // Not every system's own call refuses these.
        if (!::IsWindow(window) ||
            ::GetWindowThreadProcessId(window, nullptr) != ::GetCurrentThreadId()) {
            return nullptr;
        }
        if (auto* const known = static_cast<WatchChain*>(::GetPropW(window, kProperty))) {
            known->Add(watcher);
            return known->shared_from_this();
        }
        auto chain = std::make_shared<WatchChain>(window);
        chain->Add(watcher);
        if (!::SetPropW(window, kProperty, chain.get())) {
            return nullptr;
        }
        const auto data = reinterpret_cast<DWORD_PTR>(chain.get());
        if (!::SetWindowSubclass(window, Procedure, kId, data)) {
            ::RemovePropW(window, kProperty);
            return nullptr;
        }
        return chain;
    }

    void Leave(const WindowWatcher& watcher) {
        std::erase_if(links_, [&](const Link& link) { return link.watcher == &watcher; });
        if (links_.empty()) {
            ::RemoveWindowSubclass(window_, Procedure, kId);
            ::RemovePropW(window_, kProperty);
        }
    }

    [[nodiscard]] HWND Window() const { return window_; }

    // Gives a message to the last watcher that came before `place`, or else to the window. By
    // place, not by position: while a message is on its way, watchers come and go.
    LRESULT HandOn(std::size_t place, UINT message, WPARAM wparam, LPARAM lparam) {
        const auto next = std::find_if(links_.rbegin(), links_.rend(),
                                       [place](const Link& link) { return link.place < place; });
        if (next == links_.rend()) {
            return ::DefSubclassProc(window_, message, wparam, lparam);
        }
        const Link link = *next;
        if (message == WM_NCDESTROY) {
            link.watcher->StopWatching();
        }
        return link.watcher->OnWatched({window_, message, wparam, lparam, this, link.place});
    }

  private:
    static constexpr UINT_PTR kId = 1;
    // In which the window keeps its chain.
    static constexpr const wchar_t* kProperty = L"TidemarkWatchChain";

    struct Link {
        std::size_t place;
        WindowWatcher* watcher;
    };

    static LRESULT CALLBACK Procedure(HWND /*window*/, UINT message, WPARAM wparam, LPARAM lparam,
                                      UINT_PTR /*id*/, DWORD_PTR data) {
        const auto chain = reinterpret_cast<WatchChain*>(data)->shared_from_this();
        return chain->HandOn(chain->next_place_, message, wparam, lparam);
    }

    void Add(WindowWatcher& watcher) { links_.push_back({next_place_++, &watcher}); }

    HWND window_;
    std::vector<Link> links_;  // the first to come first
    std::size_t next_place_ = 0;
};

LRESULT WatchedMessage::PassOn() const {
    return ::IsWindow(window) ? chain->HandOn(place, message, wparam, lparam) : 0;
}

WindowWatcher::~WindowWatcher() {
    StopWatching();
}

void WindowWatcher::Watch(HWND window) {
    if (chain_ && window == chain_->Window()) {
        return;
    }
    StopWatching();
    chain_ = WatchChain::Join(window, *this);
    if (!chain_) {
        throw ProgramError(error_number::kInvalidArgument, "The window cannot be watched.");
    }
}

void WindowWatcher::StopWatching() {
    if (const std::shared_ptr<WatchChain> chain = std::move(chain_)) {
        chain->Leave(*this);
    }
}

HWND WindowWatcher::Watched() const {
    return chain_ ? chain_->Window() : nullptr;
}

}  // namespace tidemark
