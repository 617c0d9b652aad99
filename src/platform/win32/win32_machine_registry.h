#pragma once

#include "platform/machine_registry.h"
#include "platform/win32/windows.h"

namespace tidemark {

class Win32MachineRegistry final : public MachineRegistry {
  public:
    // `root` stands in for the machine-wide hive; tests give one that is theirs.
    explicit Win32MachineRegistry(HKEY root = HKEY_LOCAL_MACHINE) : root_(root) {}

    RegistryKey CreateOrOpen(const std::string& path) override;
    bool SetDefaultText(RegistryKey key, const std::string& text) override;
    bool SetText(RegistryKey key, const std::string& name, const std::string& text) override;
    bool Close(RegistryKey key) override;

  private:
    HKEY root_;
};

}  // namespace tidemark
