#include "support/window_testing.h"

#include <utility>

namespace tidemark {

TestWindow::TestWindow(const Bounds& bounds, HWND parent)
    : window_(::CreateWindowExW(0, L"STATIC", L"test window",
                                (parent != nullptr ? WS_CHILD : WS_POPUP) | WS_VISIBLE | SS_NOTIFY,
                                bounds.left, bounds.top, bounds.width, bounds.height, parent,
                                nullptr, ::GetModuleHandleW(nullptr), nullptr)) {}

void TestWindow::Destroy() {
    if (const HWND window = std::exchange(window_, nullptr)) {
        ::DestroyWindow(window);
    }
}

IDropTarget* RegisteredTarget(HWND window) {
    // The property in which OLE keeps a target for its own process.
    return static_cast<IDropTarget*>(::GetPropW(window, L"OleDropTargetInterface"));
}

}  // namespace tidemark
