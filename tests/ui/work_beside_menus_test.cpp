// Work that lets messages run, while one of the system's own loops waits for them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "platform/memory/memory_user_locale.h"
#include "platform/win32/system_loop.h"
#include "platform/win32/win32_platform.h"
#include "support/function_sink.h"
#include "support/modal_driver.h"
#include "support/open_windows.h"
#include "support/pump.h"
#include "support/shown_list.h"
#include "support/test_form.h"
#include "ui/last_resort.h"
#include "ui/list_view.h"
#include "ui/menu.h"
#include "ui/message_loop.h"

namespace tidemark {
namespace {

class WorkTest : public testing::Test, protected ITimerObjectSink {
  protected:
    WorkTest() {
        form_.SetVisible(true);
        ::SetForegroundWindow(form_.Handle());
        PumpPending();
    }
    // A tick that may work for long, as the items' do.
    void ITimerObjectSink_Timer() override {
        timer_->SetEnabled(false);
        ++ticks_;
        if (on_tick_) {
            on_tick_();
        }
    }
    void StartWork() {
        timer_->SetSink(this);
        timer_->SetEnabled(true);
    }
    // Steps of a driver: work is due, and has had the time to begin.
    ModalDriver::Step WorkStarts() {
        return [this] {
            StartWork();
            return true;
        };
    }
    static ModalDriver::Step WouldHaveBegun() {
        return [looks = 0]() mutable { return ++looks == 5; };
    }

    Win32Platform system_{
        {[](MSG& message) { RouteMessage(message); }, [] {}, [] { ReportToLastResort(nullptr); }}};
    Platform platform_ = system_.Parts();
    std::unique_ptr<TimerObject> timer_ = platform_.timers.NewTimer(TickKind::kLong);
    TestForm form_;
    int ticks_ = 0;
    int delivered_ = 0;
    std::function<void()> on_tick_;
};

TEST_F(WorkTest, AnOpenMenuKeepsItsKeysAndLongWorkWaitsForItsEnd) {
    Menu menu({{0, "mnuPopup", "popup"}, {1, "mnuFirst", "&First"}, {1, "mnuSecond", "&Second"}});
    int chosen = 0;
    menu["mnuSecond"].on_click = [&] { ++chosen; };
    ModalDriver driver({[] { return OpenPopup() != nullptr; }, WorkStarts(), WouldHaveBegun(),
                        [&] {
                            EXPECT_EQ(ticks_, 0);
                            for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN}) {
                                form_.Post(WM_KEYDOWN, key);
                            }
                            // A refresh of the display lets messages run, too.
                            platform_.pump.RunPendingMessagesNow();
                            return true;
                        }},
                       [] { ::EndMenu(); });
    menu.PopUp(menu["mnuPopup"], form_, {100, 100});
    EXPECT_EQ(chosen, 1);
    EXPECT_EQ(ticks_, 0);
    EXPECT_TRUE(PumpUntil([this] { return ticks_ == 1; }));
}

TEST_F(WorkTest, ADialogOfTheSystemKeepsItsKeysWhileWorkGoesOn) {
    bool answered = false;
    on_tick_ = [&] {
        ::PostMessageW(::GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0);
        const ULONGLONG end = ::GetTickCount64() + 5000;
        while (OpenDialog() != nullptr && ::GetTickCount64() < end) {
            platform_.pump.LetPendingMessagesRun();
        }
        answered = OpenDialog() == nullptr;
    };
    ModalDriver driver({[] { return OpenDialog() != nullptr; }, WorkStarts()},
                       [] { PressInDialog(IDCANCEL); });
    ::MessageBoxW(form_.Handle(), L"text", L"caption", MB_OKCANCEL);
    EXPECT_TRUE(PumpUntil([this] { return ticks_ == 1; }));
    EXPECT_TRUE(answered);
}

