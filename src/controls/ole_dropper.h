#pragma once

#include <memory>

#include "controls/drop_target.h"
#include "controls/ole_drag_drop.h"
#include "ui/control.h"
#include "ui/hosted_window.h"

namespace tidemark {

// A plain area with a centred label on which files are dropped. It decides nothing about what is
// dragged: every notification of its surface and of its label becomes one of its events
// (OleDragDropEvents), with the position always in the control's own coordinates.
class OLEDropper final : public Control, public OleDragDropEvents, private MessageHandler {
  public:
    OLEDropper();
    ~OLEDropper() override;

    // Creates the control in `site` with the font of the window around it. Throws ProgramError when
    // there is one already, and when a window cannot be created or cannot become a drop target.
    void Create(ControlSite& site, const ControlSpec& spec);

    // The label's font is Font() and SetFont(); replacing it centres the label at once. The font is
    // not owned.

    // The control's window.
    [[nodiscard]] HWND hwnd() const { return Handle(); }
    // The label, which keeps the size of its text and may stick out of a control that is smaller.
    [[nodiscard]] Window Label1() const { return Window(label_); }

    // What a drag that starts on the surface or on the label reports to (see DragFiles).
    [[nodiscard]] OleDragDropSink& SurfaceNotifications() { return surface_events_; }
    [[nodiscard]] OleDragDropSink& LabelNotifications() { return label_events_; }

  private:
    LRESULT OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) override;
    void CreateLabel(HWND surface);
    void ReplaceFont(HFONT font, bool redraw);
    void FitLabel();
    void CentreLabel();

    HWND label_ = nullptr;
    OleDragDropForwarder surface_events_;
    OleDragDropForwarder label_events_;
    std::unique_ptr<DropTarget> surface_target_;
    std::unique_ptr<DropTarget> label_target_;
};

}  // namespace tidemark
