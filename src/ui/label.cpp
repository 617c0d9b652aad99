#include "ui/label.h"

#include <commctrl.h>

namespace tidemark {

void Label::Create(ControlSite& site, const ControlSpec& spec) {
    CreateChild(site, WC_STATICW, spec);
}

}  // namespace tidemark
