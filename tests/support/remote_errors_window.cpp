#include "support/remote_errors_window.h"

#include <optional>

// Needs the system's main header before it.
#include <commctrl.h>

namespace tidemark {
namespace {

RemoteWindow WaitForIt(const RemoteTidemark& program, std::chrono::milliseconds limit) {
    const std::optional<RemoteWindow> window = program.WaitForWindow(L"frmErrors", limit);
    if (!window) {
        throw RemoteError("the errors window did not open");
    }
    return *window;
}

}  // namespace

RemoteErrorsWindow::RemoteErrorsWindow(const RemoteTidemark& program,
                                       std::chrono::milliseconds limit)
    : RemoteWindow(WaitForIt(program, limit)) {}

RemoteListView RemoteErrorsWindow::lvwErrors() const {
    return RemoteListView(Child(WC_LISTVIEWW));
}

RemoteStatusBar RemoteErrorsWindow::StatusBar1() const {
    return RemoteStatusBar(Child(STATUSCLASSNAMEW));
}

std::vector<std::vector<std::string>> RemoteErrorsWindow::Rows() const {
    const RemoteListView list = lvwErrors();
    std::vector<std::vector<std::string>> rows;
    for (int row = 0; row < list.Rows(); ++row) {
        rows.push_back({list.Cell(row, 0), list.Cell(row, 1), list.Cell(row, 2)});
    }
    return rows;
}

}  // namespace tidemark
