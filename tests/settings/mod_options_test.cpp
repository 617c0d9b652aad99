#include "settings/mod_options.h"

#include <gmock/gmock.h>

#include "platform/memory/memory_settings_store.h"
#include "settings/fake_options_host.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kAccessDenied = 5;

class ModOptions : public testing::Test {
  protected:
    void Load() { LoadOptions(store_, host_); }
    [[nodiscard]] bool On(Option option) const { return OptionIsOn(host_, option); }
    [[nodiscard]] std::string Stored(const char* key) const {
        return store_.ReadText(key, "(missing)");
    }

    MemorySettingsStore store_;
    FakeOptionsHost host_;
};

TEST_F(ModOptions, TableHoldsEveryOptionAtItsPlace) {
    for (std::size_t i = 0; i < OptionDefinitions().size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(OptionDefinitions()[i].option), i);
    }
}

TEST_F(ModOptions, FirstRunHasTheDefaultsAndLeavesAllEightKeys) {
    Load();
    EXPECT_FALSE(On(Option::ShowDateCreated));
    EXPECT_TRUE(On(Option::ControlsOnTop));
    EXPECT_FALSE(host_.IsChecked("mnuViewControlsOnBottom"));
    EXPECT_FALSE(On(Option::AlwaysOnTop));
    EXPECT_FALSE(On(Option::ClearReadOnlyAttribute));
    EXPECT_TRUE(On(Option::SyncFolderCreatedDates));
    EXPECT_TRUE(On(Option::PromptWhenDone));
    EXPECT_TRUE(On(Option::ClearAutomatically));
    EXPECT_TRUE(On(Option::ShowErrorsAutomatically));
    EXPECT_EQ(Stored("ShowDateCreated"), "False");
    EXPECT_EQ(Stored("ControlsOnTop"), "True");
    EXPECT_EQ(Stored("AlwaysOnTop"), "False");
    EXPECT_EQ(Stored("ClearReadOnlyAttribute"), "False");
    EXPECT_EQ(Stored("SyncFolderCreatedDates"), "True");
    EXPECT_EQ(Stored("PromptWhenDone"), "True");
    EXPECT_EQ(Stored("ClearAutomatically"), "True");
    EXPECT_EQ(Stored("ShowErrorsAutomatically"), "True");
    EXPECT_EQ(store_.Count(), 8U);
    EXPECT_THAT(host_.item_columns.widths, ElementsAre(300, 300, 300));
}

TEST_F(ModOptions, LoadsInTheStartUpOrder) {
    Load();
    EXPECT_THAT(store_.Writes(),
                ElementsAre("ShowDateCreated", "ControlsOnTop", "AlwaysOnTop",
                            "ClearReadOnlyAttribute", "SyncFolderCreatedDates", "PromptWhenDone",
                            "ClearAutomatically", "ShowErrorsAutomatically"));
    EXPECT_THAT(host_.steps,
                ElementsAre("check ShowDateCreated off", "arrange off on", "check ControlsOnTop on",
                            "arrange off on", "check AlwaysOnTop off", "topmost off",
                            "check ClearReadOnlyAttribute off", "check SyncFolderCreatedDates on",
                            "check PromptWhenDone on", "check ClearAutomatically on",
                            "check ShowErrorsAutomatically on"));
}

TEST_F(ModOptions, ItemListWidthsAreLoadedBeforeAndAfterTheOptions) {
    store_.WriteText("2ColumnWidth", "77");
    Load();
    EXPECT_THAT(host_.item_columns.history, ElementsAre(300, 77, 300, 300, 77, 300));
}

