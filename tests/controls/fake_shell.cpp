#include "controls/fake_shell.h"

#include <algorithm>
#include <cstring>

#include "support/menu_captions.h"

namespace tidemark {

// The menu's second version. Asked for its first, it answers with itself.
class FakeContextMenu2 final : public CountedFake<IContextMenu2> {
  public:
    explicit FakeContextMenu2(FakeShell& fake) : CountedFake(fake) {}

    HRESULT STDMETHODCALLTYPE QueryContextMenu(HMENU menu, UINT position, UINT first, UINT last,
                                               UINT flags) override {
        shell.queries.push_back({true, position, first, last, flags});
        return Fill(shell, menu, position, first);
    }
    HRESULT STDMETHODCALLTYPE InvokeCommand(CMINVOKECOMMANDINFO* info) override {
        shell.invocations.push_back({true, *info});
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetCommandString(UINT_PTR, UINT, UINT*, CHAR*, UINT) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE HandleMenuMsg(UINT message, WPARAM wparam, LPARAM lparam) override {
        shell.menu_messages.push_back({message, wparam, lparam});
        return E_FAIL;  // the result does not matter to anyone
    }

    // Two entries, the first of them the default.
    static HRESULT Fill(FakeShell& fake, HMENU menu, UINT position, UINT first) {
        if (fake.query_fails) {
            return E_FAIL;
        }
        ::InsertMenuW(menu, position, MF_BYPOSITION | MF_STRING, first, L"Open");
        ::InsertMenuW(menu, position + 1, MF_BYPOSITION | MF_STRING, first + 1, L"Properties");
        ::SetMenuDefaultItem(menu, position, TRUE);
        return MAKE_HRESULT(SEVERITY_SUCCESS, 0, 2);
    }

  private:
    ~FakeContextMenu2() override = default;
};

HRESULT FakeContextMenu::QueryInterface(REFIID iid, void** object) {
    if (IsEqualIID(iid, IID_IContextMenu2) && shell.offers_second_version) {
        *object = static_cast<IContextMenu2*>(new FakeContextMenu2(shell));
        return S_OK;
    }
    return ComObject::QueryInterface(iid, object);
}

HRESULT FakeContextMenu::QueryContextMenu(HMENU menu, UINT position, UINT first, UINT last,
                                          UINT flags) {
    shell.queries.push_back({false, position, first, last, flags});
    return FakeContextMenu2::Fill(shell, menu, position, first);
}

HRESULT FakeContextMenu::InvokeCommand(CMINVOKECOMMANDINFO* info) {
    shell.invocations.push_back({false, *info});
    return S_OK;
}

HRESULT FakeFolder::ParseDisplayName(HWND owner, IBindCtx*, LPWSTR name, ULONG*,
                                     PIDLIST_RELATIVE* list, ULONG*) {
    *list = nullptr;
    shell.parsed.emplace_back(name);
    shell.parse_owners.push_back(owner);
    std::wstring path = name;
    if (path.find(L"missing") != std::wstring::npos || path == shell.nameless) {
        return E_INVALIDARG;
    }
    if (!shell.gathered.empty() && path.starts_with(shell.gathered)) {
        path.erase(0, shell.gathered.size());
    }
    std::vector<BYTE> bytes;
    const auto append = [&bytes](const void* data, std::size_t size) {
        const auto* first = static_cast<const BYTE*>(data);
        bytes.insert(bytes.end(), first, first + size);
    };
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find(L'\\', start), path.size());
        const auto length = (end - start) * sizeof(wchar_t);
        const auto size = static_cast<USHORT>(length + sizeof(USHORT));
        append(&size, sizeof size);
        append(path.data() + start, length);
        start = end + 1;
    }
    const USHORT terminator = 0;
    append(&terminator, sizeof terminator);
    if (!shell.cut_off.empty() && path.ends_with(shell.cut_off)) {
        bytes.resize(bytes.size() - sizeof terminator - 1);
    }
    void* const memory = system_.Allocate(bytes.size());
    std::memcpy(memory, bytes.data(), bytes.size());
    *list = static_cast<PIDLIST_RELATIVE>(memory);
    return S_OK;
}

HRESULT FakeFolder::BindToObject(PCUIDLIST_RELATIVE list, IBindCtx*, REFIID iid, void** object) {
    *object = nullptr;
    const std::vector<std::wstring> texts = ItemTexts(list);
    if (texts.size() != 1 || !IsEqualIID(iid, IID_IShellFolder) || texts[0] == shell.unbindable) {
        return E_FAIL;
    }
    shell.bound.push_back(texts[0]);
    *object = static_cast<IShellFolder*>(new FakeFolder(shell, system_, path_ + L"/" + texts[0]));
    return S_OK;
}

HRESULT FakeFolder::GetUIObjectOf(HWND owner, UINT count, PCUITEMID_CHILD_ARRAY items, REFIID iid,
                                  UINT*, void** object) {
    *object = nullptr;
    shell.queried_folder = path_;
    shell.ui_owner = owner;
    for (UINT i = 0; i < count; ++i) {
        const std::vector<std::wstring> texts = ItemTexts(items[i]);
        shell.children.push_back(texts.size() == 1 ? texts[0] : L"(not one item)");
    }
    if (shell.get_ui_object_fails || !IsEqualIID(iid, IID_IContextMenu)) {
        return E_FAIL;
    }
    *object = static_cast<IContextMenu*>(new FakeContextMenu(shell));
    return S_OK;
}

HRESULT FakePopupMenuSystem::DesktopFolder(IShellFolder** folder) {
    *folder = new FakeFolder(shell, *this, L"desktop");
    return S_OK;
}

void* FakePopupMenuSystem::Allocate(std::size_t size) {
    ++shell.memory;
    void* const memory = std::malloc(size);
    sizes_[memory] = size;
    return memory;
}

void FakePopupMenuSystem::Free(void* memory) {
    --shell.memory;
    sizes_.erase(memory);
    std::free(memory);
}

std::size_t FakePopupMenuSystem::SizeOf(const void* memory) {
    return sizes_.at(memory);
}

HMENU FakePopupMenuSystem::NewPopupMenu() {
    if (shell.menu_creation_fails) {
        return nullptr;
    }
    ++shell.menus;
    return PopupMenuSystem::NewPopupMenu();
}

void FakePopupMenuSystem::InsertItem(HMENU menu, UINT position, const MENUITEMINFOW& item) {
    shell.inserted.push_back({position, item, item.dwTypeData});
    PopupMenuSystem::InsertItem(menu, position, item);
}

void FakePopupMenuSystem::SetDefaultItem(HMENU menu, UINT item, BOOL by_position) {
    shell.defaults.push_back({item, by_position, ::GetMenuItemCount(menu)});
    PopupMenuSystem::SetDefaultItem(menu, item, by_position);
}

void FakePopupMenuSystem::CursorPosition(POINT* point) {
    ++shell.cursor_questions;
    *point = shell.cursor;
}

UINT FakePopupMenuSystem::Track(HMENU menu, UINT flags, POINT point, HWND owner) {
    FakeShell::Tracking tracking{flags, point, owner, CaptionsOf(menu)};
    if (const UINT bold = ::GetMenuDefaultItem(menu, TRUE, 0); bold < tracking.texts.size()) {
        tracking.texts[bold] += " (default)";
    }
    shell.trackings.push_back(tracking);
    if (shell.while_tracking) {
        shell.while_tracking();
    }
    return shell.choice;
}

void FakePopupMenuSystem::Discard(HMENU menu) {
    --shell.menus;
    PopupMenuSystem::Discard(menu);
}

}  // namespace tidemark
