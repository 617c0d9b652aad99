#pragma once

#include <string>

#include "platform/win32/windows.h"
#include "support/remote_process.h"

namespace tidemark {

// The program drag_source with its window on the screen: another program, out of which the user
// drags files, or in which the user is.
class DragSource {
  public:
    // Starts it with the text behind its name on the command line, and waits until it is ready.
    explicit DragSource(const std::string& arguments);

    // Null when it did not come up.
    [[nodiscard]] HWND Window() const { return window_; }
    // How far it is.
    [[nodiscard]] std::string Caption() const;

  private:
    RemoteProcess process_;
    HWND window_ = nullptr;
};

}  // namespace tidemark
