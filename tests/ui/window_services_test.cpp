#include <gtest/gtest.h>

#include <cwchar>

#include "platform/program_error.h"
#include "support/pump.h"
#include "support/test_form.h"
#include "ui/button.h"
#include "ui/gdi.h"
#include "ui/label.h"
#include "ui/message_box.h"
#include "ui/message_font.h"
#include "ui/min_max.h"
#include "ui/opacity.h"
#include "ui/panel.h"
#include "ui/topmost.h"

namespace tidemark {
namespace {

MINMAXINFO Limits(const Window& window) {
    MINMAXINFO info{};
    info.ptMinTrackSize = {100, 30};
    info.ptMaxTrackSize = {5000, 5000};
    window.Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    return info;
}

TEST(MinMaxTest, TheWindowGetsNoSmallerThanItsMinimum) {
    TestForm form;
    MinMax min_max;
    min_max.minimum = {320, 240};
    min_max.AttachTo(form.Handle());
    EXPECT_EQ(Limits(form).ptMinTrackSize.x, 320);
    EXPECT_EQ(Limits(form).ptMinTrackSize.y, 240);
    form.Move({40, 40, 200, 100});
    EXPECT_EQ(form.Position().width, 320);
    EXPECT_EQ(form.Position().height, 240);
}

TEST(MinMaxTest, NoLimitsDisabledAndGoneChangeNothing) {
    TestForm form;
    const POINT before = Limits(form).ptMinTrackSize;
    {
        MinMax min_max;
        min_max.AttachTo(form.Handle());
        EXPECT_EQ(Limits(form).ptMinTrackSize.x, before.x);
        min_max.minimum = {320, 240};
        min_max.enabled = false;
        EXPECT_EQ(Limits(form).ptMinTrackSize.x, before.x);
        min_max.enabled = true;
        EXPECT_EQ(Limits(form).ptMinTrackSize.x, 320);
    }
    EXPECT_EQ(Limits(form).ptMinTrackSize.x, before.x);
}

TEST(MinMaxTest, TheWindowGetsNoLargerThanItsMaximum) {
    TestForm form;
    MinMax min_max;
    min_max.maximum = {400, 0};
    min_max.AttachTo(form.Handle());
    EXPECT_EQ(Limits(form).ptMaxTrackSize.x, 400);
    EXPECT_EQ(Limits(form).ptMaxTrackSize.y, 5000);
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

LOGFONTW DescriptionOf(const Window& window) {
    LOGFONTW description{};
    ::GetObjectW(window.Font(), sizeof(description), &description);
    return description;
}

TEST(MessageFontTest, TheNameIsTheOneOfTheSystemsMessages) {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = 340;
    ASSERT_TRUE(::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, 340, &metrics, 0));
    EXPECT_EQ(MessageFontName(), metrics.lfMessageFont.lfFaceName);
    EXPECT_FALSE(MessageFontName().empty());
}

TEST(MessageFontTest, PointsBecomeThePixelsOfTheLayout) {
    const UniqueFont font = MakeFont("Courier New", 8.25);
    LOGFONTW made{};
    ::GetObjectW(font.Get(), sizeof(made), &made);
    EXPECT_EQ(made.lfHeight, -11);
    EXPECT_EQ(made.lfWeight, FW_NORMAL);
}

TEST(MessageFontTest, EveryControlGetsTheFaceAndKeepsSizeWeightAndStyle) {
    const UniqueFont plain = MakeFont("Courier New", 8.25);
    const UniqueFont bold = MakeFont("Courier New", 14, /*bold=*/true);
    MessageFont message_font;
    TestForm form;
    form.SetFormFont(plain.Get());
    Label outside;
    outside.Create(form, {.text = "o"});
    Panel panel;
    panel.Create(form, {.bounds = {0, 0, 200, 100}});
    Button inside;
    inside.Create(panel, {.text = "i"});
    inside.SetFont(bold.Get());
    const LOGFONTW outside_before = DescriptionOf(outside);
    const LOGFONTW inside_before = DescriptionOf(inside);

    message_font.Adopt(form);

    const std::string name = MessageFontName();
    for (const auto& [window, before] :
         {std::pair<const Window*, LOGFONTW>{&outside, outside_before}, {&inside, inside_before}}) {
        const LOGFONTW after = DescriptionOf(*window);
        EXPECT_EQ(std::string(after.lfFaceName, after.lfFaceName + std::wcslen(after.lfFaceName)),
                  name);
        EXPECT_EQ(after.lfHeight, before.lfHeight);
        EXPECT_EQ(after.lfWeight, before.lfWeight);
        EXPECT_EQ(after.lfItalic, before.lfItalic);
        EXPECT_EQ(after.lfUnderline, before.lfUnderline);
    }
    EXPECT_EQ(DescriptionOf(inside).lfWeight, FW_BOLD);
}

TEST(MessageFontTest, ControlsOfOneSizeShareOneFontAndAControlWithoutAFontIsSkipped) {
    const UniqueFont plain = MakeFont("Courier New", 8.25);
    MessageFont message_font;
    TestForm form;
    Button first;
    Button second;
    Button bare;
    bare.Create(form, {.text = "bare"});
    form.SetFormFont(plain.Get());
    first.Create(form, {.text = "1"});
    second.Create(form, {.text = "2"});
    const HFONT before = bare.Font();
    message_font.Adopt(form);
    EXPECT_EQ(first.Font(), second.Font());
    EXPECT_NE(first.Font(), plain.Get());
    EXPECT_EQ(bare.Font(), before);
    message_font.Adopt(form);
    EXPECT_EQ(first.Font(), second.Font()) << "adopting again is harmless";
}

TEST(MessageFontTest, AControlThatHasTheFaceKeepsItsFont) {
    const UniqueFont plain = MakeFont(MessageFontName(), 8.25);
    MessageFont message_font;
    TestForm form;
    form.SetFormFont(plain.Get());
    Button button;
    button.Create(form, {.text = "b"});
    message_font.Adopt(form);
    EXPECT_EQ(button.Font(), plain.Get());
}

TEST(MessageFontTest, AdoptionForAWindowThatIsGoneIsSilent) {
    MessageFont message_font;
    message_font.Adopt(Window());
}

// Answers the next message box of this process with a command once it is up.
class BoxAnswerer {
  public:
    BoxAnswerer(TestForm& form, const wchar_t* caption, int command) : form_(form) {
        form_.on_message = [this, caption, command](UINT message, WPARAM,
                                                    LPARAM) -> std::optional<LRESULT> {
            const HWND box = message == WM_TIMER ? ::FindWindowW(L"#32770", caption) : nullptr;
            if (box != nullptr) {
                owner = ::GetWindow(box, GW_OWNER);
                text = Window(::GetDlgItem(box, 0xFFFF)).Text();
                for (const int button : {IDOK, IDYES, IDNO}) {
                    const Window candidate(::GetDlgItem(box, button));
                    if ((candidate.Style() & BS_TYPEMASK) == BS_DEFPUSHBUTTON) {
                        default_button = button;
                    }
                }
                ::PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(command), 0);
            }
            return std::nullopt;
        };
        ::SetTimer(form_.Handle(), 1, 20, nullptr);
    }
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;
    ~BoxAnswerer() {
        ::KillTimer(form_.Handle(), 1);
        form_.on_message = nullptr;
    }

