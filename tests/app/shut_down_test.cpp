#include "app/shut_down.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/scripted_process.h"

namespace tidemark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ShutDownTest : public testing::Test, public LoadedWindows, public MessagePump {
  protected:
    ShutDownTest() {
        process_.on_error_mode = [this](std::uint32_t mode) {
            log_.push_back("error mode " + std::to_string(mode));
        };
    }

    std::vector<std::string> Names() const override { return loaded_; }
    void Hide(const std::string& name) override {
        log_.push_back("hide " + name);
        if (name == fails_) {
            throw std::runtime_error("cannot hide");
        }
    }
    void Unload(const std::string& name) override {
        if (std::erase(loaded_, name) == 0) {
            return;
        }
        log_.push_back("unload " + name);
        if (name == kMainWindowName && main_shuts_down_itself_) {
            shut_down_.ShutDown(false);
        }
        if (name == fails_) {
            throw std::runtime_error("cannot unload");
        }
    }

    void LetPendingMessagesRun() override { FAIL() << "one command asks for all of them"; }
    void StartSlice() override { FAIL() << "shutting down is no work in slices"; }
    bool SliceIsOver() override { return true; }
    void RunPendingMessagesNow() override {
        log_.push_back("pump");
        if (while_pumping_) {
            const std::function<void()> action = std::exchange(while_pumping_, nullptr);
            action();
        }
    }

    // What a main window does when the user closes it.
    void CloseMainWindow() { Unload(kMainWindowName); }

    std::vector<std::string> loaded_{"frmSplash", "frmMain", "frmErrors", "frmAbout"};
    std::vector<std::string> log_;
    std::string fails_;
    bool main_shuts_down_itself_ = true;
    std::function<void()> while_pumping_;
    ScriptedProcess process_;
    ShutDownSequence shut_down_{*this, *this, process_};
};

TEST_F(ShutDownTest, HidesAllThenUnloadsAllButTheMainWindow) {
    shut_down_.ShutDown(false);
    EXPECT_THAT(log_, ElementsAre("hide frmSplash", "hide frmMain", "hide frmErrors",
                                  "hide frmAbout", "pump", "unload frmSplash", "unload frmErrors",
                                  "unload frmAbout", "error mode 2"));
    EXPECT_THAT(loaded_, ElementsAre("frmMain"));
}

TEST_F(ShutDownTest, UnloadsTheMainWindowLastWhenAsked) {
    main_shuts_down_itself_ = false;
    shut_down_.ShutDown(true);
    EXPECT_THAT(log_, ElementsAre("hide frmSplash", "hide frmMain", "hide frmErrors",
                                  "hide frmAbout", "pump", "unload frmSplash", "unload frmErrors",
                                  "unload frmAbout", "unload frmMain", "error mode 2"));
    EXPECT_THAT(loaded_, IsEmpty());
}

TEST_F(ShutDownTest, AMainWindowThatShutsDownWhileItUnloadsDoesNoHarm) {
    shut_down_.ShutDown(true);
    EXPECT_THAT(loaded_, IsEmpty());
    EXPECT_EQ(std::count(log_.begin(), log_.end(), "unload frmMain"), 1);
    EXPECT_EQ(std::count(log_.begin(), log_.end(), "unload frmErrors"), 1);
}

TEST_F(ShutDownTest, WithoutWindowsOnlySetsTheErrorMode) {
    loaded_.clear();
    shut_down_.ShutDown(true);
    EXPECT_THAT(log_, ElementsAre("pump", "error mode 2"));
}

TEST_F(ShutDownTest, MayBeRepeated) {
    shut_down_.ShutDown(true);
    log_.clear();
    shut_down_.ShutDown(true);
    EXPECT_THAT(log_, ElementsAre("pump", "error mode 2"));
}

TEST_F(ShutDownTest, TheMainWindowMayCloseWhileMessagesRun) {
    while_pumping_ = [this] { CloseMainWindow(); };
    shut_down_.ShutDown(true);
    EXPECT_THAT(loaded_, IsEmpty());
    EXPECT_EQ(std::count(log_.begin(), log_.end(), "unload frmMain"), 1);
}

TEST_F(ShutDownTest, AWindowThatLoadsWhileMessagesRunGoesToo) {
    while_pumping_ = [this] { loaded_.push_back("frmLate"); };
    shut_down_.ShutDown(false);
    EXPECT_THAT(loaded_, ElementsAre("frmMain"));
}

TEST_F(ShutDownTest, AWindowThatFailsDoesNotKeepTheOthers) {
    fails_ = "frmSplash";
    shut_down_.ShutDown(true);
    EXPECT_THAT(loaded_, IsEmpty());
    EXPECT_EQ(log_.back(), "error mode 2");
}

TEST_F(ShutDownTest, SaysThatItHasBegunFromTheFirstMoment) {
    EXPECT_FALSE(shut_down_.Begun());
    bool begun_while_pumping = false;
    while_pumping_ = [&] { begun_while_pumping = shut_down_.Begun(); };
    shut_down_.ShutDown(false);
    EXPECT_TRUE(begun_while_pumping);
    EXPECT_TRUE(shut_down_.Begun());
}

}  // namespace
}  // namespace tidemark
