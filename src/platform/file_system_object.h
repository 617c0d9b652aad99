#pragma once

#include <cstdint>
#include <string>

namespace tidemark {

// The Scripting Runtime's file-system object, by role. The program has one instance, and the
// component behind it is created on first use. Paths are UTF-8 as in KernelFiles.
class FileSystemObject {
  public:
    virtual ~FileSystemObject() = default;

    // Number of drives. Throws ProgramError when the component cannot be created or fails.
    [[nodiscard]] virtual std::int32_t DriveCount() = 0;

    // Whether the path names an existing file (FileExists) or folder (FolderExists, with or without
    // a trailing backslash). False on any failure.
    [[nodiscard]] virtual bool FileExists(const std::string& path) = 0;
    [[nodiscard]] virtual bool FolderExists(const std::string& path) = 0;

    // The shell's type description of an existing file or folder ("Text Document"); where the
    // component cannot tell, the shell's own answer stands in. Empty for a path that is neither.
    [[nodiscard]] virtual std::string TypeName(const std::string& path) = 0;
};

// Whether the path names an existing file or folder.
[[nodiscard]] inline bool PathExists(FileSystemObject& file_system, const std::string& path) {
    return file_system.FileExists(path) || file_system.FolderExists(path);
}

}  // namespace tidemark
