// The errors window on the system's own timers, messages and files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "engine/tidemark_item_collection.h"
#include "errors/frm_errors.h"
#include "platform/memory/memory_settings_store.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_platform.h"
#include "support/fake_command_runner.h"
#include "support/last_resort_recorder.h"
#include "support/menu_captions.h"
#include "support/pump.h"
#include "support/real_tree.h"
#include "support/shown_list.h"
#include "support/shown_status.h"
#include "ui/message_font.h"
#include "ui/message_loop.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::Gt;
using testing::SizeIs;

constexpr const char* kProgram = "C:\\windows\\notepad.exe";

class FrmErrorsOnWindowsTest : public testing::Test {
  protected:
    FrmErrorsOnWindowsTest() {
        window_.Form_Load();
        window_.SetVisible(true);
    }

    void Show(const std::vector<std::string>& paths) {
        StampErrorList errors;
        for (const std::string& path : paths) {
            errors.push_back(
                std::make_shared<StampError>(StampError{path, false, 5, "Access denied."}));
        }
        window_.AddFromCollection(std::move(errors));
    }
    bool Filled() {
        return PumpUntil([this] {
            return ShownSimpleText(window_.StatusBar1).find("items had errors.") !=
                   std::string::npos;
        });
    }
    void RightClickFirstRow() const {
        const RECT label = PlaceOfRow(window_.lvwErrors, 0, LVIR_LABEL);
        const LPARAM at = MAKELPARAM(label.left + 5, (label.top + label.bottom) / 2);
        window_.lvwErrors.Send(WM_RBUTTONDOWN, MK_RBUTTON, at);
        window_.lvwErrors.Send(WM_RBUTTONUP, 0, at);
    }
    LRESULT RowCount() const { return window_.lvwErrors.Send(LVM_GETITEMCOUNT); }

    Win32Platform system_{
        {[](MSG& message) { RouteMessage(message); }, [] {}, [] { ReportToLastResort(nullptr); }}};
    Platform platform_ = system_.Parts();
    MemorySettingsStore settings_{};
    NoCommands commands_{};
    PopupMenuSystem popups_{};
    frmErrors window_{{.platform = platform_,
                       .settings = settings_,
                       .command_runner = commands_,
                       .popup_menus = popups_}};
};

TEST_F(FrmErrorsOnWindowsTest, RowsComeFromATimerTickWithTheShellsIcons) {
    Show({kProgram, "C:\\windows\\system32\\", "C:\\no such folder\\gone.txt"});
    EXPECT_EQ(ShownSimpleText(window_.StatusBar1), "  Collecting error data...");
    ASSERT_TRUE(Filled());
    EXPECT_EQ(RowCount(), 3);
    EXPECT_EQ(::ImageList_GetImageCount(window_.ImageList1.Handle()), 2);
    EXPECT_EQ(window_.rows->List().At(2).small_icon, 1);
}

TEST_F(FrmErrorsOnWindowsTest, ItComesUpWithItsTitleBarOnTheMonitorWhereverItWasPlaced) {
    const int width = ::GetSystemMetrics(SM_CXSCREEN);
    const int height = ::GetSystemMetrics(SM_CYSCREEN);
    const auto placed_at = [this](const Bounds& place) {
        window_.SetVisible(false);
        window_.Move(place);
        EXPECT_EQ(window_.Position(), place) << "its place while it is hidden";
        window_.SetVisible(true);
        return window_.Position();
    };
    EXPECT_EQ(placed_at({-124, -90, 400, 300}), (Bounds{0, 0, 400, 300}));
    EXPECT_EQ(placed_at({width - 100, height - 50, 400, 300}),
              (Bounds{width - 400, height - 300, 400, 300}));
    EXPECT_EQ(placed_at({50, 60, 400, 300}), (Bounds{50, 60, 400, 300}));
    const Bounds large = placed_at({-60, -40, width + 8, height + 8});
    EXPECT_EQ(large.left, 0);
    EXPECT_EQ(large.top, 0);
}

