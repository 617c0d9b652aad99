#include "support/drag_source.h"

#include <array>
#include <chrono>

#include "platform/win32/wide_text.h"
#include "support/pump.h"

namespace tidemark {

DragSource::DragSource(const std::string& arguments)
    : process_(TestProgramFolder() + "\\drag_source.exe", arguments) {
    PumpUntil(
        [this] {
            window_ = ::FindWindowW(L"TidemarkDragSource", nullptr);
            return window_ != nullptr && Caption() == "ready";
        },
        std::chrono::seconds(20));
}

std::string DragSource::Caption() const {
    std::array<wchar_t, 32> text{};
    ::GetWindowTextW(window_, text.data(), static_cast<int>(text.size()));
    return Utf8FromWide(text.data());
}

}  // namespace tidemark
