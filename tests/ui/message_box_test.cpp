#include "ui/message_box.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/modal_driver.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

// Answers a message box of this thread with a command once it is up.
class BoxAnswerer {
  public:
    explicit BoxAnswerer(int command)
        : driver_({[this, command] { return Answer(command); }}, [] { PressAll(IDCANCEL); }) {}

    HWND owner = nullptr;
    std::string caption;
    std::string text;
    int default_button = 0;

  private:
    static void PressAll(int command) {
        for (const HWND box : ThreadWindows(L"#32770")) {
            ::PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(command), 0);
        }
    }

    bool Answer(int command) {
        const std::vector<HWND> boxes = ThreadWindows(L"#32770");
        if (boxes.empty()) {
            return false;
        }
        const HWND box = boxes.front();
        owner = ::GetWindow(box, GW_OWNER);
        caption = Window(box).Text();
        text = Window(::GetDlgItem(box, 0xFFFF)).Text();
        for (const int button : {IDOK, IDYES, IDNO}) {
            const Window candidate(::GetDlgItem(box, button));
            if ((candidate.Style() & BS_TYPEMASK) == BS_DEFPUSHBUTTON) {
                default_button = button;
            }
        }
        PressAll(command);
        return true;
    }

    ModalDriver driver_;
};

TEST(MessageBoxTest, AsksOverItsOwnerAndGivesTheTypedAnswer) {
    TestForm form;
    form.SetVisible(true);
    SystemMessageBoxes boxes;
    BoxRequest request;
    request.text = "Stamp complete.\n\nRemove completed items?";
    request.caption = "yes or no";
    request.buttons = BoxButtons::kYesNo;
    request.icon = BoxIcon::kQuestion;
    request.default_button = 2;
    BoxAnswerer answerer(IDYES);
    EXPECT_EQ(boxes.Show(&form, request), BoxAnswer::kYes);
    EXPECT_EQ(answerer.owner, form.Handle());
    EXPECT_EQ(answerer.caption, request.caption);
    EXPECT_EQ(answerer.text, request.text);
    EXPECT_EQ(answerer.default_button, IDNO);
    EXPECT_TRUE(form.Enabled());
}

TEST(MessageBoxTest, AbortRetryAndIgnoreAreToldApart) {
    SystemMessageBoxes boxes;
    const std::pair<int, BoxAnswer> answers[] = {
        {IDABORT, BoxAnswer::kAbort}, {IDRETRY, BoxAnswer::kRetry}, {IDIGNORE, BoxAnswer::kIgnore}};
    for (const auto& [command, answer] : answers) {
        BoxAnswerer answerer(command);
        BoxRequest request;
        request.text = "?";
        request.caption = "three ways";
        request.buttons = BoxButtons::kAbortRetryIgnore;
        EXPECT_EQ(boxes.Show(nullptr, request), answer);
        EXPECT_EQ(answerer.owner, nullptr);
    }
}

TEST(MessageBoxTest, AnOwnerThatIsGoneIsNoObstacle) {
    TestForm gone;
    gone.Destroy();
    SystemMessageBoxes boxes;
    BoxRequest request;
    request.text = "done";
    request.caption = "no owner";
    BoxAnswerer answerer(IDOK);
    EXPECT_EQ(boxes.Show(&gone, request), BoxAnswer::kOk);
}

}  // namespace
}  // namespace tidemark
