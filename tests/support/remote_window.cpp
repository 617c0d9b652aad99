#include "support/remote_window.h"

#include <commctrl.h>

#include <array>

#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

constexpr UINT kAnswerLimit = 30000;  // milliseconds

std::vector<RemoteWindow> Collect(const RemoteProcess& process,
                                  const std::function<void(WNDENUMPROC, LPARAM)>& enumerate) {
    struct Found {
        const RemoteProcess& process;
        std::vector<RemoteWindow> windows;

        static BOOL CALLBACK Meet(HWND window, LPARAM parameter) {
            auto& into = *reinterpret_cast<Found*>(parameter);
            DWORD id = 0;
            ::GetWindowThreadProcessId(window, &id);
            if (id == into.process.Id()) {
                into.windows.emplace_back(into.process, window);
            }
            return TRUE;
        }
    } found{process, {}};
    enumerate(Found::Meet, reinterpret_cast<LPARAM>(&found));
    return std::move(found.windows);
}

}  // namespace

DWORD RemoteWindow::Style() const {
    return static_cast<DWORD>(::GetWindowLongPtrW(window_, GWL_STYLE));
}

std::wstring RemoteWindow::ClassName() const {
    std::array<wchar_t, 256> name{};
    const int length = ::GetClassNameW(window_, name.data(), static_cast<int>(name.size()));
    return {name.data(), static_cast<std::size_t>(length)};
}

std::string RemoteWindow::Text() const {
    // The system carries these two across processes by itself.
    const auto length = static_cast<std::size_t>(Send(WM_GETTEXTLENGTH));
    std::wstring text(length + 1, L'\0');
    const LRESULT copied = Send(WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(copied));
    return Utf8FromWide(text);
}

std::vector<RemoteWindow> RemoteWindow::Descendants() const {
    return Collect(*process_, [this](WNDENUMPROC each, LPARAM parameter) {
        ::EnumChildWindows(window_, each, parameter);
    });
}

RemoteWindow RemoteWindow::Child(const std::wstring& class_name,
                                 const std::function<bool(const RemoteWindow&)>& is_it) const {
    for (const RemoteWindow& window : Descendants()) {
        if (window.ClassName() == class_name && is_it(window)) {
            return window;
        }
    }
    throw RemoteError("the window has no such control of class " + Utf8FromWide(class_name));
}

LRESULT RemoteWindow::Send(UINT message, WPARAM wparam, LPARAM lparam) const {
    DWORD_PTR result = 0;
    if (::SendMessageTimeoutW(window_, message, wparam, lparam, SMTO_NORMAL, kAnswerLimit,
                              &result) == 0) {
        throw RemoteError("no answer to message " + std::to_string(message));
    }
    return static_cast<LRESULT>(result);
}

void RemoteWindow::Post(UINT message, WPARAM wparam, LPARAM lparam) const {
    if (!::PostMessageW(window_, message, wparam, lparam)) {
        throw RemoteError("the window took no message " + std::to_string(message));
    }
}

void RemoteWindow::Click() const {
    Post(BM_CLICK);
}

RECT PlaceOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

bool IsAbove(HWND window, HWND other) {
    HWND next = ::GetTopWindow(nullptr);
    while (next != nullptr && next != window && next != other) {
        next = ::GetWindow(next, GW_HWNDNEXT);
    }
    return next == window;
}

std::vector<RemoteWindow> TopLevelWindows(const RemoteProcess& process) {
    return Collect(process,
                   [](WNDENUMPROC each, LPARAM parameter) { ::EnumWindows(each, parameter); });
}

int RemoteListView::Rows() const {
    return static_cast<int>(Send(LVM_GETITEMCOUNT));
}

std::string RemoteListView::Cell(int row, int column) const {
    constexpr std::size_t kUnits = 4096;
    const RemoteMemory memory(Process(), sizeof(LVITEMW) + kUnits * sizeof(wchar_t));
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = reinterpret_cast<wchar_t*>(memory.Address() + sizeof(LVITEMW));
    item.cchTextMax = static_cast<int>(kUnits);
    memory.Write(0, &item, sizeof(item));
    const LRESULT length = Send(LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                                reinterpret_cast<LPARAM>(memory.Address()));
    // The control may answer with a text of its own instead of filling the one that was offered.
    memory.Read(0, &item, sizeof(item));
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    Process().Read(item.pszText, text.data(), text.size() * sizeof(wchar_t));
    return Utf8FromWide(text);
}

int RemoteListView::SelectedCount() const {
    return static_cast<int>(Send(LVM_GETSELECTEDCOUNT));
}

void RemoteListView::Select(const std::vector<int>& rows) const {
    const RemoteMemory memory(Process(), sizeof(LVITEMW));
    const auto set = [&](int row, UINT state) {
        LVITEMW item{};
        item.stateMask = LVIS_SELECTED;
        item.state = state;
        memory.Write(0, &item, sizeof(item));
        Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row),
             reinterpret_cast<LPARAM>(memory.Address()));
    };
    constexpr int kAllRows = -1;
    set(kAllRows, 0);
    for (const int row : rows) {
        set(row, LVIS_SELECTED);
    }
}

bool RemoteStatusBar::IsSimple() const {
    return Send(SB_ISSIMPLE) != 0;
}

std::string RemoteStatusBar::PartText(WPARAM part) const {
    const auto length = static_cast<std::size_t>(LOWORD(Send(SB_GETTEXTLENGTHW, part)));
    std::wstring text(length + 1, L'\0');
    const RemoteMemory memory(Process(), text.size() * sizeof(wchar_t));
    Send(SB_GETTEXTW, part, reinterpret_cast<LPARAM>(memory.Address()));
    memory.Read(0, text.data(), text.size() * sizeof(wchar_t));
    return Utf8FromWide(text.c_str());
}

std::string RemoteStatusBar::Text() const {
    if (IsSimple()) {
        // Wine answers with the simple text under the number of any part, but not under its own.
        std::string text = PartText(SB_SIMPLEID);
        return text.empty() ? PartText(0) : text;
    }
    return PartText(0);
}

SYSTEMTIME RemoteDatePicker::Time() const {
    SYSTEMTIME time = {};
    const RemoteMemory memory(Process(), sizeof(time));
    if (Send(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(memory.Address())) != GDT_VALID) {
        throw RemoteError("the picker holds no time");
    }
    memory.Read(0, &time, sizeof(time));
    return time;
}

void RemoteDatePicker::SetTime(const SYSTEMTIME& time) const {
    const RemoteMemory memory(Process(), sizeof(time));
    memory.Write(0, &time, sizeof(time));
    if (Send(DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(memory.Address())) == 0) {
        throw RemoteError("the picker did not take the time");
    }
}

}  // namespace tidemark
