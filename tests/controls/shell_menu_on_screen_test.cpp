// The popup menu with the shell's real entries.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ole2.h>
#include <shlobj.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "controls/file_drop_data.h"
#include "controls/item_id_list.h"
#include "controls/ole_session.h"
#include "controls/shell_context_menu.h"
#include "platform/win32/com_object.h"
#include "platform/win32/com_ptr.h"
#include "support/menu_captions.h"
#include "support/modal_driver.h"
#include "support/open_windows.h"
#include "support/real_tree.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAreArray;

// The last item of the identifier list that the desktop gives for a path, byte by byte.
std::string LastItemOf(const std::string& path) {
    const UniqueItemIdList list = ItemIdListFromPath(nullptr, path);
    if (!list) {
        return "(none)";
    }
    const ITEMIDLIST* const last = ::ILFindLastID(list.Get());
    return {reinterpret_cast<const char*>(last),
            ::ILGetSize(reinterpret_cast<PCUIDLIST_RELATIVE>(last))};
}

class ShellMenuOnScreenTest : public ::testing::Test {
  protected:
    ShellMenuOnScreenTest() {
        form_.SetVisible(true);
        ::SetCursorPos(1200, 850);  // over the menu it would choose
        first_ = tree_.MakeFile("a.txt");
        second_ = tree_.MakeFile("b \u6f6e.txt");
        menu_.AddMenuItem("Open Containing Folder", 0, 0, 1);
        menu_.AddMenuItem("", MFT_SEPARATOR, 0, 0);
        menu_.AddFile(first_);
        menu_.AddFile(second_);
        menu_.MenuItemInvoked = [this](const std::string& caption, std::int32_t data) {
            invoked_.emplace_back(caption, data);
        };
    }

    // Waits for the menu and notes what it shows.
    ModalDriver::Step Look() {
        return [this] {
            const HMENU menu = OpenMenu();
            if (menu == nullptr) {
                return false;
            }
            ::GetWindowRect(OpenPopup(), &shown_at_);
            default_position_ = static_cast<int>(::GetMenuDefaultItem(menu, TRUE, 0));
            items_ = CaptionsOf(menu);
            for (std::string& item : items_) {
                std::erase(item, '&');
                item.erase(std::min(item.find('\t'), item.size()));
            }
            return true;
        };
    }
    ModalDriver::Step Key(WPARAM key) {
        return [this, key] {
            form_.Post(WM_KEYDOWN, key, 1);
            form_.Post(WM_KEYUP, key, 1);
            return true;
        };
    }
    // Walks down, entry by entry as the highlight follows, and takes the wanted one; Esc when there
    // is none. Never takes another: some open dialogs.
    ModalDriver::Step Choose(const std::string& text) {
        return [this, text] {
            if (!Shows(text)) {
                return Key(VK_ESCAPE)();
            }
            const int now = Highlighted();
            if (now >= 0 && items_[static_cast<std::size_t>(now)] == text) {
                return Key(VK_RETURN)();
            }
            if (now != walked_from_) {
                walked_from_ = now;
                Key(VK_DOWN)();
            }
            return false;
        };
    }
    static int Highlighted() {
        const HMENU menu = OpenMenu();
        for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
            if ((::GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_HILITE) != 0) {
                return i;
            }
        }
        return -1;
    }
    bool Shows(const std::string& text) const {
        return std::find(items_.begin(), items_.end(), text) != items_.end();
    }
    static void EndEverything() {
        ::EndMenu();
        if (const HWND dialog = OpenDialog()) {
            ::PostMessageW(dialog, WM_CLOSE, 0, 0);
        }
    }
    void Show(int x, int y, std::vector<ModalDriver::Step> steps) {
        ModalDriver driver(std::move(steps), EndEverything);
        menu_.PopupMenu(form_.Handle(), 0, x, y);
        EXPECT_TRUE(driver.Done());
        EXPECT_EQ(OpenPopup(), nullptr) << "the menu has closed";
    }

    OleSession ole_;
    RealTree tree_;
    TestForm form_;
    std::string first_;
    std::string second_;
    PopupMenuSystem system_;
    ShellContextMenu menu_{system_};
    std::vector<std::pair<std::string, std::int32_t>> invoked_;
    std::vector<std::string> items_;  // their captions, without the marks of mnemonics and keys
    RECT shown_at_{};
    int default_position_ = -2;
    int walked_from_ = -2;
};

