#include <deque>
#include <stdexcept>
#include <utility>

#include "contract/platform_under_test.h"
#include "platform/win32/system_path.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/windows.h"
#include "support/com_apartment.h"

namespace tidemark {
namespace {

struct TestFileTraits {
    using Type = HANDLE;
    static Type None() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Type file) noexcept { ::CloseHandle(file); }
};
using TestFile = UniqueHandle<TestFileTraits>;

constexpr UINT kPostedAction = WM_APP + 1;

bool IsWine() {
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ::GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

void Check(bool made, const std::string& what) {
    if (!made) {
        throw std::runtime_error(what + ": error " + std::to_string(::GetLastError()));
    }
}

std::wstring UserName() {
    std::wstring name(256, L'\0');
    DWORD size = static_cast<DWORD>(name.size());
    Check(::GetUserNameW(name.data(), &size) != FALSE, "the user's name");
    name.resize(size - 1);
    return name;
}

void RemoveAll(const std::wstring& folder) {
    WIN32_FIND_DATAW found;
    const HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::wstring name = found.cFileName;
            const std::wstring path = folder + L"\\" + name;
            if (name == L"." || name == L"..") {
                continue;
            }
            ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
                RemoveAll(path);
            } else {
                ::DeleteFileW(path.c_str());
            }
        } while (::FindNextFileW(search, &found) != FALSE);
        ::FindClose(search);
    }
    ::RemoveDirectoryW(folder.c_str());
}

class Win32PlatformUnderTest final : public PlatformUnderTest {
  public:
    Win32PlatformUnderTest()
        : platform_({[this](MSG& message) { Dispatch(message); }, [] {},
                     [this] { ++reported_exceptions_; }}) {
        static int made = 0;
        std::wstring temp(MAX_PATH, L'\0');
        temp.resize(::GetTempPathW(static_cast<DWORD>(temp.size()), temp.data()));
        folder_ = Utf8FromWide(temp) + "tidemark-contract-" +
                  std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++made);
        MakeFolder(folder_);
    }
    ~Win32PlatformUnderTest() override {
        RemoveAll(L"\\\\?\\" + WideFromUtf8(folder_));
        // What a test left in the thread's queue is not for the next one.
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        }
    }
    Win32PlatformUnderTest(const Win32PlatformUnderTest&) = delete;
    Win32PlatformUnderTest& operator=(const Win32PlatformUnderTest&) = delete;

    Platform Parts() override { return platform_.Parts(); }
    std::string Folder() const override { return folder_; }
    void MakeFolder(const std::string& path) override {
        Check(::CreateDirectoryW(SystemPath(path).c_str(), nullptr) != FALSE, path);
    }
    void MakeFile(const std::string& path) override {
        const TestFile file(::CreateFileW(SystemPath(path).c_str(), GENERIC_WRITE, 0, nullptr,
                                          CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        Check(static_cast<bool>(file), path);
    }
    void Lock(const std::string& path) override {
        lock_.Reset(::CreateFileW(SystemPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        Check(static_cast<bool>(lock_), path);
    }
    void Unlock() override { lock_.Reset(); }
    bool StartReading(const std::string& path) override {
        reader_.Reset(::CreateFileW(SystemPath(path).c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
        return static_cast<bool>(reader_);
    }
    void StopReading() override { reader_.Reset(); }
    FileTime WrittenTime(const std::string& path) override {
        return TimeOf(Attributes(path).ftLastWriteTime);
    }
    FileTime CreatedTime(const std::string& path) override {
        return TimeOf(Attributes(path).ftCreationTime);
    }
    FileTime AccessedTime(const std::string& path) override {
        return TimeOf(Attributes(path).ftLastAccessTime);
    }
    bool RunUntil(const std::function<bool()>& done) override {
        const ULONGLONG deadline = ::GetTickCount64() + 20000;
        while (!done() && ::GetTickCount64() < deadline) {
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
            MSG message;
            while (!done() && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
                Dispatch(message);
            }
        }
        return done();
    }
    void PassTime() override { ::Sleep(20); }
    void Post(std::function<void()> action) override {
        actions_.push_back(std::move(action));
        ::PostThreadMessageW(::GetCurrentThreadId(), kPostedAction, 0, 0);
    }
    void PostQuit() override { ::PostQuitMessage(0); }
    std::size_t ReportedExceptions() const override { return reported_exceptions_; }

    std::string CannotKeepCreationTimes() const override {
        return IsWine() ? "Wine keeps no creation times on this system's file systems" : "";
    }
    std::string CannotHoldLoneSurrogates() const override {
        return IsWine() ? "Wine cannot make a name with a lone surrogate" : "";
    }
    std::string TimesBefore1601AreTaken() const override {
        return IsWine() ? "Wine takes times before 1601" : "";
    }
    std::string ReadOnlyFilesOpenAllTheSame() const override {
        return IsWine() && UserName() == L"root"
                   ? "under Wine root opens read-only files all the same"
                   : "";
    }

  private:
    static FileTime TimeOf(const FILETIME& time) {
        const std::uint64_t ticks = (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
        return {static_cast<std::int64_t>(ticks)};
    }
    static WIN32_FILE_ATTRIBUTE_DATA Attributes(const std::string& path) {
        WIN32_FILE_ATTRIBUTE_DATA data{};
        Check(
            ::GetFileAttributesExW(SystemPath(path).c_str(), GetFileExInfoStandard, &data) != FALSE,
            path);
        return data;
    }
    void Dispatch(MSG& message) {
        if (message.hwnd == nullptr && message.message == kPostedAction) {
            const auto action = std::move(actions_.front());
            actions_.pop_front();
            action();
            return;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }

    ComApartment apartment_;
    std::string folder_;
    TestFile lock_;
    TestFile reader_;
    std::deque<std::function<void()>> actions_;
    std::size_t reported_exceptions_ = 0;
    Win32Platform platform_;
};

}  // namespace

std::unique_ptr<PlatformUnderTest> MakeWin32Platform() {
    return std::make_unique<Win32PlatformUnderTest>();
}

}  // namespace tidemark
