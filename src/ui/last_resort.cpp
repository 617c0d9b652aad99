#include "ui/last_resort.h"

#include <algorithm>
#include <deque>
#include <new>
#include <utility>

#include "platform/program_error.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

// None when the window is gone or there never was one.
HWND OwnerOfBox(HWND window) {
    return ::IsWindow(window) ? ::GetAncestor(window, GA_ROOT) : nullptr;
}

void ShowReport(const LastResortReport& report) {
    const std::wstring text = WideFromUtf8(report.Text());
    ::MessageBoxW(OwnerOfBox(report.owner), text.c_str(), L"tidemark", MB_OK | MB_ICONERROR);
}

bool SameError(const LastResortReport& a, const LastResortReport& b) {
    return a.number == b.number && a.description == b.description;
}

// What is shown and what waits. Exceptions arrive where no object of the program can be handed in,
// so this is the one piece of shared state outside the application object. User-interface thread
// only.
struct State {
    LastResortReporter reporter;
    std::deque<LastResortReport> waiting;  // the front one is being shown
};

State& Shared() {
    static State state;
    return state;
}

LastResortReport DescribeCurrent(HWND owner) {
    const ProgramError error = CurrentError();
    return {owner, error.Number(), error.Description()};
}

// In the words of such an error, for which there is no memory now.
void ShowOutOfMemory(HWND window) noexcept {
    ::MessageBoxW(OwnerOfBox(window), L"Error: 7\nOut of memory", L"tidemark",
                  MB_OK | MB_ICONERROR);
}

void ShowInTurn(LastResortReport report) {
    State& state = Shared();
    const bool showing = !state.waiting.empty();
    const bool repeated = std::any_of(state.waiting.begin(), state.waiting.end(),
                                      [&](const auto& other) { return SameError(other, report); });
    if (repeated) {
        return;
    }
    state.waiting.push_back(std::move(report));
    if (showing) {
        return;
    }
    while (!state.waiting.empty()) {
        try {
            // Copies: the reporter may be replaced, and the queue may grow, while a box is up.
            const LastResortReporter show = state.reporter ? state.reporter : ShowReport;
            show(LastResortReport(state.waiting.front()));
        } catch (const std::bad_alloc&) {
            ShowOutOfMemory(state.waiting.front().owner);
        } catch (...) {
            // A reporter that fails has no one left to tell; the next report still gets its turn.
            ::MessageBeep(MB_ICONERROR);
        }
        state.waiting.pop_front();
    }
}

}  // namespace

std::string LastResortReport::Text() const {
    return "Error: " + std::to_string(number) + "\n" + description;
}

void ReportToLastResort(HWND owner) noexcept {
    try {
        ShowInTurn(DescribeCurrent(owner));
    } catch (...) {
        ShowOutOfMemory(owner);
    }
}

LastResortReporter SetLastResortReporter(LastResortReporter reporter) {
    return std::exchange(Shared().reporter, std::move(reporter));
}

}  // namespace tidemark
