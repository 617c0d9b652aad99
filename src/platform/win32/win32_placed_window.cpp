#include "platform/win32/win32_placed_window.h"

#include <cmath>

#include "platform/program_error.h"
#include "platform/win32/system_message.h"

namespace tidemark {
namespace {

int PixelsOf(float twips, double twips_per_pixel) {
    const double pixels = std::round(static_cast<double>(twips) / twips_per_pixel);
    // Written so that what is no number fails, too.
    if (!(pixels >= INT32_MIN && pixels <= INT32_MAX)) {
        throw ProgramError(error_number::kOverflow, "Overflow: no window can be moved that far.");
    }
    return static_cast<int>(pixels);
}

float TwipsOf(LONG pixels, double twips_per_pixel) {
    return static_cast<float>(pixels * twips_per_pixel);
}

}  // namespace

WindowState Win32PlacedWindow::State() const {
    if (::IsIconic(window_)) {
        return WindowState::kMinimised;
    }
    return ::IsZoomed(window_) ? WindowState::kMaximised : WindowState::kNormal;
}

TwipsBounds Win32PlacedWindow::Placement() const {
    RECT rect{};
    if (!::GetWindowRect(window_, &rect)) {
        ThrowSystemError(::GetLastError(), "Reading the place of the window");
    }
    const double x = screen_.TwipsPerPixelX();
    const double y = screen_.TwipsPerPixelY();
    return {TwipsOf(rect.left, x), TwipsOf(rect.top, y), TwipsOf(rect.right - rect.left, x),
            TwipsOf(rect.bottom - rect.top, y)};
}

void Win32PlacedWindow::MoveTo(const TwipsBounds& bounds) {
    if (State() != WindowState::kNormal) {
        throw ProgramError(error_number::kMoveOfMinimisedOrMaximised,
                           "A window cannot be moved or sized while minimised or maximised.");
    }
    const double x = screen_.TwipsPerPixelX();
    const double y = screen_.TwipsPerPixelY();
    if (!::SetWindowPos(window_, /*hWndInsertAfter=*/nullptr, PixelsOf(bounds.left, x),
                        PixelsOf(bounds.top, y), PixelsOf(bounds.width, x),
                        PixelsOf(bounds.height, y),
                        SWP_NOZORDER | SWP_NOOWNERZORDER | SWP_NOACTIVATE)) {
        ThrowSystemError(::GetLastError(), "Moving the window");
    }
}

}  // namespace tidemark
