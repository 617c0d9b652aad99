#include "ui/window.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "platform/program_error.h"
#include "support/pump.h"
#include "support/test_form.h"
#include "ui/button.h"
#include "ui/opacity.h"
#include "ui/panel.h"
#include "ui/subclasser.h"
#include "ui/topmost.h"

namespace tidemark {
namespace {

TEST(WindowTest, TextsKeepEveryScript) {
    TestForm form;
    const std::string text = "日本語 café \xF0\x9F\x98\x80";
    form.SetText(text);
    EXPECT_EQ(form.Text(), text);
    form.SetText("");
    EXPECT_EQ(form.Text(), "");
}

TEST(WindowTest, AnEqualTextIsNotWrittenAgain) {
    TestForm form;
    int writes = 0;
    Subclasser watch;
    watch.WndProc = [&writes](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        ++writes;
        return std::nullopt;
    };
    watch.RegisterMessages(form.Handle(), {WM_SETTEXT});
    form.SetText("one");
    form.SetText("one");
    EXPECT_EQ(writes, 1);
    form.SetText("other");
    EXPECT_EQ(writes, 2);
}

void ExpectEmptyAnswers(Window window) {
    EXPECT_FALSE(window.Exists());
    EXPECT_EQ(window.Text(), "");
    EXPECT_FALSE(window.Visible());
    EXPECT_FALSE(window.Enabled());
    EXPECT_EQ(window.Position(), Bounds());
    EXPECT_EQ(window.ClientSize(), Size());
    EXPECT_EQ(window.TextSize("x"), Size());
    EXPECT_EQ(window.Send(WM_GETTEXT), 0);
    window.SetText("x");
    window.Move({1, 2, 3, 4});
    window.SetVisible(true);
    window.SetEnabled(false);
    window.Invalidate();
    window.Focus();
    RedrawPause pause(window);
}

TEST(WindowTest, AWindowThatIsGoneGivesEmptyAnswers) {
    ExpectEmptyAnswers(Window());
    TestForm form;
    const Window window(form.Handle());
    form.Destroy();
    ExpectEmptyAnswers(window);
}

TEST(WindowTest, AChildsPositionIsInItsParent) {
    TestForm form;
    Button button;
    button.Create(form, {.text = "b", .bounds = {10, 20, 80, 25}});
    EXPECT_EQ(button.Position(), (Bounds{10, 20, 80, 25}));
    button.Move({11, 22, 83, 24});
    EXPECT_EQ(button.Position(), (Bounds{11, 22, 83, 24}));
    EXPECT_EQ(form.Position(), (Bounds{40, 40, 500, 400}));
}

TEST(WindowTest, AWindowIsVisibleByItsOwnStyleWhateverItsParents) {
    TestForm form;
    Button button;
    button.Create(form, {.text = "b", .visible = false});
    EXPECT_FALSE(button.Visible());
    button.SetVisible(true);
    EXPECT_TRUE(button.Visible());
    EXPECT_FALSE(form.Visible());
    button.SetVisible(false);
    EXPECT_FALSE(button.Visible());
}

TEST(WindowTest, StyleBitsAreSetAndClearedTogether) {
    TestForm form;
    form.ChangeExtendedStyle(WS_EX_CLIENTEDGE, 0);
    EXPECT_NE(form.ExtendedStyle() & WS_EX_CLIENTEDGE, 0U);
    form.ChangeExtendedStyle(WS_EX_STATICEDGE, WS_EX_CLIENTEDGE);
    EXPECT_EQ(form.ExtendedStyle() & (WS_EX_CLIENTEDGE | WS_EX_STATICEDGE),
              static_cast<DWORD>(WS_EX_STATICEDGE));
    form.ChangeStyle(0, WS_MAXIMIZEBOX);
    EXPECT_EQ(form.Style() & WS_MAXIMIZEBOX, 0U);
    EXPECT_NE(form.Style() & WS_CAPTION, 0U);
}

TEST(WindowTest, PausingRedrawLeavesAHiddenWindowHidden) {
    TestForm form;
    { RedrawPause pause(form); }
    EXPECT_FALSE(form.Visible());
    form.SetVisible(true);
    { RedrawPause pause(form); }
    EXPECT_TRUE(form.Visible());
}

TEST(WindowTest, DisablingTheFocusedControlMovesTheFocusOn) {
    TestForm form;
    Button first;
    Button second;
    first.Create(form, {.text = "1", .bounds = {0, 0, 50, 20}});
    second.Create(form, {.text = "2", .bounds = {60, 0, 50, 20}});
    form.SetVisible(true);
    first.Focus();
    ASSERT_TRUE(PumpUntil([&] { return first.HasFocus(); }));
    first.SetEnabled(false);
    EXPECT_TRUE(second.HasFocus());
    EXPECT_FALSE(first.Enabled());
}

TEST(WindowTest, DisablingTheOnlyControlLeavesTheFocusWithTheForm) {
    TestForm form;
    Button only;
    only.Create(form, {.text = "1", .bounds = {0, 0, 50, 20}});
    form.SetVisible(true);
    only.Focus();
    ASSERT_TRUE(PumpUntil([&] { return only.HasFocus(); }));
    only.SetEnabled(false);
    EXPECT_TRUE(form.HasFocus());
    EXPECT_FALSE(only.Enabled());
}

TEST(TopmostTest, OnAndOffKeepPositionAndSize) {
    TestForm form;
    const Bounds before = form.Position();
    SetTopmost(form, true);
    EXPECT_NE(form.ExtendedStyle() & WS_EX_TOPMOST, 0U);
    SetTopmost(form, false);
    EXPECT_EQ(form.ExtendedStyle() & WS_EX_TOPMOST, 0U);
    EXPECT_EQ(form.Position(), before);
}

int OpacityOf(const Window& window) {
    BYTE alpha = 0;
    DWORD flags = 0;
    COLORREF key = 1;
    EXPECT_TRUE(::GetLayeredWindowAttributes(window.Handle(), &key, &alpha, &flags));
    EXPECT_EQ(flags, static_cast<DWORD>(LWA_ALPHA));
    EXPECT_EQ(key, 0U);
    return alpha;
}

TEST(OpacityTest, IsReadBackAsSet) {
    TestForm form;
    SetOpacity(form, 64);
    EXPECT_EQ(OpacityOf(form), 64);
    SetOpacity(form, 255);
    EXPECT_EQ(OpacityOf(form), 255);
    SetOpacity(form, 0);
    EXPECT_EQ(OpacityOf(form), 0);
}

TEST(OpacityTest, TheStyleIsAddedAgainEachTime) {
    TestForm form;
    SetOpacity(form, 64);
    form.ChangeExtendedStyle(0, WS_EX_LAYERED);
    SetOpacity(form, 128);
    EXPECT_NE(form.ExtendedStyle() & WS_EX_LAYERED, 0U);
    EXPECT_EQ(OpacityOf(form), 128);
}

TEST(OpacityTest, AWindowThatIsGoneIsAnErrorWithTheSystemsCode) {
    TestForm form;
    const Window gone(form.Handle());
    form.Destroy();
    try {
        SetOpacity(gone, 64);
        FAIL() << "no exception";
    } catch (const ProgramError& error) {
        EXPECT_EQ(error.Number(), ERROR_INVALID_WINDOW_HANDLE);
    }
}

TEST(FormTest, AWindowDestroyedInItsOwnHandlerLeavesTheFormObject) {
    TestForm form;
    form.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_APP) {
            form.Destroy();
            return 5;
        }
        return std::nullopt;
    };
    EXPECT_EQ(form.Send(WM_APP), 5);
    EXPECT_FALSE(form.Exists());
    EXPECT_EQ(form.Handle(), nullptr);
    form.Create(L"TidemarkTestForm", TestForm::DefaultSpec());
    EXPECT_TRUE(form.Exists()) << "and it can be created anew";
}

