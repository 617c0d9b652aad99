#pragma once

#include "ui/control.h"

namespace tidemark {

// A static text. Created directly before the control it names, its text becomes that control's
// accessible name and its mnemonic leads there.
class Label : public Control {
  public:
    // Whether "&" marks a mnemonic or is a character like any other.
    enum class Ampersand { kMnemonic, kPlain };

    void Create(ControlSite& site, const ControlSpec& spec,
                Ampersand ampersand = Ampersand::kMnemonic);
};

}  // namespace tidemark
