#include "controls/browse_for_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <vector>

#include "controls/item_id_list.h"
#include "controls/ole_session.h"
#include "platform/memory/memory_screen.h"
#include "platform/win32/com_object.h"
#include "platform/win32/com_ptr.h"
#include "platform/win32/wide_text.h"
#include "support/pump.h"
#include "support/real_tree.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

// A stand-in for the shell's dialog: a window that notes what the callback sends it.
class FakeDialogTest : public ::testing::Test {
  protected:
    struct Sent {
        UINT message;
        WPARAM wparam;
        LPARAM lparam;
        bool operator==(const Sent&) const = default;
    };

    FakeDialogTest() {
        first_ = tree_.MakeFolder("first");
        second_ = tree_.MakeFolder("second \u6f6e");
        dialog_.on_message = [this](UINT message, WPARAM wparam,
                                    LPARAM lparam) -> std::optional<LRESULT> {
            if (message < WM_USER) {
                return std::nullopt;
            }
            sent_.push_back({message, wparam, lparam});
            if (message == BFFM_SETSELECTIONW) {
                selected_ = PathFromItemIdList(reinterpret_cast<PCIDLIST_ABSOLUTE>(lparam));
            } else if (message == BFFM_SETOKTEXT) {
                ok_text_ = Utf8FromWide(reinterpret_cast<const wchar_t*>(lparam));
            }
            return 0;
        };
    }

    int Tell(UINT message, LPARAM lparam = 0) {
        return info_.lpfn(dialog_.Handle(), message, lparam, info_.lParam);
    }

    OleSession ole_;
    RealTree tree_;
    std::string first_;
    std::string second_;
    MemoryScreen screen_;
    TestForm form_;
    TestForm dialog_;
    std::vector<Sent> sent_;
    std::string selected_;
    std::string ok_text_;
    BROWSEINFOW info_{};
    std::function<PIDLIST_ABSOLUTE()> run_ = [] { return nullptr; };
    BrowseForFolder fake_{screen_, [this](BROWSEINFOW& info) {
                              info_ = info;
                              return run_();
                          }};
};

TEST_F(FakeDialogTest, TheDialogIsAskedForWithTheFields) {
    fake_.hWndOwner = form_.Handle();
    fake_.Flags = 0x12345;
    fake_.Prompt = "Prompt \u6f6e";
    std::string prompt;
    std::wstring display_name;
    run_ = [&]() -> PIDLIST_ABSOLUTE {
        prompt = Utf8FromWide(info_.lpszTitle);
        display_name.assign(info_.pszDisplayName, MAX_PATH);
        return nullptr;
    };
    EXPECT_FALSE(fake_.Browse());
    EXPECT_EQ(info_.hwndOwner, form_.Handle());
    EXPECT_EQ(info_.pidlRoot, nullptr);
    EXPECT_EQ(prompt, "Prompt \u6f6e");
    EXPECT_EQ(display_name, std::wstring(MAX_PATH, L'\0'));
    EXPECT_EQ(info_.ulFlags, 0x12345U);
    EXPECT_NE(info_.lpfn, nullptr);
    EXPECT_EQ(info_.lParam, 0);
    EXPECT_EQ(info_.iImage, 0);
}

TEST_F(FakeDialogTest, AThreadThatCannotHaveOleIsLeftToTheShell) {
    struct Asked {
        BrowseForFolder& browse;
        bool chosen = true;
    } asked{fake_};
    int dialogs = 0;
    run_ = [&]() -> PIDLIST_ABSOLUTE {
        ++dialogs;
        return nullptr;
    };
    const HANDLE thread = ::CreateThread(
        nullptr, 0,
        [](void* parameter) -> DWORD {
            ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
            auto& to_ask = *static_cast<Asked*>(parameter);
            to_ask.chosen = to_ask.browse.Browse();
            ::CoUninitialize();
            return 0;
        },
        &asked, 0, nullptr);
    ASSERT_NE(thread, nullptr);
    EXPECT_TRUE(PumpUntil([&] { return ::WaitForSingleObject(thread, 0) == WAIT_OBJECT_0; }));
    ::CloseHandle(thread);
    EXPECT_EQ(dialogs, 1);
    EXPECT_FALSE(asked.chosen);
}

