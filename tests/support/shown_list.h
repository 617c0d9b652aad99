#pragma once

#include <array>
#include <string>

#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"
#include "ui/window.h"
// After the system's main header.
#include <commctrl.h>

namespace tidemark {

// What a list view itself shows in a cell.
inline std::string ShownCell(const Window& list, int row, int column) {
    std::array<wchar_t, 512> text{};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    list.Send(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    // It may answer with a text of its own instead of filling the one that was offered.
    return Utf8FromWide(item.pszText);
}

// Where in the list a row is, or a part of it (LVIR_...).
inline RECT PlaceOfRow(const Window& list, int row, LONG part = LVIR_BOUNDS) {
    RECT place{};
    place.left = part;
    list.Send(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    return place;
}

// The arrow that a column's header shows: HDF_SORTUP, HDF_SORTDOWN, or none.
inline int SortArrowOf(const Window& list, int column) {
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    const Window header(reinterpret_cast<HWND>(list.Send(LVM_GETHEADER)));
    header.Send(HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
    return item.fmt & (HDF_SORTUP | HDF_SORTDOWN);
}

}  // namespace tidemark
