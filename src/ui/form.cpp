#include "ui/form.h"

#include "platform/raise.h"
#include "ui/button.h"
#include "ui/foreground.h"
#include "ui/menu.h"
#include "ui/message_loop.h"

namespace tidemark {
namespace {

bool Held(int key) {
    return ::GetKeyState(key) < 0;
}

// Whether the window wants this very key for itself (a list that edits a label, an open drop-down).
bool WantsKey(const MSG& message) {
    const auto code = static_cast<UINT>(::SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam,
                                                       reinterpret_cast<LPARAM>(&message)));
    return (code & DLGC_WANTMESSAGE) != 0;
}

// Whether the window and all those between it and the form can be reached by the keyboard.
bool TakesKeys(HWND window, HWND form) {
    if (::IsWindowVisible(window) == FALSE) {
        return false;
    }
    while (window != nullptr && window != form) {
        if (::IsWindowEnabled(window) == FALSE) {
            return false;
        }
        window = ::GetAncestor(window, GA_PARENT);
    }
    return true;
}

BOOL CALLBACK SendTo(HWND control, LPARAM handed_on) {
    const auto& message = *reinterpret_cast<const MSG*>(handed_on);
    ::SendMessageW(control, message.message, message.wParam, message.lParam);
    return TRUE;
}

// Sends the message to every control of the window, also to those inside others.
void HandOnToControls(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const MSG handed_on{window, message, wparam, lparam, 0, {}};
    ::EnumChildWindows(window, SendTo, reinterpret_cast<LPARAM>(&handed_on));
}

bool Pressable(const Button* button) {
    return button != nullptr && button->Enabled() && ::IsWindowVisible(button->Handle());
}

}  // namespace

Form::~Form() {
    Destroy();
}

void Form::Create(const wchar_t* class_name, const FormSpec& spec) {
    HostedWindowSpec window;
    window.class_name = class_name;
    window.text = spec.caption;
    window.style = spec.style & ~static_cast<DWORD>(WS_VISIBLE);
    window.extended_style = spec.extended_style | WS_EX_CONTROLPARENT;
    window.bounds = spec.bounds;
    window.parent = spec.owner;
    CreateHostedWindow(*this, window);
}

void Form::Destroy() {
    if (Handle() != nullptr) {
        ::DestroyWindow(Handle());
    }
}

void Form::Present() {
    if (UserIsHere()) {
        ::ShowWindow(Handle(), ::IsIconic(Handle()) ? SW_RESTORE : SW_SHOW);
        ::SetForegroundWindow(Handle());
        return;
    }
    ::SetWindowPos(Handle(), nullptr, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    AskForAttention(*this);
}

void Form::ShowModal(const Window& owner) {
    if (!Exists()) {
        return;
    }
    // The loop may outlive the form object, so it is given nothing but the window.
    const HWND window = Handle();
    if (owner.Exists() && owner.Enabled()) {
        modal_owner_ = owner.Handle();
        ::EnableWindow(modal_owner_, FALSE);
    }
    SetVisible(true);
    RunMessageLoopWhileVisible(window);
}

void Form::ReleaseModalOwner() {
    // Before the form goes: were the owner still disabled, another program would be activated.
    if (modal_owner_ != nullptr) {
        ::EnableWindow(modal_owner_, TRUE);
        modal_owner_ = nullptr;
    }
}

void Form::SetMenuBar(Menu* menu) {
    menu_ = menu;
    ::SetMenu(Handle(), menu != nullptr ? menu->Bar() : nullptr);
    if (menu != nullptr) {
        menu->AttachTo(*this);
    }
}

void Form::SetDefaultButton(Button* button) {
    if (default_button_ != nullptr) {
        default_button_->ShowAsDefault(false);
    }
    default_button_ = button;
    if (default_button_ != nullptr) {
        default_button_->ShowAsDefault(true);
    }
}

void Form::FocusFirst() {
    if (const HWND first = ::GetNextDlgTabItem(Handle(), nullptr, FALSE)) {
        ::SetFocus(first);
    }
}

LRESULT Form::OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (Handle() == nullptr) {
        SetHandle(window);
    }
    if (const auto answer = controls_.Reflect(message, wparam, lparam)) {
        return *answer;
    }
    if (OnMenuMessage(message, wparam, lparam)) {
        return 0;
    }
    switch (message) {
        case WM_SIZE:
            if (wparam != SIZE_MINIMIZED) {
                OnResize({LOWORD(lparam), HIWORD(lparam)});
            }
            return 0;
        case WM_CLOSE:
            OnClose();
            return 0;
        case WM_ENDSESSION:
            // The process may be ended as soon as this is answered. Whether the session may end is
            // asked before; the system's default says yes.
            if (wparam != FALSE) {
                OnClose();
            }
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wparam) == WA_INACTIVE) {
                RememberFocus();
            }
            return 0;
        case WM_WINDOWPOSCHANGING:
            if ((reinterpret_cast<const WINDOWPOS*>(lparam)->flags & SWP_HIDEWINDOW) != 0) {
                ReleaseModalOwner();
            }
            return ::DefWindowProcW(window, message, wparam, lparam);
        case WM_SETFOCUS:
            RestoreFocus();
            return 0;
        case WM_NEXTDLGCTL: {
            // Sent by the system's own handling of mnemonics, as to a dialog.
            const HWND next = LOWORD(lparam) != 0
                                  ? reinterpret_cast<HWND>(wparam)
                                  : ::GetNextDlgTabItem(window, ::GetFocus(), wparam != 0);
            ::SetFocus(next);
            return 0;
        }
        case WM_SYSCOLORCHANGE:
        case WM_SETTINGCHANGE:
            // Only top-level windows are told. The common controls keep the old colours otherwise,
            // and the pickers show dates in another form than they are read in.
            HandOnToControls(window, message, wparam, lparam);
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(font_);
        case WM_DESTROY:
            ReleaseModalOwner();
            OnDestroy();
            // A bar left in the window would be destroyed with it; its Menu owns it.
            ::SetMenu(window, nullptr);
            return 0;
        case WM_NCDESTROY: {
            const LRESULT result = ::DefWindowProcW(window, message, wparam, lparam);
            SetHandle(nullptr);
            last_focus_ = nullptr;
            return result;
        }
        default:
            return ::DefWindowProcW(window, message, wparam, lparam);
    }
}

