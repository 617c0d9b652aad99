#pragma once

#include <shobjidl.h>

#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "controls/popup_menu_system.h"
#include "platform/win32/com_object.h"
#include "platform/win32/com_ptr.h"

namespace tidemark {

// A shell that records every call. Its identifier lists have one item for each part of a path
// between backslashes, holding the part's text.
struct FakeShell {
    struct Query {
        bool through_second_version;
        UINT position;
        UINT first;
        UINT last;
        UINT flags;
    };
    struct MenuMessage {
        UINT message;
        WPARAM wparam;
        LPARAM lparam;
    };
    struct Invocation {
        bool through_second_version;
        CMINVOKECOMMANDINFO info;
    };
    struct InsertedItem {
        UINT position;
        MENUITEMINFOW record;
        std::wstring text;
    };
    struct DefaultItem {
        UINT item;
        BOOL by_position;
        int items_in_menu;
    };
    struct Tracking {
        UINT flags;
        POINT point;
        HWND owner;
        std::vector<std::string> texts;
    };

    // What it does.
    bool offers_second_version = true;
    bool get_ui_object_fails = false;
    bool query_fails = false;
    bool menu_creation_fails = false;
    std::wstring unbindable;  // a part that is no folder
    std::wstring cut_off;     // a file whose identifier list lacks its last bytes
    std::wstring nameless;    // a file that its folder does not know by its name
    std::wstring gathered;  // a path whose content the desktop has as its own; ends in a backslash
    UINT choice = 0;
    POINT cursor{};
    std::function<void()> while_tracking;

    // What was asked of it.
    std::vector<std::wstring> parsed;
    std::vector<HWND> parse_owners;
    std::vector<std::wstring> bound;     // one entry for each level
    std::wstring queried_folder;         // the folder whose children were asked for
    std::vector<std::wstring> children;  // their names
    HWND ui_owner = nullptr;
    std::vector<Query> queries;
    std::vector<MenuMessage> menu_messages;
    std::vector<Invocation> invocations;
    std::vector<InsertedItem> inserted;
    std::vector<DefaultItem> defaults;
    std::vector<Tracking> trackings;
    int cursor_questions = 0;

    // What is still out.
    int memory = 0;
    int objects = 0;
    int menus = 0;
};

// The text of each item of an identifier list.
inline std::vector<std::wstring> ItemTexts(const void* list) {
    std::vector<std::wstring> texts;
    const auto* at = static_cast<const BYTE*>(list);
    for (;;) {
        USHORT size = 0;
        std::memcpy(&size, at, sizeof size);
        if (size == 0) {
            return texts;
        }
        std::wstring text((size - sizeof size) / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), at + sizeof size, text.size() * sizeof(wchar_t));
        texts.push_back(text);
        at += size;
    }
}

// A fake object counts itself while it lives.
template <typename... Interfaces>
class CountedFake : public ComObject<Interfaces...> {
  protected:
    explicit CountedFake(FakeShell& fake) : shell(fake) { ++shell.objects; }
    ~CountedFake() override { --shell.objects; }
    FakeShell& shell;
};

// The shell's menu in its first version; the second is another object behind it, so that calls
// through either are told apart.
class FakeContextMenu final : public CountedFake<IContextMenu> {
  public:
    explicit FakeContextMenu(FakeShell& fake) : CountedFake(fake) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    HRESULT STDMETHODCALLTYPE QueryContextMenu(HMENU menu, UINT position, UINT first, UINT last,
                                               UINT flags) override;
    HRESULT STDMETHODCALLTYPE InvokeCommand(CMINVOKECOMMANDINFO* info) override;
    HRESULT STDMETHODCALLTYPE GetCommandString(UINT_PTR, UINT, UINT*, CHAR*, UINT) override {
        return E_NOTIMPL;
    }

  private:
    ~FakeContextMenu() override = default;
};

class FakeFolder final : public CountedFake<IShellFolder> {
  public:
    FakeFolder(FakeShell& fake, PopupMenuSystem& system, std::wstring path)
        : CountedFake(fake), system_(system), path_(std::move(path)) {}

    HRESULT STDMETHODCALLTYPE ParseDisplayName(HWND owner, IBindCtx*, LPWSTR name, ULONG*,
                                               PIDLIST_RELATIVE* list, ULONG*) override;
    HRESULT STDMETHODCALLTYPE BindToObject(PCUIDLIST_RELATIVE list, IBindCtx*, REFIID iid,
                                           void** object) override;
    HRESULT STDMETHODCALLTYPE GetUIObjectOf(HWND owner, UINT count, PCUITEMID_CHILD_ARRAY items,
                                            REFIID iid, UINT*, void** object) override;
    HRESULT STDMETHODCALLTYPE EnumObjects(HWND, SHCONTF, IEnumIDList**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE BindToStorage(PCUIDLIST_RELATIVE, IBindCtx*, REFIID,
                                            void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CompareIDs(LPARAM, PCUIDLIST_RELATIVE, PCUIDLIST_RELATIVE) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateViewObject(HWND, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetAttributesOf(UINT, PCUITEMID_CHILD_ARRAY, SFGAOF*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetDisplayNameOf(PCUITEMID_CHILD, SHGDNF, STRRET*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetNameOf(HWND, PCUITEMID_CHILD, LPCWSTR, SHGDNF,
                                        PITEMID_CHILD*) override {
        return E_NOTIMPL;
    }

  private:
    ~FakeFolder() override = default;
    PopupMenuSystem& system_;
    std::wstring path_;
};

// The popup menu's system with the fake shell behind it. Menus are real; they are not shown.
class FakePopupMenuSystem final : public PopupMenuSystem {
  public:
    FakeShell shell;

    HRESULT DesktopFolder(IShellFolder** folder) override;
    void* Allocate(std::size_t size) override;
    void Free(void* memory) override;
    std::size_t SizeOf(const void* memory) override;
    HMENU NewPopupMenu() override;
    void InsertItem(HMENU menu, UINT position, const MENUITEMINFOW& item) override;
    void SetDefaultItem(HMENU menu, UINT item, BOOL by_position) override;
    void CursorPosition(POINT* point) override;
    UINT Track(HMENU menu, UINT flags, POINT point, HWND owner) override;
    void Discard(HMENU menu) override;

  private:
    std::map<const void*, std::size_t> sizes_;
};

}  // namespace tidemark
