#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tidemark {

// What the program itself cannot do: overflowing a counter, a repeated list key, a setting that
// cannot be written. Failures of single files are not exceptions; see StampError.
class ProgramError : public std::runtime_error {
  public:
    ProgramError(std::int32_t number, const std::string& description)
        : std::runtime_error(description), number_(number) {}

    [[nodiscard]] std::int32_t Number() const noexcept { return number_; }
    [[nodiscard]] std::string Description() const { return what(); }

  private:
    std::int32_t number_;
};

// The exception being handled, as the program tells of it: one that has no number of its own gets
// one of those below. To be called from a catch block. Throws std::bad_alloc where there is no
// memory for the words.
[[nodiscard]] ProgramError CurrentError();

// Numbers of the errors the program raises itself; users find them in the messages.
namespace error_number {
inline constexpr std::int32_t kInvalidArgument = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kOutOfMemory = 7;
inline constexpr std::int32_t kTypeMismatch = 13;
inline constexpr std::int32_t kInternalError = 51;
inline constexpr std::int32_t kObjectNotSet = 91;
inline constexpr std::int32_t kMoveOfMinimisedOrMaximised = 384;
inline constexpr std::int32_t kDuplicateKey = 35602;
inline constexpr std::int32_t kImageListNotInitialised = 35613;
}  // namespace error_number

}  // namespace tidemark
