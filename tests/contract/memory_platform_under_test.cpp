#include <functional>
#include <utility>

#include "contract/platform_under_test.h"
#include "platform/memory/memory_system.h"

namespace tidemark {
namespace {

class MemoryPlatformUnderTest final : public PlatformUnderTest {
  public:
    MemoryPlatformUnderTest() { system_.volume.AddFolder(Folder()); }

    Platform Parts() override { return system_.Parts(); }
    std::string Folder() const override { return "C:\\Temp\\contract"; }
    void MakeFolder(const std::string& path) override { system_.volume.AddFolder(path); }
    void MakeFile(const std::string& path) override { system_.volume.AddFile(path); }
    bool MakeFolderLink(const std::string& path, const std::string& target) override {
        system_.volume.AddFolderLink(path, target);
        return true;
    }
    void Lock(const std::string& path) override {
        system_.volume.Lock(path);
        locked_ = path;
    }
    void Unlock() override { system_.volume.Unlock(locked_); }
    // Nothing in memory keeps anybody from reading, and a reader keeps nobody from anything.
    bool StartReading(const std::string& path) override { return system_.volume.FileExists(path); }
    void StopReading() override {}
    FileTime WrittenTime(const std::string& path) override {
        return system_.volume.TimesOf(path).written;
    }
    FileTime CreatedTime(const std::string& path) override {
        return system_.volume.TimesOf(path).created;
    }
    FileTime AccessedTime(const std::string& path) override {
        return system_.volume.TimesOf(path).accessed;
    }
    bool RunUntil(const std::function<bool()>& done) override {
        for (int i = 0; i < 1000 && !done(); ++i) {
            system_.pump.RunFor(10);
        }
        return done();
    }
    // The clock in memory moves in pump calls only: from now on it does at each.
    void PassTime() override { system_.pump.SetMillisecondsPerCall(20); }
    void Post(std::function<void()> action) override { system_.pump.AtCall(1, std::move(action)); }
    void PostQuit() override { system_.pump.Quit(); }
    std::size_t ReportedExceptions() const override { return system_.pump.Failures().size(); }

  private:
    MemorySystem system_;
    std::string locked_;
};

}  // namespace

std::unique_ptr<PlatformUnderTest> MakeMemoryPlatform() {
    return std::make_unique<MemoryPlatformUnderTest>();
}

}  // namespace tidemark
