#include "platform/win32/win32_machine_registry.h"

#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

HKEY ToSystem(RegistryKey key) {
    return reinterpret_cast<HKEY>(static_cast<std::uintptr_t>(key));
}

// Size of a text in bytes, without a terminating NUL.
DWORD SizeOf(const std::wstring& text) {
    return static_cast<DWORD>(text.size() * sizeof(wchar_t));
}

}  // namespace

RegistryKey Win32MachineRegistry::CreateOrOpen(const std::string& path) {
    HKEY key = nullptr;
    if (::RegCreateKeyW(root_, WideFromUtf8(path).c_str(), &key) != ERROR_SUCCESS) {
        return kNoRegistryKey;
    }
    return static_cast<RegistryKey>(reinterpret_cast<std::uintptr_t>(key));
}

bool Win32MachineRegistry::SetDefaultText(RegistryKey key, const std::string& text) {
    const std::wstring wide = WideFromUtf8(text);
    return ::RegSetValueW(ToSystem(key), /*lpSubKey=*/nullptr, REG_SZ, wide.c_str(),
                          SizeOf(wide)) == ERROR_SUCCESS;
}

bool Win32MachineRegistry::SetText(RegistryKey key, const std::string& name,
                                   const std::string& text) {
    const std::wstring wide = WideFromUtf8(text);
    return ::RegSetValueExW(ToSystem(key), WideFromUtf8(name).c_str(), /*Reserved=*/0, REG_SZ,
                            reinterpret_cast<const BYTE*>(wide.c_str()),
                            SizeOf(wide)) == ERROR_SUCCESS;
}

bool Win32MachineRegistry::Close(RegistryKey key) {
    return ::RegCloseKey(ToSystem(key)) == ERROR_SUCCESS;
}

}  // namespace tidemark
