#pragma once

#include "ui/window.h"

namespace tidemark {

// Dispatches one message that was taken from the queue: keys for a form of the program go through
// the form's keyboard handling first. Whoever takes messages from the queue (the loop, a pump
// inside long work) hands them here, so that all treat them alike.
void RouteMessage(MSG& message);

// Takes and routes messages until the thread is asked to quit or the program's main window is gone;
// returns the exit code asked for, or 0 if the window was gone first. The window alone is enough
// because a loop of the system (that of a menu) may have taken the request.
int RunMessageLoop(const Window& main_window);

// The same until the window is gone or hidden. A request to quit ends it too, and is passed on.
void RunMessageLoopWhileVisible(HWND window);

}  // namespace tidemark
