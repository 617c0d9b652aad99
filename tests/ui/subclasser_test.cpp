#include "ui/subclasser.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "platform/program_error.h"
#include "support/last_resort_recorder.h"
#include "support/pump.h"
#include "support/test_form.h"
#include "ui/button.h"

namespace tidemark {
namespace {

constexpr UINT kWatched = WM_APP + 10;
constexpr UINT kOther = WM_APP + 11;

class SubclasserTest : public ::testing::Test {
  protected:
    SubclasserTest() {
        form_.on_message = [this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == kWatched || message == kOther) {
                ++reached_form_;
                return 100;
            }
            return std::nullopt;
        };
    }

    TestForm form_;
    int reached_form_ = 0;
};

TEST_F(SubclasserTest, DeliversOnlyRegisteredMessagesWithTheirArguments) {
    Subclasser subclasser;
    int calls = 0;
    subclasser.WndProc = [&](HWND window, UINT message, WPARAM wparam,
                             LPARAM lparam) -> std::optional<LRESULT> {
        ++calls;
        EXPECT_EQ(window, form_.Handle());
        EXPECT_EQ(message, kWatched);
        EXPECT_EQ(wparam, 3U);
        EXPECT_EQ(lparam, 4);
        return std::nullopt;
    };
    subclasser.RegisterMessages(form_.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kOther), 100);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(form_.Send(kWatched, 3, 4), 100);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(reached_form_, 2);
}

TEST_F(SubclasserTest, AnAnswerEndsTheMessage) {
    Subclasser subclasser;
    subclasser.WndProc = [](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return 7; };
    subclasser.RegisterMessages(form_.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kWatched), 7);
    EXPECT_EQ(reached_form_, 0);
}

TEST_F(SubclasserTest, RegisteringAgainAddsMessagesAndDeliversEachOnce) {
    Subclasser subclasser;
    int calls = 0;
    subclasser.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        ++calls;
        return std::nullopt;
    };
    subclasser.RegisterMessages(form_.Handle(), {kWatched});
    subclasser.RegisterMessages(form_.Handle(), {kWatched, kOther});
    form_.Send(kWatched);
    form_.Send(kOther);
    EXPECT_EQ(calls, 2);
}

TEST_F(SubclasserTest, TwoUsersOfOneWindowNeverCollide) {
    Subclasser first;
    Subclasser second;
    int first_calls = 0;
    int second_calls = 0;
    first.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        ++first_calls;
        return std::nullopt;
    };
    second.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        ++second_calls;
        return std::nullopt;
    };
    first.RegisterMessages(form_.Handle(), {kWatched});
    second.RegisterMessages(form_.Handle(), {kWatched});
    form_.Send(kWatched);
    first.StopSubclassing();
    form_.Send(kWatched);
    EXPECT_EQ(first_calls, 1);
    EXPECT_EQ(second_calls, 2);
    EXPECT_EQ(reached_form_, 2);
}

TEST_F(SubclasserTest, TheLastToComeSeesAMessageFirst) {
    std::string order;
    const auto note = [&order](char name) {
        return [&order, name](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
            order += name;
            return std::nullopt;
        };
    };
    Subclasser a;
    Subclasser b;
    Subclasser c;
    a.WndProc = note('a');
    b.WndProc = note('b');
    c.WndProc = note('c');
    a.RegisterMessages(form_.Handle(), {kWatched});
    b.RegisterMessages(form_.Handle(), {kWatched});
    c.RegisterMessages(form_.Handle(), {kWatched});
    form_.Send(kWatched);
    EXPECT_EQ(order, "cba");
    a.StopSubclassing();
    a.RegisterMessages(form_.Handle(), {kWatched});
    form_.Send(kWatched);
    EXPECT_EQ(order, "cbaacb");
    EXPECT_EQ(reached_form_, 2);
}

TEST_F(SubclasserTest, OneCanEndTheOthersWhileAMessageIsOnItsWay) {
    auto before = std::make_unique<Subclasser>();
    Subclasser middle;
    auto after = std::make_unique<Subclasser>();
    Subclasser late;
    std::string order;
    before->WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        order += "before ";
        return std::nullopt;
    };
    middle.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        order += "middle ";
        before.reset();
        after.reset();
        late.RegisterMessages(form_.Handle(), {kWatched});
        return std::nullopt;
    };
    after->WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        order += "after ";
        return std::nullopt;
    };
    late.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        order += "late ";
        return std::nullopt;
    };
    before->RegisterMessages(form_.Handle(), {kWatched});
    middle.RegisterMessages(form_.Handle(), {kWatched});
    after->RegisterMessages(form_.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kWatched), 100);
    EXPECT_EQ(order, "after middle ");
    order.clear();
    EXPECT_EQ(form_.Send(kWatched), 100);
    EXPECT_EQ(order, "late middle ");
}

