#include "controls/ole_dropper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ole2.h>

#include "controls/drop_files.h"
#include "platform/program_error.h"
#include "support/com_testing.h"
#include "support/fake_drag_data.h"
#include "support/test_form.h"
#include "ui/gdi.h"
#include "ui/message_font.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;

class OLEDropperTest : public ::testing::Test {
  protected:
    OLEDropperTest() {
        data_->bytes = BuildDropFiles(std::vector<std::string>{"C:\\a"});
        form_.SetVisible(true);
        ControlSpec spec;
        spec.bounds = {20, 30, 301, 201};
        spec.extended_style = WS_EX_CLIENTEDGE;
        dropper_.Create(form_, spec);
        dropper_.OLEDragOver = [this](DragData& data, std::int32_t& effect, std::int16_t,
                                      std::int16_t, float& x, float& y, std::int16_t) {
            AcceptFiles(data, effect);
            positions_.emplace_back(x, y);
        };
        dropper_.OLEDragDrop = [this](DragData& data, std::int32_t& effect, std::int16_t,
                                      std::int16_t, float& x, float& y) {
            AcceptFiles(data, effect);
            positions_.emplace_back(x, y);
            dropped_ = data.Files();
        };
    }
    ~OLEDropperTest() override {
        dropper_.Destroy();
        EXPECT_EQ(References(*data_.Get()), 1U) << "the data leaked";
    }

    void ExpectLabelCentred() {
        const Size inner = dropper_.ClientSize();
        const Bounds label = dropper_.Label1().Position();
        EXPECT_EQ(label.left, (inner.width - label.width) / 2);
        EXPECT_EQ(label.top, (inner.height - label.height) / 2);
    }

    POINTL OnScreen(int x, int y) const {
        POINT point{x, y};
        ::ClientToScreen(dropper_.hwnd(), &point);
        return {point.x, point.y};
    }

    // A drag to a point of the control that is reported to `window`, ended by a drop.
    DWORD DropOn(HWND window, int x, int y) {
        return DragAndDrop(window, *data_.Get(), OnScreen(x, y));
    }

    OleSession ole_;
    ComPtr<FakeDataObject> data_ = ComPtr<FakeDataObject>::Adopt(new FakeDataObject);
    TestForm form_;
    OLEDropper dropper_;
    std::vector<std::pair<float, float>> positions_;
    std::vector<std::string> dropped_;
};

TEST_F(OLEDropperTest, TheLabelIsCentredAndReadsItsCaption) {
    EXPECT_EQ(dropper_.Label1().Text(), "Drop files to stamp here");
    EXPECT_GT(dropper_.Label1().Position().width, 0);
    ExpectLabelCentred();
}

TEST_F(OLEDropperTest, ADropOnTheLabelAndOneOnTheSurfaceReportTheSamePosition) {
    EXPECT_EQ(DropOn(dropper_.hwnd(), 150, 100), static_cast<DWORD>(DROPEFFECT_COPY));
    EXPECT_THAT(dropped_, ElementsAre("C:\\a"));
    dropped_.clear();
    EXPECT_EQ(DropOn(dropper_.Label1().Handle(), 150, 100), static_cast<DWORD>(DROPEFFECT_COPY));
    EXPECT_THAT(dropped_, ElementsAre("C:\\a"));
    const std::pair<float, float> point{150.0F, 100.0F};
    EXPECT_THAT(positions_, ElementsAre(point, point, point, point, point, point));
}

TEST_F(OLEDropperTest, ThePositionOnTheLabelFollowsItWhenTheControlIsResized) {
    dropper_.Move({0, 0, 444, 333});
    ExpectLabelCentred();
    DropOn(dropper_.Label1().Handle(), 200, 160);
    EXPECT_EQ(positions_.back(), (std::pair<float, float>{200.0F, 160.0F}));
}

TEST_F(OLEDropperTest, ALargerFontKeepsTheTextCentred) {
    const Bounds before = dropper_.Label1().Position();
    const UniqueFont large = MakeFont("Tahoma", 24);
    dropper_.SetFont(large.Get());
    EXPECT_EQ(dropper_.Font(), large.Get());
    EXPECT_EQ(dropper_.Label1().Font(), large.Get());
    const Bounds after = dropper_.Label1().Position();
    EXPECT_GT(after.width, before.width);
    EXPECT_GT(after.height, before.height);
    ExpectLabelCentred();
    dropper_.SetFont(nullptr);
}

TEST_F(OLEDropperTest, AControlSmallerThanItsLabelPutsItAtNegativeOffsets) {
    const Bounds before = dropper_.Label1().Position();
    dropper_.Move({0, 0, 20, 10});
    const Bounds label = dropper_.Label1().Position();
    EXPECT_LT(label.left, 0);
    EXPECT_LT(label.top, 0);
    EXPECT_EQ(label.width, before.width);
    EXPECT_EQ(label.height, before.height);
    ExpectLabelCentred();
    DropOn(dropper_.Label1().Handle(), 3, 2);
    EXPECT_EQ(positions_.back(), (std::pair<float, float>{3.0F, 2.0F}));
}

