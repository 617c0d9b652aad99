// Real drag and drop operations, made by moving the mouse.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

#include "controls/file_drag_source.h"
#include "controls/ole_dropper.h"
#include "platform/win32/system_loop.h"
#include "support/drag_source.h"
#include "support/modal_driver.h"
#include "support/pump.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

void SendMouse(DWORD flags, int x = 0, int y = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = x;
    input.mi.dy = y;
    input.mi.dwFlags = flags;
    ::SendInput(1, &input, sizeof input);
}

void MoveMouseTo(POINT point) {
    const int width = ::GetSystemMetrics(SM_CXSCREEN);
    const int height = ::GetSystemMetrics(SM_CYSCREEN);
    // The screen counts from 0 to 65535 here; half a pixel more hits its middle.
    SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, (point.x * 65536 + 32768) / width,
              (point.y * 65536 + 32768) / height);
}

class DragAndDropTest : public ::testing::Test {
  protected:
    DragAndDropTest() {
        FormSpec spec = TestForm::DefaultSpec();
        spec.extended_style |= WS_EX_TOPMOST;
        form_ = std::make_unique<TestForm>(spec);
        form_->SetVisible(true);
        ControlSpec area;
        area.bounds = {100, 100, 300, 200};
        dropper_.Create(*form_, area);
        dropper_.OLEDragOver = [this](DragData& data, std::int32_t& effect, std::int16_t button,
                                      std::int16_t, float& x, float& y, std::int16_t state) {
            AcceptFiles(data, effect);
            over_ = state != drag_state::kLeave;
            over_button_ = button;
            over_at_ = {static_cast<int>(x), static_cast<int>(y)};
        };
        dropper_.OLEDragDrop = [this](DragData& data, std::int32_t& effect, std::int16_t,
                                      std::int16_t, float&, float&) {
            AcceptFiles(data, effect);
            dropped_ = data.Files();
        };
        ::UpdateWindow(form_->Handle());
        PumpPending();
    }
    ~DragAndDropTest() override {
        // Whatever happened, no button stays down for the next test.
        SendMouse(MOUSEEVENTF_LEFTUP);
        SendMouse(MOUSEEVENTF_RIGHTUP);
        MoveMouseTo({0, 0});
        PumpPending();
    }

    // A point of the screen, asked for when it is used: for a moment after it has been shown, a
    // window may not yet be where it stays.
    using Place = std::function<POINT()>;

    Place InForm(int x, int y) const {
        return [this, x, y] {
            POINT point{x, y};
            ::ClientToScreen(form_->Handle(), &point);
            return point;
        };
    }
    Place InDropper(int x, int y) const { return InForm(x + 100, y + 100); }
    Place OnLabel() const {
        const Bounds label = dropper_.Label1().Position();
        return InDropper(label.left + label.width / 2, label.top + label.height / 2);
    }
    // Each time a pixel from the last one, or the system would not tell of a move.
    void MoveMouseAround(const Place& place) {
        POINT at = place();
        step_ = !step_;
        at.x += step_ ? 1 : 0;
        MoveMouseTo(at);
    }

    // Presses at a point until `started`; again after a while, for a press that a window that is
    // just going or coming swallowed.
    ModalDriver::Step PressUntil(Place at, bool right, std::function<bool()> started) {
        return [this, at = std::move(at), right, started = std::move(started)] {
            if (started()) {
                return true;
            }
            if (const ULONGLONG now = ::GetTickCount64(); now >= press_again_at_) {
                if (press_again_at_ != 0) {
                    SendMouse(right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP);
                }
                MoveMouseAround(at);
                SendMouse(right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN);
                press_again_at_ = now + 2000;
            }
            return false;
        };
    }
    // Moves to and fro around a point until it is reported as dragged over.
    ModalDriver::Step MoveOver(Place at) {
        return [this, at = std::move(at)] {
            MoveMouseAround(at);
            return over_;
        };
    }
    ModalDriver::Step Release(bool right) {
        return [right] {
            SendMouse(right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP);
            return true;
        };
    }

    std::unique_ptr<TestForm> form_;
    OLEDropper dropper_;
    bool over_ = false;
    int over_button_ = 0;
    Point over_at_;
    std::vector<std::string> dropped_;
    ULONGLONG press_again_at_ = 0;
    bool step_ = false;
};

// Names of every awkward kind, a lone surrogate and a name of 255 letters among them.
std::vector<std::string> AwkwardPaths() {
    std::string longest = "C:\\";
    for (int i = 0; i < 255; ++i) {
        longest += "\u6f22";
    }
    return {"C:\\a",
            "C:\\\u6f6e",
            longest,
            "C:\\\U0001F30A e\u0301",
            "C:\\\u05d0\u202E right to left",
            "C:\\l\xED\xA0\x80x",
            "C:\\trailing dot.",
            "C:\\ blanks ",
            "C:\\nul",
            "C:\\100% &more, 'x'"};
}

