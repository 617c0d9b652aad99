#pragma once

#include "platform/win32/unique_handle.h"

namespace tidemark {

struct FontTraits {
    using Type = HFONT;
    static Type None() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { ::DeleteObject(handle); }
};

struct BrushTraits {
    using Type = HBRUSH;
    static Type None() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { ::DeleteObject(handle); }
};

struct BitmapTraits {
    using Type = HBITMAP;
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

using UniqueFont = UniqueHandle<FontTraits>;
using UniqueBrush = UniqueHandle<BrushTraits>;
using UniqueBitmap = UniqueHandle<BitmapTraits>;
using UniqueIcon = UniqueHandle<IconTraits>;
using UniqueMenu = UniqueHandle<MenuTraits>;

}  // namespace tidemark
