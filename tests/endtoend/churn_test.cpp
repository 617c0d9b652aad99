// A tree that another process changes while it is stamped.

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "endtoend/engine_on_windows.h"
#include "platform/win32/wide_text.h"
#include "support/poll_until.h"
#include "support/process_resources.h"
#include "support/remote_process.h"
#include "support/size_from_environment.h"

namespace tidemark {
namespace {

// Changes a folder from another process while alive.
class Churn {
  public:
    explicit Churn(const std::string& folder)
        : name_("tidemark-churn-" + std::to_string(::GetCurrentProcessId())),
          stop_(::CreateEventW(nullptr, TRUE, FALSE, WideFromUtf8(name_).c_str())),
          process_(TestProgramFolder() + "\\tree_churner.exe",
                   Quoted(folder) + " " + name_ + " " + std::to_string(::GetCurrentProcessId())) {}
    ~Churn() { ::CloseHandle(stop_); }
    Churn(const Churn&) = delete;
    Churn& operator=(const Churn&) = delete;

    // Ends it; the number of rounds it made, or nothing when it failed or did not end.
    std::optional<DWORD> Stop() {
        ::SetEvent(stop_);
        return process_.WaitForExit(std::chrono::seconds(60));
    }

  private:
    std::string name_;
    HANDLE stop_;
    RemoteProcess process_;
};

class ChurnedTree : public EngineOnWindows {};

// TIDEMARK_CHURN_SECONDS sets for how long.
TEST_F(ChurnedTree, WhatChangesUnderTheWalkStopsNothingAndHidesNothingElse) {
    constexpr std::chrono::seconds kPatience(30);
    const std::chrono::seconds time(SizeFromEnvironment("TIDEMARK_CHURN_SECONDS", 1));
    for (const char* folder : {"a", "churned", "z"}) {
        for (int i = 0; i < 20; ++i) {
            tree_.MakeFile(std::string(folder) + "\\steady " + std::to_string(i) + "\\file.txt");
        }
    }
    const auto item = NewItem(tree_.Root());
    StampAndWait(*item);
    Churn churn(tree_.Path("churned"));
    ASSERT_TRUE(PollUntil(std::chrono::seconds(30), [&] {
        return ::GetFileAttributesW(
                   WideFromUtf8(tree_.Path("churned\\comes and goes 1")).c_str()) !=
               INVALID_FILE_ATTRIBUTES;
    }));

    const int handles_before = ResourcesNow().handles;
    int stamps = 0;
    std::map<std::int32_t, int> records;  // by code
    const auto end = std::chrono::steady_clock::now() + time;
    double date = kStampDate;
    do {
        date += 1;
        item->Count();
        item->Stamp(date, 0, /*RemoveReadOnlyAttribute=*/stamps % 2 == 0, false);
        WaitFor(*item);
        ++stamps;
        ASSERT_TRUE(item->StampComplete() && item->CountComplete());
        // Everything steady, and nothing but what is churned can fail.
        ASSERT_GE(item->StampedFileCount(), 60);
        ASSERT_GE(item->StampedFolderCount(), 63);
        for (const auto& error : *item->StampErrors()) {
            ASSERT_TRUE(error->ItemName.starts_with(tree_.Path("churned\\"))) << error->ItemName;
            ASSERT_EQ(error->ItemName.find("steady"), std::string::npos) << error->ItemName;
            ASSERT_GT(error->ErrorNumber, 0) << error->ItemName;
            ASSERT_FALSE(error->ErrorDescription.empty()) << error->ErrorNumber;
            ++records[error->ErrorNumber];
        }
        // Until one has failed at least: without, nothing of this was tried.
    } while (std::chrono::steady_clock::now() <
             end + (records.empty() ? kPatience : std::chrono::seconds(0)));
    EXPECT_FALSE(records.empty());

    const std::optional<DWORD> rounds = churn.Stop();
    ASSERT_TRUE(rounds && *rounds > 0 && *rounds < 0x7FFFFFFF);
    RecordProperty("stamps", stamps);
    RecordProperty("rounds", static_cast<int>(*rounds));
    for (const auto& [code, count] : records) {
        RecordProperty("code_" + std::to_string(code), count);
    }
    const FileTime last = {StampTime().ticks +
                           static_cast<std::int64_t>(date - kStampDate) * 864'000'000'000};
    for (const auto& [path, entry] : tree_.Entries()) {
        if (path.find("steady") != std::string::npos) {
            EXPECT_EQ(entry.written, last) << path;
        }
    }
    // Once it is quiet, everything can be stamped again.
    item->Stamp(kStampDate, 0, /*RemoveReadOnlyAttribute=*/true, false);
    WaitFor(*item);
    EXPECT_EQ(item->StatusString(), "Complete");
    // What failed after it was opened stays open; nothing else does.
    EXPECT_EQ(ResourcesNow().handles, handles_before + static_cast<int>(files_.OpenFileCount()));
    RecordProperty("open", static_cast<int>(files_.OpenFileCount()));
}

}  // namespace
}  // namespace tidemark
