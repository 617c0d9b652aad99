#pragma once

#include "ui/control.h"

namespace tidemark {

// A progress bar. A step paints at once, so each setter writes only what differs.
class ProgressBar : public Control {
  public:
    void Create(ControlSite& site, const ControlSpec& spec);

    [[nodiscard]] int Minimum() const;
    [[nodiscard]] int Maximum() const;
    [[nodiscard]] int Value() const;
    void SetMinimum(int minimum);
    void SetMaximum(int maximum);
    // A value outside the range is brought to its nearer end.
    void SetValue(int value);
};

}  // namespace tidemark
