#include <shlobj.h>

#include "benchmarks/benchmarks.h"
#include "benchmarks/measure.h"
#include "benchmarks/real_window.h"
#include "benchmarks/tree_files.h"
#include "controls/item_id_list.h"
#include "platform/win32/com_ptr.h"
#include "platform/win32/wide_text.h"

namespace tidemark {
namespace {

// The shell calls that its menu for these files, all in one folder, cannot do without.
void FloorPopup(HWND owner, const std::string& folder_path, const std::vector<std::string>& files) {
    ComPtr<IShellFolder> desktop;
    ComPtr<IShellFolder> folder;
    const UniqueItemIdList place = ItemIdListFromPath(owner, folder_path);
    if (!place || FAILED(::SHGetDesktopFolder(desktop.Put())) ||
        FAILED(desktop->BindToObject(place.Get(), nullptr, IID_IShellFolder, folder.PutVoid()))) {
        GiveUp("the shell does not know " + folder_path);
    }
    std::vector<UniqueItemIdList> lists;
    std::vector<PCUITEMID_CHILD> children;
    for (const std::string& file : files) {
        const std::wstring path = WideFromUtf8(file);
        if (::GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
            GiveUp("not there: " + file);
        }
        std::wstring name = path.substr(path.rfind(L'\\') + 1);
        PIDLIST_RELATIVE child = nullptr;
        if (FAILED(
                folder->ParseDisplayName(owner, nullptr, name.data(), nullptr, &child, nullptr))) {
            GiveUp("the shell does not know " + file);
        }
        lists.emplace_back(reinterpret_cast<PIDLIST_ABSOLUTE>(child));
        children.push_back(reinterpret_cast<PCUITEMID_CHILD>(child));
    }
    ComPtr<IContextMenu> menu;
    const HMENU popup = ::CreatePopupMenu();
    if (FAILED(folder->GetUIObjectOf(owner, static_cast<UINT>(children.size()), children.data(),
                                     IID_IContextMenu, nullptr, menu.PutVoid())) ||
        FAILED(menu->QueryContextMenu(popup, 0, 1, 2047, CMF_NORMAL))) {
        GiveUp("the shell has no menu for the files");
    }
    ::DestroyMenu(popup);
}

}  // namespace

void PopupBench(const BenchArguments& arguments) {
    RealSystem system;
    for (const std::string& tree : arguments.trees) {
        RealWindow window(system.Plain());
        const std::vector<std::string> files = FilesIn(tree);
        window.List(files);
        window.Choose("mnuEditSelectAll");
        RunPendingMessages();
        const std::string name = "popup." + NameOfTree(tree);
        const HWND list = window.Main().lvwItems.Handle();
        for (int round = 0; round < arguments.rounds; ++round) {
            const int opened = window.Menus().Opened();
            PrintFigure(name + ".ours", TimeOf([&] {
                            window.Main().lvwItems.Send(WM_CONTEXTMENU,
                                                        reinterpret_cast<WPARAM>(list), -1);
                        }));
            if (window.Menus().Opened() != opened + 1) {
                GiveUp(name + ": no menu came up");
            }
            PrintFigure(name + ".floor", TimeOf([&] { FloorPopup(list, tree, files); }));
        }
    }
}

}  // namespace tidemark
