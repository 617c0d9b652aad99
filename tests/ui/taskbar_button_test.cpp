#include "ui/taskbar_button.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/com_apartment.h"
#include "support/test_form.h"
#include "ui/fake_taskbar.h"

namespace tidemark {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TaskbarButtonTest : public ::testing::Test {
  protected:
    TaskbarButtonTest() {
        button_.AttachTo(form_.Handle(), [this] {
            ++asked_;
            return ComPtr<ITaskbarList3>(taskbar_.Get());
        });
    }
    // As the shell does it once the window has its button.
    void TellOfButton() { form_.Send(::RegisterWindowMessageW(L"TaskbarButtonCreated")); }

    TestForm form_;
    ComPtr<FakeTaskbar> taskbar_ = ComPtr<FakeTaskbar>::Adopt(new FakeTaskbar);
    int asked_ = 0;
    TaskbarButton button_;
};

TEST_F(TaskbarButtonTest, WaitsForTheButtonThenShowsWhatItIsToShow) {
    button_.Show({.working = true, .done = 3, .total = 10});
    EXPECT_EQ(asked_, 0);
    TellOfButton();
    EXPECT_THAT(taskbar_->told, ElementsAre("normal", "3 of 10"));
    EXPECT_THAT(taskbar_->windows, Each(form_.Handle()));
}

TEST_F(TaskbarButtonTest, AButtonWithoutWorkIsLeftAsItIs) {
    TellOfButton();
    button_.Show({});
    EXPECT_THAT(taskbar_->told, IsEmpty());
}

TEST_F(TaskbarButtonTest, ShowsEachChangeOnceAndNothingAtTheEnd) {
    TellOfButton();
    button_.Show({.working = true});
    button_.Show({.working = true, .done = 0, .total = 2});
    button_.Show({.working = true, .done = 2, .total = 2});
    button_.Show({.working = true, .done = 2, .total = 2});
    button_.Show({});
    button_.Show({});
    EXPECT_THAT(taskbar_->told,
                ElementsAre("unknown", "normal", "0 of 2", "normal", "2 of 2", "none"));
}

TEST_F(TaskbarButtonTest, ARestartedShellIsToldAgain) {
    TellOfButton();
    button_.Show({.working = true, .done = 1, .total = 4});
    const ComPtr<FakeTaskbar> old = taskbar_;
    taskbar_ = ComPtr<FakeTaskbar>::Adopt(new FakeTaskbar);
    TellOfButton();
    EXPECT_EQ(asked_, 2);
    EXPECT_THAT(taskbar_->told, ElementsAre("normal", "1 of 4"));
    button_.Show({});
    EXPECT_THAT(old->told, ElementsAre("normal", "1 of 4"));
}

TEST_F(TaskbarButtonTest, AShellWithoutProgressAndOneThatFailsAreBorne) {
    taskbar_->answer = E_FAIL;
    TellOfButton();
    button_.Show({.working = true, .done = 1, .total = 4});
    taskbar_.Reset();
    TellOfButton();
    button_.Show({.working = true, .done = 2, .total = 4});
    EXPECT_EQ(asked_, 2);
}

TEST_F(TaskbarButtonTest, NothingIsShownForAWindowThatIsGone) {
    TellOfButton();
    form_.Destroy();
    button_.Show({.working = true, .done = 1, .total = 4});
    EXPECT_THAT(taskbar_->told, IsEmpty());
}

TEST_F(TaskbarButtonTest, TheSystemsTaskbarTakesProgressWhereItOffersAny) {
    const ComApartment com;
    const ComPtr<ITaskbarList3> taskbar = SystemTaskbar();
    if (!taskbar) {
        GTEST_SKIP() << "this system's shell shows no progress in its taskbar";
    }
    EXPECT_EQ(taskbar->SetProgressState(form_.Handle(), TBPF_NORMAL), S_OK);
}

}  // namespace
}  // namespace tidemark
