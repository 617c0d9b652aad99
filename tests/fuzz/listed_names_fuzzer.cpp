// Names of any bytes in a listed folder: every path handed to a call begins with that folder and
// stays below it, and each entry is counted and stamped or listed once.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/tidemark_item.h"
#include "fuzz/fuzz_check.h"
#include "platform/memory/memory_system.h"

namespace {

constexpr const char* kListed = "C:\\listed\\";

// An entry for each line of the text; every other one is a folder with a file in it.
std::int32_t AddEntries(tidemark::MemoryVolume& volume, std::string_view text) {
    std::int32_t entries = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string path = kListed + std::to_string(entries);
        volume.AddFile(entries % 2 == 0 ? path : path + "\\inside");
        volume.ListAs(path, std::string(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
        ++entries;
    }
    return entries;
}

bool StaysBelow(std::string_view path) {
    if (!path.starts_with(kListed)) {
        return false;
    }
    std::string_view rest = path.substr(std::string_view(kListed).size());
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of("\\/"), rest.size());
        if (rest.substr(0, end) == "..") {
            return false;
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    tidemark::MemorySystem system;
    system.volume.AddFile("C:\\outside\\victim.txt");
    system.volume.AddFolder(kListed);
    const std::int32_t entries = AddEntries(system.volume, text);

    const auto item = tidemark::TidemarkItem::Create(system.Parts());
    item->SetRootItem(kListed);
    item->Count();
    system.pump.RunUntilIdle();
    item->Stamp(44257.5, 44257.5, /*RemoveReadOnlyAttribute=*/entries % 3 == 0,
                /*SyncFolderCreatedDate=*/true);
    system.pump.RunUntilIdle();
    for (const tidemark::KernelCallRecord& call : system.files.Calls()) {
        FUZZ_CHECK(call.path.empty() || StaysBelow(call.path));
        FUZZ_CHECK(call.path.find('\0') == std::string::npos);
    }
    FUZZ_CHECK(system.volume.TimesOf("C:\\outside\\victim.txt").written ==
               tidemark::kMemoryBuildTime);
    FUZZ_CHECK(item->StampComplete());
    FUZZ_CHECK(item->StampedFileCount() == item->FileCount());
    FUZZ_CHECK(item->StampedFolderCount() + 1 == item->FolderCount());
    return 0;
}