TEST_F(ModOptions, StoredTextsBecomeTruthValuesAndAreRewritten) {
    const struct {
        const char* text;
        bool value;
    } cases[] = {{"1", true},  {"0", false},    {"TRUE", true},   {"maybe", false},
                 {"", false},  {" ", false},    {"1e40", true},   {"yes", false},
                 {"-5", true}, {"12px", false}, {"false", false}, {" 1 ", true}};
    for (const auto& [text, value] : cases) {
        for (const OptionDefinition& definition : OptionDefinitions()) {
            store_.WriteText(definition.key, text);
        }
        Load();
        for (const OptionDefinition& definition : OptionDefinitions()) {
            EXPECT_EQ(On(definition.option), value) << definition.key << " = " << text;
            EXPECT_EQ(Stored(definition.key), value ? "True" : "False");
        }
        EXPECT_EQ(host_.IsChecked("mnuViewControlsOnBottom"), !value);
    }
}

TEST_F(ModOptions, TenThousandCharactersAreJustAnotherBadText) {
    store_.WriteText("PromptWhenDone", std::string(10000, 'x'));
    store_.WriteText("1ColumnWidth", std::string(10000, '9'));
    Load();
    EXPECT_FALSE(On(Option::PromptWhenDone));
    EXPECT_THAT(host_.item_columns.widths, ElementsAre(10, 300, 300));
}

TEST_F(ModOptions, ApplyingShowDateCreatedReadsControlsOnTopFromTheStore) {
    host_.checked["mnuViewControlsOnTop"] = true;
    store_.WriteText("ControlsOnTop", "0");
    store_.ForgetWrites();
    ApplyOption(store_, host_, Option::ShowDateCreated, true);
    EXPECT_THAT(host_.steps, ElementsAre("check ShowDateCreated on", "arrange on off"));
    EXPECT_THAT(store_.Writes(), ElementsAre("ShowDateCreated"));
    EXPECT_EQ(Stored("ControlsOnTop"), "0");
}

TEST_F(ModOptions, TheOtherLayoutOptionIsItsDefaultWhenMissingAndFalseWhenNoTruthValue) {
    ApplyOption(store_, host_, Option::ShowDateCreated, false);
    EXPECT_EQ(host_.steps.back(), "arrange off on");
    store_.WriteText("ControlsOnTop", "yes");
    ApplyOption(store_, host_, Option::ShowDateCreated, false);
    EXPECT_EQ(host_.steps.back(), "arrange off off");
    store_.WriteText("ShowDateCreated", "maybe");
    ApplyOption(store_, host_, Option::ControlsOnTop, true);
    EXPECT_EQ(host_.steps.back(), "arrange off on");
}

TEST_F(ModOptions, ControlsOnBottomStoresFalseAndUsesTheStoredShowDateCreated) {
    store_.WriteText("ShowDateCreated", "True");
    host_.checked["mnuViewDateCreated"] = false;
    ApplyOption(store_, host_, Option::ControlsOnTop, false);
    EXPECT_EQ(Stored("ControlsOnTop"), "False");
    EXPECT_FALSE(host_.IsChecked("mnuViewControlsOnTop"));
    EXPECT_TRUE(host_.IsChecked("mnuViewControlsOnBottom"));
    EXPECT_EQ(host_.steps.back(), "arrange on off");
}

TEST_F(ModOptions, AlwaysOnTopMakesTheWindowTopmostAndNoLonger) {
    ApplyOption(store_, host_, Option::AlwaysOnTop, true);
    ApplyOption(store_, host_, Option::AlwaysOnTop, false);
    EXPECT_THAT(host_.steps, ElementsAre("check AlwaysOnTop on", "topmost on",
                                         "check AlwaysOnTop off", "topmost off"));
    EXPECT_EQ(Stored("AlwaysOnTop"), "False");
}

TEST_F(ModOptions, TogglingFollowsTheCheckMarkNotTheStore) {
    store_.WriteText("PromptWhenDone", "True");
    host_.checked["mnuOptionsPrompt"] = false;
    ToggleOption(store_, host_, Option::PromptWhenDone);
    EXPECT_TRUE(On(Option::PromptWhenDone));
    ToggleOption(store_, host_, Option::PromptWhenDone);
    EXPECT_FALSE(On(Option::PromptWhenDone));
    EXPECT_EQ(Stored("PromptWhenDone"), "False");
}

