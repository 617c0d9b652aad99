#include "platform/memory/memory_file_system_object.h"

#include "platform/memory/fold_case.h"

namespace tidemark {

std::int32_t MemoryFileSystemObject::DriveCount() {
    return volume_.RootCount();
}

bool MemoryFileSystemObject::FileExists(const std::string& path) {
    return volume_.FileExists(path);
}

bool MemoryFileSystemObject::FolderExists(const std::string& path) {
    return volume_.FolderExists(path);
}

std::string MemoryFileSystemObject::TypeName(const std::string& path) {
    if (FolderExists(path)) {
        return "File Folder";
    }
    if (!FileExists(path)) {
        return {};
    }
    const std::size_t name = path.find_last_of("\\/") + 1;
    const std::size_t dot = path.find_last_of('.');
    if (dot == std::string::npos || dot < name || dot + 1 == path.size()) {
        return "File";
    }
    std::string extension = FoldCase(path.substr(dot + 1));
    if (extension == "txt") {
        return "Text Document";
    }
    if (extension == "exe") {
        return "Application";
    }
    for (char& c : extension) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c;
    }
    return extension + " File";
}

}  // namespace tidemark
