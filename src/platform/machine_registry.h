#pragma once

#include <cstdint>
#include <string>

namespace tidemark {

enum class RegistryKey : std::uintptr_t {};
inline constexpr RegistryKey kNoRegistryKey{0};

// The machine-wide hive of the registry. Texts are UTF-8; every failure is told by the result only.
class MachineRegistry {
  public:
    virtual ~MachineRegistry() = default;

    // Opens the key, creating it and those above it where they are missing. kNoRegistryKey on
    // failure. The caller closes it.
    [[nodiscard]] virtual RegistryKey CreateOrOpen(const std::string& path) = 0;
    // Sets the key's default value to a text.
    virtual bool SetDefaultText(RegistryKey key, const std::string& text) = 0;
    // Sets a named value to a text; the size given to the system counts no terminating NUL.
    virtual bool SetText(RegistryKey key, const std::string& name, const std::string& text) = 0;
    virtual bool Close(RegistryKey key) = 0;
};

}  // namespace tidemark
