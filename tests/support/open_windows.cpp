#include "support/open_windows.h"

#include <array>

namespace tidemark {
namespace {

using Condition = std::function<bool(HWND)>;

struct Search {
    const Condition& is_it;
    HWND found = nullptr;

    static BOOL CALLBACK Meet(HWND window, LPARAM parameter) {
        auto& search = *reinterpret_cast<Search*>(parameter);
        if (search.is_it(window)) {
            search.found = window;
        }
        return search.found == nullptr ? TRUE : FALSE;
    }
};

HWND ShownOnThisThread(const wchar_t* class_name) {
    const Condition is_it = [class_name](HWND window) {
        return ::IsWindowVisible(window) != FALSE && ClassOf(window) == class_name;
    };
    Search search{is_it};
    ::EnumThreadWindows(::GetCurrentThreadId(), Search::Meet, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace

HWND OpenDialog() {
    return ShownOnThisThread(L"#32770");
}

HWND OpenPopup() {
    return ShownOnThisThread(L"#32768");
}

HMENU OpenMenu() {
    constexpr UINT kGetMenuHandle = 0x01E1;  // MN_GETHMENU
    const HWND popup = OpenPopup();
    return popup == nullptr ? nullptr
                            : reinterpret_cast<HMENU>(::SendMessageW(popup, kGetMenuHandle, 0, 0));
}

void PressInDialog(int button) {
    if (const HWND dialog = OpenDialog()) {
        ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                       reinterpret_cast<LPARAM>(::GetDlgItem(dialog, button)));
    }
}

std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 257> name{};  // the longest that the system takes
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

HWND FindBelow(HWND window, const Condition& is_it) {
    if (window == nullptr) {
        return nullptr;  // the system would take it for the desktop
    }
    Search search{is_it};
    ::EnumChildWindows(window, Search::Meet, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace tidemark
