// The main window with its options, widths and place, on a real window and settings in memory.

#include <gmock/gmock.h>

#include <functional>

#include "mainwindow/main_window_fixture.h"
#include "platform/win32/win32_screen.h"
#include "settings/mod_options.h"
#include "support/last_resort_recorder.h"

namespace tidemark {
namespace {

constexpr std::int32_t kAccessDenied = 5;

// The display, and what a test has happen while the program looks at it.
class WatchedScreen : public Win32Screen {
  public:
    [[nodiscard]] double Width() const override {
        if (on_look) {
            on_look();
        }
        return Win32Screen::Width();
    }
    std::function<void()> on_look;
};

class FrmMainSettings : public MainWindowTest {
  protected:
    FrmMainSettings() { boxes_.answer = BoxAnswer::kYes; }
    ~FrmMainSettings() override {
        EXPECT_THAT(commands_.started, testing::IsEmpty());
        window_.reset();  // before its display
    }

    // Start-up as far as it concerns the settings.
    void Start(bool reset = false) {
        MakeWindow(display_, popup_menus_);
        window_->Form_Load();
        window_->InitializeDisplay();
        window_->LoadPosition(reset);
    }
    void Restart() {
        window_->Close();
        Start();
    }
    // The smallest outer size that the window lets a user give it.
    [[nodiscard]] Size Smallest() const {
        MINMAXINFO info{};
        window_->Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
        return {info.ptMinTrackSize.x, info.ptMinTrackSize.y};
    }
    // The user drops the window here.
    void UserMoves(const Bounds& bounds) {
        window_->Move(bounds);
        window_->Send(WM_EXITSIZEMOVE);
    }
    // As the system tells the window that the user chose the item.
    void Choose(const char* item) { window_->Send(WM_COMMAND, window_->menu[item].Id()); }
    [[nodiscard]] std::string Stored(const char* key) const {
        return settings_.ReadText(key, "(missing)");
    }
    [[nodiscard]] std::string TwipsX(int pixels) const {
        return std::to_string(static_cast<int>(pixels * display_.TwipsPerPixelX()));
    }

    [[nodiscard]] bool OwnsWindowsFromTheStart() const {
        for (HWND other = ::GetTopWindow(nullptr); other != nullptr;
             other = ::GetNextWindow(other, GW_HWNDNEXT)) {
            if (::GetWindow(other, GW_OWNER) == window_->Handle()) {
                return true;
            }
        }
        return false;
    }

