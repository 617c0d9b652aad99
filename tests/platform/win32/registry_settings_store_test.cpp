// What only a registry can hold: values that other programs left there.

#include "platform/win32/registry_settings_store.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/program_error.h"
#include "platform/win32/system_message.h"
#include "support/scratch_registry_key.h"

using namespace std::string_view_literals;

namespace tidemark {
namespace {

class RegistrySettingsStoreTest : public testing::Test {
  protected:
    // Leaves a raw value, as another program could.
    void Leave(DWORD type, const void* data, std::size_t size) {
        ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, key_.WidePath().c_str(), L"Value", type, data,
                                  static_cast<DWORD>(size)),
                  ERROR_SUCCESS);
    }
    void Leave(DWORD type, std::wstring_view units) {
        Leave(type, units.data(), units.size() * sizeof(wchar_t));
    }
    std::string Read() { return store_.ReadText("Value", "default"); }

    ScratchRegistryKey key_;
    RegistrySettingsStore store_{key_.Path()};
};

TEST_F(RegistrySettingsStoreTest, WritesOneTerminatedStringPerKey) {
    store_.WriteText("Value", "True");
    wchar_t data[16] = {};
    DWORD size = sizeof data;
    DWORD type = 0;
    ASSERT_EQ(RegGetValueW(HKEY_CURRENT_USER, key_.WidePath().c_str(), L"Value", RRF_RT_ANY, &type,
                           data, &size),
              ERROR_SUCCESS);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(size, 5 * sizeof(wchar_t));
    EXPECT_EQ(std::wstring(data), L"True");
}

TEST_F(RegistrySettingsStoreTest, StringWithoutTerminatorIsReadToItsEnd) {
    Leave(REG_SZ, L"300"sv);
    EXPECT_EQ(Read(), "300");
}

TEST_F(RegistrySettingsStoreTest, StringIsReadUpToAnEmbeddedNul) {
    Leave(REG_SZ, L"12\0px\0"sv);
    EXPECT_EQ(Read(), "12");
    Leave(REG_SZ, L"\0True\0"sv);
    EXPECT_EQ(Read(), "");
}

TEST_F(RegistrySettingsStoreTest, StringOfNoBytesIsEmpty) {
    Leave(REG_SZ, L""sv);
    EXPECT_EQ(Read(), "");
}

TEST_F(RegistrySettingsStoreTest, HalfAUnitAtTheEndIsDropped) {
    Leave(REG_SZ, L"12", 3);
    EXPECT_EQ(Read(), "1");
}

TEST_F(RegistrySettingsStoreTest, ExpandableStringIsReadAsItStands) {
    Leave(REG_EXPAND_SZ, L"%TEMP%\0"sv);
    EXPECT_EQ(Read(), "%TEMP%");
}

TEST_F(RegistrySettingsStoreTest, LongStringIsReadWhole) {
    Leave(REG_SZ, std::wstring(10000, L'9'));
    EXPECT_EQ(Read(), std::string(10000, '9'));
    Leave(REG_SZ, std::wstring(300000, L'x'));
    EXPECT_EQ(Read(), std::string(300000, 'x'));
}

TEST_F(RegistrySettingsStoreTest, ValueThatIsNoStringCountsAsMissing) {
    const DWORD number = 1;
    Leave(REG_DWORD, &number, sizeof number);
    EXPECT_EQ(Read(), "default");
    Leave(REG_BINARY, L"True\0"sv);
    EXPECT_EQ(Read(), "default");
    Leave(REG_MULTI_SZ, L"True\0False\0\0"sv);
    EXPECT_EQ(Read(), "default");
    Leave(REG_NONE, L""sv);
    EXPECT_EQ(Read(), "default");
}

TEST_F(RegistrySettingsStoreTest, WritingReplacesAValueOfAnyType) {
    const DWORD number = 1;
    Leave(REG_DWORD, &number, sizeof number);
    store_.WriteText("Value", "True");
    EXPECT_EQ(Read(), "True");
}

TEST_F(RegistrySettingsStoreTest, FailingWriteTellsOperationPlaceCodeAndText) {
    // A path longer than any key name makes the system refuse the key.
    const std::string path = key_.Path() + "\\" + std::string(300, 'k');
    RegistrySettingsStore store{path};
    try {
        store.WriteText("Top", "1");
        FAIL() << "a key name of 300 characters was accepted";
    } catch (const ProgramError& error) {
        EXPECT_NE(error.Number(), 0);
        EXPECT_EQ(error.Description(),
                  FailureText("Writing the setting HKEY_CURRENT_USER\\" + path + "\\Top",
                              static_cast<std::uint32_t>(error.Number())));
    }
    EXPECT_EQ(store.ReadText("Top", "default"), "default");
}

}  // namespace
}  // namespace tidemark
