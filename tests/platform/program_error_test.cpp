#include "platform/program_error.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace tidemark {
namespace {

template <typename Exception>
ProgramError Caught(const Exception& exception) {
    try {
        throw exception;
    } catch (...) {
        return CurrentError();
    }
}

TEST(CurrentError, IsTheProgramsOwnErrorAsItIs) {
    const ProgramError error = Caught(ProgramError(53, "File not found"));
    EXPECT_EQ(error.Number(), 53);
    EXPECT_EQ(error.Description(), "File not found");
}

TEST(CurrentError, SaysThatMemoryRanOut) {
    for (const ProgramError& error :
         {Caught(std::bad_alloc()), Caught(std::bad_array_new_length())}) {
        EXPECT_EQ(error.Number(), error_number::kOutOfMemory);
        EXPECT_EQ(error.Description(), "Out of memory");
    }
}

TEST(CurrentError, NumbersAForeignExceptionAndKeepsWhatItSays) {
    const ProgramError error = Caught(std::logic_error("odd"));
    EXPECT_EQ(error.Number(), error_number::kInternalError);
    EXPECT_EQ(error.Description(), "odd");
}

TEST(CurrentError, IsInternalWhereNothingIsSaid) {
    const ProgramError error = Caught(5);
    EXPECT_EQ(error.Number(), error_number::kInternalError);
    EXPECT_EQ(error.Description(), "Internal error");
}

}  // namespace
}  // namespace tidemark
