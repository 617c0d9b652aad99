#pragma once

#include <objidl.h>

#include <cstdint>

#include "platform/win32/windows.h"

namespace tidemark {

// Contents in a clipboard format, whole and for any device, on one of these media (TYMED_...).
[[nodiscard]] inline FORMATETC ContentsIn(std::int16_t format, DWORD media) {
    return {.cfFormat = static_cast<CLIPFORMAT>(format),
            .ptd = nullptr,
            .dwAspect = DVASPECT_CONTENT,
            .lindex = -1,
            .tymed = media};
}

}  // namespace tidemark
