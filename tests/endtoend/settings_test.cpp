// What the user sets in the window is there again after a restart.

#include <gmock/gmock.h>

#include "endtoend/end_to_end.h"
#include "platform/win32/registry_settings_store.h"
#include "platform/win32/win32_screen.h"
#include "settings/mod_options.h"
#include "settings/stored_text.h"
#include "support/poll_until.h"

// Needs the system's main header before it.
#include <commctrl.h>

namespace tidemark {
namespace {

class SettingsEndToEnd : public EndToEnd {
  protected:
    [[nodiscard]] std::string Stored(const char* key) const {
        return store_.ReadText(key, "(missing)");
    }
    static void Choose(const RemoteTidemark& program, char menu, int item) {
        ASSERT_TRUE(program.ChooseFromMenu(menu, item, kWait));
    }

    static Bounds BoundsOf(const RemoteTidemark& program) {
        const RECT rect = PlaceOf(program.Main().Handle());
        return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
    }
    // Moves the window, and tells it that the user has let go of it.
    static void MoveByUser(const RemoteTidemark& program, const Bounds& bounds) {
        ::SetWindowPos(program.Main().Handle(), nullptr, bounds.left, bounds.top, bounds.width,
                       bounds.height, SWP_NOZORDER | SWP_NOACTIVATE);
        ASSERT_TRUE(PollUntil(kWait, [&] { return BoundsOf(program) == bounds; }));
        program.Main().Send(WM_EXITSIZEMOVE);
    }
    [[nodiscard]] std::string Twips(int pixels) const {
        return TextFromSingle(static_cast<float>(pixels * screen_.TwipsPerPixelX()));
    }
    static LRESULT WidthOf(const RemoteTidemark& program, int column) {
        return program.lvwItems().Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column));
    }

    RegistrySettingsStore store_;
    Win32Screen screen_;
};

TEST_F(SettingsEndToEnd, FirstRunLeavesAllEightOptionsInTheirCanonicalForm) {
    const RemoteTidemark program = Start("");
    for (const OptionDefinition& definition : OptionDefinitions()) {
        EXPECT_TRUE(WaitForStored(definition.key, definition.default_text)) << definition.key;
    }
    for (int column = 0; column < 3; ++column) {
        EXPECT_EQ(WidthOf(program, column), 300);
    }
    EXPECT_EQ(Stored("Left"), "(missing)");
    Close(program);
    EXPECT_EQ(Stored("Left"), "(missing)");
}

