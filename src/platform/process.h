#pragma once

#include <cstdint>
#include <string>

namespace tidemark {

// What the program asks of its own process and the moment. Texts are UTF-8.
class Process {
  public:
    virtual ~Process() = default;

    // Milliseconds since the system started; begins again at 0 every 49.7 days.
    [[nodiscard]] virtual std::uint32_t MillisecondCounter() = 0;
    // Stops the thread; no message runs meanwhile.
    virtual void SleepFor(std::uint32_t milliseconds) = 0;

    // State of a key by its virtual-key code: negative while it is down; an odd number when it went
    // down since the last query.
    [[nodiscard]] virtual std::int16_t KeyState(int virtual_key) = 0;

    // The command line as it was given, without the program's name and the blanks after it.
    [[nodiscard]] virtual std::string Arguments() = 0;
    // The executable's file name, and the folder it is in. Both throw ProgramError when the system
    // does not tell.
    [[nodiscard]] virtual std::string ExecutableName() = 0;
    [[nodiscard]] virtual std::string ExecutableFolder() = 0;

    // Replaces the process's error mode: which failures the system reports in a box of its own.
    virtual void ReplaceErrorMode(std::uint32_t mode) = 0;

    // Whether the thread's message loop has been asked to end.
    [[nodiscard]] virtual bool QuitWaiting() = 0;
};

namespace virtual_key {
inline constexpr int kShift = 16;
}

namespace error_mode {
// A fault of the process shows no box of the system's.
inline constexpr std::uint32_t kNoFaultErrorBox = 2;
}  // namespace error_mode

}  // namespace tidemark
