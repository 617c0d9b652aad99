// What users and other programs may leave in the registry, loaded as start-up loads it.

#include <gmock/gmock.h>

#include <string>
#include <string_view>

#include "platform/memory/memory_screen.h"
#include "platform/win32/registry_settings_store.h"
#include "settings/fake_options_host.h"
#include "settings/fake_placed_window.h"
#include "settings/window_placement.h"
#include "support/scratch_registry_key.h"

using namespace std::string_view_literals;

namespace tidemark {
namespace {

using testing::Each;
using testing::ElementsAre;

constexpr TwipsBounds kDefaults{2880, 2160, 640, 480};
constexpr TwipsBounds kLastResort{2880, 2160, 9600, 7200};

class StoredSettings : public testing::Test {
  protected:
    // Leaves the same value under every key that the program reads.
    void LeaveEverywhere(DWORD type, const void* data, std::size_t size) {
        for (const OptionDefinition& definition : OptionDefinitions()) {
            Leave(definition.key, type, data, size);
        }
        for (const char* key :
             {"1ColumnWidth", "2ColumnWidth", "3ColumnWidth", "1ErrorColumnWidth",
              "2ErrorColumnWidth", "3ErrorColumnWidth", "Left", "Top", "Width", "Height"}) {
            Leave(key, type, data, size);
        }
    }
    void LeaveEverywhere(std::wstring_view text) {
        LeaveEverywhere(REG_SZ, text.data(), text.size() * sizeof(wchar_t));
    }
    // Loads all of it, and the placement with and without a reset.
    void Load() {
        host_ = {};
        LoadOptions(store_, host_);
        LoadColumnWidths(store_, host_.errors_columns, ColumnSet::kErrorsList,
                         /*useDefault=*/false);
        LoadWindowPlacement(store_, screen_, window_, /*reset=*/true);
        EXPECT_EQ(window_.bounds, kDefaults);
        LoadWindowPlacement(store_, screen_, window_, /*reset=*/false);
    }
    void ExpectEveryOption(bool value) {
        for (const OptionDefinition& definition : OptionDefinitions()) {
            EXPECT_EQ(OptionIsOn(host_, definition.option), value) << definition.key;
            EXPECT_EQ(store_.ReadText(definition.key, "(missing)"), value ? "True" : "False");
        }
    }
    void ExpectEveryWidth(std::int32_t width) {
        EXPECT_THAT(host_.item_columns.widths, Each(width));
        EXPECT_THAT(host_.errors_columns.widths, Each(width));
    }
    void ExpectDefaults() {
        for (const OptionDefinition& definition : OptionDefinitions()) {
            EXPECT_EQ(OptionIsOn(host_, definition.option), definition.reset_value);
        }
        EXPECT_THAT(host_.item_columns.widths, Each(300));
        EXPECT_THAT(host_.errors_columns.widths, ElementsAre(300, 50, 400));
        EXPECT_EQ(window_.bounds, kDefaults);
    }

    ScratchRegistryKey key_;
    RegistrySettingsStore store_{key_.Path()};
    MemoryScreen screen_;
    FakeOptionsHost host_;
    FakePlacedWindow window_;

  private:
    void Leave(const char* key, DWORD type, const void* data, std::size_t size) {
        ASSERT_EQ(
            ::RegSetKeyValueW(HKEY_CURRENT_USER, key_.WidePath().c_str(), WideFromUtf8(key).c_str(),
                              type, data, static_cast<DWORD>(size)),
            ERROR_SUCCESS);
    }
};

TEST_F(StoredSettings, NothingStoredGivesTheDefaults) {
    Load();
    ExpectDefaults();
}

TEST_F(StoredSettings, TextsThatAreNoNumberAreFalseNarrowAndZero) {
    for (const std::wstring_view text : {L""sv, L"   "sv, L"maybe"sv, L"\0True"sv, L"\xD800"sv}) {
        LeaveEverywhere(text);
        Load();
        ExpectEveryOption(false);
        ExpectEveryWidth(10);
        EXPECT_EQ(window_.bounds, (TwipsBounds{0, 0, 0, 0}));
    }
    LeaveEverywhere(std::wstring(10000, L'x'));
    Load();
    ExpectEveryOption(false);
    ExpectEveryWidth(10);
}

TEST_F(StoredSettings, NumberWithMoreBehindItIsNoTruthValueButANumber) {
    LeaveEverywhere(L"12px"sv);
    Load();
    ExpectEveryOption(false);
    ExpectEveryWidth(12);
    EXPECT_EQ(window_.bounds, (TwipsBounds{12, 12, 12, 12}));
}

TEST_F(StoredSettings, NegativeNumberIsTrueAndNarrowAndUsedAsThePlace) {
    LeaveEverywhere(L"-5"sv);
    Load();
    ExpectEveryOption(true);
    ExpectEveryWidth(10);
    EXPECT_EQ(window_.tried.back(), (TwipsBounds{-5, -5, -5, -5}));
}

TEST_F(StoredSettings, NumberTooLargeIsTrueAndNarrowAndTheLastResortOfThePlace) {
    LeaveEverywhere(L"1e40"sv);
    Load();
    ExpectEveryOption(true);
    ExpectEveryWidth(10);
    EXPECT_EQ(window_.bounds, kLastResort);
}

TEST_F(StoredSettings, TextEndsAtAnEmbeddedNul) {
    LeaveEverywhere(L"12\0px"sv);
    Load();
    ExpectEveryOption(true);
    ExpectEveryWidth(12);
    EXPECT_EQ(window_.bounds, (TwipsBounds{12, 12, 12, 12}));
}

TEST_F(StoredSettings, ValueThatIsNoTextCountsAsMissing) {
    const DWORD number = 12;
    LeaveEverywhere(REG_DWORD, &number, sizeof number);
    Load();
    ExpectDefaults();
    LeaveEverywhere(REG_BINARY, &number, sizeof number);
    Load();
    ExpectDefaults();
}

}  // namespace
}  // namespace tidemark
