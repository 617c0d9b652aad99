#pragma once

#include "ui/form.h"

namespace tidemark {

// Destroys a form's window at the end of a scope, whatever leaves it.
class WindowEnd {
  public:
    explicit WindowEnd(Form& form) : form_(form) {}
    WindowEnd(const WindowEnd&) = delete;
    WindowEnd& operator=(const WindowEnd&) = delete;
    ~WindowEnd() { form_.Destroy(); }

  private:
    Form& form_;
};

}  // namespace tidemark
