#include "support/settings_guard.h"

#include <exception>
#include <stdexcept>

#include "platform/win32/windows.h"

namespace tidemark {
namespace {

constexpr const wchar_t* kSettings = L"Software\\Tidemark";

// False when there is nothing to move.
bool Move(const wchar_t* from, const wchar_t* to) {
    HKEY source = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, from, 0, KEY_READ, &source) != ERROR_SUCCESS) {
        return false;
    }
    HKEY target = nullptr;
    LSTATUS status = ::RegCreateKeyExW(HKEY_CURRENT_USER, to, 0, nullptr, 0, KEY_ALL_ACCESS,
                                       nullptr, &target, nullptr);
    if (status == ERROR_SUCCESS) {
        status = ::RegCopyTreeW(source, nullptr, target);
        ::RegCloseKey(target);
    }
    ::RegCloseKey(source);
    // Nothing is deleted before its copy stands.
    if (status != ERROR_SUCCESS) {
        throw std::runtime_error("the user's settings could not be set aside");
    }
    ::RegDeleteTreeW(HKEY_CURRENT_USER, from);
    return true;
}

}  // namespace

SettingsGuard::SettingsGuard()
    : aside_(L"Software\\Tidemark-Aside-" + std::to_wstring(::GetCurrentProcessId())) {
    Move(kSettings, aside_.c_str());
}

SettingsGuard::~SettingsGuard() {
    ::RegDeleteTreeW(HKEY_CURRENT_USER, kSettings);
    try {
        Move(aside_.c_str(), kSettings);
    } catch (const std::exception&) {
        // They stay where they were set aside.
    }
}

}  // namespace tidemark
