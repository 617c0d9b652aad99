#include "ui/window.h"

#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

constexpr UINT kKeepPlace = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;

// Changes one of the two style words and tells the window's frame.
void ChangeStyleWord(HWND window, int which, DWORD on, DWORD off) {
    const auto before = static_cast<DWORD>(::GetWindowLongPtrW(window, which));
    const DWORD after = (before & ~off) | on;
    if (after == before) {
        return;
    }
    ::SetWindowLongPtrW(window, which, static_cast<LONG_PTR>(after));
    ::SetWindowPos(window, nullptr, 0, 0, 0, 0, kKeepPlace | SWP_FRAMECHANGED);
}

}  // namespace

std::string Window::Text() const {
    const int length = ::GetWindowTextLengthW(handle_);
    if (length <= 0) {
        return {};
    }
    // The length may be an over-estimate; the copy tells the true one.
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    const int copied = ::GetWindowTextW(handle_, text.data(), length + 1);
    return Utf8FromWide(std::wstring_view(text).substr(0, static_cast<std::size_t>(copied)));
}

void Window::SetText(std::string_view text) {
    if (Exists() && Text() != text) {
        ::SetWindowTextW(handle_, WideFromUtf8(text).c_str());
    }
}

bool Window::Visible() const {
    return (Style() & WS_VISIBLE) != 0;
}

void Window::SetVisible(bool visible) {
    if (handle_ != nullptr && visible != Visible()) {
        const bool child = (Style() & WS_CHILD) != 0;
        ::ShowWindow(handle_, !visible ? SW_HIDE : child ? SW_SHOWNA : SW_SHOW);
    }
}

bool Window::Enabled() const {
    return handle_ != nullptr && ::IsWindowEnabled(handle_);
}

void Window::SetEnabled(bool enabled) {
    if (handle_ == nullptr || enabled == Enabled()) {
        return;
    }
    const bool hands_on = !enabled && HasFocus() && (Style() & WS_CHILD) != 0;
    const HWND root = hands_on ? ::GetAncestor(handle_, GA_ROOT) : nullptr;
    const HWND next = hands_on ? ::GetNextDlgTabItem(root, handle_, FALSE) : nullptr;
    const bool only_one = next == nullptr || next == handle_;
    if (hands_on && !only_one) {
        ::SetFocus(next);
    }
    ::EnableWindow(handle_, enabled);
    if (hands_on && only_one) {
        // Not before: a form would hand the focus straight back to the control.
        ::SetFocus(root);
    }
}

Bounds Window::Position() const {
    RECT rect{};
    ::GetWindowRect(handle_, &rect);
    if ((Style() & WS_CHILD) != 0) {
        ::MapWindowPoints(HWND_DESKTOP, ::GetParent(handle_), reinterpret_cast<POINT*>(&rect), 2);
    }
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

void Window::Move(const Bounds& bounds) {
    if (handle_ != nullptr && bounds != Position()) {
        ::SetWindowPos(handle_, nullptr, bounds.left, bounds.top, bounds.width, bounds.height,
                       SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

Size Window::ClientSize() const {
    RECT rect{};
    ::GetClientRect(handle_, &rect);
    return {rect.right, rect.bottom};
}

void Window::BringToFront() {
    ::SetWindowPos(handle_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Window::PlaceAfter(const Window& previous) {
    ::SetWindowPos(handle_, previous.Handle(), 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

HFONT Window::Font() const {
    return reinterpret_cast<HFONT>(Send(WM_GETFONT));
}

// NOLINTNEXTLINE(readability-make-member-function-const): the window is another one afterwards.
void Window::SetFont(HFONT font) {
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

Size Window::TextSize(std::string_view text) const {
    if (!Exists()) {
        return {};  // without a window the system measures for the screen
    }
    HDC dc = ::GetDC(Handle());
    HGDIOBJ before = ::SelectObject(dc, Font() != nullptr ? Font() : ::GetStockObject(SYSTEM_FONT));
    const std::wstring wide = WideFromUtf8(text);
    RECT rect{};
    ::DrawTextW(dc, wide.c_str(), static_cast<int>(wide.size()), &rect,
                DT_CALCRECT | DT_SINGLELINE | DT_LEFT);
    ::SelectObject(dc, before);
    ::ReleaseDC(Handle(), dc);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

DWORD Window::Style() const {
    return static_cast<DWORD>(::GetWindowLongPtrW(handle_, GWL_STYLE));
}

DWORD Window::ExtendedStyle() const {
    return static_cast<DWORD>(::GetWindowLongPtrW(handle_, GWL_EXSTYLE));
}

void Window::ChangeStyle(DWORD on, DWORD off) {
    ChangeStyleWord(handle_, GWL_STYLE, on, off);
}

void Window::ChangeExtendedStyle(DWORD on, DWORD off) {
    ChangeStyleWord(handle_, GWL_EXSTYLE, on, off);
}

void Window::Focus() const {
    if (handle_ != nullptr) {
        ::SetFocus(handle_);
    }
}

bool Window::HasFocus() const {
    return handle_ != nullptr && ::GetFocus() == handle_;
}

void Window::Invalidate() const {
    if (handle_ != nullptr) {
        ::InvalidateRect(handle_, nullptr, TRUE);
    }
}

LRESULT Window::Send(UINT message, WPARAM wparam, LPARAM lparam) const {
    return handle_ == nullptr ? 0 : ::SendMessageW(handle_, message, wparam, lparam);
}

void Window::Post(UINT message, WPARAM wparam, LPARAM lparam) const {
    if (handle_ != nullptr) {
        ::PostMessageW(handle_, message, wparam, lparam);
    }
}

RedrawPause::RedrawPause(const Window& window) {
    if (window.Visible()) {
        window_ = window;
        window_.Send(WM_SETREDRAW, FALSE);
    }
}

RedrawPause::~RedrawPause() {
    if (window_.Exists()) {
        window_.Send(WM_SETREDRAW, TRUE);
        window_.Invalidate();
    }
}

}  // namespace tidemark
