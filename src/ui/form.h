#pragma once

#include <functional>
#include <string>

#include "ui/control.h"
#include "ui/hosted_window.h"

namespace tidemark {

class Button;
class Menu;

// A key press on its way to a form or to one of its controls.
struct KeyPress {
    UINT key = 0;  // VK_...
    bool control = false;
    bool alt = false;
};

struct FormSpec {
    std::string caption{};
    DWORD style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    DWORD extended_style = 0;
    Bounds bounds{CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT};
    HWND owner = nullptr;
};

// A top-level window of the program. A form of the program derives from it and holds its controls
// and menus as members under their names; its handlers only route.
//
// Created invisible. The window may be destroyed at any time, also from one of the form's own
// handlers; the form object stays until its owner drops it. A derived form calls Destroy() in its
// destructor, so that no message reaches members that are gone.
//
// Keyboard, as in a dialog: Tab and the arrows move between controls, a mnemonic reaches its
// control, Enter presses the focused button or else the default one, Esc presses the cancel button.
// While the form is in the background it remembers which control has the focus.
class Form : public Window, public ControlSite, public MessageHandler {
  public:
    Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form();

    // Throws ProgramError when the window cannot be created. The class name tells windows of this
    // kind from others, also from outside.
    void Create(const wchar_t* class_name, const FormSpec& spec);
    // Destroys the window, if there is one, without asking.
    void Destroy();
    // Asks the form to close, as its close box does.
    void Close() { Send(WM_CLOSE); }

    // Brings the form before the user: shown, restored if it was minimised, in front and active.
    // While the user works in another program it is shown without any of that, and its button in
    // the taskbar flashes until the user comes.
    void Present();

    // Shows the form in front of `owner`, which is disabled meanwhile, and routes messages until
    // the form is hidden or destroyed. Nothing without a window.
    void ShowModal(const Window& owner);

    // The font that WM_GETFONT answers and new controls start with; not owned.
    void SetFormFont(HFONT font) { font_ = font; }

    // The menu bar, not owned; null takes it off.
    void SetMenuBar(Menu* menu);
    // Buttons pressed by Enter and by Esc while they are visible and enabled; not owned, null for
    // none.
    void SetDefaultButton(Button* button);
    void SetCancelButton(Button* button) { cancel_button_ = button; }

    // Sees each key press in the form first; true when that is all that is to happen with it. A
    // handler that destroys the form answers true.
    std::function<bool(const KeyPress&)> on_key;

    [[nodiscard]] HWND SiteWindow() const override { return Handle(); }
    [[nodiscard]] ControlRegistry& Controls() override { return controls_; }

    LRESULT OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) override;
    bool PreTranslate(MSG& message) override;

  protected:
    // What a form of the program answers; the defaults do what is said.
    virtual void OnResize(Size /*client*/) {}      // nothing; not called when minimised
    virtual void OnClose() { Destroy(); }          // close box, Alt+F4, Close(), end of the session
    virtual void OnDestroy() {}                    // nothing; the children are still there
    virtual void OnFirstFocus() { FocusFirst(); }  // the focus comes and no control had it before

    // Gives the focus to the first control that can take it.
    void FocusFirst();

  private:
    bool PressForKey(const MSG& message, Control* focused);
    bool OnMenuMessage(UINT message, WPARAM wparam, LPARAM lparam);
    void RememberFocus();
    void RestoreFocus();
    void ReleaseModalOwner();

    ControlRegistry controls_;
    Menu* menu_ = nullptr;
    Button* default_button_ = nullptr;
    Button* cancel_button_ = nullptr;
    HFONT font_ = nullptr;
    HWND last_focus_ = nullptr;
    HWND modal_owner_ = nullptr;  // disabled while this form is shown
};

}  // namespace tidemark
