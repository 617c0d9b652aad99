#include "ui/hosted_window.h"

#include "platform/win32/system_message.h"
#include "platform/win32/wide_text.h"
#include "ui/last_resort.h"

namespace tidemark {
namespace {

LRESULT Route(MessageHandler& handler, HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    try {
        return handler.OnMessage(window, message, wparam, lparam);
    } catch (...) {
        if (message == WM_PAINT) {
            // What could not be painted must not be asked for again and again.
            ::ValidateRect(window, nullptr);
        }
        ReportToLastResort(window);
        return 0;
    }
}

LRESULT CALLBACK HostedWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lparam);
        ::SetWindowLongPtrW(window, GWLP_USERDATA,
                            reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* const handler =
        reinterpret_cast<MessageHandler*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (handler == nullptr) {
        return ::DefWindowProcW(window, message, wparam, lparam);
    }
    if (message == WM_NCDESTROY) {
        ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    }
    return Route(*handler, window, message, wparam, lparam);
}

void EnsureClass(HINSTANCE module, const HostedWindowSpec& spec) {
    WNDCLASSEXW known{};
    known.cbSize = sizeof(known);
    if (::GetClassInfoExW(module, spec.class_name, &known)) {
        return;
    }
    WNDCLASSEXW window_class{};
    window_class.cbSize = sizeof(window_class);
    window_class.style = spec.class_style;
    window_class.lpfnWndProc = HostedWindowProc;
    window_class.hInstance = module;
    window_class.hCursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // IDC_ARROW
    // The program's icon is its first icon resource.
    window_class.hIcon = ::LoadIconW(module, MAKEINTRESOURCEW(1));
    window_class.hIconSm = static_cast<HICON>(
        ::LoadImageW(module, MAKEINTRESOURCEW(1), IMAGE_ICON, ::GetSystemMetrics(SM_CXSMICON),
                     ::GetSystemMetrics(SM_CYSMICON), LR_SHARED));
    if (spec.background >= 0) {
        window_class.hbrBackground = ::GetSysColorBrush(spec.background);
    }
    window_class.lpszClassName = spec.class_name;
    if (::RegisterClassExW(&window_class) == 0) {
        ThrowSystemError(::GetLastError(), "Registering a window class");
    }
}

}  // namespace

HWND CreateHostedWindow(MessageHandler& handler, const HostedWindowSpec& spec) {
    HINSTANCE module = ::GetModuleHandleW(nullptr);
    EnsureClass(module, spec);
    const HWND window = ::CreateWindowExW(
        spec.extended_style, spec.class_name, WideFromUtf8(spec.text).c_str(), spec.style,
        spec.bounds.left, spec.bounds.top, spec.bounds.width, spec.bounds.height, spec.parent,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(spec.id)), module, &handler);
    if (window == nullptr) {
        ThrowSystemError(::GetLastError(), "Creating a window");
    }
    return window;
}

MessageHandler* HandlerOf(HWND window) {
    // The class's own procedure tells whose window it is, also while it is subclassed.
    if (window == nullptr ||
        ::GetWindowThreadProcessId(window, nullptr) != ::GetCurrentThreadId() ||
        ::GetClassLongPtrW(window, GCLP_WNDPROC) !=
            static_cast<ULONG_PTR>(reinterpret_cast<LONG_PTR>(HostedWindowProc))) {
        return nullptr;
    }
    return reinterpret_cast<MessageHandler*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
}

}  // namespace tidemark
