#pragma once

#include <cstdint>
#include <string>

namespace tidemark {

// The floors: the system calls that the work cannot do without, in a plain loop with no window, no
// engine, no messages and no reports.

// Entries of a folder ("\" at its end) and of everything below it, found by listing alone. Folders
// whose name begins with a dot are left out.
[[nodiscard]] std::int64_t FloorCount(const std::wstring& folder);

// Opens each of them, sets Last-Modified and then Created to the file time, and closes it.
// `read_attributes` has the attributes of each read by its path first.
[[nodiscard]] std::int64_t FloorStamp(const std::wstring& folder, std::int64_t time,
                                      bool read_attributes = false);

}  // namespace tidemark
