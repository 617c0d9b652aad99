#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "ui/hosted_window.h"
#include "ui/window.h"
#include "ui/window_watcher.h"

namespace tidemark {

class Control;

// The controls of one form, found by their windows. Controls register themselves.
class ControlRegistry {
  public:
    // Throws ProgramError (duplicate key) when the window is registered already.
    void Add(HWND window, Control& control);
    void Remove(HWND window);
    // The control of a window, or of the control that the window is a part of (a list's header);
    // null for a stranger.
    [[nodiscard]] Control* Find(HWND window) const;
    // A control identifier not handed out before; none is one that dialogs use (OK, Cancel ...).
    [[nodiscard]] int NextId() { return next_id_++; }

    // Hands a message that a control sent to its parent (a notification, a command, a question for
    // colours) to the control's own wrapper. Empty when the message is none of these, comes from a
    // stranger, or the wrapper leaves it to the parent.
    std::optional<LRESULT> Reflect(UINT message, WPARAM wparam, LPARAM lparam) const;

  private:
    std::unordered_map<HWND, Control*> controls_;
    int next_id_ = 1001;
};

// Where controls are created: a form, or a panel of a form.
class ControlSite {
  public:
    [[nodiscard]] virtual HWND SiteWindow() const = 0;
    [[nodiscard]] virtual ControlRegistry& Controls() = 0;

  protected:
    ~ControlSite() = default;
};

// What a control is created from; each wrapper adds its own styles.
struct ControlSpec {
    std::string text{};
    Bounds bounds{};
    DWORD style = 0;  // added to WS_CHILD and the wrapper's own
    DWORD extended_style = 0;
    bool visible = true;
};

// A child window with its wrapper: owns the window, which goes with the wrapper or with the parent
// window, whichever is first. The messages it sends its parent come back to the wrapper, which
// turns them into events. Controls follow each other in tab order as they are created; a label
// stands directly before what it names, which is how assistive technology finds a control's name.
class Control : public Window, private WindowWatcher {
  public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    ~Control() override;

    // Destroys the window; the wrapper can be created anew.
    void Destroy();

    // The messages a control sends its parent, reflected. An empty answer leaves the message to
    // the parent.
    virtual std::optional<LRESULT> OnNotify(NMHDR& header);
    virtual std::optional<LRESULT> OnCommand(WORD notification);
    virtual std::optional<LRESULT> OnControlColour(UINT message, HDC dc);

    // Whether keys, Enter and Esc among them, belong to the control itself just now: none presses a
    // button of the form or moves the focus.
    [[nodiscard]] virtual bool KeepsKeys() const { return false; }

  protected:
    // What the control's window is created from in `site`; the wrapper adds the class and what else
    // is its own. Throws ProgramError (duplicate key) when there is a window already.
    [[nodiscard]] HostedWindowSpec SpecIn(ControlSite& site, const ControlSpec& spec) const;
    // Creates the window of a system class in `site`. Throws ProgramError when it cannot be
    // created, and when there is one already.
    void CreateChild(ControlSite& site, const wchar_t* class_name, const ControlSpec& spec);
    // Takes over a child window that was created in `site` otherwise. Throws ProgramError when it
    // cannot be watched; then the window is gone.
    void Adopt(ControlSite& site, HWND window);

    // Answers a message to the control's window; the default passes it on. It may end the window,
    // and the control.
    virtual LRESULT OnOwnMessage(const WatchedMessage& message);

  private:
    friend class ControlRegistry;
    LRESULT OnWatched(const WatchedMessage& message) override;
    void Forget();

    ControlRegistry* registry_ = nullptr;
};

}  // namespace tidemark
