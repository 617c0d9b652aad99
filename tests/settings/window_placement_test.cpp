#include "settings/window_placement.h"

#include <gmock/gmock.h>

#include "platform/memory/memory_screen.h"
#include "platform/memory/memory_settings_store.h"
#include "settings/fake_placed_window.h"

namespace tidemark {
namespace {

using testing::ElementsAre;

// The screen is 15360 x 11520 twips (1024 x 768 pixels of 15), so that a window of 640 x 480
// pixels, 9600 x 7200 twips, is centred at 2880, 2160.
constexpr TwipsBounds kDefaults{2880, 2160, 640, 480};
constexpr TwipsBounds kLastResort{2880, 2160, 9600, 7200};

class WindowPlacement : public testing::Test {
  protected:
    void Store(const std::string& left, const std::string& top, const std::string& width,
               const std::string& height) {
        store_.WriteText("Left", left);
        store_.WriteText("Top", top);
        store_.WriteText("Width", width);
        store_.WriteText("Height", height);
    }
    void Load(bool reset = false) { LoadWindowPlacement(store_, screen_, window_, reset); }
    [[nodiscard]] std::string Stored(const char* key) const {
        return store_.ReadText(key, "(missing)");
    }

    MemorySettingsStore store_;
    MemoryScreen screen_;
    FakePlacedWindow window_;
};

TEST_F(WindowPlacement, FirstRunPutsTwipsWhereAWindowOfPixelsWouldBeCentred) {
    Load();
    EXPECT_THAT(window_.tried, ElementsAre(kDefaults));
    EXPECT_EQ(store_.Count(), 0U);
}

TEST_F(WindowPlacement, MinimumSizeEnlargesTheFirstRun) {
    window_.minimum_width = 5250;
    window_.minimum_height = 3750;
    Load();
    EXPECT_EQ(window_.bounds, (TwipsBounds{2880, 2160, 5250, 3750}));
}

TEST_F(WindowPlacement, DefaultsFollowTheDisplay) {
    screen_.primary = {1921, 1081};
    screen_.twips_per_pixel_x = 12;
    screen_.twips_per_pixel_y = 1440.0 / 168;
    Load();
    // (1921 - 640) * 12 = 15372; (1081 - 480) * 8.571... = 5151.4..., its half loses the fraction.
    EXPECT_THAT(window_.tried, ElementsAre(TwipsBounds{7686, 2575, 640, 480}));
}

TEST_F(WindowPlacement, SmallScreenGivesANegativePlaceHalvedTowardZero) {
    screen_.primary = {639, 479};
    Load();
    EXPECT_THAT(window_.tried, ElementsAre(TwipsBounds{-7, -7, 640, 480}));
}

TEST_F(WindowPlacement, StoredPlaceAndSizeAreUsedInOneMove) {
    Store("4635", "1500", "9000", "6750");
    Load();
    EXPECT_THAT(window_.tried, ElementsAre(TwipsBounds{4635, 1500, 9000, 6750}));
}

TEST_F(WindowPlacement, EachMissingKeyHasItsOwnDefault) {
    store_.WriteText("Top", "15");
    store_.WriteText("Width", "9000");
    Load();
    EXPECT_THAT(window_.tried, ElementsAre(TwipsBounds{2880, 15, 9000, 480}));
}

TEST_F(WindowPlacement, ResetIgnoresTheStoredValuesAndKeepsThem) {
    Store("4635", "1500", "9000", "6750");
    Load(/*reset=*/true);
    EXPECT_THAT(window_.tried, ElementsAre(kDefaults));
    EXPECT_EQ(Stored("Left"), "4635");
    EXPECT_EQ(Stored("Height"), "6750");
}

TEST_F(WindowPlacement, ResetBringsBackAWindowFromAnyStoredPlace) {
    for (const char* text : {"", " ", "maybe", "1e40", "-5", "12px", "-2000000000", "2147483647"}) {
        Store(text, text, text, text);
        window_.tried.clear();
        Load(/*reset=*/true);
        EXPECT_THAT(window_.tried, ElementsAre(kDefaults)) << text;
    }
}

TEST_F(WindowPlacement, BadTextsGiveTheirLeadingNumber) {
    const std::pair<std::string, float> texts[] = {
        {"", 0},
        {" ", 0},
        {"maybe", 0},
        {"-5", -5},
        {"12px", 12},
        {"250.5", 250},
        {"251.5", 252},
        {"-0.6", -1},
        {"1e3", 1000},
        {std::string(10000, 'x'), 0},
        {std::string(10000, '0') + "7", 7},
    };
    for (const auto& [text, value] : texts) {
        Store(text, text, text, text);
        window_.tried.clear();
        Load();
        EXPECT_THAT(window_.tried, ElementsAre(TwipsBounds{value, value, value, value})) << text;
    }
}

TEST_F(WindowPlacement, NumberTooLargeGivesTheWindowOf640By480PixelsInTheMiddle) {
    for (const std::string& text : {std::string("1e40"), std::string("-1e40"), std::string("1e400"),
                                    std::string("2147483648"), std::string(10000, '9')}) {
        for (const char* key : {"Left", "Top", "Width", "Height"}) {
            Store("0", "0", "9000", "9000");
            store_.WriteText(key, text);
            Load();
            EXPECT_EQ(window_.bounds, kLastResort) << key << " = " << text.substr(0, 20);
        }
    }
}

TEST_F(WindowPlacement, RefusedMoveGivesTheLastResort) {
    window_.refusals = 1;
    Load();
    EXPECT_EQ(window_.bounds, kLastResort);
}

TEST_F(WindowPlacement, EachStepOfTheLastResortCountsByItself) {
    window_.refusals = 2;
    Load();
    // Not sized, yet centred with the size it has.
    EXPECT_EQ(window_.bounds, (TwipsBounds{4680, 3510, 6000, 4500}));
}

TEST_F(WindowPlacement, WindowThatCannotBeMovedAtAllIsLeftAlone) {
    window_.state = WindowState::kMaximised;
    const TwipsBounds before = window_.bounds;
    EXPECT_NO_THROW(Load());
    EXPECT_EQ(window_.bounds, before);
}

TEST_F(WindowPlacement, UnreadableStoreGivesTheDefaults) {
    Store("1", "2", "3", "4");
    store_.FailReads();
    Load();
    EXPECT_THAT(window_.tried, ElementsAre(kDefaults));
}

TEST_F(WindowPlacement, SavesLeftTopWidthHeightInTheNormalState) {
    window_.bounds = {4635, -30, 9000, 6750.5F};
    SaveWindowPlacement(store_, window_);
    EXPECT_THAT(store_.Writes(), ElementsAre("Left", "Top", "Width", "Height"));
    EXPECT_EQ(Stored("Left"), "4635");
    EXPECT_EQ(Stored("Top"), "-30");
    EXPECT_EQ(Stored("Width"), "9000");
    EXPECT_EQ(Stored("Height"), "6750.5");
}

TEST_F(WindowPlacement, SavedPlaceIsFoundAgain) {
    window_.bounds = {4635, -30, 9000, 6750};
    SaveWindowPlacement(store_, window_);
    FakePlacedWindow restarted;
    LoadWindowPlacement(store_, screen_, restarted, /*reset=*/false);
    EXPECT_EQ(restarted.bounds, window_.bounds);
}

TEST_F(WindowPlacement, MinimisedOrMaximisedSavesNothing) {
    Store("4635", "1500", "9000", "6750");
    store_.ForgetWrites();
    for (const WindowState state : {WindowState::kMinimised, WindowState::kMaximised}) {
        window_.state = state;
        SaveWindowPlacement(store_, window_);
    }
    EXPECT_TRUE(store_.Writes().empty());
    EXPECT_EQ(Stored("Left"), "4635");
}

TEST_F(WindowPlacement, SavingToAStoreThatCannotBeWrittenFails) {
    store_.FailWrites(5);
    EXPECT_THROW(SaveWindowPlacement(store_, window_), ProgramError);
}

TEST_F(WindowPlacement, CentringKeepsTheSizeAndDropsTheFraction) {
    window_.bounds = {0, 0, 6001, 4503};
    CenterOnScreen(screen_, window_);
    EXPECT_EQ(window_.bounds, (TwipsBounds{4679, 3508, 6001, 4503}));
}

TEST_F(WindowPlacement, CentringAWindowLargerThanTheScreenLetsItStickOutEvenly) {
    window_.bounds = {0, 0, 20001, 4500};
    CenterOnScreen(screen_, window_);
    EXPECT_EQ(window_.bounds, (TwipsBounds{-2320, 3510, 20001, 4500}));
}

TEST_F(WindowPlacement, CentringAMaximisedWindowFails) {
    window_.state = WindowState::kMaximised;
    EXPECT_THROW(CenterOnScreen(screen_, window_), ProgramError);
}

}  // namespace
}  // namespace tidemark
