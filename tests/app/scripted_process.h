#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/process.h"

namespace tidemark {

// A process whose clock, keyboard and command line a test scripts.
class ScriptedProcess : public Process {
  public:
    std::uint32_t MillisecondCounter() override { return on_counter ? on_counter() : 0; }
    void SleepFor(std::uint32_t milliseconds) override {
        if (on_sleep) {
            on_sleep(milliseconds);
        }
    }
    std::int16_t KeyState(int virtual_key) override { return on_key ? on_key(virtual_key) : 0; }
    std::string Arguments() override { return arguments; }
    std::string ExecutableName() override { return "tidemark.exe"; }
    std::string ExecutableFolder() override { return R"(C:\Tools)"; }
    void ReplaceErrorMode(std::uint32_t mode) override {
        if (on_error_mode) {
            on_error_mode(mode);
        }
    }
    bool QuitWaiting() override { return quit_waiting; }

    std::function<std::uint32_t()> on_counter;
    std::function<void(std::uint32_t)> on_sleep;
    std::function<std::int16_t(int)> on_key;
    std::function<void(std::uint32_t)> on_error_mode;
    std::string arguments;
    bool quit_waiting = false;
};

}  // namespace tidemark
