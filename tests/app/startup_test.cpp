#include "app/startup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "app/startup_messages.h"
#include "app/startup_world.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::string kErrorBox = std::string("box ") + kStartupErrorCaption;
const std::string kMissingRuntimeBox = std::string("box ") + kMissingRuntimeCaption;

// The calls of a start without arguments and without trouble.
const std::vector<std::string> kSmoothStart{"common controls",
                                            "splash load",
                                            "splash show",
                                            "splash fade in",
                                            "drives",
                                            "main load",
                                            "main initialise",
                                            "main placement",
                                            "splash above main",
                                            "main show",
                                            "splash above main",
                                            "errors load",
                                            "errors at 220,140",
                                            "register tidemark.exe in C:\\Tools",
                                            "sleep 350",
                                            "splash fade out"};

class StartupTest : public testing::Test {
  protected:
    StartupWorld world_;
};

TEST_F(StartupTest, RunsItsStepsInOrder) {
    EXPECT_TRUE(world_.Run());
    EXPECT_THAT(world_.log.Order(), ElementsAreArray(kSmoothStart));
    EXPECT_THAT(world_.boxes.shown, IsEmpty());
    EXPECT_FALSE(world_.shut_down.Begun());
}

TEST_F(StartupTest, RunsMessagesUntilTheSplashIsOpaque) {
    world_.splash.pumps_until_opaque = 37;
    std::ptrdiff_t pumps_before_check = 0;
    world_.log.plans["drives"] = [&] { pumps_before_check = world_.log.CountOf("pump"); };
    EXPECT_TRUE(world_.Run());
    EXPECT_EQ(pumps_before_check, 37);
}

TEST_F(StartupTest, ASplashThatCannotFadeInIsNotWaitedFor) {
    world_.log.plans["pump"] = [this] { world_.windows.Unload("frmSplash"); };
    world_.splash.pumps_until_opaque = std::numeric_limits<int>::max();
    EXPECT_TRUE(world_.Run());
    EXPECT_TRUE(world_.log.Has("main show"));
}

TEST_F(StartupTest, HoldsTheSplashForHalfASecondAfterItsFadeIn) {
    world_.clock_step = 1;
    std::uint32_t at_check = 0;
    std::uint32_t at_initialise = 0;
    world_.log.plans["drives"] = [&] { at_check = world_.now; };
    world_.log.plans["main initialise"] = [&] { at_initialise = world_.now; };
    EXPECT_TRUE(world_.Run());
    // The first look at the clock takes the start; the last one finds that 500 ms have passed.
    const std::uint32_t start = at_check + 1;
    EXPECT_GE(at_initialise - start, 500U);
    EXPECT_LE(at_initialise - start, 502U);
}

TEST_F(StartupTest, RunsMessagesInEveryRoundOfTheHalfSecond) {
    // Time passes while messages run, and only then, for as long as that can be waited for.
    world_.clock_step = 0;
    int pumps = 0;
    world_.log.plans["pump"] = [&] {
        ++pumps;
        ++world_.now;
    };
    int looks = 0;
    world_.log.plans["counter"] = [&] { world_.now += ++looks > 5000 ? 1000 : 0; };
    int before_load = 0;
    int at_initialise = 0;
    world_.log.plans["main load"] = [&] { before_load = pumps; };
    world_.log.plans["main initialise"] = [&] { at_initialise = pumps; };
    EXPECT_TRUE(world_.Run());
    EXPECT_EQ(at_initialise - before_load, 500);
}

TEST_F(StartupTest, RunsMessagesOnceTheMainWindowIsShown) {
    EXPECT_TRUE(world_.Run());
    const auto& calls = world_.log.calls;
    const auto shown = std::find(calls.begin(), calls.end(), "main show");
    ASSERT_GE(calls.end() - shown, 3);
    EXPECT_EQ(shown[1], "pump");
    EXPECT_EQ(shown[2], "splash above main");
}

TEST_F(StartupTest, DoesNotHoldTheSplashLongerWhenLoadingTookHalfASecond) {
    world_.log.plans["main load"] = [this] { world_.now += 5000; };
    EXPECT_TRUE(world_.Run());
    // At the start, in the wrap test and at the end of the only round.
    EXPECT_EQ(world_.log.CountOf("counter"), 3);
}

TEST_F(StartupTest, LoadsTheMainWindowOnceHoweverManyRoundsItWaits) {
    world_.clock_step = 1;
    EXPECT_TRUE(world_.Run());
    EXPECT_EQ(world_.log.CountOf("main load"), 1);
    EXPECT_GT(world_.log.CountOf("counter"), 200);
}

