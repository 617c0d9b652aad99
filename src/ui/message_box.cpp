#include "ui/message_box.h"

#include "platform/win32/wide_text.h"
#include "ui/foreground.h"
#include "ui/window.h"

namespace tidemark {
namespace {

UINT ButtonFlags(BoxButtons buttons) {
    switch (buttons) {
        case BoxButtons::kYesNo:
            return MB_YESNO;
        case BoxButtons::kAbortRetryIgnore:
            return MB_ABORTRETRYIGNORE;
        case BoxButtons::kOk:
            break;
    }
    return MB_OK;
}

UINT IconFlags(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::kQuestion:
            return MB_ICONQUESTION;
        case BoxIcon::kWarning:
            return MB_ICONWARNING;
        case BoxIcon::kCritical:
            return MB_ICONSTOP;
        case BoxIcon::kInformation:
            break;
    }
    return MB_ICONINFORMATION;
}

BoxAnswer AnswerOf(int result, BoxButtons buttons) {
    switch (result) {
        case IDYES:
            return BoxAnswer::kYes;
        case IDNO:
            return BoxAnswer::kNo;
        case IDABORT:
            return BoxAnswer::kAbort;
        case IDRETRY:
            return BoxAnswer::kRetry;
        case IDIGNORE:
            return BoxAnswer::kIgnore;
        default:
            return buttons == BoxButtons::kYesNo              ? BoxAnswer::kNo
                   : buttons == BoxButtons::kAbortRetryIgnore ? BoxAnswer::kIgnore
                                                              : BoxAnswer::kOk;
    }
}

}  // namespace

BoxAnswer SystemMessageBoxes::Show(const Window* owner, const BoxRequest& request) {
    const HWND over = owner != nullptr && owner->Exists() ? owner->Handle() : nullptr;
    const AttentionWhileAway attention{Window(over)};
    const UINT default_flag = static_cast<UINT>(request.default_button - 1) * MB_DEFBUTTON2;
    const int result = ::MessageBoxW(
        over, WideFromUtf8(request.text).c_str(), WideFromUtf8(request.caption).c_str(),
        ButtonFlags(request.buttons) | IconFlags(request.icon) | default_flag);
    return AnswerOf(result, request.buttons);
}

}  // namespace tidemark
