#pragma once

#include <cstddef>
#include <string>

#include "platform/file_system_object.h"

namespace tidemark {

// Passes every question on and counts it.
class CountingFileSystem final : public FileSystemObject {
  public:
    std::size_t existence_asked = 0;
    std::size_t types_asked = 0;

    explicit CountingFileSystem(FileSystemObject& file_system) : file_system_(file_system) {}

    std::int32_t DriveCount() override { return file_system_.DriveCount(); }
    bool FileExists(const std::string& path) override {
        ++existence_asked;
        return file_system_.FileExists(path);
    }
    bool FolderExists(const std::string& path) override {
        ++existence_asked;
        return file_system_.FolderExists(path);
    }
    std::string TypeName(const std::string& path) override {
        ++types_asked;
        return file_system_.TypeName(path);
    }

  private:
    FileSystemObject& file_system_;
};

}  // namespace tidemark