bool Form::OnMenuMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    if (menu_ == nullptr) {
        return false;
    }
    if (message == WM_INITMENUPOPUP && HIWORD(lparam) == FALSE) {
        return menu_->Open(reinterpret_cast<HMENU>(wparam));
    }
    return message == WM_COMMAND && lparam == 0 && menu_->Click(LOWORD(wparam));
}

void Form::RememberFocus() {
    const HWND focus = ::GetFocus();
    if (focus != nullptr && ::IsChild(Handle(), focus)) {
        last_focus_ = focus;
    }
}

void Form::RestoreFocus() {
    if (last_focus_ != nullptr && ::IsChild(Handle(), last_focus_) &&
        ::IsWindowVisible(last_focus_) && ::IsWindowEnabled(last_focus_)) {
        ::SetFocus(last_focus_);
    } else {
        OnFirstFocus();
    }
}

bool Form::PreTranslate(MSG& message) {
    if (message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN) {
        const KeyPress press{.key = static_cast<UINT>(message.wParam),
                             .control = Held(VK_CONTROL),
                             .alt = Held(VK_MENU)};
        if (Raise(on_key, press)) {
            return true;
        }
        Control* const focused = controls_.Find(message.hwnd);
        if (focused != nullptr && focused->KeepsKeys()) {
            return false;
        }
        if (!press.control && !press.alt && PressForKey(message, focused)) {
            return true;
        }
    }
    // A search for the next control that begins where none can be reached may never come round to
    // its beginning.
    if (!TakesKeys(message.hwnd, Handle()) || ::IsDialogMessageW(Handle(), &message) == FALSE) {
        return false;
    }
    // The key may have moved the focus, and the system takes the heavy border off with it. The
    // border marks the button that Enter presses.
    if (default_button_ != nullptr && default_button_->Exists()) {
        default_button_->ShowAsDefault(dynamic_cast<Button*>(controls_.Find(::GetFocus())) ==
                                           nullptr ||
                                       default_button_->HasFocus());
    }
    return true;
}

bool Form::PressForKey(const MSG& message, Control* focused) {
    if ((message.wParam != VK_RETURN && message.wParam != VK_ESCAPE) || WantsKey(message)) {
        return false;
    }
    if ((HIWORD(message.lParam) & KF_REPEAT) != 0) {
        // Held since an earlier press, maybe since one that closed a message box: pressing again
        // would cancel what that press started, or start what nobody asked for.
        return true;
    }
    Button* button = cancel_button_;
    if (message.wParam == VK_RETURN) {
        auto* focused_button = dynamic_cast<Button*>(focused);
        button = focused_button != nullptr ? focused_button : default_button_;
    }
    if (Pressable(button)) {
        button->Click();
    }
    // Without a button to press the key does nothing; a beep or a made-up command would be worse.
    return true;
}

}  // namespace tidemark
