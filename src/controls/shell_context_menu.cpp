#include "controls/shell_context_menu.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/path_form.h"
#include "platform/raise.h"
#include "platform/text.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

constexpr UINT kLastShellCommand = 2047;

// What comes before the last item of a list, byte by byte: the folder that holds the item.
std::span<const std::byte> BytesOfParent(const std::vector<ShellItemId>& items) {
    return {items.front().data(), items.back().data()};
}

// The last component of a path.
std::string_view NameInFolder(std::string_view path) {
    path = path.substr(0, path.find_last_not_of("\\/") + 1);
    return path.substr(path.find_last_of("\\/") + 1);
}

void RegisterMenuMessages(Subclasser& subclasser, HWND owner) {
    subclasser.RegisterMessages(owner, {WM_INITMENUPOPUP, WM_DRAWITEM, WM_MEASUREITEM, WM_DESTROY});
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

ShellContextMenu::ShellContextMenu(PopupMenuSystem& system) : system_(system) {
    subclasser_.WndProc = [this](HWND, UINT message, WPARAM wparam,
                                 LPARAM lparam) -> std::optional<LRESULT> {
        if (const ComPtr<IContextMenu2> menu = shell_menu_) {
            menu->HandleMenuMsg(message, wparam, lparam);
        }
        return std::nullopt;
    };
}

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

    const std::optional<ShellItems> items = FindItems(hwnd);
    if (!items) {
        return;
    }
    // A copy: the menu runs a message loop, and what happens there may change the object's own.
    std::vector<Entry> entries = entries_;
    if (!items->folder) {
        // Without entries below it, a line parts nothing.
        while (!entries.empty() && (entries.back().record.fType & MFT_SEPARATOR) != 0) {
            entries.pop_back();
        }
    }
    // Of a menu of this object that is open already and needs its messages again after this one.
    const HWND outer_owner = subclasser_.SubclassedWindow();
    RegisterMenuMessages(subclasser_, hwnd);
    const UINT choice = Show(hwnd, Flags, point, *items, entries);
    if (outer_owner != nullptr && ::IsWindow(outer_owner)) {
        RegisterMenuMessages(subclasser_, outer_owner);
    } else {
        subclasser_.StopSubclassing();
    }

    if (choice >= 1 && choice <= entries.size()) {
        const Entry& chosen = entries[choice - 1];
        Raise(MenuItemInvoked, chosen.caption,
              static_cast<std::int32_t>(static_cast<INT_PTR>(chosen.record.dwItemData)));
    }
}

ShellContextMenu::ItemIdList ShellContextMenu::Parse(IShellFolder& folder, HWND owner,
                                                     std::string_view name) const {
    std::wstring wide = WideFromUtf8(name);
    PIDLIST_RELATIVE list = nullptr;
    const HRESULT parsed =
        folder.ParseDisplayName(owner, nullptr, wide.data(), nullptr, &list, nullptr);
    return {SUCCEEDED(parsed) ? list : nullptr, {&system_}};
}

std::vector<ShellItemId> ShellContextMenu::ItemsOf(const ItemIdList& list) const {
    if (!list) {
        return {};
    }
    const std::span<const std::byte> memory(reinterpret_cast<const std::byte*>(list.get()),
                                            system_.SizeOf(list.get()));
    return SplitItemIds(memory).value_or(std::vector<ShellItemId>{});
}

ShellContextMenu::ItemIdList ShellContextMenu::CopyOf(ShellItemId item) const {
    void* const copy = system_.Allocate(SizeOfSingleItemList(item));
    if (copy != nullptr) {
        WriteSingleItemList(item, static_cast<std::byte*>(copy));
    }
    return {static_cast<ITEMIDLIST*>(copy), {&system_}};
}

