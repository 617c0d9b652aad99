#pragma once

#include <optional>

#include "platform/kernel_files.h"

namespace tidemark {

// A local date and time of day is a day number: whole days since 30 December 1899, the fraction
// being the time of day. The type is double.

// The local file time of a day number, rounded to the nearest unit of 100 nanoseconds. Every whole
// second from 1980 to 2100 comes out exact. Nothing when a file time cannot hold it, or when it is
// no number.
[[nodiscard]] std::optional<FileTime> LocalFileTimeFromDayNumber(double date);

}  // namespace tidemark
