#pragma once

#include <string>
#include <vector>

#include "app/frm_splash.h"
#include "app/startup.h"
#include "errors/frm_errors.h"
#include "mainwindow/frm_main.h"

namespace tidemark {

// The program's windows, as start-up sees them. The forms are not owned.

class SplashAtStartup final : public StartupSplash {
  public:
    SplashAtStartup(frmSplash& splash, frmMain& main_window)
        : splash_(splash), main_window_(main_window) {}

    void Load() override;
    void Show() override { splash_.SetVisible(true); }
    void FadeIn() override { splash_.FadeIn(); }
    [[nodiscard]] bool FadingIn() const override { return splash_.FadingIn(); }
    void ShowAboveMainWindow() override;
    void SetTopmost(bool on) override;
    void FadeOut() override { splash_.FadeOut(); }

  private:
    frmSplash& splash_;
    frmMain& main_window_;
};

class MainWindowAtStartup final : public StartupMainWindow {
  public:
    explicit MainWindowAtStartup(frmMain& main_window) : main_window_(main_window) {}

    void Load() override;
    [[nodiscard]] bool Loaded() const override { return main_window_.Exists(); }
    void InitializeDisplay() override;
    void LoadPosition(bool reset) override;
    [[nodiscard]] bool AlwaysOnTopChecked() const override;
    void Show() override;
    [[nodiscard]] Bounds Position() const override;
    void AddItems(const std::vector<std::string>& paths) override;
    [[nodiscard]] const Window* MessageOwner() const override;

  private:
    // Throws ProgramError when it is not loaded.
    [[nodiscard]] frmMain& LoadedWindow() const;

    frmMain& main_window_;
};

class ErrorsWindowAtStartup final : public StartupErrorsWindow {
  public:
    explicit ErrorsWindowAtStartup(frmErrors& errors_window) : errors_window_(errors_window) {}

    void Load() override;
    [[nodiscard]] Bounds Position() const override { return errors_window_.Position(); }
    void MoveTo(Point place) override;

  private:
    frmErrors& errors_window_;
};

}  // namespace tidemark
