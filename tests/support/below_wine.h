#pragma once

#include <string>

#include "platform/win32/wide_text.h"
#include "support/on_wine.h"

namespace tidemark {

// Starts a program of the system below Wine, in the folder, and does not wait for it: what Windows
// programs cannot do there. Nothing on Windows. `command` begins with the program's name, which is
// looked for in /bin.
inline void RunBelowWine(const std::string& command, const std::string& folder) {
    if (!OnWine()) {
        return;
    }
    const std::wstring program = L"Z:\\bin\\" + WideFromUtf8(command.substr(0, command.find(' ')));
    std::wstring writable = WideFromUtf8(command);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started{};
    if (::CreateProcessW(program.c_str(), writable.data(), nullptr, nullptr, FALSE, 0, nullptr,
                         WideFromUtf8(folder).c_str(), &startup, &started) != FALSE &&
        started.hProcess != nullptr) {
        ::CloseHandle(started.hThread);
        ::CloseHandle(started.hProcess);
    }
}

}  // namespace tidemark
