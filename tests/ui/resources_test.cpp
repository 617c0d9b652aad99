#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"
// After the system's main header.
#include <commctrl.h>

namespace tidemark {
namespace {

TEST(ResourcesTest, TheManifestLoadsTheNewCommonControls) {
    HMODULE controls = nullptr;
    ASSERT_TRUE(::GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&::InitCommonControlsEx), &controls));
    std::wstring path(MAX_PATH, L'\0');
    path.resize(::GetModuleFileNameW(controls, path.data(), MAX_PATH));
    ::CharLowerW(path.data());
    EXPECT_THAT(Utf8FromWide(path), ::testing::HasSubstr("common-controls_6595b64144ccf1df_6.0"));
}

TEST(ResourcesTest, TheManifestIsTheOnlyOneAndAsksForLongPathsAndScaling) {
    const HRSRC found = ::FindResourceW(nullptr, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
    ASSERT_NE(found, nullptr);
    const auto* text = static_cast<const char*>(::LockResource(::LoadResource(nullptr, found)));
    const std::string manifest(text, ::SizeofResource(nullptr, found));
    EXPECT_NE(manifest.find("longPathAware"), std::string::npos);
    EXPECT_NE(manifest.find("gdiScaling"), std::string::npos);
    EXPECT_NE(manifest.find("level=\"asInvoker\""), std::string::npos);
    EXPECT_NE(manifest.find("{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"), std::string::npos);
    EXPECT_EQ(manifest.find('@'), std::string::npos) << "every placeholder is filled in";
}

TEST(ResourcesTest, TheVersionResourceHoldsTheProjectsVersion) {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    DWORD ignored = 0;
    const DWORD size = ::GetFileVersionInfoSizeW(path.c_str(), &ignored);
    ASSERT_GT(size, 0U);
    std::vector<std::byte> data(size);
    ASSERT_TRUE(::GetFileVersionInfoW(path.c_str(), 0, size, data.data()));
    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(::VerQueryValueW(data.data(), L"\\", &value, &length));
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(value);
    const std::string version = std::to_string(HIWORD(fixed->dwFileVersionMS)) + "." +
                                std::to_string(LOWORD(fixed->dwFileVersionMS)) + "." +
                                std::to_string(HIWORD(fixed->dwFileVersionLS)) + "." +
                                std::to_string(LOWORD(fixed->dwFileVersionLS));
    EXPECT_EQ(version, TIDEMARK_TEST_VERSION);
    ASSERT_TRUE(
        ::VerQueryValueW(data.data(), L"\\StringFileInfo\\040904B0\\ProductName", &value, &length));
    EXPECT_EQ(Utf8FromWide(static_cast<const wchar_t*>(value)), "tidemark clock");
}

}  // namespace
}  // namespace tidemark
