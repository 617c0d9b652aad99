#include "controls/browse_for_folder.h"

#include <array>
#include <optional>
#include <utility>

#include "controls/item_id_list.h"
#include "controls/ole_session.h"
#include "platform/program_error.h"
#include "platform/win32/wide_text.h"
#include "settings/mod_monitor_info.h"
#include "ui/last_resort.h"

namespace tidemark {

// One open dialog.
class BrowseForFolder::Dialog {
  public:
    explicit Dialog(BrowseForFolder& browse) : browse_(browse) { Slot() = this; }
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    ~Dialog() { Slot() = nullptr; }

    [[nodiscard]] static bool AnyOpen() { return Slot() != nullptr; }

    // Runs the dialog; the path of the chosen folder, empty when there is none.
    std::string Run() {
        std::array<wchar_t, MAX_PATH> display_name{};
        const std::wstring prompt = WideFromUtf8(browse_.Prompt);
        const UniqueItemIdList root = ListOf(browse_.RootFolder);
        selection_ = ListOf(browse_.SelectedFolder);

        BROWSEINFOW info{};
        info.hwndOwner = browse_.hWndOwner;
        info.pidlRoot = root.Get();
        info.pszDisplayName = display_name.data();
        info.lpszTitle = prompt.c_str();
        info.ulFlags = static_cast<UINT>(browse_.Flags);
        info.lpfn = Callback;
        const UniqueItemIdList chosen(browse_.show_dialog_(info));
        return PathFromItemIdList(chosen.Get());
    }

  private:
    // The dialog whose callback is called. The callback's own data would do as well, but then a
    // second dialog over the first could open.
    static Dialog*& Slot() {
        static Dialog* open = nullptr;
        return open;
    }

    static int CALLBACK Callback(HWND window, UINT message, LPARAM lparam, LPARAM /*data*/) {
        Guarded(window, [&] {
            if (Dialog* const dialog = Slot()) {
                dialog->OnMessage(window, message, lparam);
            }
        });
        // After a typed name that is not valid, this closes the dialog with nothing chosen.
        return 0;
    }

    [[nodiscard]] UniqueItemIdList ListOf(const std::string& path) const {
        return path.empty() ? UniqueItemIdList() : ItemIdListFromPath(browse_.hWndOwner, path);
    }

    void OnMessage(HWND window, UINT message, LPARAM lparam) {
        switch (message) {
            case BFFM_INITIALIZED:
                OnInitialized(window);
                break;
            case BFFM_SELCHANGED: {
                const bool has_path =
                    !PathFromItemIdList(reinterpret_cast<PCIDLIST_ABSOLUTE>(lparam)).empty();
                ::SendMessageW(window, BFFM_ENABLEOK, 0, has_path ? 1 : 0);
                break;
            }
            case BFFM_VALIDATEFAILEDA:
            case BFFM_VALIDATEFAILEDW:
                ::SendMessageW(window, BFFM_ENABLEOK, 0, 0);
                break;
            default:
                break;
        }
    }

    void OnInitialized(HWND window) {
        if (selection_) {
            // wParam 0: an identifier list, not a path.
            ::SendMessageW(window, BFFM_SETSELECTIONW, 0,
                           reinterpret_cast<LPARAM>(selection_.Get()));
        }
        if (!browse_.DialogTitle.empty()) {
            ::SetWindowTextW(window, WideFromUtf8(browse_.DialogTitle).c_str());
        }
        if (!browse_.OKText.empty()) {
            const std::wstring text = WideFromUtf8(browse_.OKText);
            ::SendMessageW(window, BFFM_SETOKTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
        }
        if (browse_.hWndOwner != nullptr && ::IsWindow(browse_.hWndOwner)) {
            CentreOverOwner(window);
        }
    }

    void CentreOverOwner(HWND window) const {
        const Bounds owner = ScreenBounds(browse_.hWndOwner);
        Bounds dialog = ScreenBounds(window);
        dialog.left = owner.left + (owner.width - dialog.width) / 2;
        dialog.top = owner.top + (owner.height - dialog.height) / 2;
        KeepRectOnMonitor(browse_.screen_, dialog);
        ::MoveWindow(window, dialog.left, dialog.top, dialog.width, dialog.height,
                     /*bRepaint=*/FALSE);
    }

    static Bounds ScreenBounds(HWND window) {
        RECT rect{};
        ::GetWindowRect(window, &rect);
        return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
    }

    BrowseForFolder& browse_;
    UniqueItemIdList selection_;
};

BrowseForFolder::BrowseForFolder(const Screen& screen)
    : BrowseForFolder(screen, [](BROWSEINFOW& info) { return ::SHBrowseForFolderW(&info); }) {}

BrowseForFolder::BrowseForFolder(const Screen& screen, ShowDialog show_dialog)
    : screen_(screen), show_dialog_(std::move(show_dialog)) {}

std::string BrowseForFolder::GetSpecialFolderLocation(std::int32_t SpecialFolder) {
    return SpecialFolderPath(SpecialFolder);
}

bool BrowseForFolder::Browse() {
    if (Dialog::AnyOpen()) {
        return false;
    }
    // The resizable dialog takes drops and completes names: it needs OLE.
    std::optional<OleSession> ole;
    try {
        ole.emplace();
    } catch (const ProgramError&) {
        // The shell says what it shows without.
    }
    std::string path = Dialog(*this).Run();
    if (path.empty()) {
        return false;
    }
    SelectedFolder = std::move(path);
    return true;
}

}  // namespace tidemark
