#pragma once

#include <string>

namespace tidemark {

// Starts other programs.
class CommandRunner {
  public:
    virtual ~CommandRunner() = default;

    // Starts a command line (UTF-8) as a process of its own, its window normal and focused, and
    // does not wait for it. Its program is looked for among those of Windows and nowhere else.
    // Throws ProgramError with the system's code when it cannot be started.
    virtual void Run(const std::string& command_line) = 0;
};

}  // namespace tidemark
