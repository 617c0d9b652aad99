#pragma once

#include <string>
#include <string_view>

#include "platform/geometry.h"
#include "platform/win32/windows.h"

namespace tidemark {

// Typed operations on a window. Owns nothing; copies name the same window. All texts are UTF-8, all
// positions pixels. Operations on a window that is gone do nothing, and queries give empty answers.
class Window {
  public:
    Window() = default;
    explicit Window(HWND handle) : handle_(handle) {}

    [[nodiscard]] HWND Handle() const { return handle_; }
    // Whether the window is still there.
    [[nodiscard]] bool Exists() const { return handle_ != nullptr && ::IsWindow(handle_); }

    [[nodiscard]] std::string Text() const;
    // Writes only when the text differs, so that nothing flickers.
    void SetText(std::string_view text);

    // The window's own visibility, whatever its parents'.
    [[nodiscard]] bool Visible() const;
    void SetVisible(bool visible);
    [[nodiscard]] bool Enabled() const;
    // Disabling the control that has the focus moves the focus to the next control that can take
    // it, or else to the form: without a focus no key would reach either.
    void SetEnabled(bool enabled);

    // Outer rectangle: in the parent's client area for a child, on the screen otherwise.
    [[nodiscard]] Bounds Position() const;
    void Move(const Bounds& bounds);
    [[nodiscard]] Size ClientSize() const;
    // Places the window directly in front of its siblings, without activating it, or after
    // `previous` in tab order.
    void BringToFront();
    void PlaceAfter(const Window& previous);

    // The font is not owned and must outlive its use.
    [[nodiscard]] HFONT Font() const;
    void SetFont(HFONT font);
    // Size of one line of text in the window's font; an "&" that marks a mnemonic takes no room.
    [[nodiscard]] Size TextSize(std::string_view text) const;

    [[nodiscard]] DWORD Style() const;
    [[nodiscard]] DWORD ExtendedStyle() const;
    // Sets the bits of `on` and clears those of `off`, and lets the frame follow. Writes only what
    // changes.
    void ChangeStyle(DWORD on, DWORD off);
    void ChangeExtendedStyle(DWORD on, DWORD off);

    void Focus() const;
    [[nodiscard]] bool HasFocus() const;
    void Invalidate() const;

    // Sends a message and returns its result; 0 when there is no window.
    // NOLINTNEXTLINE(modernize-use-nodiscard): many messages have no result that says anything.
    LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;
    void Post(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;

  protected:
    void SetHandle(HWND handle) { handle_ = handle; }

  private:
    HWND handle_ = nullptr;
};

// Suspends drawing of a visible window while alive, and then repaints it. A hidden window is left
// alone: resuming would show it.
class RedrawPause {
  public:
    explicit RedrawPause(const Window& window);
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;
    ~RedrawPause();

  private:
    Window window_;
};

}  // namespace tidemark