TEST_F(OLEDropperTest, ThePointerHitsTheLabelAndTheSurface) {
    const Bounds label = dropper_.Label1().Position();
    const POINTL on_label = OnScreen(label.left + 3, label.top + 3);
    const POINTL beside = OnScreen(2, 2);
    EXPECT_EQ(::WindowFromPoint({on_label.x, on_label.y}), dropper_.Label1().Handle());
    EXPECT_EQ(::WindowFromPoint({beside.x, beside.y}), dropper_.hwnd());
}

TEST_F(OLEDropperTest, TheHostsAnswerGoesBackToTheSource) {
    dropper_.OLEDragDrop = [](DragData&, std::int32_t& effect, std::int16_t, std::int16_t, float&,
                              float&) { effect = kDropEffectLink; };
    EXPECT_EQ(DropOn(dropper_.Label1().Handle(), 9, 9), static_cast<DWORD>(DROPEFFECT_LINK));
    dropper_.OLEDragDrop = nullptr;
    const ComPtr<IDropTarget> surface(RegisteredTarget(dropper_.hwnd()));
    DWORD effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    surface->Drop(data_.Get(), 0, OnScreen(9, 9), &effect);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY | DROPEFFECT_MOVE))
        << "without an answer it goes back as it came";
}

TEST_F(OLEDropperTest, SurfaceAndLabelRaiseTheSourceEventsAlike) {
    std::vector<std::string> raised;
    dropper_.OLEStartDrag = [&](DragSourceData&, std::int32_t& allowed) {
        allowed = 3;
        raised.emplace_back("start");
    };
    dropper_.OLEGiveFeedback = [&](std::int32_t&, bool& default_cursors) {
        default_cursors = false;
        raised.emplace_back("feedback");
    };
    dropper_.OLECompleteDrag = [&](std::int32_t& effect) {
        raised.emplace_back("complete " + std::to_string(effect));
    };
    dropper_.OLESetData = [&](DragSourceData& data, std::int16_t format) {
        data.SetFiles({"made for a target"});
        raised.emplace_back("data " + std::to_string(format));
    };
    for (OleDragDropSink* sink :
         {&dropper_.SurfaceNotifications(), &dropper_.LabelNotifications()}) {
        FakeDragData data;
        std::int32_t allowed = 0;
        sink->StartDrag(data, allowed);
        EXPECT_EQ(allowed, 3);
        sink->SetData(data, kFileListFormat);
        EXPECT_THAT(data.Files(), ElementsAre("made for a target"));
        std::int32_t effect = 2;
        bool default_cursors = true;
        sink->GiveFeedback(effect, default_cursors);
        EXPECT_FALSE(default_cursors);
        sink->CompleteDrag(effect);
    }
    EXPECT_THAT(raised, ElementsAre("start", "data 15", "feedback", "complete 2",  //
                                    "start", "data 15", "feedback", "complete 2"));
}

TEST_F(OLEDropperTest, BothRegistrationsGoWithTheWindow) {
    const ComPtr<IDropTarget> surface(RegisteredTarget(dropper_.hwnd()));
    const ComPtr<IDropTarget> label(RegisteredTarget(dropper_.Label1().Handle()));
    ASSERT_TRUE(surface);
    ASSERT_TRUE(label);
    EXPECT_NE(surface.Get(), label.Get());
    form_.Destroy();
    EXPECT_EQ(dropper_.hwnd(), nullptr);
    EXPECT_EQ(References(*surface.Get()), 1U);
    EXPECT_EQ(References(*label.Get()), 1U);
}

TEST_F(OLEDropperTest, ItHasOneWindowAtATime) {
    const HWND window = dropper_.hwnd();
    EXPECT_THROW(dropper_.Create(form_, {}), ProgramError);
    EXPECT_EQ(dropper_.hwnd(), window);
}

TEST_F(OLEDropperTest, ItCanBeCreatedAnew) {
    dropper_.Destroy();
    EXPECT_EQ(dropper_.hwnd(), nullptr);
    ControlSpec spec;
    spec.bounds = {0, 0, 400, 300};
    dropper_.Create(form_, spec);
    ExpectLabelCentred();
    DropOn(dropper_.Label1().Handle(), 100, 100);
    EXPECT_EQ(positions_.back(), (std::pair<float, float>{100.0F, 100.0F}));
}

TEST_F(OLEDropperTest, ItStartsWithTheFontOfTheWindowAroundIt) {
    dropper_.Destroy();
    const UniqueFont font = MakeFont("Tahoma", 14);
    form_.SetFormFont(font.Get());
    dropper_.Create(form_, ControlSpec{});
    EXPECT_EQ(dropper_.Font(), font.Get());
    dropper_.Destroy();
    form_.SetFormFont(nullptr);
}

}  // namespace
}  // namespace tidemark
