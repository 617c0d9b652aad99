#pragma once

#include <string>

#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {

// A registry key of a test's own below HKEY_CURRENT_USER\Software, never the user's settings. It
// does not exist at first; it is deleted with everything below it at the end.
class ScratchRegistryKey {
  public:
    ScratchRegistryKey() {
        static int made = 0;
        path_ = "Software\\Tidemark-Test-" + std::to_string(GetCurrentProcessId()) + "-" +
                std::to_string(++made);
        // An earlier process of the same number may have been killed.
        RegDeleteTreeW(HKEY_CURRENT_USER, WidePath().c_str());
    }
    ~ScratchRegistryKey() { RegDeleteTreeW(HKEY_CURRENT_USER, WidePath().c_str()); }
    ScratchRegistryKey(const ScratchRegistryKey&) = delete;
    ScratchRegistryKey& operator=(const ScratchRegistryKey&) = delete;

    // Relative to HKEY_CURRENT_USER.
    [[nodiscard]] const std::string& Path() const { return path_; }
    [[nodiscard]] std::wstring WidePath() const { return WideFromUtf8(path_); }

  private:
    std::string path_;
};

}  // namespace tidemark