TEST_F(StartupTest, StartsTheHalfSecondAfreshWhenTheCounterWraps) {
    world_.clock_step = 1;
    world_.now = std::numeric_limits<std::uint32_t>::max() - 100;
    std::uint32_t at_initialise = 0;
    world_.log.plans["main initialise"] = [&] { at_initialise = world_.now; };
    EXPECT_TRUE(world_.Run());
    EXPECT_GE(at_initialise, 500U);
    EXPECT_LE(at_initialise, 510U);
}

TEST_F(StartupTest, PassesThePathsOfTheCommandLineToTheMainWindow) {
    world_.process.arguments = R"("C:\My Files\a.txt"  C:\b)";
    EXPECT_TRUE(world_.Run());
    EXPECT_THAT(world_.main_window.added, ElementsAre(R"(C:\My Files\a.txt)", "", R"(C:\b)"));
    EXPECT_EQ(world_.log.CountOf("main add"), 1);
    const std::vector<std::string> order = world_.log.Order();
    EXPECT_EQ(order[order.size() - 3], "main add");
}

TEST_F(StartupTest, PutsTheSplashAboveATopmostMainWindow) {
    world_.main_window.always_on_top = true;
    EXPECT_TRUE(world_.Run());
    std::vector<std::string> expected = kSmoothStart;
    expected.insert(expected.begin() + 9, "splash topmost");
    EXPECT_THAT(world_.log.Order(), ElementsAreArray(expected));
}

TEST_F(StartupTest, CentresTheErrorsWindowOverTheMainWindow) {
    EXPECT_EQ(CentredOver({100, 50, 640, 480}, {0, 0, 640, 480}), (Point{100, 50}));
    EXPECT_EQ(CentredOver({100, 50, 640, 480}, {7, 7, 400, 300}), (Point{220, 140}));
    EXPECT_EQ(CentredOver({0, 0, 200, 100}, {0, 0, 640, 480}), (Point{-220, -190}));
}

// --- Shift

TEST_F(StartupTest, ShiftHeldDuringTheFadeInResetsThePlacement) {
    world_.shift_state = std::numeric_limits<std::int16_t>::min();
    world_.log.plans["drives"] = [this] { world_.shift_state = 0; };
    EXPECT_TRUE(world_.Run());
    EXPECT_TRUE(world_.log.Has("main reset"));
    EXPECT_FALSE(world_.log.Has("main placement"));
}

TEST_F(StartupTest, ShiftThatGoesDownWithTheLastMessagesOfTheFadeInResetsThePlacement) {
    world_.log.plans["pump"] = [this] {
        world_.shift_state = world_.splash.pumps_left == 0 ? std::int16_t{-32768} : std::int16_t{0};
    };
    world_.log.plans["drives"] = [this] {
        world_.shift_state = 0;
        world_.log.plans.erase("pump");
    };
    EXPECT_TRUE(world_.Run());
    EXPECT_TRUE(world_.log.Has("main reset"));
}

TEST_F(StartupTest, ShiftHeldWhileTheMainWindowLoadsResetsThePlacement) {
    world_.log.plans["main load"] = [this] {
        world_.shift_state = -32767;
        world_.now += 5000;
    };
    EXPECT_TRUE(world_.Run());
    EXPECT_TRUE(world_.log.Has("main reset"));
}

TEST_F(StartupTest, ShiftHeldWhileTheSplashIsHeldResetsThePlacement) {
    world_.log.plans["counter"] = [this] {
        const std::ptrdiff_t looks = world_.log.CountOf("counter");  // three a round
        world_.shift_state = looks >= 19 && looks < 22 ? -32768 : 0;
    };
    EXPECT_TRUE(world_.Run());
    EXPECT_TRUE(world_.log.Has("main reset"));
}

TEST_F(StartupTest, ShiftPressedAndReleasedBetweenTwoTestsDoesNotReset) {
    world_.shift_state = 1;
    EXPECT_TRUE(world_.Run());
    EXPECT_FALSE(world_.log.Has("main reset"));
}

TEST_F(StartupTest, ShiftHeldAfterThePlacementIsRestoredComesTooLate) {
    world_.log.plans["main placement"] = [this] { world_.shift_state = -32768; };
    EXPECT_TRUE(world_.Run());
    EXPECT_FALSE(world_.log.Has("main reset"));
}

TEST(IsShiftDown, CountsOnlyAKeyThatIsDown) {
    ScriptedProcess process;
    std::int16_t state = 0;
    process.on_key = [&](int) { return state; };
    const auto down_with = [&](std::int16_t value) {
        state = value;
        return IsShiftDown(process);
    };
    EXPECT_FALSE(down_with(0));
    EXPECT_FALSE(down_with(1));
    EXPECT_FALSE(down_with(-1));
    EXPECT_TRUE(down_with(2));
    EXPECT_TRUE(down_with(-32767));
    EXPECT_TRUE(down_with(std::numeric_limits<std::int16_t>::min()));
}

