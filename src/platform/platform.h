#pragma once

#include "platform/file_system_object.h"
#include "platform/kernel_files.h"
#include "platform/message_pump.h"
#include "platform/timer_object.h"
#include "platform/user_locale.h"

namespace tidemark {

// The system as the engine is handed it. The parts are not owned and outlive whoever uses them.
struct Platform {
    KernelFiles& files;
    FileSystemObject& file_system;
    TimerSource& timers;
    MessagePump& pump;
    UserLocale& locale;
};

}  // namespace tidemark
