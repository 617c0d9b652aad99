#pragma once

#include <string>

#include "platform/kernel_files.h"
#include "platform/machine_registry.h"

namespace tidemark {

// Registers the executable under the machine's application paths, so that it can be started by its
// name alone. Repeated at every start; without write access to the registry nothing happens.
void RegisterAppPath(MachineRegistry& registry, KernelFiles& files, const std::string& exe_name,
                     const std::string& folder);

}  // namespace tidemark
