#include "platform/win32/win32_timer_source.h"

#include <algorithm>
#include <utility>

#include "platform/win32/system_loop.h"
#include "platform/win32/system_message.h"

namespace tidemark {
namespace {

constexpr UINT_PTR kTimerId = 1;
constexpr const wchar_t* kWindowClass = L"TidemarkTimers";

HWND CreateMessageWindow(WNDPROC procedure) {
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = procedure;
    window_class.hInstance = ::GetModuleHandleW(nullptr);
    window_class.lpszClassName = kWindowClass;
    // Fails from the second source on, when the class is there already.
    ::RegisterClassW(&window_class);
    return ::CreateWindowExW(/*dwExStyle=*/0, kWindowClass, /*lpWindowName=*/nullptr, /*dwStyle=*/0,
                             0, 0, 0, 0, HWND_MESSAGE, /*hMenu=*/nullptr, window_class.hInstance,
                             /*lpParam=*/nullptr);
}

[[noreturn]] void ThrowNoTimer(DWORD error) {
    ThrowSystemError(error, "Making a timer");
}

}  // namespace

Win32TimerSource::Win32TimerSource(std::function<void()> report_exception)
    : report_exception_(std::move(report_exception)),
      window_(CreateMessageWindow(WindowProcedure)) {
    if (!window_) {
        ThrowNoTimer(::GetLastError());
    }
    // The one timer is made here, where its failure can be told, and only ever moved later on.
    if (::SetTimer(window_.Get(), kTimerId, USER_TIMER_MAXIMUM, /*lpTimerFunc=*/nullptr) == 0) {
        ThrowNoTimer(::GetLastError());
    }
    ::SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Win32TimerSource::~Win32TimerSource() {
    ::SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, 0);
}

LRESULT CALLBACK Win32TimerSource::WindowProcedure(HWND window, UINT message, WPARAM w_param,
                                                   LPARAM l_param) {
    if (message == WM_TIMER && w_param == kTimerId) {
        auto* const source =
            reinterpret_cast<Win32TimerSource*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
        if (source != nullptr) {
            source->Wake(TimerQueue::Allowed::kAll);
        }
        return 0;
    }
    return ::DefWindowProcW(window, message, w_param, l_param);
}

void Win32TimerSource::WakeAt(std::uint64_t time) noexcept {
    wake_up_set_ = true;
    const std::uint64_t now = Now();
    const std::uint64_t wait = time > now ? time - now : 0;
    ::SetTimer(window_.Get(), kTimerId,
               static_cast<UINT>(std::min<std::uint64_t>(wait, USER_TIMER_MAXIMUM)),
               /*lpTimerFunc=*/nullptr);
}

bool Win32TimerSource::Receives(const MSG& message) const {
    return message.message == WM_TIMER && message.hwnd == window_.Get() &&
           message.wParam == kTimerId;
}

void Win32TimerSource::Wake(TimerQueue::Allowed allowed) {
    wake_up_set_ = false;
    try {
        // Long work would keep an open menu from its keys until the end of the work. It waits for
        // the menu's end, as for that of any such loop; the wake-up that it goes on asking for
        // meanwhile costs nothing.
        queue_.RunDue(InSystemLoop() ? TimerQueue::Allowed::kBriefOnly : allowed);
    } catch (...) {
        report_exception_();
    }
    // The system's timer would go on by itself.
    if (!wake_up_set_) {
        ::SetTimer(window_.Get(), kTimerId, USER_TIMER_MAXIMUM, /*lpTimerFunc=*/nullptr);
    }
}

}  // namespace tidemark
