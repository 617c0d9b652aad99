#include "ui/message_loop.h"

#include "ui/hosted_window.h"
#include "ui/last_resort.h"

namespace tidemark {
namespace {

// A dialog of the system, whose own loop would translate its keys.
bool IsSystemDialog(HWND root) {
    constexpr ULONG_PTR kDialogClass = 32770;
    return root != nullptr && ::GetClassLongPtrW(root, GCW_ATOM) == kDialogClass;
}

bool IsVisible(HWND window) {
    return ::IsWindow(window) && ::IsWindowVisible(window);
}

// Waits for the next message and routes it; false for a request to quit, whose exit code is in
// `message`.
bool RouteNext(MSG& message) {
    // GetMessage fails (-1) for a bad window or a bad pointer only; neither is passed.
    if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
        return false;
    }
    RouteMessage(message);
    return true;
}

}  // namespace

void RouteMessage(MSG& message) {
    const HWND root = message.hwnd != nullptr ? ::GetAncestor(message.hwnd, GA_ROOT) : nullptr;
    MessageHandler* const form = HandlerOf(root);
    // A failure in a key's handler must not end the loop; the key counts as handled.
    if (form != nullptr && Guarded(root, true, [&] { return form->PreTranslate(message); })) {
        return;
    }
    // Met here when work lets messages run inside the dialog's loop.
    if (form == nullptr && IsSystemDialog(root) && ::IsDialogMessageW(root, &message) != FALSE) {
        return;
    }
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
}

int RunMessageLoop(const Window& main_window) {
    MSG message{};
    while (main_window.Exists()) {
        if (!RouteNext(message)) {
            return static_cast<int>(message.wParam);
        }
    }
    return 0;
}

void RunMessageLoopWhileVisible(HWND window) {
    MSG message{};
    while (IsVisible(window)) {
        if (!RouteNext(message)) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
    }
}

}  // namespace tidemark
