#include "support/remote_process.h"

#include <array>

#include "platform/win32/system_message.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

[[noreturn]] void Fail(const std::string& operation) {
    throw RemoteError(FailureText(operation, ::GetLastError()));
}

}  // namespace

RemoteProcess::RemoteProcess(const std::string& program, const std::string& arguments) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started = {};
    std::wstring command_line = WideFromUtf8("\"" + program + "\" " + arguments);
    if (!::CreateProcessW(WideFromUtf8(program).c_str(), command_line.data(),
                          /*lpProcessAttributes=*/nullptr, /*lpThreadAttributes=*/nullptr,
                          /*bInheritHandles=*/FALSE, /*dwCreationFlags=*/0,
                          /*lpEnvironment=*/nullptr, /*lpCurrentDirectory=*/nullptr, &startup,
                          &started)) {
        Fail("starting " + program);
    }
    ::CloseHandle(started.hThread);
    process_.Reset(started.hProcess);
    id_ = started.dwProcessId;
}

RemoteProcess::RemoteProcess(DWORD id)
    : process_(::OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE |
                                 PROCESS_QUERY_INFORMATION | SYNCHRONIZE,
                             FALSE, id)),
      id_(id),
      ours_(false) {
    if (!process_) {
        Fail("opening process " + std::to_string(id));
    }
}

RemoteProcess::~RemoteProcess() {
    if (ours_ && ::WaitForSingleObject(process_.Get(), 0) == WAIT_TIMEOUT) {
        ::TerminateProcess(process_.Get(), 1);
        ::WaitForSingleObject(process_.Get(), 5000);
    }
}

void RemoteProcess::Read(const void* address, void* to, std::size_t size) const {
    if (!::ReadProcessMemory(process_.Get(), address, to, size, nullptr)) {
        Fail("reading from the other process");
    }
}

std::optional<DWORD> RemoteProcess::WaitForExit(std::chrono::milliseconds limit) const {
    DWORD code = 0;
    if (::WaitForSingleObject(process_.Get(), static_cast<DWORD>(limit.count())) != WAIT_OBJECT_0 ||
        !::GetExitCodeProcess(process_.Get(), &code)) {
        return std::nullopt;
    }
    return code;
}

RemoteMemory::RemoteMemory(const RemoteProcess& process, std::size_t size)
    : process_(process),
      address_(static_cast<char*>(::VirtualAllocEx(process.Handle(), nullptr, size,
                                                   MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE))) {
    if (address_ == nullptr) {
        Fail("taking memory in the other process");
    }
}

RemoteMemory::~RemoteMemory() {
    ::VirtualFreeEx(process_.Handle(), address_, 0, MEM_RELEASE);
}

void RemoteMemory::Write(std::size_t offset, const void* from, std::size_t size) const {
    if (!::WriteProcessMemory(process_.Handle(), address_ + offset, from, size, nullptr)) {
        Fail("writing to the other process");
    }
}

void RemoteMemory::Read(std::size_t offset, void* to, std::size_t size) const {
    process_.Read(address_ + offset, to, size);
}

std::string TestProgramFolder() {
    std::array<wchar_t, 4096> path{};
    ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    std::string folder = Utf8FromWide(path.data());
    folder.erase(folder.rfind('\\'));
    return folder;
}

}  // namespace tidemark
