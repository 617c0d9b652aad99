#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "support/remote_tidemark.h"

namespace tidemark {

// The errors window of the running program, driven from outside like the main one.
class RemoteErrorsWindow : public RemoteWindow {
  public:
    // Waits until it is open. Throws RemoteError when it does not open within the time.
    RemoteErrorsWindow(const RemoteTidemark& program, std::chrono::milliseconds limit);

    [[nodiscard]] RemoteListView lvwErrors() const;
    [[nodiscard]] RemoteStatusBar StatusBar1() const;
    // The cells of every row of lvwErrors.
    [[nodiscard]] std::vector<std::vector<std::string>> Rows() const;
};

}  // namespace tidemark
