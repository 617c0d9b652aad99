#include "controls/popup_menu_system.h"

#include <shlobj.h>

#include "platform/win32/com_ptr.h"

namespace tidemark {

HRESULT PopupMenuSystem::DesktopFolder(IShellFolder** folder) {
    return ::SHGetDesktopFolder(folder);
}

void* PopupMenuSystem::Allocate(std::size_t size) {
    ComPtr<IMalloc> allocator;
    return SUCCEEDED(::SHGetMalloc(allocator.Put())) ? allocator->Alloc(size) : nullptr;
}

void PopupMenuSystem::Free(void* memory) {
    ComPtr<IMalloc> allocator;
    if (SUCCEEDED(::SHGetMalloc(allocator.Put()))) {
        allocator->Free(memory);
    }
}

std::size_t PopupMenuSystem::SizeOf(const void* memory) {
    ComPtr<IMalloc> allocator;
    if (FAILED(::SHGetMalloc(allocator.Put()))) {
        return 0;
    }
    const SIZE_T size = allocator->GetSize(const_cast<void*>(memory));
    return size == static_cast<SIZE_T>(-1) ? 0 : size;
}

HMENU PopupMenuSystem::NewPopupMenu() {
    return ::CreatePopupMenu();
}

void PopupMenuSystem::InsertItem(HMENU menu, UINT position, const MENUITEMINFOW& item) {
    ::InsertMenuItemW(menu, position, /*fByPosition=*/TRUE, &item);
}

void PopupMenuSystem::SetDefaultItem(HMENU menu, UINT item, BOOL by_position) {
    ::SetMenuDefaultItem(menu, item, static_cast<UINT>(by_position));
}

void PopupMenuSystem::CursorPosition(POINT* point) {
    ::GetCursorPos(point);
}

UINT PopupMenuSystem::Track(HMENU menu, UINT flags, POINT point, HWND owner) {
    return static_cast<UINT>(
        ::TrackPopupMenu(menu, flags, point.x, point.y, /*nReserved=*/0, owner, nullptr));
}

void PopupMenuSystem::Discard(HMENU menu) {
    ::DestroyMenu(menu);
}

}  // namespace tidemark