TEST_F(FrmErrorsOnWindowsTest, ItMayBeMadeNoSmallerThanItsLimitSays) {
    window_.MinMax1.minimum = {320, 240};
    MINMAXINFO info{};
    window_.Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.ptMinTrackSize.x, 320);
    EXPECT_EQ(info.ptMinTrackSize.y, 240);
}

LOGFONTW DescriptionOf(HFONT font) {
    LOGFONTW description{};
    ::GetObjectW(font, sizeof description, &description);
    return description;
}

TEST_F(FrmErrorsOnWindowsTest, ItsControlsHaveTheMessageFontInTheSizeOfTheForm) {
    const LOGFONTW form = DescriptionOf(window_.Font());
    EXPECT_STREQ(form.lfFaceName, L"Tahoma");
    EXPECT_EQ(form.lfHeight, -11) << "8.25 points";
    for (const Window* control : std::initializer_list<const Window*>{
             &window_.Label1, &window_.lvwErrors, &window_.StatusBar1}) {
        const LOGFONTW font = DescriptionOf(control->Font());
        EXPECT_EQ(Utf8FromWide(font.lfFaceName), MessageFontName());
        EXPECT_EQ(font.lfHeight, -11);
        EXPECT_EQ(font.lfWeight, FW_NORMAL);
    }
}

TEST_F(FrmErrorsOnWindowsTest, FilesOfTwoFoldersAreNeverGivenToTheShell) {
    RealTree tree;
    // What the shell would take for the second one lies beside the first.
    tree.MakeFile("a\\x one.txt");
    Show({tree.MakeFile("a\\f1.txt"), tree.MakeFile("b\\x one.txt")});
    ASSERT_TRUE(Filled());
    window_.rows->List().SelectAll();
    const auto press_key = [this] {
        window_.lvwErrors.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window_.lvwErrors.Handle()),
                               -1);
    };
    EXPECT_THAT(CaptionsOfPopup([this] { RightClickFirstRow(); }),
                ElementsAre("Open Containing Folder"));
    EXPECT_EQ(window_.rows->List().SelectedCount(), 2U);
    EXPECT_THAT(CaptionsOfPopup(press_key), ElementsAre("Open Containing Folder"));

    window_.rows->List().ClearSelection();
    window_.rows->List().NoteSelected(0, 0, true);
    EXPECT_THAT(CaptionsOfPopup(press_key), SizeIs(Gt(2)))
        << "of one folder the shell has entries of its own";
}

// Records of real files, from a stamp of theirs.
class ErrorsOfARealStampTest : public FrmErrorsOnWindowsTest {
  protected:
    void StampAll() {
        for (const auto& item : items_) {
            item->Stamp(/*dateLastModified=*/44257.5, /*dateCreated=*/0,
                        /*RemoveReadOnlyAttribute=*/false, /*SyncFolderCreatedDate=*/false);
        }
        ASSERT_TRUE(PumpUntil([this] { return !items_.Busy(); }));
    }
    // Whether a change of the first row would be painted.
    [[nodiscard]] bool IsDrawn() {
        ::UpdateWindow(window_.lvwErrors.Handle());
        ListModel& list = window_.rows->List();
        list.SetText(list.At(0), "changed");
        RECT unpainted{};
        return ::GetUpdateRect(window_.lvwErrors.Handle(), &unpainted, FALSE) != FALSE;
    }

    RealTree tree_{};
    TidemarkItemCollection items_{platform_};
    LastResortRecorder recorder_{};
};

