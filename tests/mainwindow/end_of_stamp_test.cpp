#include "mainwindow/end_of_stamp.h"

#include <gtest/gtest.h>

namespace tidemark {
namespace {

TEST(EndOfStamp, TheTwoOptionsDecideBetweenTellingAskingAndRemoving) {
    EXPECT_EQ(StepAtEndOfStamp({.prompt_when_done = true, .clear_automatically = false}),
              EndOfStampStep::kTell);
    EXPECT_EQ(StepAtEndOfStamp({.prompt_when_done = true, .clear_automatically = true}),
              EndOfStampStep::kAskToRemove);
    EXPECT_EQ(StepAtEndOfStamp({.prompt_when_done = false, .clear_automatically = true}),
              EndOfStampStep::kRemoveWithoutAsking);
    EXPECT_EQ(StepAtEndOfStamp({.prompt_when_done = false, .clear_automatically = false}),
              EndOfStampStep::kNothing);
}

}  // namespace
}  // namespace tidemark
