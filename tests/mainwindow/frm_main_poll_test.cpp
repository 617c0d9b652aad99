// The poll keeps pace with the work, whatever falls due or opens while it lets messages run.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "mainwindow/main_window_fixture.h"
#include "platform/win32/win32_platform.h"
#include "support/pump.h"
#include "support/shown_status.h"
#include "ui/last_resort.h"
#include "ui/message_loop.h"
#include "ui/subclasser.h"

namespace tidemark {
namespace {

// The parameter is which of the poll's two turns of the messages the moment is in.
class MainWindowPoll : public MainWindowTest, public ::testing::WithParamInterface<std::size_t> {
  protected:
    [[nodiscard]] static std::size_t Turn() { return GetParam(); }
    static constexpr std::uint64_t kCallMs = 25;  // what one turn of the messages takes

    // Lists a folder whose tick falls due `lead` milliseconds after the poll.
    void PollBeforeTheTick(std::uint64_t lead) {
        Load();
        AddTree("t", 200);
        system_.volume.AddFile("C:\\first");
        Main().AddItems({"C:\\first"});
        system_.pump.RunFor(400 - 50 + lead);
        Main().AddItems({"C:\\trees\\t"});
        system_.pump.SetMillisecondsPerCall(kCallMs);
    }
    // Runs all work and returns the longest time for which the folder's cell of this number, or the
    // status bar, differed from what the item says.
    std::uint64_t LongestLag(std::size_t cell) {
        std::uint64_t lag = 0;
        std::uint64_t status_lag = 0;
        std::uint64_t longest = 0;
        system_.pump.AtEveryCall([&] {
            const ListRow& row = Main().rows.At(1);
            const auto item = Main().Items().Item("c:\\trees\\t\\");
            const bool current =
                row.sub_items[cell] == (cell == 0 ? item->CountString() : item->StatusString());
            lag = current ? 0 : lag + kCallMs;
            const bool stamping = item->StampInProgress();
            const bool counting = item->CountInProgress();
            const bool shows_work = (!stamping && !counting) || ShowsWork(stamping);
            status_lag = shows_work ? 0 : status_lag + kCallMs;
            longest = std::max({longest, lag, status_lag});
        });
        Finish();
        system_.pump.AtEveryCall({});
        return longest;
    }

  private:
    [[nodiscard]] bool ShowsWork(bool stamping) {
        return stamping ? ShownText(Main().StatusBar1, 0).starts_with("  Stamping (")
                        : ShownSimpleText(Main().StatusBar1) == "  Counting";
    }
};

TEST_P(MainWindowPoll, ACountThatFallsDueInsideThePollIsShownWhileItRuns) {
    PollBeforeTheTick(20 * Turn());
    EXPECT_LE(LongestLag(0), 1000U);
    EXPECT_EQ(Main().rows.At(1).sub_items[0], "200 files; 1 folder");
}

TEST_P(MainWindowPoll, AStampThatFallsDueInsideThePollIsShownWhileItRuns) {
    Load();
    AddTree("t", 200);
    system_.volume.AddFile("C:\\first");
    List({"C:\\first", "C:\\trees\\t"});
    Item("mnuOptionsPrompt").SetChecked(false);
    Item("mnuOptionsClearAutomatically").SetChecked(false);
    Main().UpdateControls();  // arms the poll
    system_.pump.RunFor(400 - 50 + 20 * Turn());
    Main().cmdStamp_Click();
    system_.pump.SetMillisecondsPerCall(kCallMs);
    EXPECT_LE(LongestLag(1), 1000U);
    EXPECT_EQ(Main().rows.At(1).sub_items[1], "Complete");
}

TEST_P(MainWindowPoll, WorkAndDisplayGoOnWhileABoxThatAMessageOfThePollOpenedStands) {
    PollBeforeTheTick(20);
    system_.pump.SetMillisecondsPerCall(0);
    std::string shown;
    system_.pump.AtCall(Turn(), [&] {
        system_.pump.RunFor(5000);  // the box's own loop
        shown = Main().rows.At(1).sub_items[0];
    });
    Finish();
    EXPECT_EQ(shown, "200 files; 1 folder");
}

// The system's own timers and messages, with the volume in memory.
class MainWindowOnRealTimers : public MainWindowTest {
  protected:
    MainWindowOnRealTimers() {
        MakeWindow(screen_, popup_menus_, mixed_);
        Load();
    }
    ~MainWindowOnRealTimers() override { window_.reset(); }

    // Processor time of this thread: what other programs do meanwhile does not count.
    static std::uint64_t BusyMilliseconds() {
        FILETIME created{};
        FILETIME ended{};
        FILETIME kernel{};
        FILETIME user{};
        ::GetThreadTimes(::GetCurrentThread(), &created, &ended, &kernel, &user);
        const auto units = [](const FILETIME& time) {
            return (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
        };
        return (units(kernel) + units(user)) / 10'000;
    }

    Win32Platform real_{{RouteMessage, [] {}, [] { ReportToLastResort(nullptr); }}};
    Platform mixed_{platform_.files, platform_.file_system, real_.Parts().timers,
                    real_.Parts().pump, platform_.locale};
};

TEST_F(MainWindowOnRealTimers, NoTwoPollsOfAStampAreASecondApart) {
    constexpr int kListedFiles = 2'000;
    constexpr int kFilesOfFolder = 18'000;
    constexpr std::uint64_t kLongest = 1000;  // milliseconds
    Item("mnuOptionsPrompt").SetChecked(false);
    Item("mnuOptionsClearAutomatically").SetChecked(false);
    system_.files.SetRecording(false);
    AddTree("t", kFilesOfFolder);
    std::vector<std::string> paths = {"C:\\trees\\t"};
    for (int i = 0; i < kListedFiles; ++i) {
        paths.push_back(Numbered("C:\\data\\file", i));
        system_.volume.AddFile(paths.back());
    }
    Main().AddItems(paths);
    ASSERT_TRUE(PumpUntil(
        [this] {
            return Main().rows.Count() == kListedFiles + 1 && !Main().Items().Busy() &&
                   ShownSimpleText(Main().StatusBar1) == "  Ready";
        },
        std::chrono::seconds(150)));

    // About as long as a disk takes.
    system_.files.Before({.call = KernelCall::kCloseFile, .path = {}}, [] {
        const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(60);
        while (std::chrono::steady_clock::now() < end) {
        }
    });
    // Each poll writes another number into the status bar.
    Subclasser status;
    std::uint64_t last = BusyMilliseconds();
    std::uint64_t longest = 0;
    int texts = 0;
    status.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        const std::uint64_t now = BusyMilliseconds();
        longest = std::max(longest, now - last);
        last = now;
        ++texts;
        return std::nullopt;
    };
    status.RegisterMessages(Main().StatusBar1.Handle(), {SB_SETTEXTW});
    Main().cmdStamp.Click();
    ASSERT_TRUE(
        PumpUntil([this] { return Main().Items().StampComplete(); }, std::chrono::seconds(150)));
    status.StopSubclassing();
    EXPECT_GE(texts, 3);
    EXPECT_LT(longest, kLongest);
}

INSTANTIATE_TEST_SUITE_P(Turns, MainWindowPoll, ::testing::Values(std::size_t{1}, std::size_t{2}));

}  // namespace
}  // namespace tidemark
