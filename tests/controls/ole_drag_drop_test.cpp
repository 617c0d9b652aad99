#include "controls/ole_drag_drop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/fake_drag_data.h"

namespace tidemark {
namespace {

TEST(AcceptFilesTest, DataWithAFileIsCopied) {
    FakeDragData data({"C:\\a"});
    std::int32_t effect = kDropEffectCopy | kDropEffectMove | kDropEffectLink;
    EXPECT_TRUE(AcceptFiles(data, effect));
    EXPECT_EQ(effect, kDropEffectCopy);
}

TEST(AcceptFilesTest, ASourceThatOnlyLinksIsAnsweredWithALink) {
    FakeDragData data({"C:\\a"});
    std::int32_t effect = kDropEffectLink | kDropEffectMove;
    EXPECT_TRUE(AcceptFiles(data, effect));
    EXPECT_EQ(effect, kDropEffectLink);
}

TEST(AcceptFilesTest, ASourceThatOnlyMovesIsTakenAndHearsOfNoMove) {
    FakeDragData data({"C:\\a"});
    std::int32_t effect = kDropEffectMove;
    EXPECT_TRUE(AcceptFiles(data, effect));
    EXPECT_EQ(effect, kDropEffectMove) << "anything else would end the drag without a drop";
    EXPECT_TRUE(AcceptDroppedFiles(data, effect));
    EXPECT_EQ(effect, kDropEffectNone) << "it would delete its files";
}

TEST(AcceptFilesTest, ADropIsOtherwiseAnsweredAsItsDrag) {
    FakeDragData data({"C:\\a"});
    for (const std::int32_t allowed : {kDropEffectCopy | kDropEffectMove, kDropEffectCopy,
                                       kDropEffectLink | kDropEffectMove, kDropEffectNone}) {
        std::int32_t over = allowed;
        std::int32_t dropped = allowed;
        EXPECT_EQ(AcceptFiles(data, over), AcceptDroppedFiles(data, dropped));
        EXPECT_EQ(over, dropped);
        EXPECT_EQ(over & allowed, over);
    }
}

TEST(AcceptFilesTest, DataWithoutFilesIsRefused) {
    FakeDragData none;
    FakeDragData empty_list;
    empty_list.SetFiles({});
    for (FakeDragData* data : {&none, &empty_list}) {
        std::int32_t effect = kDropEffectCopy;
        EXPECT_FALSE(AcceptFiles(*data, effect));
        EXPECT_EQ(effect, kDropEffectNone);
        effect = kDropEffectMove;
        EXPECT_FALSE(AcceptDroppedFiles(*data, effect));
        EXPECT_EQ(effect, kDropEffectNone);
    }
}

TEST(KeyStateTest, ButtonsAndKeysBecomeTheirBits) {
    EXPECT_EQ(ButtonFromKeyState(0), 0);
    EXPECT_EQ(ButtonFromKeyState(0x01), 1);
    EXPECT_EQ(ButtonFromKeyState(0x02), 2);
    EXPECT_EQ(ButtonFromKeyState(0x10), 4);
    EXPECT_EQ(ButtonFromKeyState(0x13 | 0x2C), 7);
    EXPECT_EQ(ShiftFromKeyState(0x04), 1);
    EXPECT_EQ(ShiftFromKeyState(0x08), 2);
    EXPECT_EQ(ShiftFromKeyState(0x20), 4);
    EXPECT_EQ(ShiftFromKeyState(0x2C | 0x13), 7);
}

TEST(NextDragStepTest, HoldingTheStartingButtonContinues) {
    EXPECT_EQ(NextDragStep(false, 0x02, 2), DragStep::kContinue);
    EXPECT_EQ(NextDragStep(false, 0x02 | 0x04 | 0x08, 2), DragStep::kContinue);
}

TEST(NextDragStepTest, ReleasingTheStartingButtonDrops) {
    EXPECT_EQ(NextDragStep(false, 0, 2), DragStep::kDrop);
    EXPECT_EQ(NextDragStep(false, 0x08, 1), DragStep::kDrop);
    EXPECT_EQ(NextDragStep(false, 0x01, 3), DragStep::kContinue);
}

TEST(NextDragStepTest, EscapeOrAnotherButtonCancels) {
    EXPECT_EQ(NextDragStep(true, 0x02, 2), DragStep::kCancel);
    EXPECT_EQ(NextDragStep(true, 0, 2), DragStep::kCancel);
    EXPECT_EQ(NextDragStep(false, 0x03, 2), DragStep::kCancel);
    EXPECT_EQ(NextDragStep(false, 0x01, 2), DragStep::kCancel);
}

// A forwarder's events, recorded.
class OleDragDropForwarderTest : public ::testing::Test {
  protected:
    OleDragDropForwarderTest() : forwarder_(events_) {}