TEST_F(ModOptions, OptionsSurviveARestart) {
    Load();
    for (const OptionDefinition& definition : OptionDefinitions()) {
        ToggleOption(store_, host_, definition.option);
    }
    const auto before = host_.checked;
    FakeOptionsHost restarted;
    LoadOptions(store_, restarted);
    EXPECT_EQ(restarted.checked, before);
}

TEST_F(ModOptions, UnreadableStoreGivesTheDefaults) {
    store_.WriteText("AlwaysOnTop", "True");
    store_.WriteText("PromptWhenDone", "False");
    store_.FailReads();
    Load();
    EXPECT_FALSE(On(Option::AlwaysOnTop));
    EXPECT_TRUE(On(Option::PromptWhenDone));
}

TEST_F(ModOptions, LoadingFromAStoreThatCannotBeWrittenGoesThrough) {
    store_.WriteText("ShowDateCreated", "True");
    store_.FailWrites(kAccessDenied);
    Load();
    EXPECT_TRUE(On(Option::ShowDateCreated));
    EXPECT_TRUE(On(Option::ShowErrorsAutomatically));
    EXPECT_THAT(host_.steps, testing::Contains("arrange on on").Times(2));
}

TEST_F(ModOptions, ApplyingToAStoreThatCannotBeWrittenFailsAfterTheEffect) {
    store_.FailWrites(kAccessDenied);
    for (const OptionDefinition& definition : OptionDefinitions()) {
        try {
            ApplyOption(store_, host_, definition.option, true);
            ADD_FAILURE() << definition.key << " did not fail";
        } catch (const ProgramError& error) {
            EXPECT_EQ(error.Number(), kAccessDenied);
            EXPECT_THAT(error.Description(), testing::HasSubstr(definition.key));
        }
        EXPECT_TRUE(On(definition.option));
    }
    EXPECT_THAT(host_.steps, testing::IsSupersetOf({"arrange on on", "arrange off on"}));
}

TEST_F(ModOptions, LayoutErrorsAreIgnoredAndTheValueIsKept) {
    host_.layout_fails = true;
    ApplyOption(store_, host_, Option::ShowDateCreated, true);
    ApplyOption(store_, host_, Option::ControlsOnTop, false);
    EXPECT_EQ(Stored("ShowDateCreated"), "True");
    EXPECT_EQ(Stored("ControlsOnTop"), "False");
}

TEST_F(ModOptions, FailingTopmostSurfacesFromTheApplierAndNotFromTheLoader) {
    host_.topmost_fails = true;
    EXPECT_THROW(ApplyOption(store_, host_, Option::AlwaysOnTop, true), ProgramError);
    EXPECT_EQ(Stored("AlwaysOnTop"), "(missing)");
    EXPECT_NO_THROW(LoadOption(store_, host_, Option::AlwaysOnTop, /*useDefault=*/false));
}

TEST_F(ModOptions, ColumnWidthsTakeTheLeadingNumberAndAtLeastTen) {
    const std::pair<const char*, std::int32_t> cases[] = {
        {"-5", 10},   {"abc", 10},  {"250.6", 251}, {"250.5", 250}, {"12px", 12},   {"251.5", 252},
        {"", 10},     {" ", 10},    {"maybe", 10},  {"9.6", 10},    {"10", 10},     {"11", 11},
        {"1e2", 100}, {"1e40", 10}, {"-1e40", 10},  {"1e999", 10},  {" 40 0 ", 40}, {"4 0", 10},
    };
    for (const auto& [text, width] : cases) {
        store_.WriteText("1ColumnWidth", text);
        store_.WriteText("3ErrorColumnWidth", text);
        LoadColumnWidths(store_, host_.item_columns, ColumnSet::kItemList, /*useDefault=*/false);
        LoadColumnWidths(store_, host_.errors_columns, ColumnSet::kErrorsList,
                         /*useDefault=*/false);
        EXPECT_THAT(host_.item_columns.widths, ElementsAre(width, 300, 300)) << text;
        EXPECT_THAT(host_.errors_columns.widths, ElementsAre(300, 50, width)) << text;
    }
}

