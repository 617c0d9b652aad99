// Messages on their way to the list: keys, the mouse and the popup they ask for.
#include "ui/list_view.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/input_bits.h"
#include "platform/raise.h"
#include "platform/win32/system_loop.h"
#include "ui/last_resort.h"

namespace tidemark {
namespace {

int ShiftKeys() {
    const auto down = [](int key) { return ::GetKeyState(key) < 0; };
    return (down(VK_SHIFT) ? kShiftKey : 0) | (down(VK_CONTROL) ? kControlKey : 0) |
           (down(VK_MENU) ? kAltKey : 0);
}

int HeldButtons(WPARAM keys) {
    return ((keys & MK_LBUTTON) != 0 ? kLeftButton : 0) |
           ((keys & MK_RBUTTON) != 0 ? kRightButton : 0) |
           ((keys & MK_MBUTTON) != 0 ? kMiddleButton : 0);
}

Point PointOf(LPARAM lparam) {
    return {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
}

// The presses that the list may follow, until the button is up again, in a loop of its own: on a
// scroll bar, to scroll; on its rows, to see whether they are to be dragged or framed.
bool MayBeFollowed(UINT message) {
    return message == WM_NCLBUTTONDOWN || message == WM_NCLBUTTONDBLCLK ||
           message == WM_LBUTTONDOWN;
}

}  // namespace

LRESULT ListView::OnOwnMessage(const WatchedMessage& message) {
    const std::shared_ptr<const bool> alive = alive_;
    const bool done = Guarded(message.window, /*fallback=*/false, [&] {
        CatchUp();
        return OnListMessage(message.message, message.wparam, message.lparam);
    });
    if (done) {
        return 0;
    }
    std::optional<SystemLoopScope> loop;
    if (MayBeFollowed(message.message)) {
        loop.emplace();
    }
    const LRESULT result = message.PassOn();
    // The message may have scrolled the list, or ended it.
    if (*alive && message.message != LVM_REDRAWITEMS) {
        sight_known_ = false;
    }
    return result;
}

bool ListView::OnListMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_KEYDOWN:
            Raise(on_key_down, static_cast<UINT>(wparam), ShiftKeys());
            return false;
        case WM_CHAR:
            // Control characters are commands; only others are typed to find a row.
            return wparam < L' ';
        case WM_CONTEXTMENU:
            if (lparam == -1) {
                Raise(on_context_key, ContextPoint());
            }
            return true;
        case WM_SETFOCUS:
            // The keyboard needs a row to start from.
            if (model_.Count() != 0 && model_.CurrentPosition() == ListModel::kNoPosition) {
                SetRowState(0, LVIS_FOCUSED, LVIS_FOCUSED);
            }
            return false;
        case WM_SETREDRAW:
            drawing_ = wparam != FALSE;
            return false;
        case WM_CAPTURECHANGED:
            right_press_.reset();
            return false;
        default:
            return message >= WM_MOUSEFIRST && message <= WM_MOUSELAST &&
                   OnMouseMessage(message, wparam, lparam);
    }
}

// The list would track the right button in a loop of its own and swallow its release. Here it only
// selects, as the list does, and every press, move and release is told.
bool ListView::OnMouseMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    const Point at = PointOf(lparam);
    switch (message) {
        case WM_LBUTTONDOWN:
            Raise(on_mouse_down, MouseEvent{kLeftButton});
            return false;
        case WM_LBUTTONUP:
            Raise(on_mouse_up, MouseEvent{kLeftButton});
            return false;
        case WM_MBUTTONDOWN:
            Raise(on_mouse_down, MouseEvent{kMiddleButton});
            return false;
        case WM_MBUTTONUP:
            Raise(on_mouse_up, MouseEvent{kMiddleButton});
            return false;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
            PressRight(at, ShiftKeys());
            Raise(on_mouse_down, MouseEvent{kRightButton});
            return true;
        case WM_MOUSEMOVE:
            if (MovedEnough(at, wparam)) {
                right_press_.reset();
                const int held = HeldButtons(wparam);
                if (held != kRightButton || !std::exchange(right_move_told_, true)) {
                    Raise(on_mouse_move, MouseEvent{held});
                }
            }
            return false;
        case WM_RBUTTONUP:
            right_press_.reset();
            right_move_told_ = false;
            if (::GetCapture() == Handle()) {
                ::ReleaseCapture();
            }
            Raise(on_mouse_up, MouseEvent{kRightButton});
            return true;
        default:
            return false;
    }
}

void ListView::PressRight(Point at, int shift) {
    Focus();
    LVHITTESTINFO hit{};
    hit.pt = {at.x, at.y};
    const auto row = static_cast<int>(Send(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    const bool keeps = (shift & (kShiftKey | kControlKey)) != 0;
    if (row < 0) {
        if (!keeps) {
            SetRowState(kAllRows, 0, LVIS_SELECTED);
        }
    } else {
        if (!keeps && !model_.At(static_cast<std::size_t>(row)).selected) {
            SetRowState(kAllRows, 0, LVIS_SELECTED);
            SetRowState(row, LVIS_SELECTED, LVIS_SELECTED);
        }
        SetRowState(row, LVIS_FOCUSED, LVIS_FOCUSED);
        Send(LVM_SETSELECTIONMARK, 0, row);
    }
    ::SetCapture(Handle());
    right_press_ = at;
    right_move_told_ = false;
}

bool ListView::MovedEnough(Point at, WPARAM buttons) const {
    if (!right_press_ || (buttons & MK_RBUTTON) == 0) {
        return true;
    }
    return std::abs(at.x - right_press_->x) >= ::GetSystemMetrics(SM_CXDRAG) ||
           std::abs(at.y - right_press_->y) >= ::GetSystemMetrics(SM_CYDRAG);
}

Point ListView::ContextPoint() const {
    RECT row{};
    const std::size_t current = model_.CurrentPosition();
    POINT at{};
    if (current != ListModel::kNoPosition) {
        row.left = LVIR_LABEL;
        Send(LVM_GETITEMRECT, current, reinterpret_cast<LPARAM>(&row));
        at = {row.left, row.bottom};
        // A row scrolled out of sight leaves the popup at the list's edge.
        const Size client = ClientSize();
        at.x = std::clamp<LONG>(at.x, 0, client.width);
        at.y = std::clamp<LONG>(at.y, 0, client.height);
    }
    ::ClientToScreen(Handle(), &at);
    return {at.x, at.y};
}

}  // namespace tidemark
