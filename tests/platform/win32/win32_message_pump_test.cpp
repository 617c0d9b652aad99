#include "platform/win32/win32_message_pump.h"

#include <gtest/gtest.h>

#include <vector>

namespace tidemark {
namespace {

constexpr UINT kMark = WM_APP + 7;

class Win32MessagePumpTest : public testing::Test {
  protected:
    ~Win32MessagePumpTest() override {
        MSG message;
        while (::PeekMessageW(&message, /*hWnd=*/nullptr, 0, 0, PM_REMOVE) != FALSE) {
        }
    }
    // As work does: between one entry and the next, for as long as a message may wait and longer.
    static void AskForAWhile(Win32MessagePump& pump) {
        const ULONGLONG end = ::GetTickCount64() + 50;
        while (::GetTickCount64() < end) {
            pump.LetPendingMessagesRun();
        }
        // Held up for all that time, it has not asked yet, or for too short.
        pump.LetPendingMessagesRun();
    }
    static void Post(WPARAM mark) { ::PostThreadMessageW(::GetCurrentThreadId(), kMark, mark, 0); }

    Win32TimerSource timers_{[] { ADD_FAILURE() << "a tick let an exception out"; }};
    std::vector<WPARAM> seen_;
    int quits_ = 0;
    Win32MessagePump pump_{[this](MSG& message) {
                               if (message.message == kMark) {
                                   seen_.push_back(message.wParam);
                               }
                           },
                           [this] { ++quits_; }, timers_};
};

TEST_F(Win32MessagePumpTest, MessagesReachTheGivenDispatchInTheirOrder) {
    Post(1);
    Post(2);
    pump_.RunPendingMessagesNow();
    EXPECT_EQ(seen_, (std::vector<WPARAM>{1, 2}));
}

TEST_F(Win32MessagePumpTest, TheSystemIsAskedOnlyWhenAMessageMayHaveWaited) {
    // Preempted for 10 ms in the middle, a try proves nothing: one of many must show it.
    bool waited = false;
    for (WPARAM mark = 1; mark <= 100 && !waited; ++mark) {
        pump_.RunPendingMessagesNow();
        Post(mark);
        pump_.LetPendingMessagesRun();
        waited = seen_.size() < mark;
    }
    EXPECT_TRUE(waited);
    const std::size_t before = seen_.size();
    Post(0);
    AskForAWhile(pump_);
    EXPECT_GT(seen_.size(), before);
}

TEST_F(Win32MessagePumpTest, AQuitIsPutBackAndToldOnce) {
    Post(1);
    ::PostQuitMessage(42);
    pump_.RunPendingMessagesNow();
    EXPECT_EQ(seen_, std::vector<WPARAM>{1});
    EXPECT_EQ(quits_, 1);
    Post(2);
    pump_.RunPendingMessagesNow();
    AskForAWhile(pump_);
    EXPECT_EQ(seen_, std::vector<WPARAM>{1});
    EXPECT_EQ(quits_, 1);
    MSG message;
    ASSERT_TRUE(::PeekMessageW(&message, nullptr, kMark, kMark, PM_REMOVE));
    ASSERT_TRUE(::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 42U);
}

TEST_F(Win32MessagePumpTest, AFloodOfMessagesDoesNotStopTheWork) {
    std::size_t count = 0;
    Win32MessagePump flooded([&](MSG&) { Post(++count); }, [] {}, timers_);
    Post(0);
    AskForAWhile(flooded);
    EXPECT_GT(count, 0U);
}

TEST_F(Win32MessagePumpTest, WorkInsideAMessageMayPumpAgain) {
    Win32MessagePump* nested = nullptr;
    std::vector<WPARAM> order;
    Win32MessagePump pump(
        [&](MSG& message) {
            if (message.wParam == 1) {
                nested->RunPendingMessagesNow();
            }
            order.push_back(message.wParam);
        },
        [] {}, timers_);
    nested = &pump;
    Post(1);
    Post(2);
    pump.RunPendingMessagesNow();
    EXPECT_EQ(order, (std::vector<WPARAM>{2, 1}));
}

}  // namespace
}  // namespace tidemark
