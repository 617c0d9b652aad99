#include "ui/control.h"

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "platform/program_error.h"
#include "support/last_resort_recorder.h"
#include "support/pump.h"
#include "support/test_form.h"
#include "ui/button.h"
#include "ui/label.h"
#include "ui/panel.h"

namespace tidemark {
namespace {

// A control whose reflected messages can be looked at.
class ProbeControl : public Control {
  public:
    void Create(ControlSite& site, const wchar_t* class_name, DWORD style = 0) {
        CreateChild(site, class_name, {.bounds = {0, 0, 100, 30}, .style = style});
    }

    std::optional<LRESULT> OnNotify(NMHDR& header) override {
        notified.push_back(header.code);
        return notify_answer;
    }
    std::optional<LRESULT> OnControlColour(UINT message, HDC dc) override {
        colour_message = message;
        colour_dc = dc;
        return colour_answer;
    }

    std::vector<UINT> notified;
    std::optional<LRESULT> notify_answer;
    UINT colour_message = 0;
    HDC colour_dc = nullptr;
    std::optional<LRESULT> colour_answer;
};

LRESULT SendNotification(const Window& parent, HWND from, UINT code) {
    NMHDR header{from, 0, code};
    return parent.Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header));
}

TEST(ControlTest, ANotificationReachesTheWrapperOfItsSenderAndItsAnswerTheSender) {
    TestForm form;
    ProbeControl probe;
    ProbeControl other;
    probe.Create(form, WC_STATICW);
    other.Create(form, WC_STATICW);
    probe.notify_answer = 42;
    EXPECT_EQ(SendNotification(form, probe.Handle(), NM_CLICK), 42);
    EXPECT_EQ(probe.notified, (std::vector<UINT>{static_cast<UINT>(NM_CLICK)}));
    EXPECT_TRUE(other.notified.empty());
}

TEST(ControlTest, ANotificationOfAControlsPartReachesTheControl) {
    TestForm form;
    ProbeControl probe;
    probe.Create(form, WC_STATICW);
    const HWND part = ::CreateWindowExW(0, WC_STATICW, L"", WS_CHILD, 0, 0, 5, 5, probe.Handle(),
                                        nullptr, nullptr, nullptr);
    SendNotification(form, part, NM_RCLICK);
    EXPECT_EQ(probe.notified.size(), 1U);
}

TEST(ControlTest, AStrangersNotificationIsLeftAlone) {
    TestForm form;
    EXPECT_EQ(SendNotification(form, form.Handle(), NM_CLICK), 0);
    EXPECT_EQ(SendNotification(form, nullptr, NM_CLICK), 0);
}

TEST(ControlTest, ColourQuestionsReachTheWrapperAlsoFromInsideAPanel) {
    TestForm form;
    Panel panel;
    panel.Create(form, {.bounds = {0, 0, 200, 100}});
    ProbeControl probe;
    probe.Create(panel, WC_STATICW);
    probe.colour_answer = 77;
    HDC dc = ::GetDC(probe.Handle());
    EXPECT_EQ(panel.Send(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                         reinterpret_cast<LPARAM>(probe.Handle())),
              77);
    EXPECT_EQ(probe.colour_message, static_cast<UINT>(WM_CTLCOLORSTATIC));
    EXPECT_EQ(probe.colour_dc, dc);
    ::ReleaseDC(probe.Handle(), dc);
}

TEST(ControlTest, ANotificationFromInsideAPanelReachesTheWrapperOnce) {
    TestForm form;
    Panel panel;
    panel.Create(form, {.bounds = {0, 0, 200, 100}});
    ProbeControl probe;
    probe.Create(panel, WC_STATICW);
    SendNotification(panel, probe.Handle(), NM_CLICK);
    EXPECT_EQ(probe.notified.size(), 1U);
}

TEST(ControlTest, AControlIsCreatedOnceAndAgainAfterItsWindowWent) {
    TestForm form;
    Button button;
    button.Create(form, {.text = "b"});
    EXPECT_THROW(button.Create(form, {.text = "b"}), ProgramError);
    Panel panel;
    panel.Create(form, {});
    const HWND window = panel.Handle();
    EXPECT_THROW(panel.Create(form, {}), ProgramError);
    EXPECT_EQ(panel.Handle(), window);
    button.Destroy();
    EXPECT_EQ(button.Handle(), nullptr);
    button.Destroy();
    button.Create(form, {.text = "again"});
    EXPECT_EQ(button.Text(), "again");
}

