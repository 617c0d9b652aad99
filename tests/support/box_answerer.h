#pragma once

#include <string>

#include "platform/win32/windows.h"
#include "support/modal_driver.h"
#include "support/open_windows.h"
#include "ui/window.h"

namespace tidemark {

// Answers a message box of this thread with a command once it is up, and notes what it showed.
class BoxAnswerer {
  public:
    explicit BoxAnswerer(int command)
        : driver_({[this, command] { return Answer(command); }}, [] { PressInDialog(IDCANCEL); }) {}

    HWND owner = nullptr;
    std::string caption;
    std::string text;
    int default_button = 0;

  private:
    bool Answer(int command) {
        const HWND box = OpenDialog();
        if (box == nullptr) {
            return false;
        }
        owner = ::GetWindow(box, GW_OWNER);
        caption = Window(box).Text();
        text = Window(::GetDlgItem(box, kTextOfBox)).Text();
        for (const int button : {IDOK, IDYES, IDNO}) {
            const Window candidate(::GetDlgItem(box, button));
            if ((candidate.Style() & BS_TYPEMASK) == BS_DEFPUSHBUTTON) {
                default_button = button;
            }
        }
        PressInDialog(command);
        return true;
    }

    static constexpr int kTextOfBox = 0xFFFF;

    ModalDriver driver_;
};

}  // namespace tidemark
