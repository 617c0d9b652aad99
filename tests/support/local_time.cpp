#include "support/local_time.h"

#include <cstdint>
#include <stdexcept>

namespace tidemark {

SYSTEMTIME LocalTime(int year, int month, int day, int hour, int minute, int second) {
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(year);
    time.wMonth = static_cast<WORD>(month);
    time.wDay = static_cast<WORD>(day);
    time.wHour = static_cast<WORD>(hour);
    time.wMinute = static_cast<WORD>(minute);
    time.wSecond = static_cast<WORD>(second);
    return time;
}

FileTime FromLocal(const SYSTEMTIME& local) {
    FILETIME local_time{};
    FILETIME system_time{};
    if (!::SystemTimeToFileTime(&local, &local_time) ||
        !::LocalFileTimeToFileTime(&local_time, &system_time)) {
        throw std::runtime_error("there is no such date");
    }
    return FromSystem(system_time);
}

FileTime FromSystem(const FILETIME& time) {
    const std::uint64_t ticks = std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    return {static_cast<std::int64_t>(ticks)};
}

}  // namespace tidemark