TEST(ControlTest, AWindowDestroyedByOthersIsForgotten) {
    TestForm form;
    Button button;
    button.Create(form, {.text = "b"});
    const HWND window = button.Handle();
    ::DestroyWindow(window);
    EXPECT_EQ(button.Handle(), nullptr);
    EXPECT_EQ(form.Controls().Find(window), nullptr);
}

TEST(ControlTest, ControlIdentifiersAreUniqueAndNoneIsADialogs) {
    TestForm form;
    Button first;
    Button second;
    first.Create(form, {.text = "1"});
    second.Create(form, {.text = "2"});
    EXPECT_NE(::GetDlgCtrlID(first.Handle()), ::GetDlgCtrlID(second.Handle()));
    EXPECT_GT(::GetDlgCtrlID(first.Handle()), IDHELP);
}

TEST(ControlTest, AnUnknownClassIsReportedWithTheSystemsCode) {
    TestForm form;
    ProbeControl probe;
    try {
        probe.Create(form, L"NoSuchWindowClass");
        FAIL() << "no exception";
    } catch (const ProgramError& error) {
        // Systems differ in which of the two they give.
        EXPECT_THAT(error.Number(),
                    ::testing::AnyOf(ERROR_CANNOT_FIND_WND_CLASS, ERROR_CLASS_DOES_NOT_EXIST));
        EXPECT_THAT(error.Description(), ::testing::StartsWith("Creating a control failed: "));
    }
}

TEST(ControlTest, ControlsStartWithTheFormsFont) {
    TestForm form;
    const auto font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    form.SetFormFont(font);
    Panel panel;
    panel.Create(form, {.bounds = {0, 0, 200, 100}});
    Button button;
    button.Create(panel, {.text = "b"});
    EXPECT_EQ(button.Font(), font);
}

TEST(ButtonTest, AClickRaisesTheEventOnce) {
    TestForm form;
    Button button;
    button.Create(form, {.text = "b", .bounds = {0, 0, 80, 25}});
    int clicks = 0;
    button.on_click = [&] { ++clicks; };
    form.SetVisible(true);
    button.Send(BM_CLICK);
    EXPECT_EQ(clicks, 1);
    button.Click();
    EXPECT_EQ(clicks, 2);
    button.SetEnabled(false);
    button.Click();
    EXPECT_EQ(clicks, 2);
}

TEST(ButtonTest, AButtonInAPanelWorksLikeOneInTheForm) {
    TestForm form;
    Panel panel;
    panel.Create(form, {.bounds = {0, 0, 200, 100}});
    Button button;
    button.Create(panel, {.text = "b", .bounds = {0, 0, 80, 25}});
    int clicks = 0;
    button.on_click = [&] { ++clicks; };
    form.SetVisible(true);
    button.Send(BM_CLICK);
    EXPECT_EQ(clicks, 1);
}

TEST(ButtonTest, TheHandlerMayDestroyTheButtonAndTheForm) {
    auto form = std::make_unique<TestForm>();
    auto button = std::make_unique<Button>();
    button->Create(*form, {.text = "b", .bounds = {0, 0, 80, 25}});
    form->SetVisible(true);
    const std::string survivor = "captured text is still there after the button went";
    std::string seen;
    button->on_click = [&, survivor] {
        button.reset();
        form.reset();
        seen = survivor;
    };
    button->Send(BM_CLICK);
    EXPECT_EQ(seen, survivor);
    EXPECT_EQ(form, nullptr);
}

TEST(ButtonTest, AnExceptionInAHandlerIsReportedOnce) {
    LastResortRecorder recorder;
    TestForm form;
    Panel panel;
    panel.Create(form, {.bounds = {0, 0, 200, 100}});
    Button button;
    button.Create(panel, {.text = "b", .bounds = {0, 0, 80, 25}});
    button.on_click = [] { throw std::runtime_error("in the handler"); };
    form.SetVisible(true);
    button.Send(BM_CLICK);
    ASSERT_EQ(recorder.reports.size(), 1U);
    EXPECT_EQ(recorder.reports[0].description, "in the handler");
}

