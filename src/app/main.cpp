// The program's entry point.

#include "platform/win32/windows.h"

#include <commctrl.h>

#include "app/command_line.h"
#include "mainwindow/frm_main.h"
#include "platform/win32/registry_settings_store.h"
#include "platform/win32/win32_command_runner.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/win32_process.h"
#include "platform/win32/win32_screen.h"
#include "ui/last_resort.h"
#include "ui/message_box.h"
#include "ui/message_loop.h"

namespace tidemark {
namespace {

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
    Win32Screen screen;
    Win32Process process;
    Win32CommandRunner command_runner;
    frmMain main_window({.platform = parts,
                         .boxes = boxes,
                         .settings = settings,
                         .screen = screen,
                         .process = process,
                         .command_runner = command_runner,
                         .errors_list_columns = {},
                         .show_errors = {},
                         .show_about = {},
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
    main_window.LoadPosition(/*reset=*/false);
    main_window.SetVisible(true);
    main_window.AddItems(SplitCommandLine(process.Arguments()));
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
