#include "ui/label.h"

#include <commctrl.h>

namespace tidemark {

void Label::Create(ControlSite& site, const ControlSpec& spec, Ampersand ampersand) {
    ControlSpec own = spec;
    own.style |= ampersand == Ampersand::kPlain ? static_cast<DWORD>(SS_NOPREFIX) : 0U;
    CreateChild(site, WC_STATICW, own);
}

}  // namespace tidemark
