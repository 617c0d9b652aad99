#pragma once

#include <string>

#include "platform/kernel_files.h"

namespace tidemark {

// Rules of the user's locale that the program's texts and keys follow. Texts are UTF-8.
class UserLocale {
  public:
    virtual ~UserLocale() = default;

    // Lower case by the user's locale. Texts that have no UTF-8 form keep those parts as they are.
    [[nodiscard]] virtual std::string LowerCase(const std::string& text) = 0;

    // Bytes that compare one by one as the locale orders the texts, letter case ignored;
    // punctuation counts as characters of its own. Texts that differ in case alone have equal keys,
    // and the empty text has the least. Of use only beside other keys of the same locale.
    [[nodiscard]] virtual std::string SortKey(const std::string& text) = 0;

    // The separators of digit groups (1,234), of the parts of a date and of a time of day. The last
    // two come without marks of the direction of writing.
    [[nodiscard]] virtual std::string ThousandsSeparator() = 0;
    [[nodiscard]] virtual std::string DateSeparator() = 0;
    [[nodiscard]] virtual std::string TimeSeparator() = 0;

    // Reads a date or a time of day from text, in the locale's own order of day and month, as a
    // local day number (see engine/local_date_time.h). Throws ProgramError (type mismatch) for a
    // text that is neither.
    [[nodiscard]] virtual double ReadDateTime(const std::string& text) = 0;
    // Writes a local time so that it cannot be misread: day, month by its name in the user's
    // language and year, then the time of day in the user's form without seconds ("4 March 2026,
    // 1:00 AM"). Empty if the system cannot write it.
    [[nodiscard]] virtual std::string DateTimeText(FileTime local) = 0;
};

}  // namespace tidemark
