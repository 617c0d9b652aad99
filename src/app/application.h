#pragma once

#include "app/frm_about.h"
#include "app/frm_splash.h"
#include "app/loaded_forms.h"
#include "app/shut_down.h"
#include "controls/ole_session.h"
#include "controls/popup_menu_system.h"
#include "errors/frm_errors.h"
#include "mainwindow/frm_main.h"
#include "platform/process.h"
#include "platform/win32/registry_settings_store.h"
#include "platform/win32/win32_command_runner.h"
#include "platform/win32/win32_machine_registry.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/win32_screen.h"
#include "ui/message_box.h"

namespace tidemark {

// The program: owns the system's parts, the settings and every window.
class Application {
  public:
    // The process outlives the program's object.
    explicit Application(Process& process);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application();

    // Starts up, runs the message loop, and returns the process's exit code.
    [[nodiscard]] int Run();

  private:
    [[nodiscard]] Win32PlatformHooks Hooks();
    [[nodiscard]] ListWindowServices CommonServices();
    [[nodiscard]] MainWindowServices MainServices();
    // False when the program has been shut down on the way.
    [[nodiscard]] bool StartUp();
    // The errors window, loaded (not shown) if it is not yet.
    frmErrors& LoadedErrorsWindow();
    void ShowErrors(const StampErrorList& errors, bool topmost);

    // In order of dependence: each needs some of those before it.
    OleSession ole_;
    Win32Platform system_;
    Platform platform_;
    Process& process_;
    Win32Screen screen_;
    Win32CommandRunner command_runner_;
    Win32MachineRegistry machine_registry_;
    RegistrySettingsStore settings_;
    SystemMessageBoxes boxes_;
    PopupMenuSystem popup_menus_;
    LoadedForms windows_;
    ShutDownSequence shut_down_;
    frmSplash splash_;
    frmMain main_window_;
    frmErrors errors_window_;
    frmAbout about_;
};

}  // namespace tidemark