TEST_F(ErrorsOfARealStampTest, AFileListedTwiceOverReachesTheUserAndTheProgramGoesOn) {
    tree_.MakeFile("a.txt");
    tree_.MakeFile("b.txt");
    const LockedFile a(tree_.Path("a.txt"));
    const LockedFile b(tree_.Path("b.txt"));
    items_.Add(tree_.Root(), nullptr, nullptr);
    items_.Add(tree_.Path("A.TXT"), nullptr, nullptr);
    StampAll();
    ASSERT_EQ(items_.ErrorList().size(), 3U);
    window_.AddFromCollection(items_.ErrorList());
    ASSERT_TRUE(PumpUntil([&] { return !recorder_.reports.empty(); }));
    EXPECT_EQ(recorder_.reports[0].Text(), "Error: 35602\nKey is not unique in collection");
    EXPECT_EQ(RowCount(), 2);
    EXPECT_TRUE(IsDrawn());
    EXPECT_EQ(ShownSimpleText(window_.StatusBar1), "  Collecting error data...");

    items_.Remove(tree_.Path("A.TXT"), nullptr);
    window_.AddFromCollection(items_.ErrorList());
    ASSERT_TRUE(Filled());
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(window_.rows->List().At(0).text, tree_.Path("a.txt"));
    EXPECT_EQ(ShownSimpleText(window_.StatusBar1), "  2 items had errors.");
    EXPECT_EQ(recorder_.reports.size(), 1U);
}

TEST_F(ErrorsOfARealStampTest, AFirstFileThatVanishedSinceReachesTheUserAndTheProgramGoesOn) {
    tree_.MakeFile("a.txt");
    tree_.MakeFile("b.txt");
    auto a = std::make_unique<LockedFile>(tree_.Path("a.txt"));
    const LockedFile b(tree_.Path("b.txt"));
    items_.Add(tree_.Path("a.txt"), nullptr, nullptr);
    items_.Add(tree_.Path("b.txt"), nullptr, nullptr);
    StampAll();
    a.reset();
    ASSERT_TRUE(::DeleteFileW(WideFromUtf8(tree_.Path("a.txt")).c_str()));
    window_.AddFromCollection(items_.ErrorList());
    ASSERT_TRUE(PumpUntil([&] { return !recorder_.reports.empty(); }));
    EXPECT_EQ(recorder_.reports[0].Text(),
              "Error: 35613\nImageList must be initialized before it can be used");
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(window_.rows->List().At(0).text, "Adding items");
    EXPECT_TRUE(IsDrawn());

    // Stamped again without the file that is gone, and after that with its record once more.
    const StampErrorList both = items_.ErrorList();
    items_.Remove(tree_.Path("a.txt"), nullptr);
    StampAll();
    window_.AddFromCollection(items_.ErrorList());
    ASSERT_TRUE(Filled());
    EXPECT_EQ(RowCount(), 1);
    EXPECT_EQ(window_.rows->List().At(0).text, tree_.Path("b.txt"));
    window_.AddFromCollection(both);
    ASSERT_TRUE(Filled());
    EXPECT_EQ(window_.rows->List().At(0).small_icon, 1);
    EXPECT_EQ(recorder_.reports.size(), 1U);
}

// Closes the window as the user would, as soon as a fill is under way.
class ClosesDuringAFill final : public ITimerObjectSink {
  public:
    ClosesDuringAFill(frmErrors& window, TimerSource& timers)
        : window_(window), timer_(timers.NewTimer(TickKind::kLong)) {
        timer_->SetInterval(20);
        timer_->SetSink(this);
        timer_->SetEnabled(true);
    }
    void ITimerObjectSink_Timer() override {
        if (window_.rows->List().Count() != 0) {
            timer_->SetEnabled(false);
            window_.Close();
        }
    }

  private:
    frmErrors& window_;
    std::unique_ptr<TimerObject> timer_;
};

TEST_F(FrmErrorsOnWindowsTest, TheWindowAnswersAndClosesWhileItFills) {
    std::vector<std::string> paths = {kProgram};
    for (int i = 0; i < 10'000; ++i) {
        paths.push_back("C:\\no such folder\\" + std::to_string(i));
    }
    const ClosesDuringAFill user(window_, platform_.timers);
    Show(paths);
    ASSERT_TRUE(Filled());
    EXPECT_FALSE(window_.Visible());
    EXPECT_EQ(RowCount(), 10'001);
    EXPECT_EQ(window_.rows->List().At(10'000).text, "");
}

}  // namespace
}  // namespace tidemark
