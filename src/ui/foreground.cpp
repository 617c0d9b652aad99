#include "ui/foreground.h"

namespace tidemark {
namespace {

void Flash(const Window& window, DWORD flags) {
    if (window.Exists()) {
        FLASHWINFO flash{};
        flash.cbSize = sizeof(flash);
        flash.hwnd = window.Handle();
        flash.dwFlags = flags;
        ::FlashWindowEx(&flash);
    }
}

}  // namespace

bool UserIsHere() {
    const HWND front = ::GetForegroundWindow();
    DWORD process = 0;
    ::GetWindowThreadProcessId(front, &process);
    return front == nullptr || process == ::GetCurrentProcessId();
}

void AskForAttention(const Window& window) {
    Flash(window, FLASHW_TRAY | FLASHW_TIMERNOFG);
}

AttentionWhileAway::AttentionWhileAway(const Window& window) {
    if (!UserIsHere()) {
        window_ = window;
        AskForAttention(window_);
    }
}

AttentionWhileAway::~AttentionWhileAway() {
    Flash(window_, FLASHW_STOP);
}

}  // namespace tidemark