TEST_F(ModOptions, ErrorsListHasItsOwnDefaults) {
    LoadColumnWidths(store_, host_.errors_columns, ColumnSet::kErrorsList, /*useDefault=*/false);
    EXPECT_THAT(host_.errors_columns.widths, ElementsAre(300, 50, 400));
    EXPECT_THAT(host_.item_columns.history, IsEmpty());
}

TEST_F(ModOptions, NarrowColumnsAreWidenedOnlyAfterAllAreSet) {
    store_.WriteText("1ColumnWidth", "3");
    LoadColumnWidths(store_, host_.item_columns, ColumnSet::kItemList, /*useDefault=*/false);
    EXPECT_THAT(host_.item_columns.history, ElementsAre(3, 300, 300, 10));
}

TEST_F(ModOptions, SavedWidthsAreReadBack) {
    host_.item_columns.widths = {123, 45, 678};
    host_.errors_columns.widths = {9, 10, 1000};
    SaveColumnWidths(store_, host_.item_columns, ColumnSet::kItemList);
    SaveColumnWidths(store_, host_.errors_columns, ColumnSet::kErrorsList);
    EXPECT_THAT(store_.Writes(),
                ElementsAre("1ColumnWidth", "2ColumnWidth", "3ColumnWidth", "1ErrorColumnWidth",
                            "2ErrorColumnWidth", "3ErrorColumnWidth"));
    EXPECT_EQ(Stored("1ColumnWidth"), "123");
    FakeOptionsHost restarted;
    LoadColumnWidths(store_, restarted.item_columns, ColumnSet::kItemList, /*useDefault=*/false);
    LoadColumnWidths(store_, restarted.errors_columns, ColumnSet::kErrorsList,
                     /*useDefault=*/false);
    EXPECT_THAT(restarted.item_columns.widths, ElementsAre(123, 45, 678));
    EXPECT_THAT(restarted.errors_columns.widths, ElementsAre(10, 10, 1000));
}

TEST_F(ModOptions, SavingWidthsToAStoreThatCannotBeWrittenFails) {
    store_.FailWrites(kAccessDenied);
    EXPECT_THROW(SaveColumnWidths(store_, host_.item_columns, ColumnSet::kItemList), ProgramError);
}

TEST_F(ModOptions, ResetGivesTheResetValuesInTheirOrder) {
    for (const OptionDefinition& definition : OptionDefinitions()) {
        store_.WriteText(definition.key, definition.reset_value ? "False" : "True");
    }
    store_.WriteText("1ColumnWidth", "77");
    Load();
    host_.steps.clear();
    store_.ForgetWrites();
    ResetOptions(store_, host_);
    EXPECT_THAT(host_.item_columns.widths, ElementsAre(300, 150, 100));
    EXPECT_THAT(host_.errors_columns.widths, ElementsAre(300, 50, 400));
    // The first layout still sees the other option as it was stored before the reset.
    EXPECT_THAT(
        host_.steps,
        ElementsAre("check ShowDateCreated off", "arrange off off", "check ControlsOnTop on",
                    "arrange off on", "check AlwaysOnTop off", "topmost off",
                    "check ClearReadOnlyAttribute off", "check SyncFolderCreatedDates on",
                    "check PromptWhenDone on", "check ClearAutomatically on",
                    "check ShowErrorsAutomatically on", "errors window", "resize"));
    EXPECT_EQ(store_.Writes().size(), 8U);
    EXPECT_EQ(Stored("1ColumnWidth"), "77");
}

TEST_F(ModOptions, ResetLeavesThePlacementAlone) {
    for (const char* key : {"Left", "Top", "Width", "Height"}) {
        store_.WriteText(key, "4635");
    }
    ResetOptions(store_, host_);
    for (const char* key : {"Left", "Top", "Width", "Height"}) {
        EXPECT_EQ(Stored(key), "4635");
    }
}

}  // namespace
}  // namespace tidemark