TEST_F(FakeDialogTest, RootFolderBecomesTheRootsIdentifierList) {
    fake_.RootFolder = second_;
    std::string root;
    run_ = [&]() -> PIDLIST_ABSOLUTE {
        root = PathFromItemIdList(info_.pidlRoot);
        return nullptr;
    };
    fake_.Browse();
    EXPECT_EQ(root, second_);
}

TEST_F(FakeDialogTest, InitializingSendsSelectionTitleAndOkText) {
    fake_.SelectedFolder = first_;
    fake_.DialogTitle = "Title";
    fake_.OKText = "Take \u6f6e";
    run_ = [&]() -> PIDLIST_ABSOLUTE {
        EXPECT_EQ(Tell(BFFM_INITIALIZED), 0);
        return nullptr;
    };
    fake_.Browse();
    ASSERT_EQ(sent_.size(), 2U);
    EXPECT_EQ(sent_[0].message, static_cast<UINT>(BFFM_SETSELECTIONW));
    EXPECT_EQ(sent_[0].wparam, 0U) << "an identifier list, not a path";
    EXPECT_EQ(sent_[1].message, static_cast<UINT>(BFFM_SETOKTEXT));
    EXPECT_EQ(selected_, first_);
    EXPECT_EQ(ok_text_, "Take \u6f6e");
    EXPECT_EQ(dialog_.Text(), "Title");
}

// Notes what is given back to the shell's allocator.
class FreedMemory final : public ComObject<IMallocSpy> {
  public:
    FreedMemory() { EXPECT_EQ(::CoRegisterMallocSpy(this), S_OK); }
    void Forget() { freed_.clear(); }
    [[nodiscard]] bool Has(const void* memory) const { return freed_.contains(memory); }

    void* STDMETHODCALLTYPE PreFree(void* memory, BOOL) override {
        freed_.insert(memory);
        return memory;
    }
    void* STDMETHODCALLTYPE PostAlloc(void* memory) override { return memory; }
    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size; }
    void STDMETHODCALLTYPE PostFree(BOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* memory, SIZE_T size, void** changed, BOOL) override {
        *changed = memory;
        return size;
    }
    void* STDMETHODCALLTYPE PostRealloc(void* memory, BOOL) override { return memory; }
    void* STDMETHODCALLTYPE PreGetSize(void* memory, BOOL) override { return memory; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* memory, BOOL) override { return memory; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int did) override { return did; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}

  private:
    ~FreedMemory() override = default;
    std::set<const void*> freed_;
};

TEST_F(FakeDialogTest, EveryIdentifierListIsFreedAfterTheDialog) {
    fake_.RootFolder = tree_.Root();
    fake_.SelectedFolder = first_;
    const auto freed = ComPtr<FreedMemory>::Adopt(new FreedMemory);
    std::vector<const void*> lists;
    run_ = [&] {
        Tell(BFFM_INITIALIZED);
        const PIDLIST_ABSOLUTE chosen = ItemIdListFromPath(nullptr, second_).Release();
        lists = {info_.pidlRoot, reinterpret_cast<const void*>(sent_.at(0).lparam), chosen};
        freed->Forget();
        return chosen;
    };
    EXPECT_TRUE(fake_.Browse());
    ::CoRevokeMallocSpy();
    ASSERT_EQ(lists.size(), 3U);
    EXPECT_TRUE(freed->Has(lists[0])) << "the root's";
    EXPECT_TRUE(freed->Has(lists[1])) << "that of the first selection";
    EXPECT_TRUE(freed->Has(lists[2])) << "that of the choice";
}

