#include "platform/win32/registry_settings_store.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/text.h"
#include "platform/win32/system_message.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

struct RegistryKeyTraits {
    using Type = HKEY;
    static Type None() noexcept { return nullptr; }
    static void Close(Type key) noexcept { ::RegCloseKey(key); }
};
using UniqueRegistryKey = UniqueHandle<RegistryKeyTraits>;

// The units of a string value, with whatever terminators it holds.
std::optional<std::wstring> ReadStringValue(HKEY key, const std::wstring& name) {
    std::vector<BYTE> bytes(256);
    DWORD type = REG_NONE;
    DWORD size = 0;
    LSTATUS status = ERROR_MORE_DATA;
    // Another program may lengthen the value between two calls, hence the loop.
    while (status == ERROR_MORE_DATA) {
        bytes.resize(std::max<std::size_t>(bytes.size(), size));
        size = static_cast<DWORD>(bytes.size());
        status = ::RegQueryValueExW(key, name.c_str(), /*lpReserved=*/nullptr, &type, bytes.data(),
                                    &size);
    }
    if (status != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) {
        return std::nullopt;
    }
    // Half a unit at the end, which only a broken writer can leave, is dropped.
    std::wstring text(size / sizeof(wchar_t), L'\0');
    std::copy_n(bytes.begin(), text.size() * sizeof(wchar_t), reinterpret_cast<BYTE*>(text.data()));
    return text;
}

}  // namespace

RegistrySettingsStore::RegistrySettingsStore(const std::string& path)
    : path_(path), wide_path_(WideFromUtf8(path)) {}

std::string RegistrySettingsStore::ReadText(const std::string& key,
                                            const std::string& default_text) const {
    HKEY opened = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, wide_path_.c_str(), /*ulOptions=*/0, KEY_QUERY_VALUE,
                        &opened) != ERROR_SUCCESS) {
        return default_text;
    }
    const UniqueRegistryKey options(opened);
    const auto text = ReadStringValue(options.Get(), WideFromUtf8(key));
    return text ? std::string(TrimNull(Utf8FromWide(*text))) : default_text;
}

void RegistrySettingsStore::WriteText(const std::string& key, const std::string& text) {
    const std::wstring name = WideFromUtf8(key);
    const std::wstring value = WideFromUtf8(TrimNull(text));
    HKEY opened = nullptr;
    LSTATUS status = ::RegCreateKeyExW(HKEY_CURRENT_USER, wide_path_.c_str(), /*Reserved=*/0,
                                       /*lpClass=*/nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE,
                                       /*lpSecurityAttributes=*/nullptr, &opened,
                                       /*lpdwDisposition=*/nullptr);
    const UniqueRegistryKey options(status == ERROR_SUCCESS ? opened : nullptr);
    if (status == ERROR_SUCCESS) {
        const std::size_t size = (value.size() + 1) * sizeof(wchar_t);
        status = ::RegSetValueExW(options.Get(), name.c_str(), /*Reserved=*/0, REG_SZ,
                                  reinterpret_cast<const BYTE*>(value.c_str()),
                                  static_cast<DWORD>(size));
    }
    if (status != ERROR_SUCCESS) {
        const std::string place = "HKEY_CURRENT_USER\\" + path_ + "\\" + key;
        ThrowSystemError(static_cast<std::uint32_t>(status), "Writing the setting " + place);
    }
}

}  // namespace tidemark
