#include "ui/date_time_picker.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "platform/program_error.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

class DateTimePickerTest : public ::testing::Test {
  protected:
    DateTimePickerTest() {
        picker_.Create(form_, DateTimePicker::Kind::kDate, {.bounds = {0, 0, 110, 21}});
    }

    TestForm form_;
    DateTimePicker picker_;
};

TEST_F(DateTimePickerTest, KeepsDateAndTimeToTheSecond) {
    const PickedDateTime value{2004, 2, 29, 13, 45, 30};
    picker_.SetValue(value);
    EXPECT_EQ(picker_.Value(), value);
}

TEST_F(DateTimePickerTest, ADayThatDoesNotExistIsRefusedAndNothingChanges) {
    const PickedDateTime value{2004, 2, 29, 13, 45, 30};
    picker_.SetValue(value);
    EXPECT_THROW(picker_.SetValue({2005, 2, 29, 0, 0, 0}), ProgramError);
    EXPECT_THROW(picker_.SetValue({2005, 13, 1, 0, 0, 0}), ProgramError);
    EXPECT_THROW(picker_.SetValue({2005, 4, 31, 0, 0, 0}), ProgramError);
    EXPECT_THROW(picker_.SetValue({2005, 1, 1, 24, 0, 0}), ProgramError);
    EXPECT_THROW(picker_.SetValue({2005, 1, 1, 0, -1, 0}), ProgramError);
    EXPECT_THROW(picker_.SetValue({-1, 1, 1, 0, 0, 0}), ProgramError);
    EXPECT_EQ(picker_.Value(), value);
}

TEST_F(DateTimePickerTest, ArrowKeysChangeTheValue) {
    picker_.SetValue({2004, 6, 15, 0, 0, 0});
    form_.SetVisible(true);
    picker_.Focus();
    picker_.Send(WM_KEYDOWN, VK_RIGHT);
    picker_.Send(WM_KEYDOWN, VK_UP);
    EXPECT_NE(picker_.Value(), (PickedDateTime{2004, 6, 15, 0, 0, 0}));
}

TEST_F(DateTimePickerTest, ADisabledPickerKeepsItsValue) {
    picker_.SetValue({2004, 6, 15, 1, 2, 3});
    picker_.SetEnabled(false);
    EXPECT_FALSE(picker_.Enabled());
    EXPECT_EQ(picker_.Value(), (PickedDateTime{2004, 6, 15, 1, 2, 3}));
}

TEST_F(DateTimePickerTest, ATimePickerHasArrowsAndADatePickerACalendar) {
    DateTimePicker time;
    time.Create(form_, DateTimePicker::Kind::kTime, {.bounds = {120, 0, 110, 21}});
    EXPECT_EQ(time.Style() & DTS_TIMEFORMAT, static_cast<DWORD>(DTS_TIMEFORMAT));
    EXPECT_EQ(picker_.Style() & DTS_UPDOWN, 0U);
    time.SetValue({2004, 6, 15, 1, 0, 0});
    EXPECT_EQ(time.Value().hour, 1);
}

}  // namespace
}  // namespace tidemark
