#include "ui/tool_tip.h"

#include "platform/program_error.h"
#include "platform/raise.h"
#include "platform/win32/system_message.h"
#include "platform/win32/wide_text.h"
#include "ui/form.h"

// After the system's main header.
#include <commctrl.h>

#include <limits>

namespace tidemark {

void ToolTip::Create(Form& form) {
    const HWND window = ::CreateWindowExW(
        WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, form.SiteWindow(), nullptr,
        ::GetModuleHandleW(nullptr), nullptr);
    if (window == nullptr) {
        ThrowSystemError(::GetLastError(), "Creating a tool tip");
    }
    form_ = form.SiteWindow();
    Adopt(form, window);
    // A tip has more than one line only once it has a greatest width.
    Send(TTM_SETMAXTIPWIDTH, 0, std::numeric_limits<short>::max());
}

void ToolTip::AddTool(const Control& control) {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = form_;
    tool.uId = reinterpret_cast<UINT_PTR>(control.Handle());
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    if (Send(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool)) == FALSE) {
        throw ProgramError(error_number::kInvalidArgument, "The control can have no tool tip.");
    }
}

void ToolTip::Update() {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    if (!Visible() || Send(TTM_GETCURRENTTOOLW, 0, reinterpret_cast<LPARAM>(&tool)) == FALSE) {
        return;
    }
    // A new text is shown at once; a tip that is only redrawn keeps the old one.
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    Send(TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

std::optional<LRESULT> ToolTip::OnNotify(NMHDR& header) {
    if (header.code != TTN_GETDISPINFOW || !text) {
        return std::nullopt;
    }
    shown_text_ = WideFromUtf8(text());
    reinterpret_cast<NMTTDISPINFOW&>(header).lpszText = shown_text_.data();
    return 0;
}

}  // namespace tidemark
