#include "ui/button.h"

#include <commctrl.h>

#include "platform/raise.h"

namespace tidemark {

void Button::Create(ControlSite& site, const ControlSpec& spec) {
    ControlSpec own = spec;
    own.style |= WS_TABSTOP | BS_PUSHBUTTON;
    CreateChild(site, WC_BUTTONW, own);
}

void Button::Click() {
    if (Enabled()) {
        Raise(on_click);
    }
}

void Button::ShowAsDefault(bool on) {
    const bool shown = (Style() & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    if (on != shown) {
        Send(BM_SETSTYLE, on ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
    }
}

std::optional<LRESULT> Button::OnCommand(WORD notification) {
    if (notification != BN_CLICKED) {
        return std::nullopt;
    }
    Raise(on_click);
    return 0;
}

void CheckBox::Create(ControlSite& site, const ControlSpec& spec) {
    ControlSpec own = spec;
    own.style |= WS_TABSTOP | BS_AUTOCHECKBOX;
    CreateChild(site, WC_BUTTONW, own);
}

bool CheckBox::Checked() const {
    return Send(BM_GETCHECK) == BST_CHECKED;
}

void CheckBox::SetChecked(bool checked) {
    if (checked != Checked()) {
        Send(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED);
    }
}

std::optional<LRESULT> CheckBox::OnCommand(WORD notification) {
    if (notification != BN_CLICKED) {
        return std::nullopt;
    }
    Raise(on_click);
    return 0;
}

}  // namespace tidemark
