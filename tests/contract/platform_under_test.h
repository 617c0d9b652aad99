#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace tidemark {

// One implementation of the seam with a place of its own to work in, and the verbs that a test
// needs around it: what other programs, the user and the passing of time do.
class PlatformUnderTest {
  public:
    virtual ~PlatformUnderTest() = default;

    [[nodiscard]] virtual Platform Parts() = 0;

    // An existing folder of the test's own, empty at first, without a trailing backslash. It goes
    // with everything below it when this ends.
    [[nodiscard]] virtual std::string Folder() const = 0;
    virtual void MakeFolder(const std::string& path) = 0;
    virtual void MakeFile(const std::string& path) = 0;
    // A link to an existing folder; false where none can be made.
    [[nodiscard]] virtual bool MakeFolderLink(const std::string& path,
                                              const std::string& target) = 0;
    // Another program holds the file open and lets nobody else write, until told otherwise.
    virtual void Lock(const std::string& path) = 0;
    virtual void Unlock() = 0;
    // Another program begins to read the file and lets others read and write; false when it may
    // not.
    [[nodiscard]] virtual bool StartReading(const std::string& path) = 0;
    virtual void StopReading() = 0;

    [[nodiscard]] virtual FileTime WrittenTime(const std::string& path) = 0;
    [[nodiscard]] virtual FileTime CreatedTime(const std::string& path) = 0;
    [[nodiscard]] virtual FileTime AccessedTime(const std::string& path) = 0;

    // Runs the message loop until the condition holds; gives up (false) after a long while.
    virtual bool RunUntil(const std::function<bool()>& done) = 0;
    // Lets enough time pass for due timers and waiting messages to be noticed by the pump.
    virtual void PassTime() = 0;
    // Queues an action as a message.
    virtual void Post(std::function<void()> action) = 0;
    virtual void PostQuit() = 0;
    // How many exceptions of ticks were caught at the edge.
    [[nodiscard]] virtual std::size_t ReportedExceptions() const = 0;

    // Why this system cannot show something here; empty when it can.
    [[nodiscard]] virtual std::string CannotKeepCreationTimes() const { return {}; }
    [[nodiscard]] virtual std::string CannotHoldLoneSurrogates() const { return {}; }
    [[nodiscard]] virtual std::string ReadOnlyFilesOpenAllTheSame() const { return {}; }
    [[nodiscard]] virtual std::string TimesBefore1601AreTaken() const { return {}; }
};

struct PlatformKind {
    const char* name;
    std::function<std::unique_ptr<PlatformUnderTest>()> make;
};

// Every implementation that this test program can run on.
[[nodiscard]] const std::vector<PlatformKind>& PlatformKinds();

[[nodiscard]] std::unique_ptr<PlatformUnderTest> MakeMemoryPlatform();
#ifdef _WIN32
[[nodiscard]] std::unique_ptr<PlatformUnderTest> MakeWin32Platform();
#endif

// Base of the suites that run on all of them.
class PlatformContract : public testing::TestWithParam<PlatformKind> {
  protected:
    [[nodiscard]] std::string Path(const std::string& name) const {
        return system_->Folder() + "\\" + name;
    }
    [[nodiscard]] std::string NewFile(const std::string& name) {
        system_->MakeFile(Path(name));
        return Path(name);
    }
    [[nodiscard]] std::string NewFolder(const std::string& name) {
        system_->MakeFolder(Path(name));
        return Path(name);
    }
    // A folder whose path is longer than the system's plain form of a path can be.
    [[nodiscard]] std::string DeepFolder() {
        std::string folder = system_->Folder();
        while (folder.size() < 400) {
            folder.append("\\").append(60, 'd');
            system_->MakeFolder(folder);
        }
        return folder;
    }

    std::unique_ptr<PlatformUnderTest> system_ = GetParam().make();
    Platform platform_ = system_->Parts();
    KernelFiles& files_ = platform_.files;
};

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): wraps GoogleTest's own macro.
#define TIDEMARK_ON_EVERY_PLATFORM(suite)                                          \
    INSTANTIATE_TEST_SUITE_P(Platforms, suite, testing::ValuesIn(PlatformKinds()), \
                             [](const auto& kind) { return kind.param.name; })

}  // namespace tidemark
