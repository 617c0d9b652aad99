#pragma once

#include <string>

#include "platform/settings_store.h"

namespace tidemark {

// Settings in the user's registry: one text value (REG_SZ) per key, under a key of
// HKEY_CURRENT_USER that the first write creates.
//
// Reading takes what a reader of texts can take: plain and expandable strings (the latter as they
// stand), terminated or not, up to their first NUL. Any other type of value counts as missing.
class RegistrySettingsStore : public SettingsStore {
  public:
    // `path` is relative to HKEY_CURRENT_USER; tests use one of their own.
    explicit RegistrySettingsStore(const std::string& path = "Software\\Tidemark\\Options");

    [[nodiscard]] std::string ReadText(const std::string& key,
                                       const std::string& default_text) const override;
    void WriteText(const std::string& key, const std::string& text) override;

  private:
    std::string path_;
    std::wstring wide_path_;
};

}  // namespace tidemark
