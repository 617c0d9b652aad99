#include "controls/shell_context_menu.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/raise.h"
#include "platform/text.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

constexpr UINT kLastShellCommand = 2047;

// The items of a list; none for null and for a list that cannot be trusted.
std::vector<ShellItemId> ItemsOf(PopupMenuSystem& system, const ITEMIDLIST* list) {
    if (list == nullptr) {
        return {};
    }
    const std::span<const std::byte> memory(reinterpret_cast<const std::byte*>(list),
                                            system.SizeOf(list));
    return SplitItemIds(memory).value_or(std::vector<ShellItemId>{});
}

std::wstring KeyOf(std::string_view path) {
    std::wstring key = WideFromUtf8(path);
    ::CharUpperBuffW(key.data(), static_cast<DWORD>(key.size()));
    return key;
}

bool Fill(HMENU menu, IContextMenu& shell_menu, UINT first_command) {
    return SUCCEEDED(shell_menu.QueryContextMenu(menu, /*indexMenu=*/0, first_command,
                                                 kLastShellCommand, CMF_NORMAL));
}

void Invoke(HWND hwnd, IContextMenu& shell_menu, UINT offset) {
    CMINVOKECOMMANDINFO command{};
    command.cbSize = sizeof(command);
    command.hwnd = hwnd;
    command.lpVerb = MAKEINTRESOURCEA(offset);
    command.nShow = SW_SHOWNORMAL;
    shell_menu.InvokeCommand(&command);
}

}  // namespace

// Identifier lists in memory of the shell's allocator, freed with it.
class ShellContextMenu::ItemIds {
  public:
    explicit ItemIds(PopupMenuSystem& system) : system_(system) {}
    ItemIds(const ItemIds&) = delete;
    ItemIds& operator=(const ItemIds&) = delete;
    ~ItemIds() {
        for (ITEMIDLIST* list : lists_) {
            if (list != nullptr) {
                system_.Free(list);
            }
        }
    }

    // Takes a list over; null stands for an empty one.
    void Add(ITEMIDLIST* list) { lists_.push_back(list); }

    // Adds a list of just a copy of `item`; an empty one when no memory is left.
    void AddCopy(ShellItemId item) {
        void* const copy = system_.Allocate(SizeOfSingleItemList(item));
        if (copy != nullptr) {
            WriteSingleItemList(item, static_cast<std::byte*>(copy));
        }
        lists_.push_back(static_cast<ITEMIDLIST*>(copy));
    }

    [[nodiscard]] const std::vector<ITEMIDLIST*>& Lists() const { return lists_; }

    // The lists that are not empty, as the shell takes them.
    [[nodiscard]] std::vector<PCUITEMID_CHILD> Children() const {
        std::vector<PCUITEMID_CHILD> children;
        for (const ITEMIDLIST* list : lists_) {
            if (list != nullptr) {
                children.push_back(reinterpret_cast<PCUITEMID_CHILD>(list));
            }
        }
        return children;
    }

  private:
    PopupMenuSystem& system_;
    std::vector<ITEMIDLIST*> lists_;
};

ShellContextMenu::ShellContextMenu(PopupMenuSystem& system) : system_(system) {}

void ShellContextMenu::AddFile(std::string_view FileOrFolder) {
    if (file_keys_.insert(KeyOf(FileOrFolder)).second) {
        files_.emplace_back(FileOrFolder);
    }
}

void ShellContextMenu::AddMenuItem(std::string_view Caption, std::uint32_t ItemType,
                                   std::uint32_t ItemState, std::int32_t ItemData) {
    Entry entry;
    entry.record.cbSize = kMenuItemRecordSize;
    entry.record.dwItemData = static_cast<ULONG_PTR>(ItemData);
    if ((ItemType & MFT_SEPARATOR) != 0) {
        entry.record.fMask = MIIM_ID | MIIM_TYPE;
        entry.record.fType = MFT_SEPARATOR;
    } else {
        entry.caption = TrimNull(Caption);
        entry.text = WideFromUtf8(entry.caption);
        entry.record.fMask = MIIM_STATE | MIIM_ID | MIIM_TYPE;
        entry.record.fType = ItemType;
        entry.record.fState = ItemState;
        entry.record.wID = static_cast<UINT>(entries_.size()) + 1;
        entry.record.cch = static_cast<UINT>(entry.text.size());
    }
    entries_.push_back(std::move(entry));
}

void ShellContextMenu::Clear() {
    files_.clear();
    file_keys_.clear();
    entries_.clear();
}

