#pragma once

// The one place that includes the system's main header. The definitions that shape it (UNICODE,
// NOMINMAX, the system version ...) come from the build.
#include <windows.h>
