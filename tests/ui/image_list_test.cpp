#include "ui/image_list.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "lists/fakes.h"
#include "lists/icon_keys.h"
#include "lists/list_helpers.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

// A folder of its own for one test, gone afterwards.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        wchar_t base[MAX_PATH] = L"";
        ::GetTempPathW(MAX_PATH, base);
        path_ = base + (L"tidemark-icons-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                        std::to_wstring(::GetTickCount()));
        ::CreateDirectoryW(path_.c_str(), nullptr);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        for (const std::wstring& file : files_) {
            ::DeleteFileW(file.c_str());
        }
        ::RemoveDirectoryW(path_.c_str());
    }

    [[nodiscard]] std::string Path() const { return Utf8FromWide(path_); }
    // Makes an empty file.
    std::string File(const wchar_t* name) {
        files_.push_back(path_ + L"\\" + name);
        ::CloseHandle(::CreateFileW(files_.back().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0,
                                    nullptr));
        return Utf8FromWide(files_.back());
    }

  private:
    std::wstring path_;
    std::vector<std::wstring> files_;
};

class ImageListTest : public testing::Test {
  protected:
    void Place(const std::string& path) { AddIcon(images_.Keyed(), keys_.Of(path, ""), path); }
    int Held() const { return ::ImageList_GetImageCount(images_.Handle()); }

    TemporaryFolder folder_{};
    FakeLocale locale_{};
    FakeFileSystem file_system_{};
    IconKeys keys_{file_system_, locale_};
    ImageList images_{};
};

TEST_F(ImageListTest, TextDocumentsShareOnePictureAndProgramsHaveTheirOwn) {
    const std::string documents[] = {folder_.File(L"a.txt"), folder_.File(L"b.txt")};
    const std::string programs[] = {folder_.File(L"a.exe"), folder_.File(L"b.exe")};
    file_system_.files = {{documents[0], "Text Document"},
                          {documents[1], "Text Document"},
                          {programs[0], "Application"},
                          {programs[1], "Application"}};
    Place(documents[0]);
    Place(documents[1]);
    EXPECT_EQ(Held(), 1);
    Place(programs[0]);
    Place(programs[1]);
    EXPECT_EQ(Held(), 3);
    EXPECT_EQ(images_.Keyed().Count(), 3);
}

TEST_F(ImageListTest, FoldersHaveTheShellsIconToo) {
    file_system_.folders = {folder_.Path() + "\\"};
    Place(folder_.Path() + "\\");
    EXPECT_EQ(Held(), 1);
    EXPECT_EQ(images_.Keyed().Index(":"), 1);
}

TEST_F(ImageListTest, AMissingPathHasNoIconAndAddsNothing) {
    images_.Keyed().Add("key", folder_.Path() + "\\gone.txt");
    EXPECT_EQ(Held(), 0);
    EXPECT_EQ(images_.Keyed().Count(), 0);
}

TEST_F(ImageListTest, PicturesAreTheSystemsSmallIconSize) {
    images_.Keyed().Add("key", folder_.File(L"a.txt"));
    int width = 0;
    int height = 0;
    ::ImageList_GetIconSize(images_.Handle(), &width, &height);
    EXPECT_EQ(width, ::GetSystemMetrics(SM_CXSMICON));
    EXPECT_EQ(height, ::GetSystemMetrics(SM_CYSMICON));
}

TEST(ImageList, IconsAreGivenBackOnceTheyAreAdded) {
    HICON given = nullptr;
    ImageList images([&](const std::string& /*path*/) {
        given = ::CopyIcon(::LoadIconW(nullptr, IDI_APPLICATION));
        return UniqueIcon(given);
    });
    images.Keyed().Add("key", "any");
    EXPECT_EQ(::ImageList_GetImageCount(images.Handle()), 1);
    ICONINFO info{};
    EXPECT_FALSE(::GetIconInfo(given, &info));
}

}  // namespace
}  // namespace tidemark
