#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "engine/tidemark_item.h"
#include "platform/memory/memory_system.h"

namespace tidemark {

// Reaches what a test cannot bring about in reasonable time, or not tell apart.
struct TidemarkItemTestPeer {
    static void SetFileCount(TidemarkItem& item, std::int32_t count) {
        item.counters_.FileCount = count;
    }
    static void SetFolderCount(TidemarkItem& item, std::int32_t count) {
        item.counters_.FolderCount = count;
    }
    static void SetStampedFileCount(TidemarkItem& item, std::int32_t count) {
        item.counters_.StampedFileCount = count;
    }
    static void SetStampedFolderCount(TidemarkItem& item, std::int32_t count) {
        item.counters_.StampedFolderCount = count;
    }
    static bool StampPending(const TidemarkItem& item) { return item.flags_.StampPending; }
};

// Day number of a local date and time.
inline double DayNumber(int year, unsigned month, unsigned day, int hour = 0, int minute = 0) {
    using namespace std::chrono;
    const sys_days epoch{std::chrono::year{1899} / 12 / 30};
    const sys_days date{std::chrono::year{year} / month / day};
    return static_cast<double>((date - epoch).count()) + (hour * 60 + minute) / 1440.0;
}

// File time of a local date and time, as the zone of a MemoryVolume has it in system time.
inline FileTime SystemTime(int year, unsigned month, unsigned day, int hour = 0, int minute = 0,
                           int minutes_ahead = 60) {
    using namespace std::chrono;
    const sys_days epoch{std::chrono::year{1601} / 1 / 1};
    const sys_days date{std::chrono::year{year} / month / day};
    const std::int64_t minutes = std::int64_t{(date - epoch).count()} * 1440 + hour * 60 + minute;
    return {(minutes - minutes_ahead) * 600'000'000};
}

// An engine on a system in memory.
class EngineTest : public testing::Test {
  protected:
    std::shared_ptr<TidemarkItem> NewItem(const std::string& path) {
        std::shared_ptr<TidemarkItem> item = TidemarkItem::Create(system.Parts());
        item->SetRootItem(path);
        return item;
    }

    // Stamps with 2 March 2021, 13:45, as Last-Modified and the given Created.
    void Stamp(TidemarkItem& item, double created = 0, bool remove_read_only = false,
               bool sync_folders = false) {
        item.Stamp(modified, created, remove_read_only, sync_folders);
    }
    void StampToTheEnd(TidemarkItem& item, double created = 0, bool remove_read_only = false,
                       bool sync_folders = false) {
        Stamp(item, created, remove_read_only, sync_folders);
        system.pump.RunUntilIdle();
    }

    [[nodiscard]] FileTime Written(const std::string& path) const {
        return system.volume.TimesOf(path).written;
    }
    [[nodiscard]] FileTime Created(const std::string& path) const {
        return system.volume.TimesOf(path).created;
    }
    [[nodiscard]] bool IsStamped(const std::string& path) const {
        return Written(path) == modified_time;
    }

    // A line for each: "path|stamp|code|text".
    static std::string Describe(const StampErrorList& errors) {
        std::string text;
        for (const auto& error : errors) {
            text += error->ItemName + "|" + (error->CountError ? "count" : "stamp") + "|" +
                    std::to_string(error->ErrorNumber) + "|" + error->ErrorDescription + "\n";
        }
        return text;
    }

    // Every call made, with its path and arguments: "OpenForTimes C:\a 2000080".
    std::vector<std::string> Calls() {
        std::vector<std::string> calls;
        for (const KernelCallRecord& call : system.files.Calls()) {
            std::string text = NameOf(call.call);
            if (!call.path.empty()) {
                text += " " + call.path;
            }
            if (call.argument != 0) {
                char hex[16];
                std::snprintf(hex, sizeof hex, " %x", call.argument);
                text += hex;
            }
            if (call.time == modified_time) {
                text += " modified";
            } else if (call.time == created_time) {
                text += " created";
            } else if (call.time == modified_local) {
                text += " local modified";
            } else if (call.time == created_local) {
                text += " local created";
            } else if (call.time.ticks != 0) {
                text += " another time";
            }
            calls.push_back(text);
        }
        return calls;
    }

    MemorySystem system;
    const double modified = DayNumber(2021, 3, 2, 13, 45);
    const FileTime modified_time = SystemTime(2021, 3, 2, 13, 45);
    const double created_date = DayNumber(1999, 12, 31, 23, 59);
    const FileTime created_time = SystemTime(1999, 12, 31, 23, 59);
    const FileTime modified_local = SystemTime(2021, 3, 2, 13, 45, 0);
    const FileTime created_local = SystemTime(1999, 12, 31, 23, 59, 0);
    const FileTime untouched = kMemoryBuildTime;
};

}  // namespace tidemark
