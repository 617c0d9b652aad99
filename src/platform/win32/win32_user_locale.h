#pragma once

#include "platform/user_locale.h"

namespace tidemark {

// The locale that the user has chosen in the system's settings.
class Win32UserLocale final : public UserLocale {
  public:
    [[nodiscard]] std::string LowerCase(const std::string& text) override;
    [[nodiscard]] std::string ThousandsSeparator() override;
    [[nodiscard]] std::string DateSeparator() override;
    [[nodiscard]] std::string TimeSeparator() override;
    [[nodiscard]] double ReadDateTime(const std::string& text) override;
};

}  // namespace tidemark
