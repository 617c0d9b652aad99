#include "ui/message_font.h"

#include <cmath>
#include <cstddef>
#include <cstring>

#include "platform/text.h"
#include "platform/win32/system_message.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

// The record as first defined: systems that do not know the border added later refuse a longer one.
constexpr UINT kMetricsSize = offsetof(NONCLIENTMETRICSW, iPaddedBorderWidth);
static_assert(offsetof(NONCLIENTMETRICSA, iPaddedBorderWidth) == 340);

bool SameFont(const LOGFONTW& a, const LOGFONTW& b) {
    return std::memcmp(&a, &b, offsetof(LOGFONTW, lfFaceName)) == 0 &&
           std::wcscmp(a.lfFaceName, b.lfFaceName) == 0;
}

void SetFace(LOGFONTW& description, const std::wstring& face) {
    std::memset(description.lfFaceName, 0, sizeof(description.lfFaceName));
    face.copy(description.lfFaceName, LF_FACESIZE - 1);
}

}  // namespace

std::string MessageFontName() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = kMetricsSize;
    if (!::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, kMetricsSize, &metrics, 0)) {
        ThrowSystemError(::GetLastError(), "Reading the system's fonts");
    }
    return std::string(TrimNull(Utf8FromWide({metrics.lfMessageFont.lfFaceName, LF_FACESIZE})));
}

UniqueFont MakeFont(const std::string& face, double points) {
    // What the layout in pixels is made for. On a denser screen the system scales the whole window;
    // a font made for that screen's own resolution would outgrow its place instead.
    constexpr int kDotsPerInch = 96;
    LOGFONTW description{};
    description.lfHeight = static_cast<LONG>(-std::lround(points * kDotsPerInch / 72));
    description.lfWeight = FW_NORMAL;
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfQuality = DEFAULT_QUALITY;
    SetFace(description, WideFromUtf8(face));
    UniqueFont font(::CreateFontIndirectW(&description));
    if (!font) {
        ThrowSystemError(::GetLastError(), "Creating a font");
    }
    return font;
}

void MessageFont::Adopt(const Window& window) {
    try {
        AdoptInto(window.Handle(), WideFromUtf8(MessageFontName()));
    } catch (...) {
        // The fonts that the controls have will do.
    }
}

void MessageFont::AdoptInto(HWND container, const std::wstring& face) {
    for (HWND control = ::GetWindow(container, GW_CHILD); control != nullptr;
         control = ::GetWindow(control, GW_HWNDNEXT)) {
        AdoptControl(control, face);
        if ((::GetWindowLongPtrW(control, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) != 0) {
            AdoptInto(control, face);
        }
    }
}

void MessageFont::AdoptControl(HWND control, const std::wstring& face) {
    const auto current = reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0));
    LOGFONTW description{};
    if (current == nullptr || ::GetObjectW(current, sizeof(description), &description) == 0) {
        return;
    }
    if (face == description.lfFaceName) {
        return;
    }
    SetFace(description, face);
    for (const MadeFont& made : fonts_) {
        if (SameFont(made.description, description)) {
            Window(control).SetFont(made.font.Get());
            return;
        }
    }
    UniqueFont font(::CreateFontIndirectW(&description));
    if (font) {
        fonts_.push_back({description, std::move(font)});
        Window(control).SetFont(fonts_.back().font.Get());
    }
}

}  // namespace tidemark
