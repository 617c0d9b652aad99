#pragma once

#include "controls/ole_drag_drop.h"
#include "controls/ole_session.h"
#include "platform/win32/com_ptr.h"
#include "platform/win32/windows.h"
#include "ui/subclasser.h"

namespace tidemark {

// Makes a window of this thread a target of OLE drag and drop, for as long as the object and the
// window live: the registration is undone in the window's WM_DESTROY or with the object, whichever
// comes first. Windows inside the window that are no targets themselves belong to it.
class DropTarget {
  public:
    // `sink` hears of every drag over the window (DragOver, DragDrop), with positions in the
    // window's client area; it is not owned and outlives the object. It may destroy the window or
    // this object. Throws ProgramError when the system refuses the registration.
    DropTarget(HWND window, OleDragDropSink& sink);
    DropTarget(const DropTarget&) = delete;
    DropTarget& operator=(const DropTarget&) = delete;
    ~DropTarget();

  private:
    class Shim;

    void Revoke();

    OleSession ole_;
    HWND window_;
    ComPtr<Shim> shim_;
    Subclasser watch_;
};

}  // namespace tidemark
