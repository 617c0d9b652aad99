#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tidemark {

// The system time that floors stamp with, in 2019.
inline constexpr std::int64_t kFloorStampTime = 132'000'000'000'000'000;

// The floors: the system calls that the work cannot do without, in a plain loop with no window, no
// engine, no messages and no reports. A call that fails ends the benchmark.

// Entries of a folder ("\" at its end) and of everything below it, found by listing alone. Folders
// whose name begins with a dot are left out.
[[nodiscard]] std::int64_t FloorCount(const std::wstring& folder);

// Opens each of them, sets Last-Modified and then Created, and closes it.
[[nodiscard]] std::int64_t FloorStamp(const std::wstring& folder);

// The same for each of these files.
void FloorStampFiles(const std::vector<std::wstring>& paths);

}  // namespace tidemark
