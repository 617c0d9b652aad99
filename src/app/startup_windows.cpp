#include "app/startup_windows.h"

#include "app/load_once.h"
#include "platform/program_error.h"
#include "settings/mod_options.h"
#include "ui/topmost.h"

namespace tidemark {

void SplashAtStartup::Load() {
    LoadOnce(splash_);
}

void SplashAtStartup::ShowAboveMainWindow() {
    if (splash_.Exists() && main_window_.Exists()) {
        splash_.StayAbove(main_window_);
        splash_.SetVisible(true);
    }
}

void SplashAtStartup::SetTopmost(bool on) {
    if (splash_.Exists()) {
        tidemark::SetTopmost(splash_, on);
    }
}

void MainWindowAtStartup::Load() {
    LoadOnce(main_window_);
}

void MainWindowAtStartup::InitializeDisplay() {
    LoadedWindow().InitializeDisplay();
}

void MainWindowAtStartup::LoadPosition(bool reset) {
    LoadedWindow().LoadPosition(reset);
}

bool MainWindowAtStartup::AlwaysOnTopChecked() const {
    return OptionIsOn(LoadedWindow(), Option::AlwaysOnTop);
}

void MainWindowAtStartup::Show() {
    LoadedWindow().SetVisible(true);
}

Bounds MainWindowAtStartup::Position() const {
    return LoadedWindow().Position();
}

void MainWindowAtStartup::AddItems(const std::vector<std::string>& paths) {
    LoadedWindow().AddItems(paths);
}

const Window* MainWindowAtStartup::MessageOwner() const {
    return Loaded() && main_window_.Visible() ? &main_window_ : nullptr;
}

frmMain& MainWindowAtStartup::LoadedWindow() const {
    if (!Loaded()) {
        throw ProgramError(error_number::kObjectNotSet, "The main window is not loaded");
    }
    return main_window_;
}

void ErrorsWindowAtStartup::Load() {
    LoadOnce(errors_window_);
}

void ErrorsWindowAtStartup::MoveTo(Point place) {
    const Bounds now = errors_window_.Position();
    errors_window_.Move({place.x, place.y, now.width, now.height});
}

}  // namespace tidemark