// --- The missing runtime

TEST_F(StartupTest, AMissingRuntimeIsToldAfterTheFadeInAndEndsTheProgram) {
    world_.log.failures["drives"] = 1;
    EXPECT_FALSE(world_.Run());
    EXPECT_THAT(
        world_.log.Order(),
        ElementsAre("common controls", "splash load", "splash show", "splash fade in", "drives",
                    kMissingRuntimeBox, "hide frmSplash", "unload frmSplash", "error mode 2"));
    ASSERT_EQ(world_.boxes.shown.size(), 1U);
    EXPECT_EQ(world_.boxes.shown[0].text, MissingRuntimeText());
    EXPECT_EQ(world_.boxes.shown[0].icon, BoxIcon::kCritical);
    EXPECT_EQ(world_.boxes.shown[0].buttons, BoxButtons::kOk);
}

TEST_F(StartupTest, AMissingRuntimeWhoseBoxFailsStillEndsTheProgram) {
    for (const BoxAnswer answer : {BoxAnswer::kAbort, BoxAnswer::kRetry, BoxAnswer::kIgnore}) {
        StartupWorld world;
        world.log.failures["drives"] = 1;
        world.log.failures[kMissingRuntimeBox] = 1;
        world.boxes.answers = {answer};
        EXPECT_FALSE(world.Run());
        EXPECT_THAT(world.windows.Names(), IsEmpty());
        EXPECT_FALSE(world.log.Has("main load"));
        EXPECT_EQ(world.log.CountOf(kMissingRuntimeBox), answer == BoxAnswer::kRetry ? 2 : 1);
    }
}

TEST(ScriptingRuntimeAvailable, DependsOnTheAnswerAloneNotOnTheCount) {
    CallLog log;
    LoggedFileSystem file_system(log);
    EXPECT_TRUE(ScriptingRuntimeAvailable(file_system));
    log.failures["drives"] = 1;
    EXPECT_FALSE(ScriptingRuntimeAvailable(file_system));
    EXPECT_TRUE(ScriptingRuntimeAvailable(file_system));
}

// --- Failures

// Every call of start-up that can fail, but for the check that never does.
class StartupFailureTest : public testing::TestWithParam<const char*> {
  protected:
    StartupFailureTest() {
        world_.process.arguments = R"(C:\a)";
        world_.main_window.always_on_top = true;
    }
    static std::ptrdiff_t CallsOfASmoothStart() {
        return std::max<std::ptrdiff_t>(
            1, std::count(kSmoothStart.begin(), kSmoothStart.end(), GetParam()));
    }
    StartupWorld world_;
};

TEST_P(StartupFailureTest, IsToldWithNumberDescriptionAndSource) {
    world_.log.failures[GetParam()] = 1;
    EXPECT_FALSE(world_.Run());
    ASSERT_EQ(world_.boxes.shown.size(), 1U);
    const BoxRequest& box = world_.boxes.shown[0];
    EXPECT_EQ(box.text, std::string("Error: 53\nFailed: ") + GetParam() + "\n\nSource: main");
    EXPECT_EQ(box.caption, "Orrery RTE Startup Error");
    EXPECT_EQ(box.icon, BoxIcon::kInformation);
    EXPECT_EQ(box.buttons, BoxButtons::kAbortRetryIgnore);
}

TEST_P(StartupFailureTest, AbortUnloadsEveryWindowAndEndsStartup) {
    world_.log.failures[GetParam()] = 1;
    world_.boxes.answers = {BoxAnswer::kAbort};
    EXPECT_FALSE(world_.Run());
    EXPECT_THAT(world_.windows.Names(), IsEmpty());
    EXPECT_TRUE(world_.shut_down.Begun());
    EXPECT_EQ(world_.log.Order().back(), "error mode 2");
}

TEST_P(StartupFailureTest, RetryRunsTheStepAgain) {
    world_.log.failures[GetParam()] = 3;
    world_.boxes.answers = {BoxAnswer::kRetry};
    EXPECT_TRUE(world_.Run());
    EXPECT_EQ(world_.log.CountOf(kErrorBox), 3);
    EXPECT_EQ(world_.log.CountOf(GetParam()), 3 + CallsOfASmoothStart());
    EXPECT_TRUE(world_.log.Has("splash fade out"));
    EXPECT_THAT(world_.main_window.added, ElementsAre(R"(C:\a)"));
    EXPECT_EQ(world_.windows.Names().size(), 3U);
}

