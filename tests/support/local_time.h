#pragma once

#include "platform/kernel_files.h"
#include "platform/win32/windows.h"

namespace tidemark {

// A local date and time of day, as the pickers take it.
[[nodiscard]] SYSTEMTIME LocalTime(int year, int month, int day, int hour, int minute,
                                   int second = 0);
// The time that a file has which was stamped with it. Throws std::runtime_error when there is no
// such date.
[[nodiscard]] FileTime FromLocal(const SYSTEMTIME& local);
// The same time as the program counts it.
[[nodiscard]] FileTime FromSystem(const FILETIME& time);

}  // namespace tidemark
