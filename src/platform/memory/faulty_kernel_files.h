#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/kernel_files.h"

namespace tidemark {

enum class KernelCall {
    kSearchFirst,
    kSearchNext,
    kSearchClose,
    kReadAttributes,
    kWriteAttributes,
    kReadIdentity,
    kOpenForTimes,
    kReadAttributesOf,
    kSetLastWriteTime,
    kSetCreationTime,
    kCloseFile,
    kLocalToSystemTime,
    kMessageText,
    kIsNtFamily,
};
inline constexpr std::size_t kKernelCallCount = 14;
[[nodiscard]] const char* NameOf(KernelCall call);

// One call as it was made. A call that takes a handle has the path the handle was made with.
struct KernelCallRecord {
    KernelCall call{};
    std::string path;
    std::uint32_t argument = 0;  // attributes, open flags or error code
    FileTime time;
};

// Which calls a fault or an action is for.
struct KernelCallFilter {
    KernelCall call{};
    std::string path;     // exactly as passed; empty for any
    std::size_t nth = 0;  // only the nth call (from 1) that matches the rest; 0 for every
};

// Passes every call on to another KernelFiles; writes down, counts, and on request makes calls
// fail, or has something happen right before them.
class FaultyKernelFiles final : public KernelFiles {
  public:
    // Not owned; outlives the wrapper.
    explicit FaultyKernelFiles(KernelFiles& files) : files_(files) {}

    // The call fails with the code and is not passed on. A close that fails so leaves the handle
    // open; a search that fails to fetch an entry meets it again at the next call.
    void Fail(const KernelCallFilter& which, std::uint32_t code);
    // The call is passed on and answered as it turns out, but leaves this code.
    void LeaveCode(const KernelCallFilter& which, std::uint32_t code);
    // Runs right before the call.
    void Before(const KernelCallFilter& which, std::function<void()> action);
    void ClearFaults() { rules_.clear(); }
    // Failures injected so far.
    [[nodiscard]] std::size_t FailureCount() const { return failures_; }
    // Handles of files and folders that were opened through this object and not closed.
    [[nodiscard]] std::size_t OpenFileCount() const { return file_paths_.size(); }

    // Calls are written down only while this is on (it is at first).
    void SetRecording(bool recording) { recording_ = recording; }
    [[nodiscard]] const std::vector<KernelCallRecord>& Calls() const { return calls_; }
    [[nodiscard]] std::size_t CallCount(KernelCall call) const;
    void ClearCalls() { calls_.clear(); }

    SearchHandle SearchFirst(const std::string& pattern, FoundEntry& entry) override;
    bool SearchNext(SearchHandle search, FoundEntry& entry) override;
    bool SearchClose(SearchHandle search) override;
    std::uint32_t ReadAttributes(const std::string& path) override;
    bool WriteAttributes(const std::string& path, std::uint32_t attributes) override;
    bool ReadIdentity(const std::string& path, FileIdentity& identity) override;
    FileHandle OpenForTimes(const std::string& path, std::uint32_t flags_and_attributes) override;
    std::uint32_t ReadAttributesOf(FileHandle file) override;
    bool SetLastWriteTime(FileHandle file, FileTime time) override;
    bool SetCreationTime(FileHandle file, FileTime time) override;
    bool CloseFile(FileHandle file) override;
    bool LocalToSystemTime(FileTime local, FileTime& system) override;
    std::string MessageText(std::uint32_t code) override;
    bool IsNtFamily() override;
    std::uint32_t LastError() const override { return last_error_; }

  private:
    struct Rule {
        KernelCallFilter which;
        std::optional<std::uint32_t> fail_code;
        std::optional<std::uint32_t> left_code;
        std::function<void()> action;
        std::size_t met = 0;
    };
    // What the rules say about the call at hand.
    struct Verdict {
        std::optional<std::uint32_t> fail_code;
        std::optional<std::uint32_t> left_code;
    };

    Verdict Judge(KernelCall call, const std::string& path);
    // Makes one call by the rules: `pass_on` returns what the wrapped object answers.
    template <typename Result, typename PassOn>
    Result Make(KernelCallRecord record, Result failure, PassOn pass_on);
    [[nodiscard]] std::string SearchPath(SearchHandle search) const;
    [[nodiscard]] std::string FilePath(FileHandle file) const;

    KernelFiles& files_;
    std::vector<Rule> rules_;
    std::vector<KernelCallRecord> calls_;
    std::unordered_map<std::uintptr_t, std::string> search_paths_;
    std::unordered_map<std::uintptr_t, std::string> file_paths_;
    std::size_t failures_ = 0;
    bool recording_ = true;
    std::uint32_t last_error_ = 0;
};

}  // namespace tidemark
