#include "ui/message_font.h"

#include <gtest/gtest.h>

#include <cwchar>

#include "support/test_form.h"
#include "ui/button.h"
#include "ui/gdi.h"
#include "ui/label.h"
#include "ui/panel.h"

namespace tidemark {
namespace {

LOGFONTW DescriptionOf(const Window& window) {
    LOGFONTW description{};
    ::GetObjectW(window.Font(), sizeof(description), &description);
    return description;
}

UniqueFont BoldOf(const UniqueFont& font) {
    LOGFONTW description{};
    ::GetObjectW(font.Get(), sizeof(description), &description);
    description.lfWeight = FW_BOLD;
    return UniqueFont(::CreateFontIndirectW(&description));
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
    const UniqueFont bold = BoldOf(MakeFont("Courier New", 14));
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

}  // namespace
}  // namespace tidemark
