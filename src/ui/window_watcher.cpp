#include "ui/window_watcher.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/program_error.h"

namespace tidemark {

// Everyone who watches one window, and the window's own procedure, whose place it takes. It is
// there as long as someone watches, a message is on its way, or somebody else has taken its place.
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
        std::shared_ptr<WatchChain>& chain = Chains()[window];
        if (chain == nullptr) {
            chain = std::make_shared<WatchChain>(window);
            chain->own_ = reinterpret_cast<WNDPROC>(
                ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
            if (chain->own_ == nullptr) {
                Chains().erase(window);
                return nullptr;
            }
        }
        chain->Add(watcher);
        return chain;
    }

    void Leave(const WindowWatcher& watcher) {
        std::erase_if(links_, [&](const Link& link) { return link.watcher == &watcher; });
        // Somebody else who stands before this one now goes on calling it.
        if (links_.empty() &&
            ::GetWindowLongPtrW(window_, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(Procedure)) {
            ::SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(own_));
            Chains().erase(window_);
        }
    }

    [[nodiscard]] HWND Window() const { return window_; }

    // Gives a message to the last watcher that came before `place`, or else to the window. By
    // place, not by position: while a message is on its way, watchers come and go.
    LRESULT HandOn(std::size_t place, UINT message, WPARAM wparam, LPARAM lparam) {
        const auto next = std::find_if(links_.rbegin(), links_.rend(),
                                       [place](const Link& link) { return link.place < place; });
        if (next == links_.rend()) {
            return ::CallWindowProcW(own_, window_, message, wparam, lparam);
        }
        const Link link = *next;
        if (message == WM_NCDESTROY) {
            link.watcher->StopWatching();
        }
        return link.watcher->OnWatched({window_, message, wparam, lparam, this, link.place});
    }

  private:
    struct Link {
        std::size_t place;
        WindowWatcher* watcher;
    };

    // The watched windows of this thread. They are kept here because some systems ask another
    // process for a window's properties, and this is asked for every message.
    static std::unordered_map<HWND, std::shared_ptr<WatchChain>>& Chains() {
        thread_local std::unordered_map<HWND, std::shared_ptr<WatchChain>> chains;
        return chains;
    }

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
        const std::shared_ptr<WatchChain> chain = Chains().at(window);
        const LRESULT result = chain->HandOn(chain->next_place_, message, wparam, lparam);
        if (message == WM_NCDESTROY) {
            Chains().erase(window);
        }
        return result;
    }

    void Add(WindowWatcher& watcher) { links_.push_back({next_place_++, &watcher}); }

    HWND window_;
    WNDPROC own_ = nullptr;
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
