#include "ui/topmost.h"

namespace tidemark {

void SetTopmost(const Window& window, bool on) {
    ::SetWindowPos(window.Handle(), on ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

}  // namespace tidemark