TEST_F(SubclasserTest, AllCanBeStoppedAndBeginAnewWhileAMessageIsOnItsWay) {
    Subclasser first;
    Subclasser second;
    int calls = 0;
    first.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        ++calls;
        return std::nullopt;
    };
    second.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        first.StopSubclassing();
        second.StopSubclassing();
        first.RegisterMessages(form_.Handle(), {kWatched});
        return std::nullopt;
    };
    first.RegisterMessages(form_.Handle(), {kWatched});
    second.RegisterMessages(form_.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kWatched), 100);
    EXPECT_EQ(calls, 0) << "it came after the message";
    EXPECT_EQ(form_.Send(kWatched), 100);
    EXPECT_EQ(calls, 1);
}

// The form's procedure is the program's; a button's is the system's.
TEST_F(SubclasserTest, WindowsOfTheSystemsClassesAreWatchedAlike) {
    Button button;
    button.Create(form_, {.text = "b"});
    const HWND window = button.Handle();
    std::string order;
    Subclasser first;
    auto second = std::make_unique<Subclasser>();
    Subclasser third;
    first.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        order += "first ";
        first.StopSubclassing();
        return 5;
    };
    second->WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        order += "second ";
        return std::nullopt;
    };
    third.WndProc = [&](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        order += "third ";
        if (message == kOther) {
            button.Destroy();
        } else {
            second.reset();
            third.StopSubclassing();
            third.RegisterMessages(window, {kOther});
        }
        return std::nullopt;
    };
    first.RegisterMessages(window, {kWatched});
    second->RegisterMessages(window, {kWatched});
    third.RegisterMessages(window, {kWatched});
    EXPECT_EQ(button.Send(kWatched), 5);
    EXPECT_EQ(order, "third first ");
    EXPECT_EQ(button.Send(kWatched), 0);
    EXPECT_EQ(button.Text(), "b");
    EXPECT_EQ(button.Send(kOther), 0);
    EXPECT_EQ(order, "third first third ");
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(third.SubclassedWindow(), nullptr);
}

TEST_F(SubclasserTest, CanBeStoppedFromInsideItsOwnCallback) {
    Subclasser subclasser;
    int calls = 0;
    subclasser.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        ++calls;
        subclasser.StopSubclassing();
        return std::nullopt;
    };
    subclasser.RegisterMessages(form_.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kWatched), 100);
    EXPECT_EQ(form_.Send(kWatched), 100);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(subclasser.SubclassedWindow(), nullptr);
}

TEST_F(SubclasserTest, CanBeDestroyedFromInsideItsOwnCallback) {
    auto subclasser = std::make_unique<Subclasser>();
    subclasser->WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        subclasser.reset();
        return std::nullopt;
    };
    subclasser->RegisterMessages(form_.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kWatched), 100);
    EXPECT_EQ(form_.Send(kWatched), 100);
    EXPECT_EQ(reached_form_, 2);
}

TEST_F(SubclasserTest, ANestedMessageCanStopItWhileAnOuterCallIsOnTheStack) {
    Subclasser subclasser;
    std::vector<UINT> seen;
    subclasser.WndProc = [&](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        seen.push_back(message);
        if (message == kWatched) {
            form_.Send(kOther);
        } else {
            subclasser.StopSubclassing();
        }
        return std::nullopt;
    };
    subclasser.RegisterMessages(form_.Handle(), {kWatched, kOther});
    EXPECT_EQ(form_.Send(kWatched), 100);
    form_.Send(kWatched);
    EXPECT_EQ(seen, (std::vector<UINT>{kWatched, kOther}));
    EXPECT_EQ(reached_form_, 3);
}

TEST_F(SubclasserTest, DestroyingTheWindowInTheCallbackIsSafe) {
    Subclasser subclasser;
    subclasser.WndProc = [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        form_.Destroy();
        return std::nullopt;
    };
    subclasser.RegisterMessages(form_.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kWatched), 0);
    EXPECT_FALSE(form_.Exists());
    EXPECT_EQ(subclasser.SubclassedWindow(), nullptr);
}

