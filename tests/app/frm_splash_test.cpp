#include "app/frm_splash.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <stdexcept>
#include <vector>

#include "platform/win32/win32_timer_source.h"
#include "support/pump.h"
#include "support/remote_window.h"
#include "support/test_form.h"
#include "ui/subclasser.h"

namespace tidemark {
namespace {

using testing::IsSubsetOf;

class FrmSplashTest : public testing::Test {
  protected:
    // The opacity that another program would see; -1 for a window without one.
    static int OpacityOf(const Window& window) {
        BYTE opacity = 0;
        DWORD flags = 0;
        COLORREF key = 0;
        if (!::GetLayeredWindowAttributes(window.Handle(), &key, &opacity, &flags) ||
            (flags & LWA_ALPHA) == 0) {
            return -1;
        }
        return opacity;
    }

    // Pumps until the condition holds and keeps the opacities seen on the way.
    static std::vector<int> OpacitiesUntil(const frmSplash& splash,
                                           const std::function<bool()>& condition) {
        std::vector<int> seen;
        EXPECT_TRUE(PumpUntil([&] {
            const int opacity = OpacityOf(splash);
            if (opacity >= 0 && (seen.empty() || seen.back() != opacity)) {
                seen.push_back(opacity);
            }
            return condition();
        }));
        return seen;
    }

    Win32TimerSource timers_{[] { FAIL() << "a tick let an exception out"; }};
    frmSplash splash_{timers_, "version 1.0  build 0007"};
};

TEST_F(FrmSplashTest, IsLoadedInvisibleInTheMiddleOfTheScreen) {
    splash_.Form_Load();
    EXPECT_EQ(OpacityOf(splash_), 0);
    EXPECT_EQ(splash_.Alpha(), 0);
    EXPECT_FALSE(splash_.Visible());
    const Bounds place = splash_.Position();
    EXPECT_EQ(place.left, (::GetSystemMetrics(SM_CXSCREEN) - place.width) / 2);
    EXPECT_EQ(place.top, (::GetSystemMetrics(SM_CYSCREEN) - place.height) / 2);
}

TEST_F(FrmSplashTest, ShowsTheVersionAndTheHint) {
    splash_.Form_Load();
    EXPECT_EQ(splash_.lblVersion.Text(), "version 1.0  build 0007");
    EXPECT_EQ(splash_.lblHint.Text(), "Hold SHIFT to reset window location.");
    const Size inner = splash_.ClientSize();
    for (const Window* label :
         {static_cast<Window*>(&splash_.lblVersion), static_cast<Window*>(&splash_.lblHint)}) {
        EXPECT_LE(label->Position().Right(), inner.width);
        EXPECT_LE(label->Position().Bottom(), inner.height);
    }
}

TEST_F(FrmSplashTest, FadesInAndStaysOpaque) {
    splash_.Form_Load();
    splash_.SetVisible(true);
    EXPECT_FALSE(splash_.FadingIn());
    splash_.FadeIn();
    EXPECT_TRUE(splash_.FadingIn());
    const std::vector<int> seen = OpacitiesUntil(splash_, [&] { return splash_.Alpha() == 255; });
    EXPECT_THAT(std::set<int>(seen.begin(), seen.end()), IsSubsetOf({0, 64, 128, 192, 255}));
    EXPECT_EQ(OpacityOf(splash_), 255);
    EXPECT_FALSE(splash_.FadingIn());
}

TEST_F(FrmSplashTest, FadesOutAndGoesWhileATraceIsStillToBeSeen) {
    splash_.Form_Load();
    splash_.SetVisible(true);
    splash_.FadeIn();
    ASSERT_TRUE(PumpUntil([&] { return splash_.Alpha() == 255; }));
    int at_end = -1;
    Subclasser watch;
    watch.RegisterMessages(splash_.Handle(), {WM_DESTROY});
    watch.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        at_end = OpacityOf(splash_);
        return std::nullopt;
    };
    splash_.FadeOut();
    const std::vector<int> seen = OpacitiesUntil(splash_, [&] { return !splash_.Exists(); });
    EXPECT_THAT(std::set<int>(seen.begin(), seen.end()),
                IsSubsetOf({255, 223, 191, 159, 127, 95, 63, 31}));
    EXPECT_EQ(at_end, 31);
    EXPECT_EQ(splash_.Alpha(), 31);
}

TEST_F(FrmSplashTest, GivesUpWithoutLayeredWindowsAndReportsFullOpacity) {
    frmSplash splash(timers_, "version",
                     [](const Window&, std::uint8_t) { throw std::runtime_error("missing"); });
    splash.Form_Load();
    splash.SetVisible(true);
    splash.FadeIn();
    EXPECT_TRUE(PumpUntil([&] { return splash.Alpha() == 255; }));
    EXPECT_FALSE(splash.Exists());
    EXPECT_FALSE(splash.FadingIn());
    splash.FadeOut();
}

TEST_F(FrmSplashTest, ClosingIsNotTheUsersToDo) {
    splash_.Form_Load();
    splash_.SetVisible(true);
    splash_.Close();
    EXPECT_TRUE(splash_.Exists());
}

TEST_F(FrmSplashTest, CanBeUnloadedInTheMiddleOfAFade) {
    splash_.Form_Load();
    splash_.SetVisible(true);
    splash_.FadeIn();
    ASSERT_TRUE(PumpUntil([&] { return splash_.Alpha() >= 64; }));
    splash_.Destroy();
    EXPECT_FALSE(splash_.FadingIn());
    PumpPending();
    splash_.Form_Load();
    EXPECT_EQ(splash_.Alpha(), 0);
}

TEST_F(FrmSplashTest, StaysAboveItsOwner) {
    splash_.Form_Load();
    TestForm owner;  // made later, and so above
    splash_.StayAbove(owner);
    EXPECT_EQ(::GetWindow(splash_.Handle(), GW_OWNER), owner.Handle());
    EXPECT_TRUE(IsAbove(splash_.Handle(), owner.Handle()));
    owner.Destroy();
    EXPECT_FALSE(splash_.Exists());
    EXPECT_FALSE(splash_.FadingIn());
}

TEST_F(FrmSplashTest, PaintsItsPicture) {
    splash_.Form_Load();
    const Size size = splash_.ClientSize();
    HDC screen = ::GetDC(nullptr);
    HDC memory = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, size.width, size.height);
    HGDIOBJ before = ::SelectObject(memory, bitmap);
    ::SendMessageW(splash_.Handle(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(memory), 0);
    EXPECT_EQ(::GetPixel(memory, size.width - 4, 4), RGB(0xFD, 0xF3, 0xDF)) << "sky";
    EXPECT_EQ(::GetPixel(memory, 8, size.height - 4), RGB(0x0F, 0x41, 0x56)) << "the labels' band";
    ::SelectObject(memory, before);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
}

}  // namespace
}  // namespace tidemark
