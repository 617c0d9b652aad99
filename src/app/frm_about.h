#pragma once

#include <string>

#include "app/picture.h"
#include "ui/form.h"
#include "ui/gdi.h"
#include "ui/label.h"
#include "ui/message_font.h"

namespace tidemark {

// Tells the program's name and version. Closed by Esc, Enter, a click anywhere or its close box.
class frmAbout final : public Form {
  public:
    // `version` is the text of the version label.
    explicit frmAbout(std::string version);
    ~frmAbout() override { Destroy(); }

    // Creates the window, invisible as yet, in the middle of `owner` and kept above it. Its outer
    // size follows from the picture and the labels below it.
    void Form_Load(const Window& owner);

    // All of one visit: loads the window, shows it in front of `owner`, above all other windows if
    // `topmost`, until it is closed, and unloads it, also when something of that fails. Does
    // nothing while it is loaded.
    void ShowUntilClosed(const Window& owner, bool topmost);

    LRESULT OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) override;

    Label lblVersion;
    Label lblHint;

  private:
    std::string version_;
    Picture picture_;
    UniqueFont font_;
    MessageFont message_font_;
    bool pressed_ = false;  // a click has begun in this window
};

}  // namespace tidemark
