#pragma once

#include "ui/control.h"

namespace tidemark {

// A static text. Created directly before the control it names, its text becomes that control's
// accessible name and its mnemonic leads there.
class Label : public Control {
  public:
    void Create(ControlSite& site, const ControlSpec& spec);
};

}  // namespace tidemark