    OleDragDropEvents events_;
    OleDragDropForwarder forwarder_;
    FakeDragData data_{{"C:\\a"}};
    std::int32_t effect_ = 7;
    float x_ = 10.5F;
    float y_ = 20.25F;
};

TEST_F(OleDragDropForwarderTest, APositionIsMovedByTheOriginInSinglePrecision) {
    forwarder_.SetOrigin(-3.25F, 16777216.0F);
    float seen_x = 0;
    float seen_y = 0;
    events_.OLEDragOver = [&](DragData&, std::int32_t&, std::int16_t, std::int16_t, float& x,
                              float& y, std::int16_t) {
        seen_x = x;
        seen_y = y;
    };
    float y = 1.0F;
    forwarder_.DragOver(data_, effect_, 1, 0, x_, y, drag_state::kOver);
    EXPECT_EQ(seen_x, 7.25F);
    // 2^24 + 1 does not fit single precision.
    EXPECT_EQ(seen_y, 16777216.0F);

    events_.OLEDragDrop = [&](DragData&, std::int32_t&, std::int16_t, std::int16_t, float& x,
                              float&) { seen_x = x; };
    float x = 3.25F;
    forwarder_.DragDrop(data_, effect_, 1, 0, x, y);
    EXPECT_EQ(seen_x, 0.0F);
}

TEST_F(OleDragDropForwarderTest, AHandlerMayReplaceItself) {
    const std::string survivor = "captured text is still there after the handler was replaced";
    std::string seen;
    events_.OLECompleteDrag = [&, survivor](std::int32_t&) {
        events_.OLECompleteDrag = nullptr;
        seen = survivor;
    };
    forwarder_.CompleteDrag(effect_);
    EXPECT_EQ(seen, survivor);
}

TEST_F(OleDragDropForwarderTest, OtherArgumentsPassThroughUnchanged) {
    events_.OLEDragDrop = [&](DragData& data, std::int32_t& effect, std::int16_t button,
                              std::int16_t shift, float& x, float& y) {
        EXPECT_EQ(&data, &data_);
        EXPECT_EQ(effect, 7);
        EXPECT_EQ(button, 2);
        EXPECT_EQ(shift, 5);
        EXPECT_EQ(x, 10.5F);
        EXPECT_EQ(y, 20.25F);
        effect = 1;
        x = 99;
    };
    forwarder_.DragDrop(data_, effect_, 2, 5, x_, y_);
    EXPECT_EQ(effect_, 1);
    EXPECT_EQ(x_, 99.0F);

    std::vector<int> states;
    events_.OLEDragOver = [&](DragData& data, std::int32_t& effect, std::int16_t button,
                              std::int16_t shift, float&, float&, std::int16_t state) {
        EXPECT_EQ(&data, &data_);
        EXPECT_EQ(button, 4);
        EXPECT_EQ(shift, 3);
        effect = state;
        states.push_back(state);
    };
    for (const std::int16_t state : {drag_state::kEnter, drag_state::kOver, drag_state::kLeave}) {
        forwarder_.DragOver(data_, effect_, 4, 3, x_, y_, state);
        EXPECT_EQ(effect_, state);
    }
    EXPECT_THAT(states, ::testing::ElementsAre(0, 2, 1));
}

TEST_F(OleDragDropForwarderTest, SourceEventsHandTheirArgumentsBack) {
    events_.OLEStartDrag = [](DragSourceData& data, std::int32_t& allowed) {
        data.SetFiles({"C:\\b"});
        allowed = 3;
    };
    events_.OLEGiveFeedback = [](std::int32_t& effect, bool& default_cursors) {
        effect += 1;
        default_cursors = false;
    };
    events_.OLESetData = [](DragSourceData& data, std::int16_t format) {
        data.SetFiles({"format " + std::to_string(format)});
    };
    events_.OLECompleteDrag = [](std::int32_t& effect) { effect = -effect; };

    std::int32_t allowed = 0;
    forwarder_.StartDrag(data_, allowed);
    EXPECT_EQ(allowed, 3);
    EXPECT_THAT(data_.Files(), ::testing::ElementsAre("C:\\b"));
    bool default_cursors = true;
    forwarder_.GiveFeedback(effect_, default_cursors);
    EXPECT_EQ(effect_, 8);
    EXPECT_FALSE(default_cursors);
    forwarder_.SetData(data_, 15);
    EXPECT_THAT(data_.Files(), ::testing::ElementsAre("format 15"));
    forwarder_.CompleteDrag(effect_);
    EXPECT_EQ(effect_, -8);
}

TEST_F(OleDragDropForwarderTest, WithoutHandlersEveryValueStaysAsItCame) {
    forwarder_.DragOver(data_, effect_, 1, 0, x_, y_, drag_state::kEnter);
    EXPECT_EQ(effect_, 7);
    forwarder_.DragDrop(data_, effect_, 1, 0, x_, y_);
    EXPECT_EQ(effect_, 7);

    std::int32_t allowed = 5;
    forwarder_.StartDrag(data_, allowed);
    EXPECT_EQ(allowed, 5);
    bool default_cursors = true;
    effect_ = 2;
    forwarder_.GiveFeedback(effect_, default_cursors);
    forwarder_.SetData(data_, 15);
    forwarder_.CompleteDrag(effect_);
    EXPECT_TRUE(default_cursors);
    EXPECT_EQ(effect_, 2);
}

TEST(OleDragDropSinkTest, ASinkThatOverridesNothingRefuses) {
    OleDragDropSink sink;
    FakeDragData data({"C:\\a"});
    std::int32_t effect = 7;
    float x = 0;
    float y = 0;
    sink.DragOver(data, effect, 1, 0, x, y, drag_state::kEnter);
    EXPECT_EQ(effect, kDropEffectNone);
    effect = 7;
    sink.DragDrop(data, effect, 1, 0, x, y);
    EXPECT_EQ(effect, kDropEffectNone);
}

}  // namespace
}  // namespace tidemark
