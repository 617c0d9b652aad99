#include "support/menu_captions.h"

#include <array>

#include "platform/win32/wide_text.h"
#include "support/modal_driver.h"
#include "support/open_windows.h"
#include "support/pump.h"

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

std::vector<std::string> CaptionsOfPopup(const std::function<void()>& open,
                                         const std::function<void(HMENU)>& look) {
    std::vector<std::string> captions;
    const ModalDriver driver({[&] {
                                 const HMENU menu = OpenMenu();
                                 captions = CaptionsOf(menu);
                                 if (captions.empty()) {
                                     return false;
                                 }
                                 if (look) {
                                     look(menu);
                                 }
                                 return ::EndMenu() != FALSE;
                             }},
                             [] { ::EndMenu(); });
    open();
    PumpPending();
    return captions;
}

}  // namespace tidemark
