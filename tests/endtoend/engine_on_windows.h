#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

#include "endtoend/end_to_end.h"
#include "engine/tidemark_item.h"
#include "platform/memory/faulty_kernel_files.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/windows.h"
#include "support/com_apartment.h"
#include "support/local_time.h"
#include "support/poll_until.h"
#include "support/real_tree.h"

namespace tidemark {

// 17 May 2019, 13:45, as a day number and as the time that a file then has.
inline constexpr double kStampDate = 43602.0 + (13 * 60 + 45) / 1440.0;
inline FileTime StampTime() {
    return FromLocal(LocalTime(2019, 5, 17, 13, 45));
}

// The engine in this process, on Windows itself and a real tree.
class EngineOnWindows : public testing::Test {
  protected:
    EngineOnWindows() { files_.SetRecording(false); }

    std::shared_ptr<TidemarkItem> NewItem(const std::string& path) {
        Platform parts = platform_.Parts();
        auto item = TidemarkItem::Create(
            {files_, parts.file_system, parts.timers, parts.pump, parts.locale});
        item->SetRootItem(path);
        return item;
    }
    // Lets messages run until the item has ended what it was asked for.
    static void WaitFor(const TidemarkItem& item) {
        const bool ended = PollUntil(std::chrono::minutes(10), [&item] {
            MSG message;
            while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                ::DispatchMessageW(&message);
            }
            return !item.CountInProgress() && !item.StampInProgress();
        });
        ASSERT_TRUE(ended);
    }
    static void StampAndWait(TidemarkItem& item) {
        item.Stamp(kStampDate, /*dateCreated=*/0, /*RemoveReadOnlyAttribute=*/false,
                   /*SyncFolderCreatedDate=*/false);
        WaitFor(item);
    }

    ComApartment apartment_;
    Win32Platform platform_{{.dispatch = [](MSG& message) { ::DispatchMessageW(&message); },
                             .on_quit = {},
                             .report_exception = [] { FAIL() << "an exception in a tick"; }}};
    // The system's own calls, with the handles that stay open counted.
    FaultyKernelFiles files_{platform_.Parts().files};
    RealTree tree_;
};

}  // namespace tidemark