TEST(ButtonTest, TheDefaultButtonIsDrawnAsOne) {
    TestForm form;
    Button first;
    Button second;
    first.Create(form, {.text = "1"});
    second.Create(form, {.text = "2"});
    const auto drawn_default = [](const Button& button) {
        return (button.Style() & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    };
    form.SetDefaultButton(&first);
    EXPECT_TRUE(drawn_default(first));
    form.SetDefaultButton(&second);
    EXPECT_FALSE(drawn_default(first));
    EXPECT_TRUE(drawn_default(second));
    form.SetDefaultButton(nullptr);
    EXPECT_FALSE(drawn_default(second));
}

TEST(CheckBoxTest, AClickFlipsTheMarkBeforeTheEvent) {
    TestForm form;
    CheckBox box;
    box.Create(form, {.text = "c", .bounds = {0, 0, 80, 25}});
    std::vector<bool> seen;
    box.on_click = [&] { seen.push_back(box.Checked()); };
    form.SetVisible(true);
    box.Send(BM_CLICK);
    box.Send(BM_CLICK);
    EXPECT_EQ(seen, (std::vector<bool>{true, false}));
}

TEST(CheckBoxTest, SettingTheMarkRaisesNothing) {
    TestForm form;
    CheckBox box;
    box.Create(form, {.text = "c"});
    int clicks = 0;
    box.on_click = [&] { ++clicks; };
    box.SetChecked(true);
    EXPECT_TRUE(box.Checked());
    box.SetChecked(false);
    EXPECT_FALSE(box.Checked());
    EXPECT_EQ(clicks, 0);
}

TEST(PanelTest, LabelsStandOnThePanelsBackground) {
    TestForm form;
    Panel panel;
    panel.Create(form, {.bounds = {0, 0, 200, 100}});
    Label label;
    label.Create(panel, {.text = "x", .bounds = {0, 0, 50, 20}});
    HDC dc = ::GetDC(label.Handle());
    const LRESULT brush = panel.Send(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                                     reinterpret_cast<LPARAM>(label.Handle()));
    EXPECT_EQ(::GetBkColor(dc), ::GetSysColor(COLOR_3DFACE));
    LOGBRUSH description{};
    ::GetObjectW(reinterpret_cast<HGDIOBJ>(brush), sizeof(description), &description);
    EXPECT_EQ(description.lbColor, ::GetSysColor(COLOR_3DFACE));
    ::ReleaseDC(label.Handle(), dc);
}

TEST(PanelTest, GivenTheFocusItHandsItToItsFirstControl) {
    TestForm form;
    Button outside;
    outside.Create(form, {.text = "o", .bounds = {0, 120, 50, 20}});
    Panel panel;
    panel.Create(form, {.bounds = {0, 0, 200, 100}});
    Label label;
    Button first;
    Button second;
    label.Create(panel, {.text = "x", .bounds = {0, 0, 50, 20}});
    first.Create(panel, {.text = "1", .bounds = {60, 0, 50, 20}});
    second.Create(panel, {.text = "2", .bounds = {120, 0, 50, 20}});
    form.SetVisible(true);
    ASSERT_TRUE(PumpUntil([&] { return outside.HasFocus(); }));
    panel.Focus();
    EXPECT_TRUE(first.HasFocus());
}

TEST(PanelTest, WhatItDoesNotKnowGoesToTheForm) {
    TestForm form;
    Panel panel;
    panel.Create(form, {.bounds = {0, 0, 200, 100}});
    int commands = 0;
    form.on_message = [&](UINT message, WPARAM wparam, LPARAM) -> std::optional<LRESULT> {
        commands += message == WM_COMMAND && LOWORD(wparam) == 12 ? 1 : 0;
        return std::nullopt;
    };
    panel.Send(WM_COMMAND, 12, 0);
    EXPECT_EQ(commands, 1);
}

}  // namespace
}  // namespace tidemark
