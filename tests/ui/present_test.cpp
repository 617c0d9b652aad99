// A form that the user has asked for comes to the front, wherever it was.

#include <gtest/gtest.h>

#include "support/drag_source.h"
#include "support/pump.h"
#include "support/test_form.h"
#include "ui/foreground.h"

namespace tidemark {
namespace {

class PresentTest : public testing::Test {
  protected:
    PresentTest() {
        other_.SetVisible(true);
        BringToTheUser(other_);
    }
    static void BringToTheUser(const Window& window) {
        EXPECT_TRUE(PumpUntil([&] {
            ::SetForegroundWindow(window.Handle());
            return ::GetForegroundWindow() == window.Handle();
        }));
    }
    // Whether the form is in front of the other one on the screen.
    [[nodiscard]] bool InFront() const {
        for (HWND at = other_.Handle(); at != nullptr; at = ::GetWindow(at, GW_HWNDPREV)) {
            if (at == form_.Handle()) {
                return true;
            }
        }
        return false;
    }
    void ExpectPresented() {
        EXPECT_TRUE(PumpUntil([this] { return ::GetForegroundWindow() == form_.Handle(); }));
        EXPECT_TRUE(form_.Visible());
        EXPECT_FALSE(::IsIconic(form_.Handle()));
        EXPECT_TRUE(InFront());
    }

    TestForm form_;
    TestForm other_;
};

TEST_F(PresentTest, AHiddenFormIsShownInFront) {
    ASSERT_FALSE(form_.Visible());
    form_.Present();
    ExpectPresented();
}

TEST_F(PresentTest, AFormBehindAnotherComesToTheFront) {
    form_.SetVisible(true);
    BringToTheUser(other_);
    ASSERT_TRUE(UserIsHere());
    form_.Present();
    ExpectPresented();
}

TEST_F(PresentTest, AMinimisedFormIsRestored) {
    form_.SetVisible(true);
    ::ShowWindow(form_.Handle(), SW_MINIMIZE);
    BringToTheUser(other_);
    ASSERT_TRUE(::IsIconic(form_.Handle()));
    form_.Present();
    ExpectPresented();
}

TEST_F(PresentTest, WhileTheUserIsInAnotherProgramTheFormIsShownAndTakesNothing) {
    const DragSource other_program("700 200");
    ASSERT_NE(other_program.Window(), nullptr);
    const auto it_is_in_front = [&] { return ::GetForegroundWindow() == other_program.Window(); };
    ASSERT_TRUE(PumpUntil([&] {
        ::SetForegroundWindow(other_program.Window());
        return it_is_in_front();
    }));
    EXPECT_FALSE(UserIsHere());
    int activations = 0;
    form_.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        activations += message == WM_ACTIVATE ? 1 : 0;
        return std::nullopt;
    };
    form_.Present();
    // Now: a window manager may have its own mind about new windows, and tells of it later.
    EXPECT_TRUE(form_.Visible());
    EXPECT_TRUE(it_is_in_front());
    EXPECT_EQ(activations, 0);
}

}  // namespace
}  // namespace tidemark