TEST(FormTest, AFormObjectDroppedInItsOwnHandlerIsSafe) {
    auto form = std::make_unique<TestForm>();
    const HWND window = form->Handle();
    form->on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_APP) {
            form.reset();
            return 9;
        }
        return std::nullopt;
    };
    EXPECT_EQ(::SendMessageW(window, WM_APP, 0, 0), 9);
    EXPECT_FALSE(::IsWindow(window));
}

TEST(FormTest, ClosingDestroysTheWindowAndItsControlsForgetTheirs) {
    TestForm form;
    Button button;
    button.Create(form, {.text = "b"});
    bool had_children = false;
    form.on_destroy = [&] { had_children = button.Exists(); };
    form.Close();
    EXPECT_TRUE(had_children);
    EXPECT_FALSE(form.Exists());
    EXPECT_EQ(button.Handle(), nullptr);
}

TEST(FormTest, ResizingReportsTheClientSizeButNotWhenMinimised) {
    TestForm form;
    form.SetVisible(true);
    PumpPending();
    Size size;
    int calls = 0;
    form.on_resize = [&](Size client) {
        size = client;
        ++calls;
    };
    form.Move({40, 40, 420, 320});
    EXPECT_EQ(size, form.ClientSize());
    const int before = calls;
    form.Send(WM_SIZE, SIZE_MINIMIZED, 0);
    EXPECT_EQ(calls, before);
}

