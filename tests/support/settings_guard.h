#pragma once

#include <string>

namespace tidemark {

// Sets the user's settings of the shipped program aside while alive, so that the program starts as
// on its first run, and puts them back at the end.
class SettingsGuard {
  public:
    SettingsGuard();
    ~SettingsGuard();
    SettingsGuard(const SettingsGuard&) = delete;
    SettingsGuard& operator=(const SettingsGuard&) = delete;

  private:
    std::wstring aside_;
};

}  // namespace tidemark
