#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/win32/windows.h"

namespace tidemark {

// An exception that reached the boundary between the program and the system.
struct LastResortReport {
    HWND owner = nullptr;     // the window it happened in; may be gone by now
    std::int32_t number = 0;  // this and the description as CurrentError gives them
    std::string description;

    // The text shown to the user.
    [[nodiscard]] std::string Text() const;
};

using LastResortReporter = std::function<void(const LastResortReport&)>;

// Reports the exception being handled; to be called from a catch block at the edge of a window
// procedure or a callback. Nothing escapes, and the program goes on. While one report is shown,
// new ones wait their turn, and repeats of the one shown or of one waiting are dropped: a failing
// paint must not bury the user in boxes. Where there is no memory to tell of an error, it tells of
// that, without waiting and with a text of its own.
void ReportToLastResort(HWND owner) noexcept;

// Replaces what shows a report, and returns what did so before. The program's own shows a message
// box over the owner; an empty function restores it. For tests.
LastResortReporter SetLastResortReporter(LastResortReporter reporter);

// Runs `body`; an exception goes to the last resort and `fallback` is the result.
template <typename Result, typename Body>
Result Guarded(HWND owner, Result fallback, Body&& body) noexcept {
    try {
        return body();
    } catch (...) {
        ReportToLastResort(owner);
        return fallback;
    }
}

// The same for a body without a result.
template <typename Body>
void Guarded(HWND owner, Body&& body) noexcept {
    try {
        body();
    } catch (...) {
        ReportToLastResort(owner);
    }
}

}  // namespace tidemark