// Drags that start in this process, by pressing beside the drop area.
class DragFromHereTest : public DragAndDropTest, protected OleDragDropSink {
  protected:
    DragFromHereTest() {
        form_->on_message = [this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN) {
                effect_ = DragFiles(*this, message == WM_RBUTTONDOWN ? 2 : 1);
                ended_ = true;
                return 0;
            }
            return std::nullopt;
        };
    }

    void StartDrag(DragSourceData& data, std::int32_t& allowed) override {
        log_.emplace_back("start");
        if (late_) {
            data.OfferFormat(kFileListFormat);
        } else {
            data.SetFiles(AwkwardPaths());
        }
        allowed = allowed_;
    }
    void SetData(DragSourceData& data, std::int16_t format) override {
        log_.push_back("data " + std::to_string(format));
        data.SetFiles({"C:\\late"});
    }
    void GiveFeedback(std::int32_t& effect, bool&) override {
        feedback_ |= effect;
        in_loop_ = InSystemLoop();
    }
    void CompleteDrag(std::int32_t& effect) override {
        log_.push_back("complete " + std::to_string(effect));
    }

    bool Started() const { return !log_.empty(); }
    void RunDrag(std::vector<ModalDriver::Step> steps) {
        ModalDriver driver(std::move(steps), [] {
            SendMouse(MOUSEEVENTF_LEFTUP);
            SendMouse(MOUSEEVENTF_RIGHTUP);
        });
        EXPECT_TRUE(PumpUntil([&] { return ended_ && driver.Done(); }, std::chrono::seconds(25)));
    }

    std::int32_t allowed_ = kDropEffectCopy | kDropEffectMove;
    bool late_ = false;
    std::vector<std::string> log_;
    std::int32_t feedback_ = 0;
    bool in_loop_ = false;
    std::int32_t effect_ = -1;
    bool ended_ = false;
};

TEST_F(DragFromHereTest, FilesDraggedWithTheRightButtonAreDroppedOnTheLabel) {
    RunDrag({PressUntil(InForm(30, 30), true, [this] { return Started(); }), MoveOver(OnLabel()),
             Release(true)});
    EXPECT_EQ(dropped_, AwkwardPaths());
    EXPECT_EQ(effect_, kDropEffectCopy);
    EXPECT_EQ(over_button_, 2);
    EXPECT_THAT(log_, ElementsAre("start", "complete 1"));
    EXPECT_EQ(feedback_, kDropEffectCopy);
}

TEST_F(DragFromHereTest, FilesDraggedWithTheLeftButtonAreDroppedOnTheSurface) {
    RunDrag({PressUntil(InForm(30, 30), false, [this] { return Started(); }),
             MoveOver(InDropper(10, 12)), Release(false)});
    EXPECT_EQ(dropped_, AwkwardPaths());
    EXPECT_EQ(effect_, kDropEffectCopy);
    EXPECT_EQ(over_at_.y, 12);
}

TEST_F(DragFromHereTest, TheDragKeepsItsMessagesUntilTheButtonIsLetGo) {
    std::optional<bool> in_loop_at_drop;
    dropper_.OLEDragDrop = [&](DragData&, std::int32_t&, std::int16_t, std::int16_t, float&,
                               float&) { in_loop_at_drop = InSystemLoop(); };
    RunDrag({PressUntil(InForm(30, 30), true, [this] { return Started(); }), MoveOver(OnLabel()),
             Release(true)});
    EXPECT_TRUE(in_loop_);
    EXPECT_EQ(in_loop_at_drop, false);
    EXPECT_FALSE(InSystemLoop());
}

TEST_F(DragFromHereTest, AFormatOfferedWithoutDataIsAskedForByTheTarget) {
    late_ = true;
    RunDrag({PressUntil(InForm(30, 30), false, [this] { return Started(); }), MoveOver(OnLabel()),
             Release(false)});
    EXPECT_THAT(dropped_, ElementsAre("C:\\late"));
    EXPECT_THAT(log_, ElementsAre("start", "data 15", "complete 1"));
}

TEST_F(DragFromHereTest, WhatIsReleasedBesideATargetIsNotDropped) {
    RunDrag({PressUntil(InForm(30, 30), false, [this] { return Started(); }), Release(false)});
    EXPECT_THAT(dropped_, IsEmpty());
    EXPECT_EQ(effect_, kDropEffectNone);
    EXPECT_THAT(log_, ElementsAre("start", "complete 0"));
}

TEST_F(DragFromHereTest, WithoutAnAllowedEffectNoDragStarts) {
    allowed_ = kDropEffectNone;
    RunDrag({PressUntil(InForm(30, 30), false, [this] { return Started(); }), Release(false)});
    EXPECT_THAT(log_, ElementsAre("start"));
    EXPECT_EQ(effect_, kDropEffectNone);
}

TEST_F(DragAndDropTest, FilesOfAnotherProcessAreDroppedOnTheLabel) {
    const DragSource source(
        "700 200 \"C:\\from afar\" C:\\\u6f6e \"C:\\\U0001F30A 100% &more, 'x'.\"");
    ASSERT_EQ(source.Caption(), "ready");
    ModalDriver driver({PressUntil(
                            [] {
                                return POINT{750, 240};
                            },
                            false, [&] { return source.Caption() == "dragging"; }),
                        MoveOver(OnLabel()), Release(false)},
                       [] { SendMouse(MOUSEEVENTF_LEFTUP); });
    EXPECT_TRUE(PumpUntil([&] { return source.Caption() == "done 1"; }, std::chrono::seconds(35)))
        << source.Caption();
    EXPECT_TRUE(driver.Done());
    EXPECT_THAT(dropped_,
                ElementsAre("C:\\from afar", "C:\\\u6f6e", "C:\\\U0001F30A 100% &more, 'x'."));
}

}  // namespace
}  // namespace tidemark
