#include "controls/browse_for_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <shlobj.h>
// After the system's main header.
#include <commctrl.h>

#include <array>

#include "controls/item_id_list.h"
#include "controls/ole_session.h"
#include "platform/win32/wide_text.h"
#include "support/modal_driver.h"
#include "support/on_wine.h"
#include "support/open_windows.h"
#include "support/real_tree.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

constexpr int kEditOfDialog = 0x3744;  // where a name is typed

// One monitor of any size, that counts how often it is asked for.
class OneMonitor final : public Screen {
  public:
    double Width() const override { return 15.0 * monitor.right; }
    double Height() const override { return 15.0 * monitor.bottom; }
    double TwipsPerPixelX() const override { return 15; }
    double TwipsPerPixelY() const override { return 15; }
    std::optional<MonitorHandle> NearestMonitor(Point) const override {
        ++questions;
        return MonitorHandle{1};
    }
    std::optional<Rect> MonitorRect(MonitorHandle) const override { return monitor; }

    Rect monitor{-5000, -5000, 5000, 5000};
    mutable int questions = 0;
};

class BrowseForFolderTest : public ::testing::Test {
  protected:
    BrowseForFolderTest() {
        first_ = tree_.MakeFolder("first");
        second_ = tree_.MakeFolder("second \u6f6e");
        form_.SetVisible(true);
        tree_.SettleAccessTimes();
    }

    static bool OkEnabled() { return ::IsWindowEnabled(::GetDlgItem(OpenDialog(), IDOK)) != FALSE; }
    static void SelectPath(const std::string& path) {
        ::SendMessageW(OpenDialog(), BFFM_SETSELECTIONW, TRUE,
                       reinterpret_cast<LPARAM>(WideFromUtf8(path).c_str()));
    }
    // The text of the selected item of the dialog's tree.
    static std::string SelectedText() {
        const HWND tree =
            FindBelow(OpenDialog(), [](HWND child) { return ClassOf(child) == WC_TREEVIEWW; });
        std::array<wchar_t, MAX_PATH> text{};
        TVITEMW item{};
        item.mask = TVIF_TEXT;
        item.hItem = TreeView_GetSelection(tree);
        item.pszText = text.data();
        item.cchTextMax = MAX_PATH;
        ::SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return Utf8FromWide(text.data());
    }
    // Whether the item that ends the path is selected.
    static bool IsSelected(const std::string& path) {
        return SelectedText() == path.substr(path.rfind('\\') + 1) && OkEnabled();
    }
    // The dialog fills its tree over time.
    static ModalDriver::Step WaitForSelected(const std::string& path) {
        return [path] { return IsSelected(path); };
    }
    static ModalDriver::Step Select(const std::string& path) {
        return [path] {
            SelectPath(path);
            return IsSelected(path);
        };
    }
    static ModalDriver::Step WaitForDialog() {
        return [] { return OpenDialog() != nullptr; };
    }
    static ModalDriver::Step PressNow(int button) {
        return [button] {
            PressInDialog(button);
            return true;
        };
    }

    // Runs the dialog with these steps after it has come up.
    bool BrowseWith(std::vector<ModalDriver::Step> steps) {
        steps.insert(steps.begin(), WaitForDialog());
        ModalDriver driver(std::move(steps), [] { PressInDialog(IDCANCEL); });
        const bool chosen = browse_.Browse();
        EXPECT_TRUE(driver.Done());
        EXPECT_EQ(OpenDialog(), nullptr) << "the dialog has closed";
        return chosen;
    }

    OleSession ole_;
    RealTree tree_;
    std::string first_;
    std::string second_;
    TestForm form_;
    OneMonitor screen_;
    BrowseForFolder browse_{screen_};
};

TEST_F(BrowseForFolderTest, TheFieldsHaveTheirDefaults) {
    EXPECT_EQ(browse_.DialogTitle, "");
    EXPECT_EQ(browse_.Flags, 329);
    EXPECT_EQ(browse_.hWndOwner, nullptr);
    EXPECT_EQ(browse_.OKText, "");
    EXPECT_EQ(browse_.RootFolder, "");
    EXPECT_EQ(browse_.Prompt, "Choose a folder");
    EXPECT_EQ(browse_.SelectedFolder, "");
}

