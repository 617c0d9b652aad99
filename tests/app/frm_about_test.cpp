#include "app/frm_about.h"

#include <gtest/gtest.h>

#include <functional>

#include "platform/program_error.h"
#include "support/pump.h"
#include "support/refused_windows.h"
#include "support/test_form.h"
#include "ui/topmost.h"

namespace tidemark {
namespace {

class FrmAboutTest : public testing::Test {
  protected:
    void SetUp() override {
        owner_.SetVisible(true);
        about_.Form_Load(owner_);
    }

    // Shows the window modally and does `close` once it is up; returns when the window has gone.
    void ShowAnd(const std::function<void()>& close) {
        constexpr UINT kNow = WM_APP + 1;
        owner_.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message != kNow) {
                return std::nullopt;
            }
            EXPECT_TRUE(about_.Visible());
            EXPECT_FALSE(owner_.Enabled());
            close();
            return 0;
        };
        owner_.Post(kNow);
        about_.ShowModal(owner_);
        EXPECT_FALSE(about_.Exists());
        EXPECT_TRUE(owner_.Enabled());
    }

    TestForm owner_;
    frmAbout about_{"version 1.0  build 0007"};
};

TEST_F(FrmAboutTest, SaysWhatItIsAbout) {
    EXPECT_EQ(about_.Text(), "about: tidemark");
    EXPECT_EQ(about_.lblVersion.Text(), "version 1.0  build 0007");
    EXPECT_EQ(about_.lblHint.Text(), "Hold SHIFT at startup to reset window location.");
}

TEST_F(FrmAboutTest, IsAsWideAsItsPictureAndHoldsItsLabels) {
    const Size inner = about_.ClientSize();
    const Size picture = Picture(L"ABOUT").Extent();
    EXPECT_EQ(inner.width, picture.width);
    EXPECT_GT(inner.height, picture.height);
    EXPECT_GE(about_.lblVersion.Position().top, picture.height);
    EXPECT_GE(about_.lblHint.Position().top, about_.lblVersion.Position().Bottom());
    EXPECT_LT(about_.lblHint.Position().Bottom(), inner.height);
}

TEST_F(FrmAboutTest, IsCentredOverItsOwnerAndOwnedByIt) {
    const Bounds owner = owner_.Position();
    const Bounds about = about_.Position();
    EXPECT_EQ(about.left, owner.left + (owner.width - about.width) / 2);
    EXPECT_EQ(about.top, owner.top + (owner.height - about.height) / 2);
    EXPECT_EQ(::GetWindow(about_.Handle(), GW_OWNER), owner_.Handle());
}

TEST_F(FrmAboutTest, EscCloses) {
    ShowAnd([this] { about_.Post(WM_KEYDOWN, VK_ESCAPE); });
}

TEST_F(FrmAboutTest, EnterCloses) {
    ShowAnd([this] { about_.Post(WM_KEYDOWN, VK_RETURN); });
}

TEST_F(FrmAboutTest, TheCloseBoxCloses) {
    ShowAnd([this] { about_.Post(WM_SYSCOMMAND, SC_CLOSE); });
}

TEST_F(FrmAboutTest, AClickCloses) {
    ShowAnd([this] {
        about_.Post(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(40, 40));
        about_.Post(WM_LBUTTONUP, 0, MAKELPARAM(40, 40));
    });
}

TEST_F(FrmAboutTest, LabelsLetClicksThrough) {
    for (const Label* label : {&about_.lblVersion, &about_.lblHint}) {
        EXPECT_EQ(label->Send(WM_NCHITTEST, 0, 0), HTTRANSPARENT);
    }
}

TEST_F(FrmAboutTest, AClickThatBeganElsewhereDoesNotClose) {
    about_.SetVisible(true);
    about_.Send(WM_LBUTTONUP, 0, MAKELPARAM(40, 40));
    EXPECT_TRUE(about_.Exists());
}

TEST_F(FrmAboutTest, APressOfTheLastVisitDoesNotCloseTheNextOne) {
    about_.SetVisible(true);
    about_.Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(40, 40));
    about_.Close();
    about_.Form_Load(owner_);
    about_.SetVisible(true);
    about_.Send(WM_LBUTTONUP, 0, MAKELPARAM(40, 40));
    EXPECT_TRUE(about_.Exists());
}

TEST_F(FrmAboutTest, AVisitLoadsShowsAndUnloads) {
    about_.Destroy();
    bool topmost = false;
    for (const bool wanted : {true, false}) {
        owner_.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_APP + 1) {
                topmost = (about_.ExtendedStyle() & WS_EX_TOPMOST) != 0;
                EXPECT_TRUE(about_.Visible());
                about_.ShowUntilClosed(owner_, wanted);  // a second visit inside the first
                EXPECT_TRUE(about_.Exists());
                about_.Close();
                return 0;
            }
            return std::nullopt;
        };
        owner_.Post(WM_APP + 1);
        about_.ShowUntilClosed(owner_, wanted);
        EXPECT_EQ(topmost, wanted);
        EXPECT_FALSE(about_.Exists());
    }
}

TEST_F(FrmAboutTest, AVisitThatCannotBeLoadedLeavesNothingAndTheNextOneSucceeds) {
    about_.Destroy();
    {
        const RefusedWindows no_labels(L"Static");
        EXPECT_THROW(about_.ShowUntilClosed(owner_, false), ProgramError);
        EXPECT_EQ(no_labels.Count(), 1);
    }
    EXPECT_FALSE(about_.Exists());
    EXPECT_TRUE(owner_.Enabled());
    about_.Form_Load(owner_);
    EXPECT_EQ(about_.lblVersion.Text(), "version 1.0  build 0007");
}

TEST_F(FrmAboutTest, OtherKeysDoNotClose) {
    about_.SetVisible(true);
    about_.Post(WM_KEYDOWN, 'A');
    PumpPending();
    EXPECT_TRUE(about_.Exists());
}

TEST_F(FrmAboutTest, UnloadingItFromElsewhereEndsTheModalLoop) {
    ShowAnd([this] { about_.Destroy(); });
}

TEST_F(FrmAboutTest, GoesWithItsOwner) {
    owner_.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_APP + 1) {
            owner_.Destroy();
            return 0;
        }
        return std::nullopt;
    };
    owner_.Post(WM_APP + 1);
    about_.ShowModal(owner_);
    EXPECT_FALSE(about_.Exists());
}

TEST_F(FrmAboutTest, CanBeTopmost) {
    SetTopmost(about_, true);
    EXPECT_NE(about_.ExtendedStyle() & WS_EX_TOPMOST, 0U);
}

}  // namespace
}  // namespace tidemark
