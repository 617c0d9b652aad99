#pragma once

#include <string>

namespace tidemark {

enum class BoxIcon { kCritical, kQuestion, kInformation };
// kYesNo has Yes as its default button, kNoOrYes has No.
enum class BoxButtons { kOk, kYesNo, kNoOrYes, kAbortRetryIgnore };
enum class BoxAnswer { kOk, kYes, kNo, kAbort, kRetry, kIgnore };

// Shows the user a text and waits for the answer.
class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;

    // Texts are UTF-8; lines are separated by line feeds. Throws ProgramError with the system's
    // code when no box can be shown.
    virtual BoxAnswer Ask(const std::string& text, const std::string& caption, BoxIcon icon,
                          BoxButtons buttons) = 0;
};

}  // namespace tidemark