void ShellContextMenu::PopupMenu(HWND hwnd, UINT Flags, int ScreenPixelX, int ScreenPixelY) {
    if (files_.empty()) {
        return;
    }
    POINT point{ScreenPixelX, ScreenPixelY};
    if (ScreenPixelX == -1 && ScreenPixelY == -1) {
        system_.CursorPosition(&point);
    }

    ComPtr<IShellFolder> desktop;
    if (FAILED(system_.DesktopFolder(desktop.Put()))) {
        return;
    }
    ItemIds lists(system_);
    for (const std::string& path : files_) {
        std::wstring name = WideFromUtf8(path);
        PIDLIST_RELATIVE list = nullptr;
        const HRESULT parsed =
            desktop->ParseDisplayName(hwnd, nullptr, name.data(), nullptr, &list, nullptr);
        lists.Add(SUCCEEDED(parsed) ? list : nullptr);
    }
    const std::vector<ShellItemId> first = ItemsOf(system_, lists.Lists().front());
    if (first.empty()) {
        return;
    }
    const ComPtr<IShellFolder> folder =
        BindFolder(desktop, std::span(first).first(first.size() - 1));
    if (!folder) {
        return;
    }
    ItemIds children(system_);
    for (const ITEMIDLIST* list : lists.Lists()) {
        if (const std::vector<ShellItemId> items = ItemsOf(system_, list); !items.empty()) {
            children.AddCopy(items.back());
        } else {
            children.Add(nullptr);
        }
    }
    if (children.Lists().front() == nullptr) {
        return;
    }

    // A copy: the menu runs a message loop, and what happens there may change the object's own.
    std::vector<Entry> entries = entries_;
    subclasser_.WndProc = [this](HWND, UINT message, WPARAM wparam,
                                 LPARAM lparam) -> std::optional<LRESULT> {
        if (const ComPtr<IContextMenu2> menu = shell_menu_) {
            menu->HandleMenuMsg(message, wparam, lparam);
        }
        return std::nullopt;
    };
    subclasser_.RegisterMessages(hwnd, {WM_INITMENUPOPUP, WM_DRAWITEM, WM_MEASUREITEM, WM_DESTROY});
    const UINT choice = Show(hwnd, Flags, point, *folder.Get(), children, entries);
    subclasser_.StopSubclassing();

    if (choice >= 1 && choice <= entries.size()) {
        const Entry& chosen = entries[choice - 1];
        Raise(MenuItemInvoked, chosen.caption,
              static_cast<std::int32_t>(static_cast<INT_PTR>(chosen.record.dwItemData)));
    }
}

ComPtr<IShellFolder> ShellContextMenu::BindFolder(ComPtr<IShellFolder> folder,
                                                  std::span<const ShellItemId> levels) const {
    for (const ShellItemId& level : levels) {
        ItemIds step(system_);
        step.AddCopy(level);
        const ITEMIDLIST* const list = step.Lists().front();
        ComPtr<IShellFolder> next;
        if (list == nullptr ||
            FAILED(folder->BindToObject(reinterpret_cast<PCUIDLIST_RELATIVE>(list), nullptr,
                                        IID_IShellFolder, next.PutVoid()))) {
            return {};
        }
        folder = std::move(next);
    }
    return folder;
}

UINT ShellContextMenu::Show(HWND hwnd, UINT flags, POINT point, IShellFolder& folder,
                            const ItemIds& children, std::vector<Entry>& entries) {
    std::vector<PCUITEMID_CHILD> items = children.Children();
    ComPtr<IContextMenu> shell_menu;
    if (FAILED(folder.GetUIObjectOf(hwnd, static_cast<UINT>(items.size()), items.data(),
                                    IID_IContextMenu, nullptr, shell_menu.PutVoid())) ||
        !shell_menu) {
        return 0;
    }
    shell_menu_ = shell_menu.As<IContextMenu2>();
    UINT choice = 0;
    if (const HMENU menu = system_.NewPopupMenu()) {
        IContextMenu& commands = shell_menu_ ? *shell_menu_.Get() : *shell_menu.Get();
        const UINT own_entries = static_cast<UINT>(entries.size());
        if (Fill(menu, commands, own_entries + 1)) {
            const bool own_default = std::any_of(
                entries.begin(), entries.end(),
                [](const Entry& entry) { return (entry.record.fState & MFS_DEFAULT) != 0; });
            if (own_default || !UseShellDefault) {
                system_.SetDefaultItem(menu, static_cast<UINT>(-1), /*by_position=*/TRUE);
            }
        }
        for (UINT position = 0; position < own_entries; ++position) {
            Entry& entry = entries[position];
            entry.record.dwTypeData = entry.text.data();
            system_.InsertItem(menu, position, entry.record);
        }
        choice = system_.Track(menu, flags | TPM_RETURNCMD, point, hwnd);
        if (choice > own_entries) {
            Invoke(hwnd, commands, choice - (own_entries + 1));
        }
        system_.Discard(menu);
    }
    shell_menu_.Reset();
    return choice;
}

}  // namespace tidemark
