#pragma once

#include "platform/memory/faulty_kernel_files.h"
#include "platform/memory/memory_file_system_object.h"
#include "platform/memory/memory_message_pump.h"
#include "platform/memory/memory_user_locale.h"
#include "platform/memory/memory_volume.h"
#include "platform/platform.h"

namespace tidemark {

// A whole system in memory: what tests hand to the engine.
struct MemorySystem {
    MemoryVolume volume;
    FaultyKernelFiles files{volume};
    MemoryFileSystemObject file_system{volume};
    MemoryMessagePump pump;
    MemoryUserLocale locale;

    [[nodiscard]] Platform Parts() { return {files, file_system, pump.Timers(), pump, locale}; }
};

}  // namespace tidemark
