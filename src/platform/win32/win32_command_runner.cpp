#include "platform/win32/win32_command_runner.h"

#include "platform/win32/system_message.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {

void Win32CommandRunner::Run(const std::string& command_line) {
    std::wstring writable = WideFromUtf8(command_line);  // the call may write into it
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started{};
    if (!::CreateProcessW(/*lpApplicationName=*/nullptr, writable.data(),
                          /*lpProcessAttributes=*/nullptr, /*lpThreadAttributes=*/nullptr,
                          /*bInheritHandles=*/FALSE, /*dwCreationFlags=*/0,
                          /*lpEnvironment=*/nullptr, /*lpCurrentDirectory=*/nullptr, &startup,
                          &started)) {
        const DWORD code = ::GetLastError();
        ThrowSystemError(code, "Starting " + command_line);
    }
    ::CloseHandle(started.hThread);
    ::CloseHandle(started.hProcess);
}

}  // namespace tidemark