    HWND owner = nullptr;
    std::string text;
    int default_button = 0;

  private:
    TestForm& form_;
};

TEST(MessageBoxTest, AsksOverItsOwnerAndGivesTheTypedAnswer) {
    TestForm form;
    form.SetVisible(true);
    SystemMessageBoxes boxes;
    BoxRequest request;
    request.text = "Stamp complete.\n\nRemove completed items?";
    request.caption = "yes or no";
    request.buttons = BoxButtons::kYesNo;
    request.icon = BoxIcon::kQuestion;
    request.default_button = 2;
    BoxAnswerer answerer(form, L"yes or no", IDYES);
    EXPECT_EQ(boxes.Show(&form, request), BoxAnswer::kYes);
    EXPECT_EQ(answerer.owner, form.Handle());
    EXPECT_EQ(answerer.text, request.text);
    EXPECT_EQ(answerer.default_button, IDNO);
    EXPECT_TRUE(form.Enabled());
}

TEST(MessageBoxTest, AbortRetryAndIgnoreAreToldApart) {
    TestForm form;
    SystemMessageBoxes boxes;
    const std::pair<int, BoxAnswer> answers[] = {
        {IDABORT, BoxAnswer::kAbort}, {IDRETRY, BoxAnswer::kRetry}, {IDIGNORE, BoxAnswer::kIgnore}};
    for (const auto& [command, answer] : answers) {
        BoxAnswerer answerer(form, L"three ways", command);
        BoxRequest request;
        request.text = "?";
        request.caption = "three ways";
        request.buttons = BoxButtons::kAbortRetryIgnore;
        EXPECT_EQ(boxes.Show(nullptr, request), answer);
        EXPECT_EQ(answerer.owner, nullptr);
    }
}

TEST(MessageBoxTest, AnOwnerThatIsGoneIsNoObstacle) {
    TestForm form;
    TestForm gone;
    gone.Destroy();
    SystemMessageBoxes boxes;
    BoxRequest request;
    request.text = "done";
    request.caption = "no owner";
    BoxAnswerer answerer(form, L"no owner", IDOK);
    EXPECT_EQ(boxes.Show(&gone, request), BoxAnswer::kOk);
}

}  // namespace
}  // namespace tidemark
