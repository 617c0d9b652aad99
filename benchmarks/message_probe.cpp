#include "benchmarks/message_probe.h"

#include <algorithm>
#include <cstring>

#include "benchmarks/measure.h"

namespace tidemark {
namespace {

constexpr const wchar_t* kClass = L"TidemarkMessageProbe";
constexpr UINT kPosted = WM_APP;
constexpr DWORD kPause = 3;  // milliseconds

// The parameter of a message is as wide as a time.
static_assert(sizeof(LPARAM) == sizeof(double));

LPARAM FromTime(double time) {
    LPARAM parameter = 0;
    std::memcpy(&parameter, &time, sizeof time);
    return parameter;
}

double ToTime(LPARAM parameter) {
    double time = 0;
    std::memcpy(&time, &parameter, sizeof time);
    return time;
}

}  // namespace

MessageProbe::MessageProbe() {
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = WindowProcedure;
    window_class.hInstance = ::GetModuleHandleW(nullptr);
    window_class.lpszClassName = kClass;
    ::RegisterClassW(&window_class);
    window_ = ::CreateWindowExW(0, kClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                window_class.hInstance, nullptr);
    if (window_ == nullptr) {
        GiveUp("no window for the probe of messages");
    }
    ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    poster_ = std::thread([this] {
        while (!ending_) {
            ::PostMessageW(window_, kPosted, 0, FromTime(NowMs()));
            ::Sleep(kPause);
        }
    });
}

MessageProbe::~MessageProbe() {
    ending_ = true;
    poster_.join();
    ::DestroyWindow(window_);
}

LRESULT CALLBACK MessageProbe::WindowProcedure(HWND window, UINT message, WPARAM wparam,
                                               LPARAM lparam) {
    auto* const probe = reinterpret_cast<MessageProbe*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == kPosted && probe != nullptr) {
        probe->longest_ = std::max(probe->longest_, NowMs() - ToTime(lparam));
        return 0;
    }
    return ::DefWindowProcW(window, message, wparam, lparam);
}

}  // namespace tidemark
