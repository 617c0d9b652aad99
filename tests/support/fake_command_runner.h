#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/command_runner.h"

namespace tidemark {

// Starts nothing and keeps what it was to start.
class RecordedCommands final : public CommandRunner {
  public:
    void Run(const std::string& command_line) override { started.push_back(command_line); }

    std::vector<std::string> started;
};

// Where no command is to be started.
class NoCommands final : public CommandRunner {
  public:
    void Run(const std::string& command_line) override {
        ADD_FAILURE() << "started " << command_line;
    }
};

}  // namespace tidemark
