#include <deque>
#include <functional>
#include <optional>
#include <utility>

#include "contract/platform_under_test.h"
#include "platform/win32/system_path.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/windows.h"
#include "support/com_apartment.h"
#include "support/folder_link.h"
#include "support/on_wine.h"
#include "support/real_tree.h"

namespace tidemark {
namespace {

struct TestFileTraits {
    using Type = HANDLE;
    static Type None() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Type file) noexcept { ::CloseHandle(file); }
};
using TestFile = UniqueHandle<TestFileTraits>;

constexpr UINT kPostedAction = WM_APP + 1;

class Win32PlatformUnderTest final : public PlatformUnderTest {
  public:
    Win32PlatformUnderTest()
        : platform_({[this](MSG& message) { Dispatch(message); }, [] {},
                     [this] { ++reported_exceptions_; }}) {}
    ~Win32PlatformUnderTest() override {
        // What a test left in the thread's queue is not for the next one.
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        }
    }
    Win32PlatformUnderTest(const Win32PlatformUnderTest&) = delete;
    Win32PlatformUnderTest& operator=(const Win32PlatformUnderTest&) = delete;

    Platform Parts() override { return platform_.Parts(); }
    std::string Folder() const override { return tree_.Root(); }
    void MakeFolder(const std::string& path) override { tree_.MakeFolder(Below(path)); }
    void MakeFile(const std::string& path) override { tree_.MakeFile(Below(path)); }
    // Both are in the same folder.
    bool MakeFolderLink(const std::string& path, const std::string& target) override {
        const std::size_t name = path.rfind('\\') + 1;
        link_.emplace(path.substr(0, name - 1), path.substr(name), target.substr(name));
        return link_->Exists();
    }
    void Lock(const std::string& path) override { lock_.emplace(path); }
    void Unlock() override { lock_.reset(); }
    bool StartReading(const std::string& path) override {
        reader_.Reset(::CreateFileW(SystemPath(path).c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
        return static_cast<bool>(reader_);
    }
    void StopReading() override { reader_.Reset(); }
    FileTime WrittenTime(const std::string& path) override { return EntryOf(path).written; }
    FileTime CreatedTime(const std::string& path) override { return EntryOf(path).created; }
    FileTime AccessedTime(const std::string& path) override { return EntryOf(path).accessed; }
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
        return OnWine() ? "Wine keeps no creation times on this system's file systems" : "";
    }
    std::string CannotHoldLoneSurrogates() const override {
        return OnWine() ? "Wine cannot make a name with a lone surrogate" : "";
    }
    std::string TimesBefore1601AreTaken() const override {
        return OnWine() ? "Wine takes times before 1601" : "";
    }
    std::string ReadOnlyFilesOpenAllTheSame() const override {
        RealTree tree;
        const std::string file = tree.MakeFile("read-only");
        tree.MakeReadOnly("read-only");
        return OnWine() && CanOpenForWriting(file)
                   ? "under Wine root opens read-only files all the same"
                   : "";
    }

  private:
    // The part of a full path behind the root.
    [[nodiscard]] std::string Below(const std::string& path) const {
        return path.substr(Folder().size() + 1);
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
    RealTree tree_;
    std::optional<FolderLink> link_;
    std::optional<LockedFile> lock_;
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
