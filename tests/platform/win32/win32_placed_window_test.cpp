// Placement on a real window that is never shown unless a state asks for it.

#include "platform/win32/win32_placed_window.h"

#include <gtest/gtest.h>

#include "platform/program_error.h"
#include "platform/win32/registry_settings_store.h"
#include "platform/win32/win32_screen.h"
#include "settings/window_placement.h"
#include "support/scratch_registry_key.h"

namespace tidemark {
namespace {

class Win32PlacedWindowTest : public testing::Test {
  protected:
    ~Win32PlacedWindowTest() override { ::DestroyWindow(window_); }

    [[nodiscard]] RECT Pixels() const {
        RECT rect{};
        EXPECT_TRUE(::GetWindowRect(window_, &rect));
        return rect;
    }
    void ExpectPixels(int left, int top, int width, int height) const {
        const RECT rect = Pixels();
        EXPECT_EQ(rect.left, left);
        EXPECT_EQ(rect.top, top);
        EXPECT_EQ(rect.right - rect.left, width);
        EXPECT_EQ(rect.bottom - rect.top, height);
    }
    [[nodiscard]] float TwipsX(int pixels) const {
        return static_cast<float>(pixels * screen_.TwipsPerPixelX());
    }
    [[nodiscard]] float TwipsY(int pixels) const {
        return static_cast<float>(pixels * screen_.TwipsPerPixelY());
    }

    Win32Screen screen_;
    HWND window_ = ::CreateWindowExW(/*dwExStyle=*/0, L"Static", L"placed", WS_OVERLAPPEDWINDOW,
                                     100, 120, 500, 400, /*hWndParent=*/nullptr, /*hMenu=*/nullptr,
                                     ::GetModuleHandleW(nullptr), /*lpParam=*/nullptr);
    Win32PlacedWindow placed_{window_, screen_};
    ScratchRegistryKey key_;
    RegistrySettingsStore store_{key_.Path()};
};

TEST_F(Win32PlacedWindowTest, PlaceAndSizeAreInTwips) {
    EXPECT_EQ(placed_.State(), WindowState::kNormal);
    EXPECT_EQ(placed_.Placement(),
              (TwipsBounds{TwipsX(100), TwipsY(120), TwipsX(500), TwipsY(400)}));
}

TEST_F(Win32PlacedWindowTest, MovesAndSizesAtOnce) {
    placed_.MoveTo({TwipsX(-30), TwipsY(50), TwipsX(600), TwipsY(450)});
    ExpectPixels(-30, 50, 600, 450);
}

TEST_F(Win32PlacedWindowTest, NumberBeyondPixelsIsAnErrorAndMovesNothing) {
    for (const float bad : {1e30F, -1e30F}) {
        EXPECT_THROW(placed_.MoveTo({bad, 0, 9000, 9000}), ProgramError);
        EXPECT_THROW(placed_.MoveTo({0, 0, 9000, bad}), ProgramError);
    }
    ExpectPixels(100, 120, 500, 400);
}

TEST_F(Win32PlacedWindowTest, WindowThatIsGoneFailsWithTheSystemsText) {
    ::DestroyWindow(window_);
    try {
        placed_.MoveTo({0, 0, 9000, 9000});
        FAIL() << "moved a window that is gone";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_NE(error.Description().find("Moving the window"), std::string::npos);
    }
    EXPECT_THROW((void)placed_.Placement(), ProgramError);
}

TEST_F(Win32PlacedWindowTest, MinimisedOrMaximisedWindowIsNotMovedAndNotSaved) {
    store_.WriteText("Left", "4635");
    for (const auto& [show, state] : {std::pair{SW_SHOWMINNOACTIVE, WindowState::kMinimised},
                                      std::pair{SW_SHOWMAXIMIZED, WindowState::kMaximised}}) {
        ::ShowWindow(window_, show);
        ASSERT_EQ(placed_.State(), state);
        EXPECT_THROW(placed_.MoveTo({0, 0, 9000, 9000}), ProgramError);
        SaveWindowPlacement(store_, placed_);
        EXPECT_EQ(store_.ReadText("Left", ""), "4635");
        EXPECT_EQ(store_.ReadText("Top", "(missing)"), "(missing)");
    }
}

TEST_F(Win32PlacedWindowTest, PlacementSurvivesARestart) {
    placed_.MoveTo({TwipsX(40), TwipsY(60), TwipsX(640), TwipsY(480)});
    SaveWindowPlacement(store_, placed_);
    placed_.MoveTo({0, 0, TwipsX(300), TwipsY(300)});
    LoadWindowPlacement(store_, screen_, placed_, /*reset=*/false);
    ExpectPixels(40, 60, 640, 480);
}

TEST_F(Win32PlacedWindowTest, NumberTooLargeGivesTheWindowOf640By480PixelsInTheMiddle) {
    store_.WriteText("Left", "1e40");
    LoadWindowPlacement(store_, screen_, placed_, /*reset=*/false);
    ExpectPixels((::GetSystemMetrics(SM_CXSCREEN) - 640) / 2,
                 (::GetSystemMetrics(SM_CYSCREEN) - 480) / 2, 640, 480);
}

TEST_F(Win32PlacedWindowTest, ResetBringsBackAWindowFromBeyondTheScreen) {
    store_.WriteText("Left", "-2000000000");
    store_.WriteText("Top", "2000000000");
    LoadWindowPlacement(store_, screen_, placed_, /*reset=*/false);
    LoadWindowPlacement(store_, screen_, placed_, /*reset=*/true);
    const RECT rect = Pixels();
    EXPECT_EQ(rect.left, (::GetSystemMetrics(SM_CXSCREEN) - 640) / 2);
    EXPECT_EQ(rect.top, (::GetSystemMetrics(SM_CYSCREEN) - 480) / 2);
}

}  // namespace
}  // namespace tidemark
