// What every store of settings keeps to, run on each of them.

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/memory/memory_settings_store.h"
#include "platform/settings_store.h"

#ifdef _WIN32
#include "platform/win32/registry_settings_store.h"
#include "support/scratch_registry_key.h"
#endif

using namespace std::string_literals;

namespace tidemark {
namespace {

// A store of one kind, empty at first, and another reader of the same settings.
struct Place {
    virtual ~Place() = default;
    [[nodiscard]] virtual SettingsStore& Store() = 0;
    [[nodiscard]] virtual const SettingsStore& AfterRestart() = 0;
};

struct MemoryPlace : Place {
    SettingsStore& Store() override { return store; }
    const SettingsStore& AfterRestart() override { return store; }
    MemorySettingsStore store;
};

#ifdef _WIN32
struct RegistryPlace : Place {
    SettingsStore& Store() override { return store; }
    const SettingsStore& AfterRestart() override { return second; }
    ScratchRegistryKey key;
    RegistrySettingsStore store{key.Path() + "\\Options"};
    RegistrySettingsStore second{key.Path() + "\\Options"};
};
#endif

struct Kind {
    const char* name;
    std::function<std::unique_ptr<Place>()> make;
};

const Kind kKinds[] = {
    {"Memory", [] { return std::make_unique<MemoryPlace>(); }},
#ifdef _WIN32
    {"Registry", [] { return std::make_unique<RegistryPlace>(); }},
#endif
};

class SettingsStoreContract : public testing::TestWithParam<Kind> {
  protected:
    std::unique_ptr<Place> place_ = GetParam().make();
    SettingsStore& store_ = place_->Store();
    const SettingsStore& restarted_ = place_->AfterRestart();
};

TEST_P(SettingsStoreContract, MissingKeyGivesTheCallersDefault) {
    EXPECT_EQ(store_.ReadText("PromptWhenDone", "True"), "True");
    EXPECT_EQ(store_.ReadText("PromptWhenDone", ""), "");
    store_.WriteText("Other", "x");
    EXPECT_EQ(store_.ReadText("PromptWhenDone", "True"), "True");
}

TEST_P(SettingsStoreContract, ReadingCreatesNothing) {
    (void)store_.ReadText("Left", "1");
    EXPECT_EQ(store_.ReadText("Left", "2"), "2");
}

TEST_P(SettingsStoreContract, WritingCreatesThenReplaces) {
    store_.WriteText("Left", "4635");
    EXPECT_EQ(restarted_.ReadText("Left", "0"), "4635");
    store_.WriteText("Left", "15");
    EXPECT_EQ(restarted_.ReadText("Left", "0"), "15");
    store_.WriteText("Top", "30");
    EXPECT_EQ(restarted_.ReadText("Left", "0"), "15");
    EXPECT_EQ(restarted_.ReadText("Top", "0"), "30");
}

TEST_P(SettingsStoreContract, KeysIgnoreLetterCase) {
    store_.WriteText("AlwaysOnTop", "True");
    EXPECT_EQ(store_.ReadText("alwaysontop", "missing"), "True");
    store_.WriteText("ALWAYSONTOP", "False");
    EXPECT_EQ(store_.ReadText("AlwaysOnTop", "missing"), "False");
}

TEST_P(SettingsStoreContract, EmptyTextIsAValueNotAMissingOne) {
    store_.WriteText("Top", "");
    EXPECT_EQ(restarted_.ReadText("Top", "default"), "");
}

TEST_P(SettingsStoreContract, AnyTextSurvives) {
    const std::string texts[] = {" ",
                                 "  two blanks around  ",
                                 "line\r\nbreak\ttab",
                                 "%TEMP%",
                                 "caf\xC3\xA9 \xE6\xBC\xA2\xE5\xAD\x97 \xF0\x9F\x98\x80",
                                 "lone \xED\xA0\x80 surrogate",
                                 std::string(10000, '7')};
    for (const std::string& text : texts) {
        store_.WriteText("Value", text);
        EXPECT_EQ(restarted_.ReadText("Value", "default"), text);
    }
}

TEST_P(SettingsStoreContract, TextEndsAtItsFirstNul) {
    store_.WriteText("Value", "12\0 34"s);
    EXPECT_EQ(restarted_.ReadText("Value", "default"), "12");
    store_.WriteText("Value", "\0"s);
    EXPECT_EQ(restarted_.ReadText("Value", "default"), "");
}

TEST_P(SettingsStoreContract, BytesThatAreNoTextBecomeTheReplacementCharacter) {
    store_.WriteText("Value", "a\xFFz");
    EXPECT_EQ(restarted_.ReadText("Value", "default"), "a\xEF\xBF\xBDz");
}

INSTANTIATE_TEST_SUITE_P(Stores, SettingsStoreContract, testing::ValuesIn(kKinds),
                         [](const auto& kind) { return kind.param.name; });

}  // namespace
}  // namespace tidemark
