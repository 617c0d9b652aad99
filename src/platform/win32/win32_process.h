#pragma once

#include "platform/process.h"

namespace tidemark {

// The process and the thread this runs in.
class Win32Process final : public Process {
  public:
    std::uint32_t MillisecondCounter() override;
    void SleepFor(std::uint32_t milliseconds) override;
    std::int16_t KeyState(int virtual_key) override;
    std::string Arguments() override;
    std::string ExecutableName() override;
    std::string ExecutableFolder() override;
    void ReplaceErrorMode(std::uint32_t mode) override;
    bool QuitWaiting() override;
};

}  // namespace tidemark