TEST_F(ShellMenuOnScreenTest, OwnEntriesStandAboveTheShellsAndNoneIsBold) {
    Show(200, 150, {Look(), Key(VK_ESCAPE)});
    ASSERT_GT(items_.size(), 3U) << "the shell has entries of its own";
    EXPECT_EQ(items_[0], "Open Containing Folder");
    EXPECT_EQ(items_[1], "-");
    EXPECT_THAT(items_[2], Not(AnyOf("", "-")));
    EXPECT_EQ(default_position_, -1);
    EXPECT_EQ(shown_at_.left, 200);
    EXPECT_EQ(shown_at_.top, 150);
    EXPECT_THAT(invoked_, IsEmpty());
}

TEST_F(ShellMenuOnScreenTest, TheShellsDefaultStaysBoldWhenAskedFor) {
    menu_.UseShellDefault = true;
    Show(200, 150, {Look(), Key(VK_ESCAPE)});
    EXPECT_GE(default_position_, 2);
}

TEST_F(ShellMenuOnScreenTest, TheOwnEntryIsReportedWhenChosen) {
    Show(200, 150, {Look(), Choose("Open Containing Folder")});
    EXPECT_THAT(invoked_, ElementsAre(std::pair<std::string, int>{"Open Containing Folder", 1}));
}

TEST_F(ShellMenuOnScreenTest, TwiceMinusOneShowsItAtThePointer) {
    ::SetCursorPos(321, 234);
    POINT pointer{};
    ::GetCursorPos(&pointer);
    Show(-1, -1, {Look(), Key(VK_ESCAPE)});
    EXPECT_EQ(shown_at_.left, pointer.x);
    EXPECT_EQ(shown_at_.top, pointer.y);
}

TEST_F(ShellMenuOnScreenTest, AChosenShellEntryActsOnAllTheFiles) {
    ::OleSetClipboard(nullptr);
    Show(200, 150, {Look(), Choose("Copy")});
    if (!Shows("Copy")) {
        GTEST_SKIP() << "the shell's menu has no entry named Copy in this language";
    }
    EXPECT_THAT(invoked_, IsEmpty());
    ComPtr<IDataObject> copied;
    ASSERT_EQ(::OleGetClipboard(copied.Put()), S_OK);
    EXPECT_THAT(ReadFileDrop(*copied.Get()), ElementsAre(first_, second_));
    ::OleSetClipboard(nullptr);
}

TEST_F(ShellMenuOnScreenTest, FilesOfTwoFoldersShowTheOwnEntryAlone) {
    tree_.MakeFile("one\\same.txt");
    tree_.MakeFile("two\\same.txt");
    menu_.Clear();
    menu_.AddMenuItem("Open Containing Folder", 0, 0, 1);
    menu_.AddMenuItem("", MFT_SEPARATOR, 0, 0);
    menu_.AddFile(tree_.MakeFile("one\\f1.txt"));
    menu_.AddFile(tree_.Path("two\\same.txt"));
    Show(200, 150, {Look(), Key(VK_ESCAPE)});
    EXPECT_THAT(items_, ElementsAre("Open Containing Folder"));
    Show(200, 150, {Look(), Choose("Open Containing Folder")});
    EXPECT_THAT(invoked_, ElementsAre(std::pair<std::string, int>{"Open Containing Folder", 1}));
}

