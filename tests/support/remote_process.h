#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>

#include "platform/win32/unique_handle.h"
#include "platform/win32/windows.h"

namespace tidemark {

// The other process did not do what the driver asked of it in time, or is gone.
class RemoteError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct ProcessHandleTraits {
    using Type = HANDLE;
    static Type None() { return nullptr; }
    static void Close(Type handle) { ::CloseHandle(handle); }
};
using UniqueProcess = UniqueHandle<ProcessHandleTraits>;

// A program started as a process of its own. It is ended by force when this goes while it runs.
class RemoteProcess {
  public:
    // `arguments` is the raw text behind the program's name on its command line. Throws RemoteError
    // when the program cannot be started.
    RemoteProcess(const std::string& program, const std::string& arguments);
    // The process that runs already under this id.
    explicit RemoteProcess(DWORD id);
    ~RemoteProcess();
    RemoteProcess(const RemoteProcess&) = delete;
    RemoteProcess& operator=(const RemoteProcess&) = delete;

    [[nodiscard]] DWORD Id() const { return id_; }
    [[nodiscard]] HANDLE Handle() const { return process_.Get(); }
    // Copies memory of the process that it handed out the address of.
    void Read(const void* address, void* to, std::size_t size) const;
    // The exit code, once the process has ended; nothing when it does not within the time.
    [[nodiscard]] std::optional<DWORD> WaitForExit(std::chrono::milliseconds limit) const;

  private:
    UniqueProcess process_;
    DWORD id_ = 0;
    bool ours_ = true;
};

// Memory in another process, for messages whose parameters point to records. The other process is
// of the driver's own bitness, so that records have one layout in both.
class RemoteMemory {
  public:
    RemoteMemory(const RemoteProcess& process, std::size_t size);
    ~RemoteMemory();
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    // Address in the other process.
    [[nodiscard]] char* Address() const { return address_; }
    void Write(std::size_t offset, const void* from, std::size_t size) const;
    void Read(std::size_t offset, void* to, std::size_t size) const;

  private:
    const RemoteProcess& process_;
    char* address_;
};

// The folder of the test programs, without a trailing backslash: that of this process, and of those
// that tests start.
[[nodiscard]] std::string TestProgramFolder();

}  // namespace tidemark
