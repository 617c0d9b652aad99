// The errors window on the system's own timers, messages and files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "errors/frm_errors.h"
#include "platform/memory/memory_settings_store.h"
#include "platform/program_error.h"
#include "platform/win32/win32_platform.h"
#include "support/last_resort_recorder.h"
#include "support/pump.h"
#include "ui/message_loop.h"

namespace tidemark {
namespace {

constexpr const char* kProgram = "C:\\windows\\notepad.exe";

class NoCommands final : public CommandRunner {
  public:
    void Run(const std::string& /*command_line*/) override { ADD_FAILURE() << "ran a command"; }
};

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
            return window_.StatusBar1.SimpleText().find("items had errors.") != std::string::npos;
        });
    }
    LRESULT RowCount() const { return window_.lvwErrors.Send(LVM_GETITEMCOUNT); }

    Win32Platform system_{
        {[](MSG& message) { RouteMessage(message); }, [] {}, [] { ReportToLastResort(nullptr); }}};
    Platform platform_ = system_.Parts();
    MemorySettingsStore settings_{};
    NoCommands commands_{};
    PopupMenuSystem popups_{};
    frmErrors window_{{platform_, settings_, commands_, popups_,
                       [](OleDragDropSink& /*source*/, std::int16_t /*button*/) {}}};
};

TEST_F(FrmErrorsOnWindowsTest, RowsComeFromATimerTickWithTheShellsIcons) {
    Show({kProgram, "C:\\windows\\system32\\", "C:\\no such folder\\gone.txt"});
    EXPECT_EQ(window_.StatusBar1.SimpleText(), "  Collecting error data...");
    ASSERT_TRUE(Filled());
    EXPECT_EQ(RowCount(), 3);
    EXPECT_EQ(::ImageList_GetImageCount(window_.ImageList1.Handle()), 2);
    EXPECT_EQ(window_.rows->List().At(2).small_icon, 1);
}

TEST_F(FrmErrorsOnWindowsTest, ARepeatedPathReachesTheUserAndTheProgramGoesOn) {
    const LastResortRecorder recorder;
    Show({kProgram, "C:\\WINDOWS\\Notepad.exe"});
    ASSERT_TRUE(PumpUntil([&] { return !recorder.reports.empty(); }));
    EXPECT_EQ(recorder.reports[0].number, error_number::kDuplicateKey);
    EXPECT_EQ(recorder.reports[0].description, "Key is not unique in collection");
    EXPECT_EQ(RowCount(), 1);
    EXPECT_TRUE(window_.lvwErrors.Visible());

    Show({kProgram});
    ASSERT_TRUE(Filled());
    EXPECT_EQ(window_.rows->List().At(0).text, kProgram);
    EXPECT_EQ(recorder.reports.size(), 1U);
}

TEST_F(FrmErrorsOnWindowsTest, AFirstPathWithoutAnIconReachesTheUserAndTheProgramGoesOn) {
    const LastResortRecorder recorder;
    Show({"C:\\no such folder\\gone.txt"});
    ASSERT_TRUE(PumpUntil([&] { return !recorder.reports.empty(); }));
    EXPECT_EQ(recorder.reports[0].number, error_number::kImageListNotInitialised);
    EXPECT_EQ(recorder.reports[0].description,
              "ImageList must be initialized before it can be used");
    EXPECT_EQ(RowCount(), 1);

    Show({kProgram});
    ASSERT_TRUE(Filled());
    EXPECT_EQ(recorder.reports.size(), 1U);
}

// Closes the window as the user would, as soon as a fill is under way.
class ClosesDuringAFill final : public ITimerObjectSink {
  public:
    ClosesDuringAFill(frmErrors& window, TimerSource& timers)
        : window_(window), timer_(timers.NewTimer()) {
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
    for (int i = 0; i < 20'000; ++i) {
        paths.push_back("C:\\no such folder\\" + std::to_string(i));
    }
    const ClosesDuringAFill user(window_, platform_.timers);
    Show(paths);
    ASSERT_TRUE(Filled());
    EXPECT_FALSE(window_.Visible());
    EXPECT_EQ(RowCount(), 20'001);
    EXPECT_EQ(window_.rows->List().At(20'000).text, "");
}

}  // namespace
}  // namespace tidemark
