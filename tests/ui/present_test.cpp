// A form that the user has asked for comes to the front, wherever it was.

#include <gtest/gtest.h>

#include <array>
#include <chrono>

#include "platform/win32/wide_text.h"
#include "support/pump.h"
#include "support/remote_process.h"
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

// A window of another process, with the user in it.
class OtherProgram {
  public:
    OtherProgram() : process_(Path(), "700 200") {}

    [[nodiscard]] bool ComeToTheFront() {
        return PumpUntil(
            [this] {
                window_ = ::FindWindowW(L"TidemarkDragSource", nullptr);
                ::SetForegroundWindow(window_);
                return window_ != nullptr && InFront();
            },
            std::chrono::seconds(20));
    }
    [[nodiscard]] bool InFront() const { return ::GetForegroundWindow() == window_; }

  private:
    // It stands beside this program.
    static std::string Path() {
        std::array<wchar_t, 1024> own{};
        ::GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size()));
        const std::string path = Utf8FromWide(own.data());
        return path.substr(0, path.rfind('\\') + 1) + "drag_source.exe";
    }

    RemoteProcess process_;
    HWND window_ = nullptr;
};

TEST_F(PresentTest, WhileTheUserIsInAnotherProgramTheFormIsShownAndTakesNothing) {
    OtherProgram other_program;
    ASSERT_TRUE(other_program.ComeToTheFront());
    EXPECT_FALSE(UserIsHere());
    int activations = 0;
    form_.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        activations += message == WM_ACTIVATE ? 1 : 0;
        return std::nullopt;
    };
    form_.Present();
    // Now: a window manager may have its own mind about new windows, and tells of it later.
    EXPECT_TRUE(form_.Visible());
    EXPECT_TRUE(other_program.InFront());
    EXPECT_EQ(activations, 0);
}

}  // namespace
}  // namespace tidemark
