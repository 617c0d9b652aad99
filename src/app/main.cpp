// The program's entry point.

#include "platform/win32/windows.h"

#include <commctrl.h>
#include <shellapi.h>

#include "app/command_line.h"
#include "mainwindow/frm_main.h"
#include "platform/win32/registry_settings_store.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_platform.h"
#include "ui/last_resort.h"
#include "ui/message_box.h"
#include "ui/message_loop.h"

namespace tidemark {
namespace {

// The command line behind the program's own name.
std::string Arguments() {
    const wchar_t* at = ::GetCommandLineW();
    const bool quoted = *at == L'"';
    at += quoted ? 1 : 0;
    while (*at != L'\0' && (quoted ? *at != L'"' : *at > L' ')) {
        ++at;
    }
    at += *at == L'"' ? 1 : 0;
    while (*at == L' ' || *at == L'\t') {
        ++at;
    }
    return Utf8FromWide(at);
}

int Run() {
    frmMain* main_window_to_close = nullptr;
    Win32Platform platform({.dispatch = [](MSG& message) { RouteMessage(message); },
                            .on_quit =
                                [&main_window_to_close] {
                                    if (main_window_to_close != nullptr) {
                                        main_window_to_close->Close();
                                    }
                                },
                            .report_exception = [] { ReportToLastResort(nullptr); }});
    const Platform parts = platform.Parts();
    SystemMessageBoxes boxes;
    RegistrySettingsStore settings;
    frmMain main_window({.platform = parts,
                         .boxes = boxes,
                         .settings = settings,
                         .errors_list_columns = {},
                         .shut_down =
                             [&main_window_to_close](bool unload_main) {
                                 if (unload_main) {
                                     main_window_to_close->Close();
                                 }
                             },
                         .closed = [] { ::PostQuitMessage(0); }});
    main_window_to_close = &main_window;
    main_window.Form_Load();
    main_window.InitializeDisplay();
    main_window.SetVisible(true);
    main_window.AddItems(SplitCommandLine(Arguments()));
    return RunMessageLoop();
}

}  // namespace
}  // namespace tidemark

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const INITCOMMONCONTROLSEX controls = {
        sizeof(controls), ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_PROGRESS_CLASS |
                              ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
    ::InitCommonControlsEx(&controls);
    if (FAILED(::OleInitialize(nullptr))) {
        return 1;
    }
    const int exit_code = tidemark::Run();
    ::OleUninitialize();
    return exit_code;
}
