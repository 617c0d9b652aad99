#pragma once

#include <shobjidl.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "controls/popup_menu_system.h"
#include "controls/shell_item_ids.h"
#include "platform/win32/com_ptr.h"
#include "platform/win32/windows.h"
#include "ui/subclasser.h"

namespace tidemark {

// One popup menu made of a few entries of the program's own, on top, and the shell's own menu for a
// set of files and folders, below. A chosen shell entry is carried out by the shell; a chosen own
// entry is reported. Texts are UTF-8. User-interface thread only.
class ShellContextMenu {
  public:
    // The system's first version of the menu-item record, before it got a bitmap at its end.
    static constexpr UINT kMenuItemRecordSize = offsetof(MENUITEMINFOW, hbmpItem);

    // `system` is not owned and outlives the object.
    explicit ShellContextMenu(PopupMenuSystem& system);
    ShellContextMenu(const ShellContextMenu&) = delete;
    ShellContextMenu& operator=(const ShellContextMenu&) = delete;

    // True: when no own entry is the default, the shell's default entry keeps its bold look.
    bool UseShellDefault = false;

    // Raised from within PopupMenu, after the menu has closed, when an own entry was chosen.
    std::function<void(const std::string& Caption, std::int32_t ItemData)> MenuItemInvoked;

    // Adds a full path; one that is there already, in any case of its letters, is ignored.
    void AddFile(std::string_view FileOrFolder);

    // Appends an own entry. Type and state are bits of the system's menus: 0x800 a separator,
    // state 0x1000 the default entry.
    void AddMenuItem(std::string_view Caption, std::uint32_t ItemType, std::uint32_t ItemState,
                     std::int32_t ItemData);

    // Forgets all files and entries.
    void Clear();

    // Shows the menu for `hwnd` at a point of the screen in pixels, or at the pointer when both
    // coordinates are -1, and returns when it has closed. `Flags` are those of popup menus. Calls
    // may nest.
    //
    // Without files, or when the shell does not know the first one, nothing is shown. When two of
    // the files lie in different folders, the menu has the own entries alone. The object must stay
    // until PopupMenu returns. Throws ProgramError when `hwnd` is no window of this thread.
    void PopupMenu(HWND hwnd, UINT Flags, int ScreenPixelX, int ScreenPixelY);

  private:
    struct Entry {
        MENUITEMINFOW record{};  // without the address of its text, which moves with the entry
        std::wstring text;
        std::string caption;
    };
    struct FreeItemIdList {
        PopupMenuSystem* system = nullptr;
        void operator()(ITEMIDLIST* list) const { system->Free(list); }
    };
    // In memory of the shell's allocator.
    using ItemIdList = std::unique_ptr<ITEMIDLIST, FreeItemIdList>;
    // The files as the shell knows them; without a folder when they do not all lie in one.
    struct ShellItems {
        ComPtr<IShellFolder> folder;
        std::vector<ItemIdList> children;
    };

    // The files that the shell knows; none at all when the first is not among them.
    [[nodiscard]] std::optional<ShellItems> FindItems(HWND owner) const;
    [[nodiscard]] static ComPtr<IContextMenu> MenuOf(HWND owner, const ShellItems& items);
    [[nodiscard]] UINT Show(HWND hwnd, UINT flags, POINT point, const ShellItems& items,
                            std::vector<Entry>& entries);

    // What the folder makes of a name; empty when it does not know it.
    [[nodiscard]] ItemIdList Parse(IShellFolder& folder, HWND owner, std::string_view name) const;
    // The items of a list; none of an empty one, nor of one that cannot be trusted.
    [[nodiscard]] std::vector<ShellItemId> ItemsOf(const ItemIdList& list) const;
    // A list of just a copy of the item; empty when no memory is left.
    [[nodiscard]] ItemIdList CopyOf(ShellItemId item) const;
    // The folder that the items lead to from `folder`, one level each; empty when one does not.
    [[nodiscard]] ComPtr<IShellFolder> BindFolder(ComPtr<IShellFolder> folder,
                                                  std::span<const ShellItemId> levels) const;

    PopupMenuSystem& system_;
    Subclasser subclasser_;
    std::vector<std::string> files_;
    std::unordered_set<std::wstring> file_keys_;  // the paths as they are compared
    std::vector<Entry> entries_;                  // the first has the identifier 1
    ComPtr<IContextMenu2> shell_menu_;            // of the menu that is up, if the shell's has it
};

#ifndef _WIN64
static_assert(ShellContextMenu::kMenuItemRecordSize == 44);
static_assert(sizeof(CMINVOKECOMMANDINFO) == 36);
#endif

}  // namespace tidemark
