#include "support/process_resources.h"

#include <cstring>
#include <vector>

#include "platform/win32/windows.h"

// Need the system's main header before them.
#include <psapi.h>
#include <winternl.h>

namespace tidemark {
namespace {

template <typename Pointer>
Pointer Function(const char* name) {
    return reinterpret_cast<Pointer>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), name)));
}

// The system's list of all handles. The count that a process can ask for its own is not
// implemented by every system that this runs on.
int HandlesOf(DWORD process) {
    struct Handle {
        USHORT process;
        USHORT back_trace;
        UCHAR type;
        UCHAR flags;
        USHORT value;
        void* object;
        ULONG access;
    };
    constexpr auto kHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    constexpr NTSTATUS kTooSmall = static_cast<NTSTATUS>(0xC0000004);
    static const auto kQuery =
        Function<decltype(&NtQuerySystemInformation)>("NtQuerySystemInformation");
    std::vector<char> buffer(1 << 16);
    ULONG used = 0;
    NTSTATUS status = 0;
    while ((status = kQuery(kHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()),
                            &used)) == kTooSmall) {
        buffer.resize(buffer.size() * 2);
    }
    if (status < 0) {
        return 0;
    }
    ULONG count = 0;
    std::memcpy(&count, buffer.data(), sizeof count);
    int ours = 0;
    for (ULONG i = 0; i < count; ++i) {
        Handle handle{};
        std::memcpy(&handle, buffer.data() + sizeof(void*) + i * sizeof(Handle), sizeof handle);
        ours += handle.process == static_cast<USHORT>(process) ? 1 : 0;
    }
    return ours;
}

// Used entries of the table of drawing objects that the system shares with every process, for
// systems that do not count.
int UsedDrawingObjects() {
#ifdef _WIN64
    constexpr std::size_t kTableInBlock = 0xF8;
    constexpr std::size_t kEntrySize = 24;
#else
    constexpr std::size_t kTableInBlock = 0x94;
    constexpr std::size_t kEntrySize = 16;
#endif
    constexpr std::size_t kEntries = 0x10000;
    static const auto kProcessBlock = Function<const char*(NTAPI*)()>("RtlGetCurrentPeb");
    const char* const block = kProcessBlock();
    const char* table = nullptr;
    std::memcpy(&table, block + kTableInBlock, sizeof table);
    int used = 0;
    for (std::size_t i = 0; table != nullptr && i < kEntries; ++i) {
        const void* object = nullptr;
        std::memcpy(&object, table + i * kEntrySize, sizeof object);
        used += object != nullptr ? 1 : 0;
    }
    return used;
}

BOOL CALLBACK CountOne(HWND, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM count) {
    ::EnumChildWindows(window, CountOne, count);
    return CountOne(window, count);
}

}  // namespace

ProcessResources ResourcesNow() {
    ProcessResources now;
    now.handles = HandlesOf(::GetCurrentProcessId());
    now.gdi_objects = static_cast<int>(::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS));
    if (now.gdi_objects == 0) {
        now.gdi_objects = UsedDrawingObjects();
    }
    now.user_objects = static_cast<int>(::GetGuiResources(::GetCurrentProcess(), GR_USEROBJECTS));
    ::EnumThreadWindows(::GetCurrentThreadId(), CountWithChildren,
                        reinterpret_cast<LPARAM>(&now.windows));
    PROCESS_MEMORY_COUNTERS memory{};
    memory.cb = sizeof memory;
    ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &memory, sizeof memory);
    now.memory = memory.PagefileUsage;
    return now;
}

}  // namespace tidemark
