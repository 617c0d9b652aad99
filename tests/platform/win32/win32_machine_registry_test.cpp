#include "platform/win32/win32_machine_registry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/scratch_registry_key.h"

namespace tidemark {
namespace {

// A value as it is stored: its type and its bytes.
struct StoredValue {
    DWORD type = REG_NONE;
    std::vector<BYTE> bytes;
};

StoredValue Stored(HKEY root, const std::string& path, const wchar_t* name) {
    StoredValue value;
    HKEY key = nullptr;
    if (::RegOpenKeyExW(root, WideFromUtf8(path).c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return value;
    }
    DWORD size = 0;
    if (::RegQueryValueExW(key, name, nullptr, &value.type, nullptr, &size) == ERROR_SUCCESS) {
        value.bytes.resize(size);
        ::RegQueryValueExW(key, name, nullptr, nullptr, value.bytes.data(), &size);
    }
    ::RegCloseKey(key);
    return value;
}

std::string TextOf(const StoredValue& value) {
    const std::wstring wide(reinterpret_cast<const wchar_t*>(value.bytes.data()),
                            value.bytes.size() / sizeof(wchar_t));
    return Utf8FromWide(wide.substr(0, wide.find(L'\0')));
}

class Win32MachineRegistryTest : public testing::Test {
  protected:
    Win32MachineRegistryTest() {
        ::RegCreateKeyW(HKEY_CURRENT_USER, scratch_.WidePath().c_str(), &root_);
    }
    ~Win32MachineRegistryTest() override { ::RegCloseKey(root_); }

    ScratchRegistryKey scratch_;
    HKEY root_ = nullptr;
};

TEST_F(Win32MachineRegistryTest, CreatesTheKeyAndThoseAboveIt) {
    Win32MachineRegistry registry(root_);
    const RegistryKey key = registry.CreateOrOpen(R"(a\b\c)");
    ASSERT_NE(key, kNoRegistryKey);
    EXPECT_TRUE(registry.Close(key));
    const RegistryKey again = registry.CreateOrOpen(R"(a\b\c)");
    EXPECT_NE(again, kNoRegistryKey);
    EXPECT_TRUE(registry.Close(again));
}

TEST_F(Win32MachineRegistryTest, StoresANamedText) {
    Win32MachineRegistry registry(root_);
    const RegistryKey key = registry.CreateOrOpen("k");
    EXPECT_TRUE(registry.SetText(key, "Path", "C:\\\xC3\xA9"));
    EXPECT_TRUE(registry.Close(key));
    const StoredValue value = Stored(root_, "k", L"Path");
    EXPECT_EQ(value.type, static_cast<DWORD>(REG_SZ));
    // The call is given four characters; the system may store the terminating NUL it finds there.
    EXPECT_GE(value.bytes.size(), 4 * sizeof(wchar_t));
    EXPECT_LE(value.bytes.size(), 5 * sizeof(wchar_t));
    EXPECT_EQ(TextOf(value), "C:\\\xC3\xA9");
}

TEST_F(Win32MachineRegistryTest, FailsSilentlyWithoutAccess) {
    // A root that is no key at all stands in for one that refuses: not every system that runs this
    // checks access rights.
    Win32MachineRegistry registry(nullptr);
    EXPECT_EQ(registry.CreateOrOpen("k"), kNoRegistryKey);
    EXPECT_FALSE(registry.SetDefaultText(kNoRegistryKey, "x"));
    EXPECT_FALSE(registry.SetText(kNoRegistryKey, "n", "x"));
    EXPECT_FALSE(registry.Close(kNoRegistryKey));
}

}  // namespace
}  // namespace tidemark
