#pragma once

#include <string>
#include <vector>

#include "platform/message_pump.h"
#include "platform/process.h"

namespace tidemark {

inline constexpr const char* kMainWindowName = "frmMain";

// The program's loaded windows, by name. Windows load and unload in any order, also while pending
// messages run, so each call finds its window anew; one that is not loaded is left alone.
class LoadedWindows {
  public:
    virtual ~LoadedWindows() = default;

    // Names of the windows that are loaded now.
    [[nodiscard]] virtual std::vector<std::string> Names() const = 0;
    virtual void Hide(const std::string& name) = 0;
    // Closes the window without asking it whether it may be closed.
    virtual void Unload(const std::string& name) = 0;
};

// The end of the program: all windows go, in a fixed order. May be called at any time from any
// window's code, from inside long work, and more than once: a main window that unloads calls it
// again itself.
class ShutDownSequence {
  public:
    // Nothing is owned; all of it outlives the sequence.
    ShutDownSequence(LoadedWindows& windows, MessagePump& pump, Process& process)
        : windows_(windows), pump_(pump), process_(process) {}

    // Hides every window, lets pending messages run, and unloads every window but the main one;
    // that one too when `unload_main` is set. A window that fails to unload does not keep the
    // others.
    void ShutDown(bool unload_main);

    // Whether ShutDown has been called: nothing new is to be started.
    [[nodiscard]] bool Begun() const { return begun_; }

  private:
    LoadedWindows& windows_;
    MessagePump& pump_;
    Process& process_;
    bool begun_ = false;
};

}  // namespace tidemark