TEST_F(WorkTest, ALoopThatIsToldOfKeepsItsMessagesAndLongWorkWaitsForItsEnd) {
    constexpr UINT kForTheLoop = WM_APP;
    form_.on_message = [this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        delivered_ += message == kForTheLoop ? 1 : 0;
        return std::nullopt;
    };
    int brief_ticks = 0;
    FunctionSink count_brief([&] { ++brief_ticks; });
    const auto brief = platform_.timers.NewTimer(TickKind::kBrief);
    brief->SetSink(&count_brief);
    {
        const SystemLoopScope loop;
        { const SystemLoopScope inside_it; }
        form_.Post(kForTheLoop);
        platform_.pump.RunPendingMessagesNow();
        EXPECT_EQ(delivered_, 0);
        StartWork();
        brief->SetEnabled(true);
        EXPECT_TRUE(PumpUntil([&] { return brief_ticks >= 3; }));
        EXPECT_EQ(ticks_, 0);
    }
    form_.Post(kForTheLoop);
    platform_.pump.RunPendingMessagesNow();
    EXPECT_EQ(delivered_, 2);
    EXPECT_TRUE(PumpUntil([this] { return ticks_ == 1; }));
}

// A list too long for its window, whose thumb is at its top.
class WorkBesideAListTest : public WorkTest {
  protected:
    WorkBesideAListTest() {
        for (int i = 0; i < 200; ++i) {
            const std::string name = "row " + std::to_string(i);
            model_.Add(name, name);
        }
        ControlSpec spec;
        spec.bounds = {10, 10, 300, 200};
        list_->Create(form_, spec, {{"Name", 200}});
        PumpPending();
    }
    void PressThumb() const {
        SCROLLBARINFO bar{};
        bar.cbSize = sizeof(bar);
        ASSERT_NE(::GetScrollBarInfo(list_->Handle(), OBJID_VSCROLL, &bar), FALSE);
        list_->Post(WM_NCLBUTTONDOWN, HTVSCROLL,
                    MAKELPARAM((bar.rcScrollBar.left + bar.rcScrollBar.right) / 2,
                               bar.rcScrollBar.top + (bar.xyThumbTop + bar.xyThumbBottom) / 2));
    }
    [[nodiscard]] bool Scrolling() const { return ::GetCapture() == list_->Handle(); }
    // For a loop that does not end as it should.
    static void GiveUp() { ::PostMessageW(::GetCapture(), WM_LBUTTONUP, 0, 0); }

    bool in_loop_ = false;
    MemoryUserLocale locale_{};
    ListModel model_{locale_};
    ImageList images_{[](const std::string& /*path*/) { return UniqueIcon(); }};
    std::unique_ptr<ListView> list_ = std::make_unique<ListView>(model_, images_);
};

TEST_F(WorkBesideAListTest, AThumbThatIsDraggedIsLetGoAndLongWorkWaitsForThat) {
    ModalDriver driver({[this] { return Scrolling(); }, WorkStarts(), WouldHaveBegun(),
                        [&] {
                            EXPECT_EQ(ticks_, 0);
                            list_->Post(WM_LBUTTONUP);
                            // A refresh of the display lets messages run, too.
                            platform_.pump.RunPendingMessagesNow();
                            EXPECT_TRUE(Scrolling());
                            return true;
                        }},
                       GiveUp);
    PressThumb();
    EXPECT_TRUE(PumpUntil([&] { return driver.Done(); }));
    EXPECT_FALSE(Scrolling());
    EXPECT_TRUE(PumpUntil([this] { return ticks_ == 1; }));
}

TEST_F(WorkBesideAListTest, AListThatGoesWhileItScrollsHoldsNoWorkBack) {
    ModalDriver driver({[this] { return Scrolling(); },
                        [&] {
                            list_.reset();
                            // What wakes the loop, so that it sees.
                            form_.Post(WM_NULL);
                            return true;
                        }},
                       GiveUp);
    PressThumb();
    EXPECT_TRUE(PumpUntil([&] { return driver.Done(); }));
    StartWork();
    EXPECT_TRUE(PumpUntil([this] { return ticks_ == 1; }));
}

TEST_F(WorkBesideAListTest, AListThatFollowsAPressOnItsRowsKeepsItsMessages) {
    form_.on_message = [this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        in_loop_ = in_loop_ || (message == WM_NOTIFY && InSystemLoop());
        return std::nullopt;
    };
    const RECT row = PlaceOfRow(*list_, 1);
    const LPARAM at = MAKELPARAM(row.left + 30, (row.top + row.bottom) / 2);
    list_->Post(WM_LBUTTONDOWN, MK_LBUTTON, at);
    list_->Post(WM_LBUTTONUP, 0, at);
    EXPECT_TRUE(PumpUntil([&] { return model_.At(1).selected; }));
    EXPECT_TRUE(in_loop_);
    EXPECT_FALSE(InSystemLoop());
}

}  // namespace
}  // namespace tidemark
