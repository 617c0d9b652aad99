#include "platform/win32/win32_process.h"

#include "platform/win32/windows.h"
// Needs the types of the system's main header.
#include <mmsystem.h>

#include <cstddef>

#include "platform/arguments.h"
#include "platform/win32/system_message.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

std::wstring ExecutablePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) {
            ThrowSystemError(::GetLastError(), "Finding the program's own file");
        }
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace

std::uint32_t Win32Process::MillisecondCounter() {
    return ::timeGetTime();
}

void Win32Process::SleepFor(std::uint32_t milliseconds) {
    ::Sleep(milliseconds);
}

std::int16_t Win32Process::KeyState(int virtual_key) {
    return ::GetAsyncKeyState(virtual_key);
}

std::string Win32Process::Arguments() {
    const std::string whole = Utf8FromWide(::GetCommandLineW());
    return std::string(ArgumentsOf(whole));
}

std::string Win32Process::ExecutableName() {
    const std::wstring path = ExecutablePath();
    return Utf8FromWide(path.substr(path.rfind(L'\\') + 1));
}

std::string Win32Process::ExecutableFolder() {
    const std::wstring path = ExecutablePath();
    const std::size_t end = path.rfind(L'\\');
    return end == std::wstring::npos ? std::string() : Utf8FromWide(path.substr(0, end));
}

void Win32Process::ReplaceErrorMode(std::uint32_t mode) {
    ::SetErrorMode(mode);
}

bool Win32Process::QuitWaiting() {
    MSG message;
    return ::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) != FALSE;
}

}  // namespace tidemark
