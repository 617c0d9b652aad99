#include "platform/win32/system_loop.h"

#include "platform/win32/windows.h"

namespace tidemark {
namespace {

// How many scopes live on this thread.
int& Depth() noexcept {
    thread_local int depth = 0;
    return depth;
}

}  // namespace

bool InSystemLoop() {
    if (Depth() > 0) {
        return true;
    }
    GUITHREADINFO state{};
    state.cbSize = sizeof(state);
    constexpr DWORD kLoops =
        GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE | GUI_INMOVESIZE;
    return ::GetGUIThreadInfo(::GetCurrentThreadId(), &state) != FALSE &&
           (state.flags & kLoops) != 0;
}

SystemLoopScope::SystemLoopScope() noexcept {
    ++Depth();
}

SystemLoopScope::~SystemLoopScope() {
    --Depth();
}

}  // namespace tidemark
