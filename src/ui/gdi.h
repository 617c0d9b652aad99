#pragma once

#include "platform/win32/unique_handle.h"

namespace tidemark {

// A drawing object that is selected into no context.
template <typename Handle>
struct GdiObjectTraits {
    using Type = Handle;
    static Type None() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { ::DeleteObject(handle); }
};

struct IconTraits {
    using Type = HICON;
    static Type None() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { ::DestroyIcon(handle); }
};

// A menu that is in no other menu and in no window.
struct MenuTraits {
    using Type = HMENU;
    static Type None() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { ::DestroyMenu(handle); }
};

using UniqueFont = UniqueHandle<GdiObjectTraits<HFONT>>;
using UniqueBrush = UniqueHandle<GdiObjectTraits<HBRUSH>>;
using UniquePen = UniqueHandle<GdiObjectTraits<HPEN>>;
using UniqueBitmap = UniqueHandle<GdiObjectTraits<HBITMAP>>;
using UniqueIcon = UniqueHandle<IconTraits>;
using UniqueMenu = UniqueHandle<MenuTraits>;

}  // namespace tidemark