TEST_F(SettingsEndToEnd, OptionsWidthsPlaceAndSizeAreFoundAgain) {
    const Bounds place = {120, 90, 700, 500};
    {
        const RemoteTidemark program = Start("");
        Choose(program, 'o', kClearReadOnly);
        EXPECT_TRUE(WaitForStored("ClearReadOnlyAttribute", "True"));
        Choose(program, 'o', kSyncFolders);
        EXPECT_TRUE(WaitForStored("SyncFolderCreatedDates", "False"));
        Choose(program, 'o', kPrompt);
        EXPECT_TRUE(WaitForStored("PromptWhenDone", "False"));
        Choose(program, 'o', kClearAutomatically);
        EXPECT_TRUE(WaitForStored("ClearAutomatically", "False"));
        Choose(program, 'o', kShowErrors);
        EXPECT_TRUE(WaitForStored("ShowErrorsAutomatically", "False"));
        Choose(program, 'v', kDateCreated);
        EXPECT_TRUE(WaitForStored("ShowDateCreated", "True"));
        Choose(program, 'v', kControlsOnBottom);
        EXPECT_TRUE(WaitForStored("ControlsOnTop", "False"));
        Choose(program, 'v', kAlwaysOnTop);
        EXPECT_TRUE(WaitForStored("AlwaysOnTop", "True"));
        MoveByUser(program, place);
        for (int column = 0; column < 3; ++column) {
            program.lvwItems().Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column),
                                    200 + 10 * column);
        }
        Close(program);
    }
    EXPECT_EQ(Stored("Left"), Twips(place.left));
    EXPECT_EQ(Stored("Top"), Twips(place.top));
    EXPECT_EQ(Stored("Width"), Twips(place.width));
    EXPECT_EQ(Stored("Height"), Twips(place.height));
    EXPECT_EQ(Stored("2ColumnWidth"), "210");

    const RemoteTidemark program = Start("");
    EXPECT_TRUE(PollUntil(kWait, [&] { return BoundsOf(program) == place; }));
    for (int column = 0; column < 3; ++column) {
        EXPECT_EQ(WidthOf(program, column), 200 + 10 * column);
    }
    EXPECT_TRUE(program.dtDateCreated().Visible());
    // The panel stands below the list.
    EXPECT_GE(PlaceOf(program.cmdStamp().Handle()).top,
              PlaceOf(program.lvwItems().Handle()).bottom);
    // A second choice of each takes the option back from what was found in the store.
    Choose(program, 'o', kPrompt);
    EXPECT_TRUE(WaitForStored("PromptWhenDone", "True"));
    Choose(program, 'o', kReset);
    ASSERT_EQ(program.WaitForBox(kWait).value_or("no message"), "Set default visuals and options?");
    ASSERT_TRUE(program.AnswerBox(IDYES, kWait));
    for (const OptionDefinition& definition : OptionDefinitions()) {
        EXPECT_TRUE(WaitForStored(definition.key, TextFromTruth(definition.reset_value)))
            << definition.key;
    }
    EXPECT_TRUE(PollUntil(kWait, [&] { return WidthOf(program, 2) == 100; }));
    EXPECT_EQ(WidthOf(program, 0), 300);
    EXPECT_EQ(WidthOf(program, 1), 150);
    EXPECT_EQ(BoundsOf(program), place);
    program.lvwItems().Send(LVM_SETCOLUMNWIDTH, 1, 155);
    EndSession(program);
    EXPECT_EQ(Stored("2ColumnWidth"), "155");
}

TEST_F(SettingsEndToEnd, ARequestToQuitFromElsewhereEndsTheProgramAsExitDoes) {
    const RemoteTidemark program = Start("");
    ASSERT_TRUE(PollUntil(kWait, [&] { return !program.Shown(L"frmSplash").has_value(); }));
    program.lvwItems().Send(LVM_SETCOLUMNWIDTH, 1, 177);
    ::PostThreadMessageW(::GetWindowThreadProcessId(program.Main().Handle(), nullptr), WM_QUIT, 7,
                         0);
    EXPECT_EQ(program.Process().WaitForExit(kWait), 7U);
    EXPECT_EQ(Stored("2ColumnWidth"), "177");
}

TEST_F(SettingsEndToEnd, BadTextsInTheStoreStopNothing) {
    for (const OptionDefinition& definition : OptionDefinitions()) {
        store_.WriteText(definition.key, "maybe");
    }
    store_.WriteText("1ColumnWidth", "12px");
    store_.WriteText("2ColumnWidth", "1e40");
    store_.WriteText("3ColumnWidth", "250.5");
    store_.WriteText("Left", "1e40");
    const RemoteTidemark program = Start("");
    for (const OptionDefinition& definition : OptionDefinitions()) {
        EXPECT_TRUE(WaitForStored(definition.key, "False")) << definition.key;
    }
    EXPECT_EQ(WidthOf(program, 0), 12);
    EXPECT_EQ(WidthOf(program, 1), 10);
    EXPECT_EQ(WidthOf(program, 2), 250);
    const Bounds centred = {(::GetSystemMetrics(SM_CXSCREEN) - 640) / 2,
                            (::GetSystemMetrics(SM_CYSCREEN) - 480) / 2, 640, 480};
    EXPECT_TRUE(PollUntil(kWait, [&] { return BoundsOf(program) == centred; }));
    Close(program);
}

}  // namespace
}  // namespace tidemark
