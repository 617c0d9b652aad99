// The popup menu with the shell's real entries.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ole2.h>

#include <algorithm>
#include <array>

#include "controls/file_drop_data.h"
#include "controls/ole_session.h"
#include "controls/shell_context_menu.h"
#include "platform/win32/com_ptr.h"
#include "platform/win32/wide_text.h"
#include "support/modal_driver.h"
#include "support/real_tree.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr UINT kGetMenuHandle = 0x01E1;  // MN_GETHMENU

struct ShownItem {
    std::string text;  // without marks of mnemonics
    bool separator;
};

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

    static HWND Popup() {
        const std::vector<HWND> popups = ThreadWindows(L"#32768");
        return popups.empty() ? nullptr : popups.front();
    }

    // Waits for the menu and notes what it shows.
    ModalDriver::Step Look() {
        return [this] {
            const HWND popup = Popup();
            const auto menu =
                popup == nullptr
                    ? nullptr
                    : reinterpret_cast<HMENU>(::SendMessageW(popup, kGetMenuHandle, 0, 0));
            if (menu == nullptr) {
                return false;
            }
            ::GetWindowRect(popup, &shown_at_);
            default_position_ = static_cast<int>(::GetMenuDefaultItem(menu, TRUE, 0));
            for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
                std::array<wchar_t, 128> text{};
                ::GetMenuStringW(menu, static_cast<UINT>(i), text.data(),
                                 static_cast<int>(text.size()), MF_BYPOSITION);
                std::string shown = Utf8FromWide(text.data());
                std::erase(shown, '&');
                const UINT state = ::GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
                items_.push_back({shown.substr(0, shown.find('\t')),
                                  (state & MF_SEPARATOR) != 0 && (state & MF_POPUP) == 0});
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
            if (now >= 0 && items_[static_cast<std::size_t>(now)].text == text) {
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
        const auto menu = reinterpret_cast<HMENU>(::SendMessageW(Popup(), kGetMenuHandle, 0, 0));
        for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
            if ((::GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_HILITE) != 0) {
                return i;
            }
        }
        return -1;
    }
    bool Shows(const std::string& text) const {
        return std::any_of(items_.begin(), items_.end(),
                           [&](const auto& item) { return item.text == text; });
    }
    static void EndEverything() {
        ::EndMenu();
        for (const HWND dialog : ThreadWindows(L"#32770")) {
            ::PostMessageW(dialog, WM_CLOSE, 0, 0);
        }
    }
    void Show(int x, int y, std::vector<ModalDriver::Step> steps) {
        ModalDriver driver(std::move(steps), EndEverything);
        menu_.PopupMenu(form_.Handle(), 0, x, y);
        EXPECT_TRUE(driver.Done());
        EXPECT_EQ(Popup(), nullptr) << "the menu has closed";
    }

    OleSession ole_;
    RealTree tree_;
    TestForm form_;
    std::string first_;
    std::string second_;
    PopupMenuSystem system_;
    ShellContextMenu menu_{system_};
    std::vector<std::pair<std::string, std::int32_t>> invoked_;
    std::vector<ShownItem> items_;
    RECT shown_at_{};
    int default_position_ = -2;
    int walked_from_ = -2;
};

TEST_F(ShellMenuOnScreenTest, OwnEntriesStandAboveTheShellsAndNoneIsBold) {
    Show(200, 150, {Look(), Key(VK_ESCAPE)});
    ASSERT_GT(items_.size(), 3U) << "the shell has entries of its own";
    EXPECT_EQ(items_[0].text, "Open Containing Folder");
    EXPECT_TRUE(items_[1].separator);
    EXPECT_FALSE(items_[2].text.empty());
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
