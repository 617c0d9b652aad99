#pragma once

#include <shobjidl.h>

#include <cstddef>

#include "platform/win32/windows.h"

namespace tidemark {

// What ShellContextMenu asks of the system. These are the system's own calls; tests put others in
// their place to see each call and its arguments. Results and failures are those of the calls.
class PopupMenuSystem {
  public:
    PopupMenuSystem() = default;
    PopupMenuSystem(const PopupMenuSystem&) = delete;
    PopupMenuSystem& operator=(const PopupMenuSystem&) = delete;
    virtual ~PopupMenuSystem() = default;

    // The folder that every path starts from; the caller owns the reference.
    virtual HRESULT DesktopFolder(IShellFolder** folder);
    // Memory of the shell's allocator; null when there is none left.
    virtual void* Allocate(std::size_t size);
    virtual void Free(void* memory);
    // Bytes that memory of the shell's allocator holds; 0 when that cannot be told.
    virtual std::size_t SizeOf(const void* memory);

    virtual HMENU NewPopupMenu();
    virtual void InsertItem(HMENU menu, UINT position, const MENUITEMINFOW& item);
    virtual void SetDefaultItem(HMENU menu, UINT item, BOOL by_position);
    virtual void CursorPosition(POINT* point);
    virtual UINT Track(HMENU menu, UINT flags, POINT point, HWND owner);
    virtual void Discard(HMENU menu);
};

}  // namespace tidemark