    LastResortRecorder last_resort_;
    WatchedScreen display_;
};

TEST_F(FrmMainSettings, FirstRunStandsWhereAWindowOf640By480PixelsWouldAtTheMinimumSize) {
    Start();
    const Size smallest = Smallest();
    EXPECT_EQ(window_->Position(), (Bounds{(::GetSystemMetrics(SM_CXSCREEN) - 640) / 2,
                                           (::GetSystemMetrics(SM_CYSCREEN) - 480) / 2,
                                           smallest.width, smallest.height}));
    EXPECT_GT(smallest.width, window_->cmdStamp.Position().left);
    EXPECT_EQ(Stored("Left"), "(missing)");
    for (const OptionDefinition& definition : OptionDefinitions()) {
        EXPECT_EQ(Stored(definition.key), definition.default_text);
    }
}

TEST_F(FrmMainSettings, EndOfAUsersMoveInTheNormalStateIsKept) {
    Start();
    UserMoves({50, 60, 600, 450});
    EXPECT_EQ(Stored("Left"), TwipsX(50));
    EXPECT_EQ(Stored("Top"), TwipsX(60));
    EXPECT_EQ(Stored("Width"), TwipsX(600));
    EXPECT_EQ(Stored("Height"), TwipsX(450));
}

TEST_F(FrmMainSettings, MoveWhileMaximisedOrMinimisedKeepsNothing) {
    Start();
    for (const int state : {SW_SHOWMAXIMIZED, SW_SHOWMINIMIZED}) {
        ::ShowWindow(window_->Handle(), state);
        window_->Send(WM_EXITSIZEMOVE);
        EXPECT_EQ(Stored("Left"), "(missing)");
    }
}

TEST_F(FrmMainSettings, MoveWhileThePlaceIsRestoredKeepsNothing) {
    Start();
    int looks = 0;
    display_.on_look = [&] {
        ++looks;
        window_->Send(WM_EXITSIZEMOVE);
    };
    window_->LoadPosition(/*reset=*/false);
    EXPECT_GT(looks, 0);
    EXPECT_EQ(Stored("Left"), "(missing)");
    display_.on_look = nullptr;
    window_->Send(WM_EXITSIZEMOVE);
    EXPECT_NE(Stored("Left"), "(missing)");
}

TEST_F(FrmMainSettings, ProgramsOwnMoveAndClosingKeepNoPlace) {
    Start();
    window_->Move({50, 60, 600, 450});
    window_->Close();
    EXPECT_EQ(Stored("Left"), "(missing)");
    EXPECT_NE(Stored("1ColumnWidth"), "(missing)");
}

TEST_F(FrmMainSettings, PlaceWidthsAndOptionsAreFoundAgain) {
    Start();
    UserMoves({50, 60, 600, 450});
    window_->lvwItems.SetColumnWidth(0, 222);
    window_->lvwItems.SetColumnWidth(1, 7);
    for (const char* item :
         {"mnuOptionsSyncFolders", "mnuViewDateCreated", "mnuViewControlsOnBottom",
          "mnuViewAlwaysOnTop", "mnuOptionsClearReadOnly", "mnuOptionsPrompt",
          "mnuOptionsClearAutomatically", "mnuOptionsShowErrorsAutomatically"}) {
        Choose(item);
    }
    Restart();
    EXPECT_EQ(window_->Position(), (Bounds{50, 60, 600, 450}));
    EXPECT_EQ(window_->lvwItems.ColumnWidth(0), 222);
    EXPECT_EQ(window_->lvwItems.ColumnWidth(1), 10);
    EXPECT_EQ(window_->lvwItems.ColumnWidth(2), 300);
    for (const OptionDefinition& definition : OptionDefinitions()) {
        EXPECT_EQ(OptionIsOn(*window_, definition.option), !definition.reset_value)
            << definition.key;
    }
    EXPECT_TRUE(window_->menu["mnuViewControlsOnBottom"].Checked());
    EXPECT_TRUE(last_resort_.reports.empty());
}

TEST_F(FrmMainSettings, ANegativeStoredWidthIsWidenedAsAnyNarrowOne) {
    for (const char* width : {"-1", "-2", "-5"}) {
        settings_.WriteText("2ColumnWidth", width);
        Start();
        EXPECT_EQ(window_->lvwItems.ColumnWidth(1), 10) << width;
        window_->Close();
    }
}

TEST_F(FrmMainSettings, AlwaysOnTopMakesTheWindowTopmost) {
    Start();
    if (OwnsWindowsFromTheStart()) {
        GTEST_SKIP()
            << "Wine's pickers create their calendars with themselves, and Wine does not make "
               "a window topmost while it owns others";
    }
    Choose("mnuViewAlwaysOnTop");
    EXPECT_NE(window_->ExtendedStyle() & WS_EX_TOPMOST, 0U);
    Choose("mnuViewAlwaysOnTop");
    EXPECT_EQ(window_->ExtendedStyle() & WS_EX_TOPMOST, 0U);
}

TEST_F(FrmMainSettings, ShiftBringsTheWindowBackFromBeyondTheScreen) {
    settings_.WriteText("Left", "-200000");
    settings_.WriteText("Top", "-200000");
    Start(/*reset=*/true);
    EXPECT_EQ(window_->Position().left, (::GetSystemMetrics(SM_CXSCREEN) - 640) / 2);
    EXPECT_EQ(Stored("Left"), "-200000");
}

TEST_F(FrmMainSettings, ResetGivesTheResetWidthsAndKeepsThePlace) {
    Start();
    UserMoves({50, 60, 600, 450});
    Choose("mnuOptionsPrompt");
    Choose("mnuOptionsReset");
    EXPECT_TRUE(OptionIsOn(*window_, Option::PromptWhenDone));
    EXPECT_EQ(window_->lvwItems.ColumnWidth(0), 300);
    EXPECT_EQ(window_->lvwItems.ColumnWidth(1), 150);
    EXPECT_EQ(window_->lvwItems.ColumnWidth(2), 100);
    EXPECT_THAT(errors_columns_.widths, testing::ElementsAre(300, 50, 400));
    EXPECT_EQ(window_->Position(), (Bounds{50, 60, 600, 450}));
    EXPECT_EQ(Stored("Left"), TwipsX(50));
}

TEST_F(FrmMainSettings, StoreThatCannotBeWrittenIsReportedAndTheProgramGoesOn) {
    settings_.FailWrites(kAccessDenied);
    Start();
    EXPECT_TRUE(last_resort_.reports.empty());
    Choose("mnuOptionsPrompt");
    ASSERT_EQ(last_resort_.reports.size(), 1U);
    EXPECT_EQ(last_resort_.reports[0].number, kAccessDenied);
    EXPECT_THAT(last_resort_.reports[0].description, testing::HasSubstr("PromptWhenDone"));
    EXPECT_FALSE(OptionIsOn(*window_, Option::PromptWhenDone));
    UserMoves({50, 60, 600, 450});
    ASSERT_EQ(last_resort_.reports.size(), 2U);
    EXPECT_THAT(last_resort_.reports[1].description, testing::HasSubstr("Left"));
    window_->Close();
    EXPECT_FALSE(window_->Exists());
    EXPECT_EQ(last_resort_.reports.size(), 2U);
}

}  // namespace
}  // namespace tidemark
