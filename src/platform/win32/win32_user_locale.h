#pragma once

#include "platform/user_locale.h"

namespace tidemark {

// The locale that the user has chosen in the system's settings.
class Win32UserLocale final : public UserLocale {
  public:
    Win32UserLocale() = default;
    // Another locale of the system, by its identifier.
    explicit Win32UserLocale(unsigned long locale_id) : locale_id_(locale_id) {}

    [[nodiscard]] std::string LowerCase(const std::string& text) override;
    [[nodiscard]] std::string SortKey(const std::string& text) override;
    [[nodiscard]] std::string ThousandsSeparator() override;
    [[nodiscard]] std::string DateSeparator() override;
    [[nodiscard]] std::string TimeSeparator() override;
    [[nodiscard]] double ReadDateTime(const std::string& text) override;
    [[nodiscard]] std::string DateTimeText(FileTime local) override;

  private:
    static constexpr unsigned long kUsersOwn = 0x0400;
    unsigned long locale_id_ = kUsersOwn;
    std::string sort_key_ = std::string(256, '\0');  // room for one, which grows with the longest
};

}  // namespace tidemark
