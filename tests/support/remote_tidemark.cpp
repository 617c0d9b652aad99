#include "support/remote_tidemark.h"

#include <commctrl.h>

#include "support/poll_until.h"

namespace tidemark {
namespace {

constexpr const wchar_t* kMainClass = L"frmMain";
constexpr const wchar_t* kMessageBoxClass = L"#32770";
constexpr std::chrono::seconds kStartLimit{60};
constexpr std::chrono::seconds kMenuOpens{10};
constexpr std::chrono::milliseconds kMenuStays{150};

bool IsCheckBox(const RemoteWindow& button) {
    const DWORD kind = button.Style() & BS_TYPEMASK;
    return kind == BS_CHECKBOX || kind == BS_AUTOCHECKBOX;
}

}  // namespace

RemoteTidemark::RemoteTidemark(const std::string& program, const std::string& arguments)
    : process_(std::make_unique<RemoteProcess>(program, arguments)) {
    const bool shown = PollUntil(kStartLimit, [this] {
        if (const std::optional<RemoteWindow> window = Shown(kMainClass)) {
            main_ = window->Handle();
            return true;
        }
        return process_->WaitForExit(std::chrono::milliseconds(0)).has_value();
    });
    if (!shown || main_ == nullptr) {
        throw RemoteError("no main window came up");
    }
}

RemoteTidemark::RemoteTidemark() {
    const bool found = PollUntil(kStartLimit, [this] {
        HWND window = nullptr;
        while ((window = ::FindWindowExW(nullptr, window, kMainClass, nullptr)) != nullptr) {
            if (::IsWindowVisible(window)) {
                main_ = window;
                return true;
            }
        }
        return false;
    });
    if (!found) {
        throw RemoteError("the program's window is not there");
    }
    DWORD id = 0;
    ::GetWindowThreadProcessId(main_, &id);
    process_ = std::make_unique<RemoteProcess>(id);
}

RemoteWindow RemoteTidemark::Main() const {
    return {*process_, main_};
}

RemoteDatePicker RemoteTidemark::Picker(bool of_times, int n) const {
    return RemoteDatePicker(
        Main().Child(DATETIMEPICK_CLASSW, [of_times, n](const RemoteWindow& w) mutable {
            const bool shows_time = (w.Style() & DTS_TIMEFORMAT) == DTS_TIMEFORMAT;
            return shows_time == of_times && n-- == 0;
        }));
}

RemoteWindow RemoteTidemark::cmdStamp() const {
    return Main().Child(WC_BUTTONW, [](const RemoteWindow& window) {
        const DWORD kind = window.Style() & BS_TYPEMASK;
        return kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON || kind == BS_OWNERDRAW;
    });
}

RemoteWindow RemoteTidemark::chkCreated() const {
    return Main().Child(WC_BUTTONW, IsCheckBox);
}

RemoteListView RemoteTidemark::lvwItems() const {
    return RemoteListView(Main().Child(WC_LISTVIEWW));
}

RemoteStatusBar RemoteTidemark::StatusBar1() const {
    return RemoteStatusBar(Main().Child(STATUSCLASSNAMEW));
}

RemoteWindow RemoteTidemark::ProgressBar1() const {
    return Main().Child(PROGRESS_CLASSW);
}
RemoteDatePicker RemoteTidemark::dtDateLastModified() const {
    return Picker(false, 0);
}
RemoteDatePicker RemoteTidemark::dtTimeLastModified() const {
    return Picker(true, 0);
}
RemoteDatePicker RemoteTidemark::dtDateCreated() const {
    return Picker(false, 1);
}
RemoteDatePicker RemoteTidemark::dtTimeCreated() const {
    return Picker(true, 1);
}

bool RemoteTidemark::WaitForCounts(int rows, std::chrono::milliseconds limit) const {
    return PollUntil(limit, [this, rows] {
        if (lvwItems().Rows() != rows) {
            return false;
        }
        for (int row = 0; row < rows; ++row) {
            if (Status(row) == "Counting" || Contains(row) == "not counted") {
                return false;
            }
        }
        return StatusBar1().Text() != "  Counting";
    });
}

std::optional<RemoteWindow> RemoteTidemark::Shown(const std::wstring& class_name) const {
    for (const RemoteWindow& window : TopLevelWindows(*process_)) {
        if (window.Visible() && window.ClassName() == class_name) {
            return window;
        }
    }
    return std::nullopt;
}

std::optional<RemoteWindow> RemoteTidemark::WaitForWindow(const std::wstring& class_name,
                                                          std::chrono::milliseconds limit) const {
    std::optional<RemoteWindow> window;
    const bool shown = PollUntil(limit, [&] { return (window = Shown(class_name)).has_value(); });
    return shown ? window : std::nullopt;
}

bool RemoteTidemark::OpenMenu(char menu, std::chrono::milliseconds limit) const {
    // A window that comes to the front, or has not gone from there yet, ends the menu of another.
    const bool in_front = PollUntil(limit, [this] {
        if (::GetForegroundWindow() == main_) {
            return true;
        }
        ::SetForegroundWindow(main_);
        return false;
    });
    if (!in_front) {
        return false;
    }
    // What the display tells late of the focus ends a menu, too, and the keys meant for it would go
    // to the window: one that does not stay open is opened again.
    return PollUntil(limit, [this, menu] {
        Main().Post(WM_SYSCOMMAND, SC_KEYMENU, menu);
        return PollUntil(kMenuOpens, [this] { return MenuIsOpen(); }) &&
               !PollUntil(kMenuStays, [this] { return !MenuIsOpen(); });
    });
}

bool RemoteTidemark::ChooseFromMenu(char menu, int item, std::chrono::milliseconds limit) const {
    if (!OpenMenu(menu, limit)) {
        return false;
    }
    const RemoteWindow main = Main();
    main.Post(WM_KEYDOWN, VK_HOME);
    for (int i = 0; i < item; ++i) {
        main.Post(WM_KEYDOWN, VK_DOWN);
    }
    main.Post(WM_KEYDOWN, VK_RETURN);
    return PollUntil(limit, [this] { return !MenuIsOpen(); });
}

std::optional<std::string> RemoteTidemark::WaitForBox(std::chrono::milliseconds limit) const {
    std::optional<std::string> text;
    const bool shown = PollUntil(limit, [this, &text] {
        const std::optional<RemoteWindow> box = Shown(kMessageBoxClass);
        if (box) {
            // The icon is a static control without text.
            for (const RemoteWindow& child : box->Descendants()) {
                if (child.ClassName() == WC_STATICW && !child.Text().empty()) {
                    text = child.Text();
                }
            }
        }
        return text.has_value();
    });
    return shown ? text : std::nullopt;
}

bool RemoteTidemark::AnswerBox(int button, std::chrono::milliseconds limit) const {
    const std::optional<RemoteWindow> box = Shown(kMessageBoxClass);
    if (!box) {
        return false;
    }
    RemoteWindow(*process_, ::GetDlgItem(box->Handle(), button)).Click();
    return PollUntil(limit, [&box] { return !box->Exists() || !box->Visible(); });
}

}  // namespace tidemark
