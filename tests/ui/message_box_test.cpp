#include "ui/message_box.h"

#include <gtest/gtest.h>

#include <utility>

#include "support/box_answerer.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

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
