#pragma once

#include <string>

#include "platform/file_system_object.h"
#include "platform/memory/memory_volume.h"

namespace tidemark {

// The file-system object of a MemoryVolume.
class MemoryFileSystemObject final : public FileSystemObject {
  public:
    // The volume is not owned and outlives the object.
    explicit MemoryFileSystemObject(const MemoryVolume& volume) : volume_(volume) {}

    std::int32_t DriveCount() override;
    bool FileExists(const std::string& path) override;
    bool FolderExists(const std::string& path) override;
    std::string TypeName(const std::string& path) override;

  private:
    const MemoryVolume& volume_;
};

}  // namespace tidemark
