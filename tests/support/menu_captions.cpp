#include "support/menu_captions.h"

#include <array>

#include "platform/win32/wide_text.h"

namespace tidemark {

std::vector<std::string> CaptionsOf(HMENU menu) {
    std::vector<std::string> captions;
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        MENUITEMINFOW info{};
        std::array<wchar_t, 256> text{};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_FTYPE | MIIM_STRING;
        info.dwTypeData = text.data();
        info.cch = static_cast<UINT>(text.size());
        ::GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info);
        captions.push_back((info.fType & MFT_SEPARATOR) != 0 ? "-" : Utf8FromWide(text.data()));
    }
    return captions;
}

}  // namespace tidemark
