#include "ui/min_max.h"

#include <gtest/gtest.h>

#include "support/test_form.h"

namespace tidemark {
namespace {

MINMAXINFO Limits(const Window& window) {
    MINMAXINFO info{};
    info.ptMinTrackSize = {100, 30};
    info.ptMaxTrackSize = {5000, 5000};
    window.Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    return info;
}

TEST(MinMaxTest, TheWindowGetsNoSmallerThanItsMinimum) {
    TestForm form;
    MinMax min_max;
    min_max.minimum = {320, 240};
    min_max.AttachTo(form.Handle());
    EXPECT_EQ(Limits(form).ptMinTrackSize.x, 320);
    EXPECT_EQ(Limits(form).ptMinTrackSize.y, 240);
    form.Move({40, 40, 200, 100});
    EXPECT_EQ(form.Position().width, 320);
    EXPECT_EQ(form.Position().height, 240);
}

TEST(MinMaxTest, NoLimitsDisabledAndGoneChangeNothing) {
    TestForm form;
    const POINT before = Limits(form).ptMinTrackSize;
    {
        MinMax min_max;
        min_max.AttachTo(form.Handle());
        EXPECT_EQ(Limits(form).ptMinTrackSize.x, before.x);
        min_max.minimum = {320, 240};
        min_max.enabled = false;
        EXPECT_EQ(Limits(form).ptMinTrackSize.x, before.x);
        min_max.enabled = true;
        EXPECT_EQ(Limits(form).ptMinTrackSize.x, 320);
    }
    EXPECT_EQ(Limits(form).ptMinTrackSize.x, before.x);
}

TEST(MinMaxTest, TheWindowGetsNoLargerThanItsMaximum) {
    TestForm form;
    MinMax min_max;
    min_max.maximum = {400, 0};
    min_max.AttachTo(form.Handle());
    EXPECT_EQ(Limits(form).ptMaxTrackSize.x, 400);
    EXPECT_EQ(Limits(form).ptMaxTrackSize.y, 5000);
}

}  // namespace
}  // namespace tidemark