ComPtr<IShellFolder> ShellContextMenu::BindFolder(ComPtr<IShellFolder> folder,
                                                  std::span<const ShellItemId> levels) const {
    for (const ShellItemId& level : levels) {
        const ItemIdList step = CopyOf(level);
        ComPtr<IShellFolder> next;
        if (!step || FAILED(folder->BindToObject(reinterpret_cast<PCUIDLIST_RELATIVE>(step.get()),
                                                 nullptr, IID_IShellFolder, next.PutVoid()))) {
            return {};
        }
        folder = std::move(next);
    }
    return folder;
}

std::optional<ShellContextMenu::ShellItems> ShellContextMenu::FindItems(HWND owner) const {
    ComPtr<IShellFolder> desktop;
    if (FAILED(system_.DesktopFolder(desktop.Put()))) {
        return std::nullopt;
    }
    // A copy: a folder may run messages while it parses.
    const std::vector<std::string> files = files_;
    const ItemIdList first = Parse(*desktop.Get(), owner, files.front());
    const std::vector<ShellItemId> first_items = ItemsOf(first);
    if (first_items.empty()) {
        return std::nullopt;
    }
    ShellItems found;
    found.folder = BindFolder(desktop, std::span(first_items).first(first_items.size() - 1));
    found.children.push_back(CopyOf(first_items.back()));
    if (!found.folder || !found.children.front()) {
        return std::nullopt;
    }
    // The desktop searches every folder on the way to a file. A file beside the first one is asked
    // of their folder instead, by its name; except on the desktop itself, which gathers several
    // folders, where a name does not say which.
    const std::string folder_path =
        first_items.size() > 1 ? ParentPath(files.front()) : std::string();
    for (const std::string& path : std::span(files).subspan(1)) {
        if (!folder_path.empty() && ParentPath(path) == folder_path) {
            ItemIdList child = Parse(*found.folder.Get(), owner, NameInFolder(path));
            if (ItemsOf(child).size() == 1) {
                found.children.push_back(std::move(child));
                continue;
            }
        }
        const ItemIdList list = Parse(*desktop.Get(), owner, path);
        const std::vector<ShellItemId> items = ItemsOf(list);
        if (items.empty()) {
            continue;
        }
        if (!std::ranges::equal(BytesOfParent(items), BytesOfParent(first_items))) {
            return ShellItems{};
        }
        if (ItemIdList child = CopyOf(items.back())) {
            found.children.push_back(std::move(child));
        }
    }
    return found;
}

ComPtr<IContextMenu> ShellContextMenu::MenuOf(HWND owner, const ShellItems& items) {
    std::vector<PCUITEMID_CHILD> children;
    children.reserve(items.children.size());
    for (const ItemIdList& child : items.children) {
        children.push_back(reinterpret_cast<PCUITEMID_CHILD>(child.get()));
    }
    ComPtr<IContextMenu> menu;
    if (FAILED(items.folder->GetUIObjectOf(owner, static_cast<UINT>(children.size()),
                                           children.data(), IID_IContextMenu, nullptr,
                                           menu.PutVoid()))) {
        return {};
    }
    return menu;
}

UINT ShellContextMenu::Show(HWND hwnd, UINT flags, POINT point, const ShellItems& items,
                            std::vector<Entry>& entries) {
    ComPtr<IContextMenu> first_version;
    if (items.folder) {
        first_version = MenuOf(hwnd, items);
        if (!first_version) {
            return 0;
        }
    }
    const ComPtr<IContextMenu2> second_version = first_version.As<IContextMenu2>();
    IContextMenu* const shell_menu = second_version ? second_version.Get() : first_version.Get();
    const ComPtr<IContextMenu2> outer = std::exchange(shell_menu_, second_version);
    UINT choice = 0;
    if (const HMENU menu = system_.NewPopupMenu()) {
        const UINT own_entries = static_cast<UINT>(entries.size());
        if (shell_menu != nullptr && Fill(menu, *shell_menu, own_entries + 1)) {
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
        if (shell_menu != nullptr && choice > own_entries) {
            Invoke(hwnd, *shell_menu, choice - (own_entries + 1));
        }
        system_.Discard(menu);
    }
    shell_menu_ = outer;
    return choice;
}

}  // namespace tidemark
