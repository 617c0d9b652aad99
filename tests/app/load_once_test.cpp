#include "app/load_once.h"

#include <gtest/gtest.h>

#include "platform/program_error.h"

namespace tidemark {
namespace {

// A form without a window. Its window is there from the beginning of its loading.
class StandInForm {
  public:
    [[nodiscard]] bool Exists() const { return exists_; }
    void Form_Load() {
        ++loads;
        exists_ = true;
        if (fails) {
            throw ProgramError(error_number::kInternalError, "no control");
        }
    }
    void Destroy() { exists_ = false; }

    int loads = 0;
    bool fails = false;

  private:
    bool exists_ = false;
};

TEST(LoadOnce, AFormThatIsLoadedIsLeftAlone) {
    StandInForm form;
    LoadOnce(form);
    LoadOnce(form);
    EXPECT_TRUE(form.Exists());
    EXPECT_EQ(form.loads, 1);
}

TEST(LoadOnce, AFormThatIsGoneIsLoadedAgain) {
    StandInForm form;
    LoadOnce(form);
    form.Destroy();
    LoadOnce(form);
    EXPECT_TRUE(form.Exists());
    EXPECT_EQ(form.loads, 2);
}

TEST(LoadOnce, AFormThatFailsHalfWayGoesTellsWhyAndCanBeTriedAgain) {
    StandInForm form;
    form.fails = true;
    EXPECT_THROW(LoadOnce(form), ProgramError);
    EXPECT_FALSE(form.Exists());
    form.fails = false;
    LoadOnce(form);
    EXPECT_TRUE(form.Exists());
    EXPECT_EQ(form.loads, 2);
}

}  // namespace
}  // namespace tidemark
