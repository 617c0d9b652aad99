#include "ui/subclasser.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/program_error.h"
#include "ui/last_resort.h"

namespace tidemark {

// What outlives the subclasser while one of its own callbacks is on the stack.
struct Subclasser::State : std::enable_shared_from_this<State> {
    explicit State(Subclasser& subclasser) : owner(&subclasser) {}

    Subclasser* owner;  // null once the subclasser is gone
    HWND window = nullptr;
    std::vector<UINT> messages;

    // Two users of one window never share an identifier: a state's address is its own.
    [[nodiscard]] UINT_PTR Id() const { return reinterpret_cast<UINT_PTR>(this); }

    void Stop() {
        if (window != nullptr) {
            ::RemoveWindowSubclass(window, Procedure, Id());
            window = nullptr;
        }
        messages.clear();
    }

    [[nodiscard]] bool Watches(UINT message) const {
        return std::find(messages.begin(), messages.end(), message) != messages.end();
    }
};

Subclasser::Subclasser() : state_(std::make_shared<State>(*this)) {}

Subclasser::~Subclasser() {
    state_->Stop();
    state_->owner = nullptr;
}

void Subclasser::RegisterMessages(HWND window, const std::vector<UINT>& messages) {
    if (window != state_->window) {
        state_->Stop();
        // Not every system's own call refuses these.
        const bool ours = ::IsWindow(window) &&
                          ::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId();
        if (!ours || !::SetWindowSubclass(window, Procedure, state_->Id(),
                                          reinterpret_cast<DWORD_PTR>(state_.get()))) {
            throw ProgramError(error_number::kInvalidArgument, "The window cannot be subclassed.");
        }
        state_->window = window;
    }
    for (const UINT message : messages) {
        if (!state_->Watches(message)) {
            state_->messages.push_back(message);
        }
    }
}

void Subclasser::StopSubclassing() {
    state_->Stop();
}

HWND Subclasser::SubclassedWindow() const {
    return state_->window;
}

LRESULT CALLBACK Subclasser::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                       UINT_PTR /*id*/, DWORD_PTR data) {
    const std::shared_ptr<State> state = reinterpret_cast<State*>(data)->shared_from_this();
    const bool watched = state->Watches(message);
    if (message == WM_NCDESTROY) {
        state->Stop();
    }
    if (watched && state->owner != nullptr && state->owner->WndProc) {
        const auto handler = state->owner->WndProc;
        const auto answer = Guarded<std::optional<LRESULT>>(
            window, std::nullopt, [&] { return handler(window, message, wparam, lparam); });
        if (answer && message != WM_NCDESTROY) {
            return *answer;
        }
        if (!::IsWindow(window)) {
            // Destroyed in the callback: there is no one left to hand the message on to.
            return 0;
        }
    }
    return ::DefSubclassProc(window, message, wparam, lparam);
}

}  // namespace tidemark
