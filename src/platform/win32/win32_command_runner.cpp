#include "platform/win32/win32_command_runner.h"

#include "platform/arguments.h"
#include "platform/win32/system_message.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {
namespace {

// The folders that programs are looked for in: that of Windows and that of its system. By itself
// the system would look in this program's own folder and in the current one first, and start
// whatever lies there under the name of one of Windows' own programs.
std::wstring ProgramFolders() {
    std::wstring folders;
    for (const auto folder_of : {::GetSystemWindowsDirectoryW, ::GetSystemDirectoryW}) {
        std::wstring folder(folder_of(nullptr, 0), L'\0');
        folder.resize(folder_of(folder.data(), static_cast<UINT>(folder.size())));
        // An empty element could stand for the current folder.
        if (!folder.empty()) {
            folders.append(folders.empty() ? L"" : L";").append(folder);
        }
    }
    return folders;
}

// The full path of the program that a command line names.
std::wstring FindProgram(const std::string& command_line) {
    const std::wstring folders = ProgramFolders();
    const std::wstring name = WideFromUtf8(ProgramOf(command_line));
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            ::SearchPathW(folders.c_str(), name.c_str(), L".exe", static_cast<DWORD>(path.size()),
                          path.data(), /*lpFilePart=*/nullptr);
        if (length == 0) {
            const DWORD code = ::GetLastError();
            ThrowSystemError(code, "Starting " + command_line);
        }
        const bool complete = length < path.size();
        path.resize(length);
        if (complete) {
            return path;
        }
    }
}

}  // namespace

void Win32CommandRunner::Run(const std::string& command_line) {
    const std::wstring program = FindProgram(command_line);
    std::wstring writable = WideFromUtf8(command_line);  // the call may write into it
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started{};
    if (!::CreateProcessW(program.c_str(), writable.data(),
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