TEST_P(StartupFailureTest, IgnoreGoesOnWithTheNextStep) {
    world_.log.failures[GetParam()] = 1;
    world_.boxes.answers = {BoxAnswer::kIgnore};
    const bool goes_on = world_.Run();
    EXPECT_EQ(world_.log.CountOf(GetParam()), CallsOfASmoothStart());
    EXPECT_FALSE(world_.log.Has(kMissingRuntimeBox));
    EXPECT_TRUE(world_.log.Has("splash fade out"));
    // Without a main window there is nothing to go on with, and nothing may be left behind.
    const bool main_missing = std::string(GetParam()) == "main load";
    EXPECT_EQ(goes_on, !main_missing);
    EXPECT_EQ(world_.shut_down.Begun(), main_missing);
    if (main_missing) {
        EXPECT_THAT(world_.windows.Names(), IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(EachStep, StartupFailureTest,
                         testing::Values("common controls", "splash load", "splash show",
                                         "splash fade in", "main load", "main initialise",
                                         "main placement", "splash above main", "splash topmost",
                                         "main show", "errors load", "errors at 220,140",
                                         "register tidemark.exe in C:\\Tools", "main add",
                                         "sleep 350", "splash fade out"),
                         [](const auto& parameter) {
                             std::string name;
                             for (const char character : std::string(parameter.param)) {
                                 name += std::isalnum(static_cast<unsigned char>(character)) != 0
                                             ? character
                                             : '_';
                             }
                             return name;
                         });

TEST_F(StartupTest, FailuresInTheWaitsAreToldLikeAnyOther) {
    for (const char* call : {"counter", "key", "pump"}) {
        StartupWorld world;
        world.log.failures[call] = 1;
        world.boxes.answers = {BoxAnswer::kRetry};
        EXPECT_TRUE(world.Run()) << call;
        EXPECT_EQ(world.boxes.shown.size(), 1U) << call;
        EXPECT_TRUE(world.log.Has("main show")) << call;
    }
}

TEST_F(StartupTest, AFailureIsToldInFrontOfTheMainWindowOnceThatIsShown) {
    world_.process.arguments = R"(C:\a)";
    world_.log.failures["main load"] = 1;
    world_.log.failures["main add"] = 1;
    world_.boxes.answers = {BoxAnswer::kRetry};
    EXPECT_TRUE(world_.Run());
    EXPECT_THAT(world_.boxes.owners, ElementsAre(nullptr, world_.main_window.MessageOwner()));
    EXPECT_NE(world_.boxes.owners.back(), nullptr);
}

TEST_F(StartupTest, ABoxThatCannotBeShownCountsAsAbort) {
    world_.log.failures["main load"] = 1;
    world_.log.failures[kErrorBox] = 1;
    EXPECT_FALSE(world_.Run());
    EXPECT_TRUE(world_.shut_down.Begun());
    EXPECT_THAT(world_.windows.Names(), IsEmpty());
}

// --- Ending on the way

TEST_F(StartupTest, ClosingTheMainWindowWhileItIsShownEndsStartup) {
    world_.log.plans["main show"] = [this] {
        world_.windows.Unload(kMainWindowName);
        world_.shut_down.ShutDown(false);
    };
    EXPECT_FALSE(world_.Run());
    EXPECT_THAT(world_.windows.Names(), IsEmpty());
    EXPECT_FALSE(world_.log.Has("errors load"));
    EXPECT_FALSE(world_.log.Has("sleep 350"));
}

TEST_F(StartupTest, AQuitDuringTheFadeInEndsTheWaitAndTheProgram) {
    world_.splash.pumps_until_opaque = std::numeric_limits<int>::max();
    world_.log.plans["pump"] = [this] { world_.process.quit_waiting = true; };
    EXPECT_FALSE(world_.Run());
    EXPECT_FALSE(world_.log.Has("main load"));
    EXPECT_THAT(world_.windows.Names(), IsEmpty());
}

TEST_F(StartupTest, AQuitWhileTheSplashIsHeldEndsTheWait) {
    world_.clock_step = 0;  // half a second never passes
    world_.log.plans["main load"] = [this] { world_.process.quit_waiting = true; };
    // The message loop is entered, finds the quit, and ends.
    EXPECT_TRUE(world_.Run());
    EXPECT_FALSE(world_.log.Has("main initialise"));
}

TEST_F(StartupTest, AShutDownWhileTheUserIsAskedEndsStartupWhateverTheAnswer) {
    world_.log.failures["main initialise"] = 1;
    world_.log.plans[kErrorBox] = [this] { world_.shut_down.ShutDown(true); };
    world_.boxes.answers = {BoxAnswer::kRetry};
    EXPECT_FALSE(world_.Run());
    EXPECT_EQ(world_.log.CountOf("main initialise"), 1);
    EXPECT_THAT(world_.windows.Names(), IsEmpty());
}

}  // namespace
}  // namespace tidemark
