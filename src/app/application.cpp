#include "app/application.h"

#include <commctrl.h>

#include "app/app_path.h"
#include "app/load_once.h"
#include "app/startup.h"
#include "app/startup_windows.h"
#include "app/version.h"
#include "app/version_text.h"
#include "ui/last_resort.h"
#include "ui/message_loop.h"
#include "ui/topmost.h"

namespace tidemark {
namespace {

std::string Version() {
    return VersionText(kVersionMajor, kVersionMinor, kBuildNumber);
}

void InitialiseCommonControls() {
    const INITCOMMONCONTROLSEX controls{
        sizeof(controls), ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_PROGRESS_CLASS |
                              ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
    ::InitCommonControlsEx(&controls);
}

}  // namespace

Application::Application(Process& process)
    : system_(Hooks()),
      platform_(system_.Parts()),
      process_(process),
      shut_down_(windows_, platform_.pump, process_),
      splash_(platform_.timers, Version()),
      main_window_(MainServices()),
      errors_window_(CommonServices()),
      about_(Version()) {
    windows_.Add("frmSplash", splash_, [this] { splash_.Destroy(); });
    windows_.Add(kMainWindowName, main_window_, [this] { main_window_.Close(); });
    windows_.Add("frmErrors", errors_window_, [this] { errors_window_.Unload(); });
    windows_.Add("frmAbout", about_, [this] { about_.Destroy(); });
}

Application::~Application() = default;

int Application::Run() {
    if (!StartUp()) {
        return 0;
    }
    const int exit_code = RunMessageLoop(main_window_);
    // Asked to quit from elsewhere: the windows, if they are still there, end as on Exit.
    shut_down_.ShutDown(/*unload_main=*/true);
    return exit_code;
}

bool Application::StartUp() {
    SplashAtStartup splash(splash_, main_window_);
    MainWindowAtStartup main_window(main_window_);
    ErrorsWindowAtStartup errors_window(errors_window_);
    Startup startup(
        {.process = process_,
         .pump = platform_.pump,
         .boxes = boxes_,
         .file_system = platform_.file_system,
         .splash = splash,
         .main_window = main_window,
         .errors_window = errors_window,
         .shut_down = shut_down_,
         .initialise_common_controls = InitialiseCommonControls,
         .register_app_path = [this](const std::string& exe_name, const std::string& folder) {
             RegisterAppPath(machine_registry_, platform_.files, exe_name, folder);
         }});
    return startup.Run();
}

Win32PlatformHooks Application::Hooks() {
    return {.dispatch = [](MSG& message) { RouteMessage(message); },
            .on_quit = [this] { shut_down_.ShutDown(/*unload_main=*/true); },
            .report_exception = [this] { ReportToLastResort(main_window_.Handle()); }};
}

ListWindowServices Application::CommonServices() {
    return {.platform = platform_,
            .settings = settings_,
            .command_runner = command_runner_,
            .popup_menus = popup_menus_};
}

MainWindowServices Application::MainServices() {
    return {
        .common = CommonServices(),
        .boxes = boxes_,
        .screen = screen_,
        .process = process_,
        .taskbar = SystemTaskbar,
        .errors_list_columns = [this]() -> ListColumns& { return LoadedErrorsWindow().Columns(); },
        .show_errors = [this](const StampErrorList& errors,
                              bool topmost) { ShowErrors(errors, topmost); },
        .show_about = [this](bool topmost) { about_.ShowUntilClosed(main_window_, topmost); },
        .shut_down = [this](bool unload_main) { shut_down_.ShutDown(unload_main); },
        .closed = [] { ::PostQuitMessage(0); }};
}

frmErrors& Application::LoadedErrorsWindow() {
    LoadOnce(errors_window_);
    return errors_window_;
}

void Application::ShowErrors(const StampErrorList& errors, bool topmost) {
    frmErrors& window = LoadedErrorsWindow();
    SetTopmost(window, topmost);
    window.AddFromCollection(errors);
    window.Present();
}

}  // namespace tidemark