TEST_F(FakeDialogTest, TheDialogIsMovedOverItsOwnerWithoutBeingPainted) {
    fake_.hWndOwner = form_.Handle();
    form_.Move({200, 150, 600, 500});
    dialog_.Move({10, 20, 300, 200});
    const auto note_message = dialog_.on_message;
    std::vector<UINT> moves;
    dialog_.on_message = [&](UINT message, WPARAM wparam, LPARAM lparam) {
        if (message == WM_WINDOWPOSCHANGING) {
            moves.push_back(reinterpret_cast<const WINDOWPOS*>(lparam)->flags);
        }
        return note_message(message, wparam, lparam);
    };
    run_ = [&]() -> PIDLIST_ABSOLUTE {
        Tell(BFFM_INITIALIZED);
        return nullptr;
    };
    fake_.Browse();
    EXPECT_EQ(dialog_.Position(), (Bounds{350, 300, 300, 200}));
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_NE(moves[0] & SWP_NOREDRAW, 0U);
}

TEST_F(FakeDialogTest, InitializingWithEmptyFieldsSendsNothing) {
    const Bounds before = dialog_.Position();
    run_ = [&]() -> PIDLIST_ABSOLUTE {
        Tell(BFFM_INITIALIZED);
        return nullptr;
    };
    fake_.Browse();
    EXPECT_TRUE(sent_.empty());
    EXPECT_EQ(dialog_.Position(), before);
    EXPECT_EQ(dialog_.Text(), "form under test");
}

TEST_F(FakeDialogTest, AVirtualFolderDisablesOkAndAFolderEnablesIt) {
    PIDLIST_ABSOLUTE computer = nullptr;
    ASSERT_EQ(::SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &computer), S_OK);
    const UniqueItemIdList virtual_folder(computer);
    const UniqueItemIdList real_folder = ItemIdListFromPath(nullptr, first_);
    run_ = [&]() -> PIDLIST_ABSOLUTE {
        EXPECT_EQ(Tell(BFFM_SELCHANGED, reinterpret_cast<LPARAM>(virtual_folder.Get())), 0);
        EXPECT_EQ(Tell(BFFM_SELCHANGED, reinterpret_cast<LPARAM>(real_folder.Get())), 0);
        return nullptr;
    };
    fake_.Browse();
    EXPECT_THAT(sent_,
                ::testing::ElementsAre(Sent{BFFM_ENABLEOK, 0, 0}, Sent{BFFM_ENABLEOK, 0, 1}));
}

TEST_F(FakeDialogTest, ATypedNameThatIsNotValidDisablesOkAndClosesTheDialog) {
    run_ = [&]() -> PIDLIST_ABSOLUTE {
        EXPECT_EQ(Tell(BFFM_VALIDATEFAILEDW), 0) << "0 closes the dialog";
        EXPECT_EQ(Tell(BFFM_VALIDATEFAILEDA), 0);
        return nullptr;
    };
    EXPECT_FALSE(fake_.Browse());
    EXPECT_THAT(sent_,
                ::testing::ElementsAre(Sent{BFFM_ENABLEOK, 0, 0}, Sent{BFFM_ENABLEOK, 0, 0}));
}

TEST_F(FakeDialogTest, OtherMessagesAreIgnored) {
    run_ = [&]() -> PIDLIST_ABSOLUTE {
        EXPECT_EQ(Tell(BFFM_IUNKNOWN), 0);
        EXPECT_EQ(Tell(99), 0);
        return nullptr;
    };
    fake_.Browse();
    EXPECT_TRUE(sent_.empty());
}

TEST_F(FakeDialogTest, AVirtualFolderThatIsReturnedAllTheSameIsNotAChoice) {
    fake_.SelectedFolder = first_;
    run_ = [] {
        PIDLIST_ABSOLUTE computer = nullptr;
        ::SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &computer);
        return computer;
    };
    EXPECT_FALSE(fake_.Browse());
    EXPECT_EQ(fake_.SelectedFolder, first_);
}

TEST_F(FakeDialogTest, AnOwnerThatIsGoneDoesNotMoveTheDialog) {
    fake_.hWndOwner = form_.Handle();
    const Bounds before = dialog_.Position();
    run_ = [&]() -> PIDLIST_ABSOLUTE {
        form_.Destroy();
        Tell(BFFM_INITIALIZED);
        return nullptr;
    };
    fake_.Browse();
    EXPECT_EQ(dialog_.Position(), before);
}

}  // namespace
}  // namespace tidemark
