#include "platform/memory/faulty_kernel_files.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tidemark {

const char* NameOf(KernelCall call) {
    constexpr std::array<const char*, kKernelCallCount> kNames = {
        "SearchFirst",      "SearchNext",      "SearchClose",  "ReadAttributes",
        "WriteAttributes",  "ReadIdentity",    "OpenForTimes", "ReadAttributesOf",
        "SetLastWriteTime", "SetCreationTime", "CloseFile",    "LocalToSystemTime",
        "MessageText",      "IsNtFamily"};
    return kNames[static_cast<std::size_t>(call)];
}

void FaultyKernelFiles::Fail(const KernelCallFilter& which, std::uint32_t code) {
    rules_.push_back({which, code, {}, {}});
}

void FaultyKernelFiles::LeaveCode(const KernelCallFilter& which, std::uint32_t code) {
    rules_.push_back({which, {}, code, {}});
}

void FaultyKernelFiles::Before(const KernelCallFilter& which, std::function<void()> action) {
    rules_.push_back({which, {}, {}, std::move(action)});
}

std::size_t FaultyKernelFiles::CallCount(KernelCall call) const {
    return static_cast<std::size_t>(
        std::count_if(calls_.begin(), calls_.end(),
                      [call](const KernelCallRecord& made) { return made.call == call; }));
}

FaultyKernelFiles::Verdict FaultyKernelFiles::Judge(KernelCall call, const std::string& path) {
    Verdict verdict;
    std::vector<std::function<void()>> actions;
    for (Rule& rule : rules_) {
        if (rule.which.call != call || (!rule.which.path.empty() && rule.which.path != path)) {
            continue;
        }
        ++rule.met;
        if (rule.which.nth != 0 && rule.which.nth != rule.met) {
            continue;
        }
        if (rule.fail_code) {
            verdict.fail_code = rule.fail_code;
        }
        if (rule.left_code) {
            verdict.left_code = rule.left_code;
        }
        if (rule.action) {
            actions.push_back(rule.action);
        }
    }
    // Last, because an action may change the rules.
    for (const auto& action : actions) {
        action();
    }
    return verdict;
}

template <typename Result, typename PassOn>
Result FaultyKernelFiles::Make(KernelCallRecord record, Result failure, PassOn pass_on) {
    const Verdict verdict = rules_.empty() ? Verdict{} : Judge(record.call, record.path);
    Result result = std::move(failure);
    if (verdict.fail_code) {
        ++failures_;
        last_error_ = *verdict.fail_code;
    } else {
        result = pass_on();
        last_error_ = verdict.left_code.value_or(files_.LastError());
    }
    if (recording_) {
        calls_.push_back(std::move(record));
    }
    return result;
}

std::string FaultyKernelFiles::SearchPath(SearchHandle search) const {
    const auto found = search_paths_.find(static_cast<std::uintptr_t>(search));
    return found == search_paths_.end() ? std::string() : found->second;
}

std::string FaultyKernelFiles::FilePath(FileHandle file) const {
    const auto found = file_paths_.find(static_cast<std::uintptr_t>(file));
    return found == file_paths_.end() ? std::string() : found->second;
}

SearchHandle FaultyKernelFiles::SearchFirst(const std::string& pattern, FoundEntry& entry) {
    const auto search = Make({KernelCall::kSearchFirst, pattern, 0, {}}, kInvalidSearch,
                             [&] { return files_.SearchFirst(pattern, entry); });
    if (search != kInvalidSearch) {
        search_paths_[static_cast<std::uintptr_t>(search)] = pattern;
    }
    return search;
}

bool FaultyKernelFiles::SearchNext(SearchHandle search, FoundEntry& entry) {
    return Make({KernelCall::kSearchNext, SearchPath(search), 0, {}}, false,
                [&] { return files_.SearchNext(search, entry); });
}

bool FaultyKernelFiles::SearchClose(SearchHandle search) {
    return Make({KernelCall::kSearchClose, SearchPath(search), 0, {}}, false, [&] {
        search_paths_.erase(static_cast<std::uintptr_t>(search));
        return files_.SearchClose(search);
    });
}

std::uint32_t FaultyKernelFiles::ReadAttributes(const std::string& path) {
    return Make({KernelCall::kReadAttributes, path, 0, {}}, std::uint32_t{file_attribute::kInvalid},
                [&] { return files_.ReadAttributes(path); });
}

bool FaultyKernelFiles::WriteAttributes(const std::string& path, std::uint32_t attributes) {
    return Make({KernelCall::kWriteAttributes, path, attributes, {}}, false,
                [&] { return files_.WriteAttributes(path, attributes); });
}

bool FaultyKernelFiles::ReadIdentity(const std::string& path, FileIdentity& identity) {
    return Make({KernelCall::kReadIdentity, path, 0, {}}, false,
                [&] { return files_.ReadIdentity(path, identity); });
}

FileHandle FaultyKernelFiles::OpenForTimes(const std::string& path,
                                           std::uint32_t flags_and_attributes) {
    const auto file =
        Make({KernelCall::kOpenForTimes, path, flags_and_attributes, {}}, kInvalidFile,
             [&] { return files_.OpenForTimes(path, flags_and_attributes); });
    if (file != kInvalidFile) {
        file_paths_[static_cast<std::uintptr_t>(file)] = path;
    }
    return file;
}

std::uint32_t FaultyKernelFiles::ReadAttributesOf(FileHandle file) {
    return Make({KernelCall::kReadAttributesOf, FilePath(file), 0, {}},
                std::uint32_t{file_attribute::kInvalid},
                [&] { return files_.ReadAttributesOf(file); });
}

bool FaultyKernelFiles::SetLastWriteTime(FileHandle file, FileTime time) {
    return Make({KernelCall::kSetLastWriteTime, FilePath(file), 0, time}, false,
                [&] { return files_.SetLastWriteTime(file, time); });
}

bool FaultyKernelFiles::SetCreationTime(FileHandle file, FileTime time) {
    return Make({KernelCall::kSetCreationTime, FilePath(file), 0, time}, false,
                [&] { return files_.SetCreationTime(file, time); });
}

bool FaultyKernelFiles::CloseFile(FileHandle file) {
    return Make({KernelCall::kCloseFile, FilePath(file), 0, {}}, false, [&] {
        file_paths_.erase(static_cast<std::uintptr_t>(file));
        return files_.CloseFile(file);
    });
}

bool FaultyKernelFiles::LocalToSystemTime(FileTime local, FileTime& system) {
    return Make({KernelCall::kLocalToSystemTime, {}, 0, local}, false,
                [&] { return files_.LocalToSystemTime(local, system); });
}

std::string FaultyKernelFiles::MessageText(std::uint32_t code) {
    return Make({KernelCall::kMessageText, {}, code, {}}, std::string(),
                [&] { return files_.MessageText(code); });
}

bool FaultyKernelFiles::IsNtFamily() {
    return Make({KernelCall::kIsNtFamily, {}, 0, {}}, false, [&] { return files_.IsNtFamily(); });
}

}  // namespace tidemark