TEST(FormTest, TheFocusComesBackToTheControlThatHadIt) {
    TestForm form;
    Button first;
    Button second;
    first.Create(form, {.text = "1", .bounds = {0, 0, 50, 20}});
    second.Create(form, {.text = "2", .bounds = {60, 0, 50, 20}});
    form.SetVisible(true);
    ASSERT_TRUE(PumpUntil([&] { return first.HasFocus(); })) << "the first control at first";
    second.Focus();
    form.Send(WM_ACTIVATE, WA_INACTIVE, 0);
    ::SetFocus(nullptr);
    form.Focus();
    EXPECT_TRUE(second.HasFocus());
}

// A button inside a panel of a form, and what comes with each of the messages watched for.
struct ButtonInPanel {
    explicit ButtonInPanel(UINT message) {
        panel.Create(form, {});
        button.Create(panel, {.text = "b"});
        watch.WndProc = [this](HWND, UINT, WPARAM wparam, LPARAM lparam) -> std::optional<LRESULT> {
            told.emplace_back(wparam, lparam);
            return std::nullopt;
        };
        watch.RegisterMessages(button.Handle(), {message});
    }

    TestForm form;
    Panel panel;
    Button button;
    Subclasser watch;
    std::vector<std::pair<WPARAM, LPARAM>> told;
};

TEST(FormTest, NewSystemColoursReachEveryControlAlsoInsideAPanel) {
    ButtonInPanel inside(WM_SYSCOLORCHANGE);
    inside.form.Send(WM_SYSCOLORCHANGE);
    EXPECT_EQ(inside.told.size(), 1U);
}

TEST(FormTest, ChangedSettingsOfTheSystemReachEveryControlAlsoInsideAPanel) {
    ButtonInPanel inside(WM_SETTINGCHANGE);
    const std::pair<WPARAM, LPARAM> change(SPI_SETNONCLIENTMETRICS,
                                           reinterpret_cast<LPARAM>(L"intl"));
    inside.form.Send(WM_SETTINGCHANGE, change.first, change.second);
    ASSERT_EQ(inside.told.size(), 1U);
    EXPECT_EQ(inside.told[0], change);
}

TEST(FormTest, AModalFormDisablesItsOwnerUntilItIsGone) {
    TestForm owner;
    owner.SetVisible(true);
    FormSpec spec = TestForm::DefaultSpec();
    spec.owner = owner.Handle();
    TestForm modal(spec);
    bool owner_was_disabled = false;
    modal.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_APP) {
            owner_was_disabled = !owner.Enabled();
            modal.Close();
        }
        return std::nullopt;
    };
    modal.Post(WM_APP);
    modal.ShowModal(owner);
    EXPECT_TRUE(owner_was_disabled);
    EXPECT_TRUE(owner.Enabled());
    EXPECT_FALSE(modal.Exists());
}

TEST(FormTest, AModalFormWithoutAWindowLeavesTheOtherFormsAlone) {
    TestForm owner;
    TestForm modal;
    modal.Destroy();
    modal.ShowModal(owner);
    EXPECT_TRUE(owner.Enabled());
}

TEST(FormTest, HidingEndsAModalFormToo) {
    TestForm owner;
    TestForm modal;
    modal.on_message = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_APP) {
            modal.SetVisible(false);
        }
        return std::nullopt;
    };
    modal.Post(WM_APP);
    modal.ShowModal(owner);
    EXPECT_TRUE(modal.Exists());
    EXPECT_TRUE(owner.Enabled());
}

}  // namespace
}  // namespace tidemark
