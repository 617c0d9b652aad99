#include "controls/item_id_list.h"

#include <shlobj.h>

#include <vector>

#include "platform/win32/com_ptr.h"
#include "platform/win32/wide_text.h"

namespace tidemark {

void ItemIdListTraits::Close(Type list) noexcept {
    ComPtr<IMalloc> allocator;
    if (SUCCEEDED(::SHGetMalloc(allocator.Put()))) {
        allocator->Free(list);
    }
}

UniqueItemIdList ItemIdListFromPath(HWND owner, std::string_view path) {
    ComPtr<IShellFolder> desktop;
    if (FAILED(::SHGetDesktopFolder(desktop.Put()))) {
        return {};
    }
    std::wstring name = WideFromUtf8(path);
    PIDLIST_RELATIVE list = nullptr;
    if (FAILED(desktop->ParseDisplayName(owner, nullptr, name.data(), nullptr, &list, nullptr))) {
        return {};
    }
    // Relative to the desktop is absolute.
    return UniqueItemIdList(reinterpret_cast<PIDLIST_ABSOLUTE>(list));
}

std::string PathFromItemIdList(PCIDLIST_ABSOLUTE list) {
    if (list == nullptr) {
        return {};
    }
    // The longest path that the system knows; the older call stops at 260 characters.
    std::vector<wchar_t> path(32768);
    if (!::SHGetPathFromIDListEx(list, path.data(), static_cast<DWORD>(path.size()),
                                 GPFIDL_DEFAULT)) {
        return {};
    }
    path.back() = L'\0';
    return Utf8FromWide(path.data());
}

std::string SpecialFolderPath(std::int32_t special_folder) {
    PIDLIST_ABSOLUTE list = nullptr;
    if (FAILED(::SHGetSpecialFolderLocation(nullptr, special_folder, &list))) {
        return {};
    }
    const UniqueItemIdList owned(list);
    return PathFromItemIdList(owned.Get());
}

}  // namespace tidemark