TEST_F(BrowseForFolderTest, TheChosenFolderIsReturned) {
    EXPECT_TRUE(BrowseWith({Select(second_), PressNow(IDOK)}));
    EXPECT_EQ(browse_.SelectedFolder, second_);
}

TEST_F(BrowseForFolderTest, TheSelectedFolderIsSelectedAtFirst) {
    browse_.SelectedFolder = first_;
    EXPECT_TRUE(BrowseWith({WaitForSelected(first_), PressNow(IDOK)}));
    EXPECT_EQ(browse_.SelectedFolder, first_);
}

TEST_F(BrowseForFolderTest, CancellingLeavesTheSelectedFolderAsItWas) {
    browse_.SelectedFolder = first_;
    EXPECT_FALSE(BrowseWith({Select(second_), PressNow(IDCANCEL)}));
    EXPECT_EQ(browse_.SelectedFolder, first_);
}

TEST_F(BrowseForFolderTest, TitleOkTextAndPromptAreShown) {
    browse_.DialogTitle = "Title \u6f6e";
    browse_.OKText = "Take it";
    browse_.Prompt = "Select a folder to be stamped.";
    std::string title;
    std::string ok;
    bool prompt_found = false;
    BrowseWith({[&] {
                    title = Window(OpenDialog()).Text();
                    ok = Window(::GetDlgItem(OpenDialog(), IDOK)).Text();
                    for (HWND child = ::GetWindow(OpenDialog(), GW_CHILD); child != nullptr;
                         child = ::GetWindow(child, GW_HWNDNEXT)) {
                        prompt_found |= Window(child).Text() == "Select a folder to be stamped.";
                    }
                    return true;
                },
                PressNow(IDCANCEL)});
    EXPECT_EQ(title, "Title \u6f6e");
    EXPECT_EQ(ok, "Take it");
    EXPECT_TRUE(prompt_found);
}

TEST_F(BrowseForFolderTest, EmptyTextsKeepTheShellsOwn) {
    std::string title;
    std::string ok;
    BrowseWith({[&] {
                    title = Window(OpenDialog()).Text();
                    ok = Window(::GetDlgItem(OpenDialog(), IDOK)).Text();
                    return true;
                },
                PressNow(IDCANCEL)});
    EXPECT_NE(title, "");
    EXPECT_NE(ok, "");
}

TEST_F(BrowseForFolderTest, AVirtualFolderDisablesOkAndAFolderEnablesIt) {
    if (OnWine()) {
        GTEST_SKIP() << "OK stays enabled in Wine's dialog, whatever the callback asks for";
    }
    // Without the flags by which the shell itself refuses virtual folders.
    browse_.Flags = BIF_NEWDIALOGSTYLE;
    PIDLIST_ABSOLUTE computer = nullptr;
    ASSERT_EQ(::SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &computer), S_OK);
    const UniqueItemIdList owned(computer);
    EXPECT_FALSE(BrowseWith({Select(first_),
                             [computer] {
                                 ::SendMessageW(OpenDialog(), BFFM_SETSELECTIONW, FALSE,
                                                reinterpret_cast<LPARAM>(computer));
                                 return !OkEnabled();
                             },
                             Select(second_), PressNow(IDCANCEL)}));
}

TEST_F(BrowseForFolderTest, WithoutAnOwnerTheDialogKeepsTheShellsPosition) {
    BrowseWith({PressNow(IDCANCEL)});
    EXPECT_EQ(screen_.questions, 0);
}

TEST_F(BrowseForFolderTest, TheDialogIsCentredOverItsOwner) {
    browse_.hWndOwner = form_.Handle();
    RECT owner{};
    ::GetWindowRect(form_.Handle(), &owner);
    RECT dialog{};
    BrowseWith({[&dialog] {
                    ::GetWindowRect(OpenDialog(), &dialog);
                    return true;
                },
                PressNow(IDCANCEL)});
    EXPECT_EQ(dialog.left,
              owner.left + ((owner.right - owner.left) - (dialog.right - dialog.left)) / 2);
    EXPECT_EQ(dialog.top,
              owner.top + ((owner.bottom - owner.top) - (dialog.bottom - dialog.top)) / 2);
    EXPECT_EQ(screen_.questions, 2) << "the monitors of both corners";
}

