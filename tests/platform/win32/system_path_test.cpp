#include "platform/win32/system_path.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/win32/windows.h"

namespace tidemark {
namespace {

// The current folder, which every process has; ends in a backslash.
std::wstring CurrentFolder() {
    std::wstring folder(MAX_PATH, L'\0');
    folder.resize(::GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    if (!folder.ends_with(L'\\')) {
        folder += L'\\';
    }
    return folder;
}

TEST(SystemPath, OrdinaryPathsAreOnlyMadeWide) {
    for (const char* path :
         {"C:\\a\\b.txt", "C:\\", "\\\\server\\share\\a", "a.txt", "..\\a", ""}) {
        const std::string text = path;
        EXPECT_EQ(SystemPath(text), std::wstring(text.begin(), text.end()));
    }
    EXPECT_EQ(SystemPath("C:\\caf\xC3\xA9"), L"C:\\caf\x00E9");
}

TEST(SystemPath, LongAndUnusualPathsGetThePrefix) {
    EXPECT_EQ(SystemPath("C:\\a\\nul.txt"), L"\\\\?\\C:\\a\\nul.txt");
    const std::wstring name(245, L'a');
    EXPECT_EQ(SystemPath("C:\\" + std::string(245, 'a')), L"\\\\?\\C:\\" + name);
    EXPECT_EQ(SystemPath("\\\\server\\share\\" + std::string(245, 'a')),
              L"\\\\?\\UNC\\server\\share\\" + name);
}

TEST(SystemPath, RelativePathsThatNeedThePrefixAreMadeFull) {
    EXPECT_EQ(SystemPath("nul.txt"), L"\\\\?\\" + CurrentFolder() + L"nul.txt");
    EXPECT_EQ(SystemPath("a\\b."), L"\\\\?\\" + CurrentFolder() + L"a\\b.");
    const std::wstring drive = CurrentFolder().substr(0, 2);
    EXPECT_EQ(SystemPath("\\a."), L"\\\\?\\" + drive + L"\\a.");
    const std::string drive_text(drive.begin(), drive.end());
    EXPECT_EQ(SystemPath(drive_text + "a."), L"\\\\?\\" + CurrentFolder() + L"a.");
}

TEST(SystemPath, ARelativePathIsMeasuredFromItsRoot) {
    // Short enough by itself, too long below the current folder.
    const std::string path(247, 'r');
    EXPECT_EQ(SystemPath(path), L"\\\\?\\" + CurrentFolder() + std::wstring(247, L'r'));
}

TEST(SystemPath, TheGivenTextIsReplacedAndTheFormTold) {
    std::wstring text = L"what was there";
    EXPECT_FALSE(AssignSystemPath(text, "C:\\a"));
    EXPECT_EQ(text, L"C:\\a");
    EXPECT_TRUE(AssignSystemPath(text, "C:\\a."));
    EXPECT_EQ(text, L"\\\\?\\C:\\a.");
}

}  // namespace
}  // namespace tidemark
