#include "app/app_path.h"

#include <cstddef>
#include <string_view>

#include "engine/paths.h"

namespace tidemark {
namespace {

constexpr const char* kAppPathsKey = R"(Software\Microsoft\Windows\CurrentVersion\App Paths\)";

bool EndsInExe(std::string_view path) {
    constexpr std::string_view kExtension = ".exe";
    if (path.size() < kExtension.size()) {
        return false;
    }
    const std::string_view end = path.substr(path.size() - kExtension.size());
    for (std::size_t i = 0; i < kExtension.size(); ++i) {
        const char lower =
            end[i] >= 'A' && end[i] <= 'Z' ? static_cast<char>(end[i] - 'A' + 'a') : end[i];
        if (lower != kExtension[i]) {
            return false;
        }
    }
    return true;
}

// The file's name as its folder lists it; empty when there is no such file.
std::string ListedName(KernelFiles& files, const std::string& path) {
    FoundEntry entry;
    const SearchHandle search = files.SearchFirst(path, entry);
    if (search == kInvalidSearch) {
        return {};
    }
    files.SearchClose(search);
    return (entry.attributes & file_attribute::kDirectory) != 0 ? std::string() : entry.name;
}

}  // namespace

void RegisterAppPath(MachineRegistry& registry, KernelFiles& files, const std::string& exe_name,
                     const std::string& folder) {
    std::string full = AddBackslash(folder) + exe_name;
    if (!EndsInExe(full)) {
        full += ".exe";
    }
    const RegistryKey key = registry.CreateOrOpen(kAppPathsKey + ListedName(files, full));
    if (key == kNoRegistryKey) {
        return;
    }
    registry.SetDefaultText(key, full);
    registry.SetText(key, "Path", RemoveBackslash(folder));
    registry.Close(key);
}

}  // namespace tidemark
