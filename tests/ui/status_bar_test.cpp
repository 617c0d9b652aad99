#include "ui/status_bar.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "support/pump.h"
#include "support/shown_status.h"
#include "support/test_form.h"
#include "ui/progress_bar.h"
#include "ui/subclasser.h"

namespace tidemark {
namespace {

class StatusBarTest : public ::testing::Test {
  protected:
    StatusBarTest() {
        form_.on_resize = [this](Size) { StatusBar1.FollowForm(); };
        StatusBar1.Create(form_, {.text = "  Ready"});
    }

    TestForm form_;
    StatusBar StatusBar1;
};

TEST_F(StatusBarTest, StartsInSimpleModeWithItsText) {
    EXPECT_TRUE(StatusBar1.Simple());
    EXPECT_EQ(ShownSimpleText(StatusBar1), "  Ready");
}

TEST_F(StatusBarTest, ItsTextIsTheSimpleModesOnly) {
    StatusBar1.SetSimple(false);
    EXPECT_EQ(ShownText(StatusBar1, 0), "");
}

TEST_F(StatusBarTest, AWiderBarIsPaintedAnewAsAWhole) {
    form_.SetVisible(true);
    PumpPending();
    ASSERT_FALSE(::GetUpdateRect(StatusBar1.Handle(), nullptr, FALSE));
    const Bounds now = form_.Position();
    form_.Move({now.left, now.top, now.width + 100, now.height});
    RECT unpainted{};
    ASSERT_TRUE(::GetUpdateRect(StatusBar1.Handle(), &unpainted, FALSE));
    EXPECT_EQ(unpainted.left, 0);
    EXPECT_EQ(unpainted.right, StatusBar1.ClientSize().width);
}

TEST_F(StatusBarTest, EachModeKeepsItsOwnTexts) {
    StatusBar1.SetPanelText(0, "  Stamping (1 items remaining)");
    StatusBar1.SetSimple(false);
    EXPECT_FALSE(StatusBar1.Simple());
    EXPECT_EQ(ShownText(StatusBar1, 0), "  Stamping (1 items remaining)");
    EXPECT_EQ(ShownText(StatusBar1, 1), "");
    StatusBar1.SetSimple(true);
    EXPECT_TRUE(StatusBar1.Simple());
    EXPECT_EQ(ShownSimpleText(StatusBar1), "  Ready");
    StatusBar1.SetSimple(false);
    EXPECT_EQ(ShownText(StatusBar1, 0), "  Stamping (1 items remaining)");
}

TEST_F(StatusBarTest, AnEqualTextIsNotWrittenAgain) {
    int writes = 0;
    Subclasser watch;
    watch.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        ++writes;
        return std::nullopt;
    };
    StatusBar1.SetPanelText(0, "a");
    watch.RegisterMessages(StatusBar1.Handle(), {SB_SETTEXTW});
    StatusBar1.SetPanelText(0, "a");
    StatusBar1.SetSimpleText("  Ready");
    EXPECT_EQ(writes, 0);
    StatusBar1.SetPanelText(0, "b");
    StatusBar1.SetSimpleText("  Counting");
    EXPECT_EQ(writes, 2);
}

TEST_F(StatusBarTest, ThePanelsShareTheWidth) {
    StatusBar1.SetSimple(false);
    StatusBar1.SetFirstPanelWidth(150);
    const Bounds first = StatusBar1.PanelBounds(0);
    const Bounds second = StatusBar1.PanelBounds(1);
    EXPECT_EQ(first.Right(), 150);
    EXPECT_GE(second.left, first.Right());
    EXPECT_GT(second.width, 0);
    EXPECT_GT(second.height, 0);
    EXPECT_LE(second.Right(), StatusBar1.ClientSize().width);
    EXPECT_EQ(StatusBar1.PanelBounds(2), Bounds());
}

TEST_F(StatusBarTest, ThePanelIsWideEnoughForATextOfItsFont) {
    StatusBar1.SetSimple(false);
    for (const char* text : {"  Ready", "  Stamping (888,888,888 items remaining)"}) {
        StatusBar1.SetFirstPanelWidth(StatusBar1.WidthFor(text));
        const int text_width = StatusBar1.TextSize(text).width;
        ASSERT_GT(text_width, 0);
        EXPECT_GT(StatusBar1.PanelBounds(0).width, text_width) << text;
        EXPECT_LT(StatusBar1.PanelBounds(0).width, text_width + 40) << text;
    }
}

TEST_F(StatusBarTest, FollowsTheFormsBottomEdge) {
    form_.Move({40, 40, 640, 300});
    const Bounds bar = StatusBar1.Position();
    EXPECT_EQ(bar.left, 0);
    EXPECT_EQ(bar.width, form_.ClientSize().width);
    EXPECT_EQ(bar.Bottom(), form_.ClientSize().height);
}

TEST(ProgressBarTest, WritesOnlyWhatDiffers) {
    TestForm form;
    ProgressBar bar;
    bar.Create(form, {.bounds = {0, 0, 100, 20}});
    bar.SetMinimum(0);
    bar.SetMaximum(250'000);
    bar.SetValue(123'456);
    EXPECT_EQ(bar.Minimum(), 0);
    EXPECT_EQ(bar.Maximum(), 250'000);
    EXPECT_EQ(bar.Value(), 123'456);

    int writes = 0;
    Subclasser watch;
    watch.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        ++writes;
        return std::nullopt;
    };
    watch.RegisterMessages(bar.Handle(), {PBM_SETRANGE32, PBM_SETPOS});
    bar.SetMinimum(0);
    bar.SetMaximum(250'000);
    bar.SetValue(123'456);
    EXPECT_EQ(writes, 0);
    bar.SetValue(123'457);
    EXPECT_EQ(writes, 1);
}

TEST(ProgressBarTest, AValueOutsideTheRangeIsBroughtToItsNearerEnd) {
    TestForm form;
    ProgressBar bar;
    bar.Create(form, {.bounds = {0, 0, 100, 20}});
    bar.SetMaximum(10);
    bar.SetValue(11);
    EXPECT_EQ(bar.Value(), 10);
    bar.SetValue(-1);
    EXPECT_EQ(bar.Value(), 0);
}

}  // namespace
}  // namespace tidemark
