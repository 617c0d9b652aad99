#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/app_path.h"
#include "platform/win32/win32_kernel_files.h"
#include "platform/win32/win32_machine_registry.h"
#include "platform/win32/win32_process.h"
#include "support/scratch_registry_key.h"

namespace tidemark {
namespace {

std::string StoredText(HKEY root, const std::string& key, const wchar_t* name) {
    std::vector<wchar_t> text(32768);
    DWORD size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    const LSTATUS status = ::RegGetValueW(root, WideFromUtf8(key).c_str(), name, RRF_RT_REG_SZ,
                                          nullptr, text.data(), &size);
    return status == ERROR_SUCCESS ? Utf8FromWide(text.data()) : "";
}

TEST(AppPathRegistrationTest, HoldsTheProgramsOwnPathHoweverOftenItIsRegistered) {
    ScratchRegistryKey scratch;
    HKEY root = nullptr;
    ASSERT_EQ(::RegCreateKeyW(HKEY_CURRENT_USER, scratch.WidePath().c_str(), &root), ERROR_SUCCESS);
    Win32MachineRegistry registry(root);
    Win32KernelFiles files;
    Win32Process process;
    const std::string name = process.ExecutableName();
    const std::string folder = process.ExecutableFolder();
    const std::string key = R"(Software\Microsoft\Windows\CurrentVersion\App Paths\)" + name;
    for (int start = 0; start < 2; ++start) {
        RegisterAppPath(registry, files, name, folder);
        EXPECT_EQ(StoredText(root, key, nullptr), folder + "\\" + name);
        EXPECT_EQ(StoredText(root, key, L"Path"), folder);
    }
    ::RegCloseKey(root);
}

}  // namespace
}  // namespace tidemark
