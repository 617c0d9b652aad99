#include "ui/control.h"

#include <commctrl.h>

#include "platform/program_error.h"
#include "platform/win32/system_message.h"
#include "platform/win32/wide_text.h"

namespace tidemark {

void ControlRegistry::Add(HWND window, Control& control) {
    if (!controls_.emplace(window, &control).second) {
        throw ProgramError(error_number::kDuplicateKey, "A window has one control only.");
    }
}

void ControlRegistry::Remove(HWND window) {
    controls_.erase(window);
}

Control* ControlRegistry::Find(HWND window) const {
    for (HWND candidate = window; candidate != nullptr;) {
        if (const auto found = controls_.find(candidate); found != controls_.end()) {
            return found->second;
        }
        if (candidate != window) {
            return nullptr;
        }
        candidate = ::GetAncestor(candidate, GA_PARENT);
    }
    return nullptr;
}

std::optional<LRESULT> ControlRegistry::Reflect(UINT message, WPARAM wparam, LPARAM lparam) const {
    switch (message) {
        case WM_NOTIFY: {
            auto* header = reinterpret_cast<NMHDR*>(lparam);
            Control* control = Find(header->hwndFrom);
            return control ? control->OnNotify(*header) : std::nullopt;
        }
        case WM_COMMAND: {
            Control* control = lparam != 0 ? Find(reinterpret_cast<HWND>(lparam)) : nullptr;
            return control ? control->OnCommand(HIWORD(wparam)) : std::nullopt;
        }
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORSTATIC: {
            Control* control = Find(reinterpret_cast<HWND>(lparam));
            return control ? control->OnControlColour(message, reinterpret_cast<HDC>(wparam))
                           : std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

Control::~Control() {
    Destroy();
}

void Control::Destroy() {
    const HWND window = Handle();
    if (window == nullptr) {
        return;
    }
    // Forgotten first: what the window says while it goes concerns a wrapper that is going.
    Forget();
    ::DestroyWindow(window);
}

std::optional<LRESULT> Control::OnNotify(NMHDR& /*header*/) {
    return std::nullopt;
}

std::optional<LRESULT> Control::OnCommand(WORD /*notification*/) {
    return std::nullopt;
}

std::optional<LRESULT> Control::OnControlColour(UINT /*message*/, HDC /*dc*/) {
    return std::nullopt;
}

HostedWindowSpec Control::SpecIn(ControlSite& site, const ControlSpec& spec) const {
    if (Handle() != nullptr) {
        throw ProgramError(error_number::kDuplicateKey, "The control has a window already.");
    }
    HostedWindowSpec window;
    window.text = spec.text;
    window.style = WS_CHILD | spec.style | (spec.visible ? WS_VISIBLE : 0U);
    window.extended_style = spec.extended_style;
    window.bounds = spec.bounds;
    window.parent = site.SiteWindow();
    window.id = site.Controls().NextId();
    return window;
}

void Control::CreateChild(ControlSite& site, const wchar_t* class_name, const ControlSpec& spec) {
    const HostedWindowSpec own = SpecIn(site, spec);
    const HWND window =
        ::CreateWindowExW(own.extended_style, class_name, WideFromUtf8(own.text).c_str(), own.style,
                          own.bounds.left, own.bounds.top, own.bounds.width, own.bounds.height,
                          own.parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(own.id)),
                          ::GetModuleHandleW(nullptr), nullptr);
    if (window == nullptr) {
        ThrowSystemError(::GetLastError(), "Creating a control");
    }
    Adopt(site, window);
    SetFont(reinterpret_cast<HFONT>(::SendMessageW(site.SiteWindow(), WM_GETFONT, 0, 0)));
}

void Control::Adopt(ControlSite& site, HWND window) {
    site.Controls().Add(window, *this);
    registry_ = &site.Controls();
    SetHandle(window);
    try {
        Watch(window);
    } catch (...) {
        Destroy();
        throw;
    }
}

LRESULT Control::OnWatched(const WatchedMessage& message) {
    if (message.message == WM_NCDESTROY) {
        Forget();
        return message.PassOn();
    }
    return OnOwnMessage(message);
}

LRESULT Control::OnOwnMessage(const WatchedMessage& message) {
    return message.PassOn();
}

void Control::Forget() {
    StopWatching();
    registry_->Remove(Handle());
    registry_ = nullptr;
    SetHandle(nullptr);
}

}  // namespace tidemark
