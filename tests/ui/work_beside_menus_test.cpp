// Work that lets messages run, while one of the system's own loops waits for them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "platform/win32/win32_platform.h"
#include "support/modal_driver.h"
#include "support/open_windows.h"
#include "support/pump.h"
#include "support/test_form.h"
#include "ui/last_resort.h"
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

    Win32Platform system_{
        {[](MSG& message) { RouteMessage(message); }, [] {}, [] { ReportToLastResort(nullptr); }}};
    Platform platform_ = system_.Parts();
    std::unique_ptr<TimerObject> timer_ = platform_.timers.NewTimer(TickKind::kLong);
    TestForm form_;
    int ticks_ = 0;
    std::function<void()> on_tick_;
};

TEST_F(WorkTest, AnOpenMenuKeepsItsKeysAndLongWorkWaitsForItsEnd) {
    Menu menu({{0, "mnuPopup", "popup"}, {1, "mnuFirst", "&First"}, {1, "mnuSecond", "&Second"}});
    int chosen = 0;
    menu["mnuSecond"].on_click = [&] { ++chosen; };
    int looks = 0;
    ModalDriver driver({[] { return OpenPopup() != nullptr; },
                        [&] {
                            StartWork();
                            return true;
                        },
                        [&] { return ++looks == 5; },  // work would have begun meanwhile
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
    ModalDriver driver({[] { return OpenDialog() != nullptr; },
                        [&] {
                            StartWork();
                            return true;
                        }},
                       [] { PressInDialog(IDCANCEL); });
    ::MessageBoxW(form_.Handle(), L"text", L"caption", MB_OKCANCEL);
    EXPECT_TRUE(PumpUntil([this] { return ticks_ == 1; }));
    EXPECT_TRUE(answered);
}

}  // namespace
}  // namespace tidemark
