#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/remote_process.h"

namespace tidemark {

// A window of another process. Messages are answered within a time limit: RemoteError is thrown
// when the other side hangs or the window is gone.
class RemoteWindow {
  public:
    RemoteWindow(const RemoteProcess& process, HWND window) : process_(&process), window_(window) {}

    [[nodiscard]] HWND Handle() const { return window_; }
    [[nodiscard]] bool Exists() const { return ::IsWindow(window_) != FALSE; }
    [[nodiscard]] bool Enabled() const { return ::IsWindowEnabled(window_) != FALSE; }
    [[nodiscard]] bool Visible() const { return ::IsWindowVisible(window_) != FALSE; }
    [[nodiscard]] DWORD Style() const;
    [[nodiscard]] std::wstring ClassName() const;
    [[nodiscard]] std::string Text() const;
    // Every window below this one, in the order of the system.
    [[nodiscard]] std::vector<RemoteWindow> Descendants() const;
    // The first of them that is of the class and what is looked for. Throws RemoteError when none
    // is.
    [[nodiscard]] RemoteWindow Child(
        const std::wstring& class_name, const std::function<bool(const RemoteWindow&)>& is_it =
                                            [](const RemoteWindow&) { return true; }) const;

    LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;
    void Post(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;
    // Presses a button. Only asked for: what it does, a modal box included, comes later.
    void Click() const;
    // Asks the window to close, as its close button does.
    void Close() const { Post(WM_CLOSE); }

    [[nodiscard]] const RemoteProcess& Process() const { return *process_; }

  private:
    const RemoteProcess* process_;
    HWND window_;
};

// Where a window is on the screen.
[[nodiscard]] RECT PlaceOf(HWND window);
// Whether a top-level window lies in front of another one.
[[nodiscard]] bool IsAbove(HWND window, HWND other);

// The visible or hidden top-level windows of a process.
[[nodiscard]] std::vector<RemoteWindow> TopLevelWindows(const RemoteProcess& process);

class RemoteListView : public RemoteWindow {
  public:
    explicit RemoteListView(const RemoteWindow& window) : RemoteWindow(window) {}
    [[nodiscard]] int Rows() const;
    [[nodiscard]] std::string Cell(int row, int column) const;
    [[nodiscard]] int SelectedCount() const;
    // Selects these rows and no others.
    void Select(const std::vector<int>& rows) const;
};

class RemoteStatusBar : public RemoteWindow {
  public:
    explicit RemoteStatusBar(const RemoteWindow& window) : RemoteWindow(window) {}
    [[nodiscard]] bool IsSimple() const;
    // The simple text in simple mode, else that of the first part.
    [[nodiscard]] std::string Text() const;

  private:
    [[nodiscard]] std::string PartText(WPARAM part) const;
};

class RemoteDatePicker : public RemoteWindow {
  public:
    explicit RemoteDatePicker(const RemoteWindow& window) : RemoteWindow(window) {}
    [[nodiscard]] SYSTEMTIME Time() const;
    // The control tells nobody of it, and its notifications cannot be sent from outside.
    void SetTime(const SYSTEMTIME& time) const;
};

}  // namespace tidemark
