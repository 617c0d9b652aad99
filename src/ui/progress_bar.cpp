#include "ui/progress_bar.h"

#include <commctrl.h>

namespace tidemark {

void ProgressBar::Create(ControlSite& site, const ControlSpec& spec) {
    CreateChild(site, PROGRESS_CLASSW, spec);
}

int ProgressBar::Minimum() const {
    return static_cast<int>(Send(PBM_GETRANGE, TRUE));
}

int ProgressBar::Maximum() const {
    return static_cast<int>(Send(PBM_GETRANGE, FALSE));
}

int ProgressBar::Value() const {
    return static_cast<int>(Send(PBM_GETPOS));
}

void ProgressBar::SetMinimum(int minimum) {
    if (minimum != Minimum()) {
        Send(PBM_SETRANGE32, static_cast<WPARAM>(minimum), Maximum());
    }
}

void ProgressBar::SetMaximum(int maximum) {
    if (maximum != Maximum()) {
        Send(PBM_SETRANGE32, static_cast<WPARAM>(Minimum()), maximum);
    }
}

void ProgressBar::SetValue(int value) {
    if (value != Value()) {
        Send(PBM_SETPOS, static_cast<WPARAM>(value));
    }
}

}  // namespace tidemark
