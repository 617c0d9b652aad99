// A program of its own that drags files out of its window: the other side of drag and drop tests.
//
//     drag_source LEFT TOP PATH...
//
// Pressing a mouse button in its window starts a drag of the paths with that button. The caption
// tells how far it is: "ready", "dragging", "done EFFECT". It ends by itself after a minute.
#include <cstdlib>
#include <string>
#include <vector>

#include "controls/file_drag_source.h"
#include "controls/ole_session.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"
// After the system's main header.
#include <shellapi.h>

namespace tidemark {
namespace {

class PathSource final : public OleDragDropSink {
  public:
    std::vector<std::string> paths;

    void StartDrag(DragSourceData& data, std::int32_t& allowed_effects) override {
        data.SetFiles(paths);
        allowed_effects = kDropEffectCopy | kDropEffectMove;
    }
};

PathSource& Source() {
    static PathSource source;
    return source;
}

void Drag(HWND window, std::int16_t button) {
    ::SetWindowTextW(window, L"dragging");
    const std::int32_t effect = DragFiles(Source(), button);
    ::SetWindowTextW(window, (L"done " + std::to_wstring(effect)).c_str());
}

LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_LBUTTONDOWN:
            Drag(window, 1);
            return 0;
        case WM_RBUTTONDOWN:
            Drag(window, 2);
            return 0;
        case WM_TIMER:
            ::DestroyWindow(window);
            return 0;
        case WM_DESTROY:
            ::PostQuitMessage(0);
            return 0;
        default:
            return ::DefWindowProcW(window, message, wparam, lparam);
    }
}

int Run() {
    int count = 0;
    wchar_t** const arguments = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (count < 3) {
        return 2;
    }
    for (int i = 3; i < count; ++i) {
        Source().paths.push_back(Utf8FromWide(arguments[i]));
    }
    const OleSession ole;
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = WindowProc;
    window_class.hInstance = ::GetModuleHandleW(nullptr);
    window_class.hbrBackground = ::GetSysColorBrush(COLOR_WINDOW);
    window_class.lpszClassName = L"TidemarkDragSource";
    ::RegisterClassW(&window_class);
    const HWND window =
        ::CreateWindowExW(WS_EX_TOPMOST, window_class.lpszClassName, L"ready",
                          WS_POPUP | WS_VISIBLE, std::atoi(Utf8FromWide(arguments[1]).c_str()),
                          std::atoi(Utf8FromWide(arguments[2]).c_str()), 120, 80, nullptr, nullptr,
                          window_class.hInstance, nullptr);
    ::SetTimer(window, 1, 60000, nullptr);
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        ::DispatchMessageW(&message);
    }
    ::LocalFree(arguments);
    return 0;
}

}  // namespace
}  // namespace tidemark

int main() {
    return tidemark::Run();
}
