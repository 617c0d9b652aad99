#pragma once

#include "platform/win32/windows.h"

namespace tidemark {

// Whether the system is Wine, for what it cannot show.
[[nodiscard]] inline bool OnWine() {
    return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace tidemark
