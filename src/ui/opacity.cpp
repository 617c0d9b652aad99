#include "ui/opacity.h"

#include "platform/win32/system_message.h"

namespace tidemark {

void SetOpacity(const Window& window, std::uint8_t opacity) {
    // Each time: the style can have been taken off again in between.
    const LONG_PTR style = ::GetWindowLongPtrW(window.Handle(), GWL_EXSTYLE);
    ::SetWindowLongPtrW(window.Handle(), GWL_EXSTYLE, style | WS_EX_LAYERED);
    if (!::SetLayeredWindowAttributes(window.Handle(), /*crKey=*/0, opacity, LWA_ALPHA)) {
        ThrowSystemError(::GetLastError(), "Setting a window's opacity");
    }
}

}  // namespace tidemark
