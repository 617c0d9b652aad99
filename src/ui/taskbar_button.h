#pragma once

#include <shobjidl.h>

#include <functional>

#include "platform/win32/com_ptr.h"
#include "ui/subclasser.h"
#include "ui/taskbar_progress.h"

namespace tidemark {

// The taskbar of the system's shell; empty where there is none that shows progress.
[[nodiscard]] ComPtr<ITaskbarList3> SystemTaskbar();

// A window's button in the taskbar, as far as it shows progress. The shell makes the button after
// the window, and anew when it is restarted itself: what is to be shown is kept and shown as soon
// as there is a button. Where the shell shows no progress nothing happens.
class TaskbarButton {
  public:
    using TaskbarSource = std::function<ComPtr<ITaskbarList3>()>;

    TaskbarButton();

    // Watches for the button of `window`, which gets no other. `taskbar` is asked each time the
    // button is there anew. Throws ProgramError when the window cannot be watched.
    void AttachTo(HWND window, TaskbarSource taskbar);

    // Calls the shell only when something changes.
    void Show(const TaskbarProgress& progress);

  private:
    void OnButtonCreated();
    void Draw();

    Subclasser subclasser_;
    TaskbarSource source_;
    ComPtr<ITaskbarList3> taskbar_;
    TaskbarProgress progress_;
};

}  // namespace tidemark
