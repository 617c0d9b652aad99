#include "platform/win32/system_loop.h"

#include "platform/win32/windows.h"

namespace tidemark {

bool InSystemLoop() {
    GUITHREADINFO state{};
    state.cbSize = sizeof(state);
    constexpr DWORD kLoops =
        GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE | GUI_INMOVESIZE;
    return ::GetGUIThreadInfo(::GetCurrentThreadId(), &state) != FALSE &&
           (state.flags & kLoops) != 0;
}

}  // namespace tidemark
