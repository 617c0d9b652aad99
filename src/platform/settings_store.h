#pragma once

#include <string>

namespace tidemark {

// The user's settings: texts under keys, kept between runs. Keys are ASCII and ignore letter case.
// Values are UTF-8. A value ends at its first NUL; bytes that are no text become U+FFFD. Nothing is
// ever deleted.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    // The text under `key`. A key that is missing, holds something other than text or cannot be
    // read gives `default_text`; reading never fails.
    [[nodiscard]] virtual std::string ReadText(const std::string& key,
                                               const std::string& default_text) const = 0;

    // Creates or replaces the text under `key`. Throws ProgramError, numbered with the system's
    // code and telling the operation, the key, the place, the code and the system's text.
    virtual void WriteText(const std::string& key, const std::string& text) = 0;
};

}  // namespace tidemark
