#pragma once

#include "platform/command_runner.h"

namespace tidemark {

class Win32CommandRunner final : public CommandRunner {
  public:
    void Run(const std::string& command_line) override;
};

}  // namespace tidemark