TEST_F(SubclasserTest, StopsByItselfWhenTheWindowGoesAndLetsItsLastMessageThrough) {
    Subclasser subclasser;
    std::vector<UINT> seen;
    subclasser.WndProc = [&](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        seen.push_back(message);
        return 1;
    };
    subclasser.RegisterMessages(form_.Handle(), {WM_NCDESTROY});
    form_.Destroy();
    EXPECT_EQ(seen, (std::vector<UINT>{WM_NCDESTROY}));
    EXPECT_EQ(form_.Handle(), nullptr) << "the form saw its last message";
    EXPECT_EQ(subclasser.SubclassedWindow(), nullptr);
    subclasser.StopSubclassing();

    TestForm another;
    subclasser.RegisterMessages(another.Handle(), {kWatched});
    EXPECT_EQ(another.Send(kWatched), 1);
}

// Takes a window's procedure as any program may: what it does not want goes to the one before.
WNDPROC before_stranger = nullptr;
LRESULT CALLBACK Stranger(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const LRESULT result = ::CallWindowProcW(before_stranger, window, message, wparam, lparam);
    return message == kOther ? result + 1 : result;
}

TEST_F(SubclasserTest, LeavesALaterSubclassOfAStrangerInItsPlace) {
    Subclasser subclasser;
    subclasser.WndProc = [](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return 7; };
    subclasser.RegisterMessages(form_.Handle(), {kWatched});
    before_stranger = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(form_.Handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Stranger)));

    subclasser.StopSubclassing();
    EXPECT_EQ(form_.Send(kWatched), 100);
    EXPECT_EQ(form_.Send(kOther), 101);

    subclasser.RegisterMessages(form_.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kWatched), 7) << "once, and behind the stranger";
    EXPECT_EQ(form_.Send(kOther), 101);

    subclasser.StopSubclassing();
    ::SetWindowLongPtrW(form_.Handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before_stranger));
    EXPECT_EQ(form_.Send(kWatched), 100);
    form_.Destroy();
    TestForm another;
    subclasser.RegisterMessages(another.Handle(), {kWatched});
    EXPECT_EQ(another.Send(kWatched), 7);
}

TEST_F(SubclasserTest, AnotherWindowReplacesTheFirst) {
    TestForm another;
    Subclasser subclasser;
    subclasser.WndProc = [](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return 5; };
    subclasser.RegisterMessages(form_.Handle(), {kWatched, kOther});
    subclasser.RegisterMessages(another.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kWatched), 100);
    EXPECT_EQ(another.Send(kWatched), 5);
    EXPECT_EQ(another.Send(kOther), 0);
}

TEST_F(SubclasserTest, AnExceptionIsReportedAndTheMessageGoesOn) {
    LastResortRecorder recorder;
    Subclasser subclasser;
    subclasser.WndProc = [](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        throw std::runtime_error("in the callback");
    };
    subclasser.RegisterMessages(form_.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kWatched), 100);
    ASSERT_EQ(recorder.reports.size(), 1U);
    EXPECT_EQ(recorder.reports[0].description, "in the callback");
}

TEST_F(SubclasserTest, AWindowThatIsGoneIsRefused) {
    const HWND gone = form_.Handle();
    form_.Destroy();
    Subclasser subclasser;
    EXPECT_THROW(subclasser.RegisterMessages(gone, {kWatched}), ProgramError);
    EXPECT_THROW(subclasser.RegisterMessages(nullptr, {kWatched}), ProgramError);
    EXPECT_EQ(subclasser.SubclassedWindow(), nullptr);
}

TEST_F(SubclasserTest, AWindowOfAnotherThreadIsRefused) {
    struct Asked {
        HWND window;
        bool refused = false;

        // A lambda does not convert to a routine of the system's calling convention.
        static DWORD WINAPI Ask(void* parameter) {
            auto& to_ask = *static_cast<Asked*>(parameter);
            Subclasser subclasser;
            try {
                subclasser.RegisterMessages(to_ask.window, {kWatched});
            } catch (const ProgramError&) {
                to_ask.refused = true;
            }
            return 0;
        }
    } asked{form_.Handle()};
    const HANDLE thread = ::CreateThread(nullptr, 0, &Asked::Ask, &asked, 0, nullptr);
    ASSERT_NE(thread, nullptr);
    EXPECT_TRUE(PumpUntil([&] { return ::WaitForSingleObject(thread, 0) == WAIT_OBJECT_0; }));
    ::CloseHandle(thread);
    EXPECT_TRUE(asked.refused);
}

TEST_F(SubclasserTest, WorksWithoutAHandler) {
    Subclasser subclasser;
    subclasser.RegisterMessages(form_.Handle(), {kWatched});
    EXPECT_EQ(form_.Send(kWatched), 100);
}

}  // namespace
}  // namespace tidemark