// A folder of the shell that notes what is asked of it, and has no menu.
class WatchedFolder final : public ComObject<IShellFolder> {
  public:
    struct Notes {
        int parsed_by_desktop = 0;
        std::vector<std::string> children;  // the bytes of their identifiers
    };
    WatchedFolder(ComPtr<IShellFolder> folder, Notes& notes, bool desktop)
        : folder_(std::move(folder)), notes_(notes), desktop_(desktop) {}

    HRESULT STDMETHODCALLTYPE ParseDisplayName(HWND owner, IBindCtx* context, LPWSTR name,
                                               ULONG* eaten, PIDLIST_RELATIVE* list,
                                               ULONG* attributes) override {
        notes_.parsed_by_desktop += desktop_ ? 1 : 0;
        return folder_->ParseDisplayName(owner, context, name, eaten, list, attributes);
    }
    HRESULT STDMETHODCALLTYPE BindToObject(PCUIDLIST_RELATIVE list, IBindCtx* context, REFIID iid,
                                           void** object) override {
        ComPtr<IShellFolder> next;
        const HRESULT bound = folder_->BindToObject(list, context, iid, next.PutVoid());
        *object = SUCCEEDED(bound) ? static_cast<IShellFolder*>(new WatchedFolder(
                                         std::move(next), notes_, /*desktop=*/false))
                                   : nullptr;
        return bound;
    }
    HRESULT STDMETHODCALLTYPE GetUIObjectOf(HWND, UINT count, PCUITEMID_CHILD_ARRAY items, REFIID,
                                            UINT*, void** object) override {
        *object = nullptr;
        for (UINT i = 0; i < count; ++i) {
            notes_.children.emplace_back(reinterpret_cast<const char*>(items[i]),
                                         ::ILGetSize(items[i]));
        }
        return E_FAIL;
    }
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
    ~WatchedFolder() override = default;
    ComPtr<IShellFolder> folder_;
    Notes& notes_;
    bool desktop_;
};

class WatchedShell final : public PopupMenuSystem {
  public:
    HRESULT DesktopFolder(IShellFolder** folder) override {
        ComPtr<IShellFolder> desktop;
        const HRESULT found = PopupMenuSystem::DesktopFolder(desktop.Put());
        *folder = new WatchedFolder(std::move(desktop), notes, /*desktop=*/true);
        return found;
    }
    WatchedFolder::Notes notes;
};

TEST_F(ShellMenuOnScreenTest, TheIdentifiersAreThoseThatTheDesktopGives) {
    WatchedShell shell;
    ShellContextMenu menu(shell);
    std::vector<std::string> expected;
    menu.AddFile(first_);
    menu.AddFile(second_);
    for (const char* name : {"no extension", ".hidden", "two.dots.html", "100% #1 'x'.exe",
                             "\u6f6e \u00e4.txt", "a long name with blanks in it.document"}) {
        menu.AddFile(tree_.MakeFile(name));
    }
    menu.AddFile(tree_.MakeFolder("folder") + "\\");
    for (const auto& [name, entry] : tree_.Entries()) {
        expected.push_back(LastItemOf(tree_.Path(name)));
    }
    menu.PopupMenu(form_.Handle(), 0, 10, 10);
    EXPECT_THAT(shell.notes.children, UnorderedElementsAreArray(expected));
    EXPECT_EQ(shell.notes.parsed_by_desktop, 1) << "the folder knows the others by their names";
}

TEST_F(ShellMenuOnScreenTest, AFileThatIsGoneShowsNothing) {
    menu_.Clear();
    menu_.AddMenuItem("Open Containing Folder", 0, 0, 1);
    menu_.AddFile(tree_.Path("gone.txt"));
    ModalDriver driver({Look()}, EndEverything);
    menu_.PopupMenu(form_.Handle(), 0, 10, 10);
    EXPECT_FALSE(driver.Done());
}

}  // namespace
}  // namespace tidemark
