#include "app/loaded_forms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/test_form.h"

namespace tidemark {
namespace {

using testing::ElementsAre;

class LoadedFormsTest : public testing::Test {
  protected:
    LoadedFormsTest() {
        forms_.Add("first", first_, [this] { first_.Destroy(); });
        forms_.Add("second", second_, [this] { second_.Close(); });
    }

    TestForm first_;
    TestForm second_;
    LoadedForms forms_;
};

TEST_F(LoadedFormsTest, NamesTheFormsThatHaveAWindow) {
    EXPECT_THAT(forms_.Names(), ElementsAre("first", "second"));
    first_.Destroy();
    EXPECT_THAT(forms_.Names(), ElementsAre("second"));
}

TEST_F(LoadedFormsTest, HidesAndUnloadsByName) {
    second_.SetVisible(true);
    forms_.Hide("second");
    EXPECT_FALSE(second_.Visible());
    EXPECT_TRUE(second_.Exists());
    forms_.Unload("second");
    EXPECT_FALSE(second_.Exists());
    EXPECT_TRUE(first_.Exists());
}

TEST_F(LoadedFormsTest, LeavesUnknownAndUnloadedFormsAlone) {
    forms_.Hide("third");
    forms_.Unload("third");
    second_.Destroy();
    bool unloaded = false;
    forms_.Add("gone", second_, [&] { unloaded = true; });
    forms_.Hide("gone");
    forms_.Unload("gone");
    EXPECT_FALSE(unloaded);
}

}  // namespace
}  // namespace tidemark
