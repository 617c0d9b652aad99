#include "benchmarks/measure.h"

#include <cstdio>
#include <cstdlib>

#include "platform/win32/windows.h"
// Needs <windows.h> before it.
#include <psapi.h>

namespace tidemark {

double NowMs() {
    LARGE_INTEGER frequency;
    LARGE_INTEGER now;
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) * 1000.0 / static_cast<double>(frequency.QuadPart);
}

void PrintFigure(const std::string& name, double value) {
    std::printf("%s %.6f\n", name.c_str(), value);
    std::fflush(stdout);
}

void GiveUp(const std::string& why) {
    std::printf("FAILED: %s\n", why.c_str());
    std::fflush(stdout);
    std::exit(1);
}

std::uint64_t OwnMemory() {
    PROCESS_MEMORY_COUNTERS counters{};
    if (!::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters)) {
        GiveUp("the system does not tell how much memory the process uses");
    }
    return counters.PagefileUsage;
}

}  // namespace tidemark