TEST_F(BrowseForFolderTest, TheDialogIsKeptOnTheMonitorWithItsSize) {
    browse_.hWndOwner = form_.Handle();
    screen_.monitor = {0, 0, 560, 480};
    form_.Move({500, 420, 200, 150});
    RECT dialog{};
    BrowseWith({[&dialog] {
                    ::GetWindowRect(OpenDialog(), &dialog);
                    return true;
                },
                PressNow(IDCANCEL)});
    EXPECT_EQ(dialog.right, 560);
    EXPECT_EQ(dialog.bottom, 480);
    EXPECT_GT(dialog.right - dialog.left, 50);
}

TEST_F(BrowseForFolderTest, ATypedNameThatDoesNotExistClosesTheDialogWithNothing) {
    if (OnWine()) {
        GTEST_SKIP() << "Wine's dialog does not check typed names";
    }
    browse_.Flags |= BIF_EDITBOX | BIF_VALIDATE;
    browse_.SelectedFolder = first_;
    EXPECT_FALSE(BrowseWith({[this] {
                                 const HWND edit = ::GetDlgItem(OpenDialog(), kEditOfDialog);
                                 if (edit == nullptr) {
                                     return false;
                                 }
                                 ::SetWindowTextW(edit, WideFromUtf8(first_ + "\\nowhere").c_str());
                                 return true;
                             },
                             PressNow(IDOK)}));
    EXPECT_EQ(browse_.SelectedFolder, first_);
}

TEST_F(BrowseForFolderTest, RootAndSelectionThatTheShellDoesNotKnowAreLeftUnset) {
    browse_.RootFolder = tree_.Path("nowhere");
    browse_.SelectedFolder = tree_.Path("neither");
    EXPECT_TRUE(BrowseWith({Select(second_), PressNow(IDOK)}));
    EXPECT_EQ(browse_.SelectedFolder, second_);
}

TEST_F(BrowseForFolderTest, TheRootFolderIsTheTopOfTheTree) {
    browse_.RootFolder = second_;
    EXPECT_TRUE(BrowseWith({WaitForSelected(second_), PressNow(IDOK)}));
    EXPECT_EQ(browse_.SelectedFolder, second_);
}

TEST_F(BrowseForFolderTest, OnlyOneDialogIsOpenAtATime) {
    bool second_answer = true;
    BrowseWith({[&] {
                    BrowseForFolder second(screen_);
                    second_answer = second.Browse();
                    return true;
                },
                PressNow(IDCANCEL)});
    EXPECT_FALSE(second_answer);
}

TEST_F(BrowseForFolderTest, ANumberedFolderGivesItsPath) {
    std::array<wchar_t, MAX_PATH> windows{};
    ::GetWindowsDirectoryW(windows.data(), MAX_PATH);
    EXPECT_EQ(BrowseForFolder::GetSpecialFolderLocation(CSIDL_WINDOWS),
              Utf8FromWide(windows.data()));
}

TEST_F(BrowseForFolderTest, AFolderWithoutAPathAndAnUnknownNumberGiveNothing) {
    EXPECT_EQ(BrowseForFolder::GetSpecialFolderLocation(CSIDL_DRIVES), "");
    EXPECT_EQ(BrowseForFolder::GetSpecialFolderLocation(0x7777), "");
}

TEST_F(BrowseForFolderTest, PathsAndIdentifierListsConvertBothWays) {
    const UniqueItemIdList list = ItemIdListFromPath(nullptr, second_);
    ASSERT_TRUE(list);
    EXPECT_EQ(PathFromItemIdList(list.Get()), second_);
    EXPECT_FALSE(ItemIdListFromPath(nullptr, tree_.Path("nowhere")));
    EXPECT_EQ(PathFromItemIdList(nullptr), "");
}

}  // namespace
}  // namespace tidemark
