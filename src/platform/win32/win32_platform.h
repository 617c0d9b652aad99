#pragma once

#include <functional>

#include "platform/platform.h"
#include "platform/win32/win32_file_system_object.h"
#include "platform/win32/win32_kernel_files.h"
#include "platform/win32/win32_message_pump.h"
#include "platform/win32/win32_timer_source.h"
#include "platform/win32/win32_user_locale.h"
#include "platform/win32/windows.h"

namespace tidemark {

// What the system needs of its user. All run on the thread that made the platform.
struct Win32PlatformHooks {
    // Does with a message what the message loop does; lets no exception out.
    std::function<void(MSG&)> dispatch;
    // A quit message was met in the middle of work, which is to be cancelled. May be empty.
    std::function<void()> on_quit;
    // Reports the exception being handled, which a timer's tick threw.
    std::function<void()> report_exception;
};

// Windows itself, as the engine is handed it. For one thread, on which COM is initialised for as
// long as this lives.
class Win32Platform {
  public:
    // Throws ProgramError when the system gives no timer.
    explicit Win32Platform(const Win32PlatformHooks& hooks)
        : timers_(hooks.report_exception), pump_(hooks.dispatch, hooks.on_quit, timers_) {}

    // The parts live as long as this object.
    [[nodiscard]] Platform Parts() { return {files_, file_system_, timers_, pump_, locale_}; }

  private:
    Win32KernelFiles files_;
    Win32FileSystemObject file_system_;
    Win32TimerSource timers_;
    Win32MessagePump pump_;
    Win32UserLocale locale_;
};

}  // namespace tidemark
