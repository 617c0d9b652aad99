#pragma once

#include <map>
#include <string>

#include "platform/kernel_files.h"

namespace tidemark {

// What stands on the disk about one file or folder.
struct TreeEntry {
    bool folder = false;
    bool read_only = false;
    FileTime written;
    FileTime created;
    FileTime accessed;
};

// A real folder with files and folders in it, made for one test below the system's temporary
// folder, with names and paths of any length. It goes with everything in it, read-only or not.
// Throws std::runtime_error when the system refuses something.
class RealTree {
  public:
    RealTree();
    ~RealTree();
    RealTree(const RealTree&) = delete;
    RealTree& operator=(const RealTree&) = delete;

    // Without a trailing backslash.
    [[nodiscard]] const std::string& Root() const { return root_; }
    // Full path of a path below the root.
    [[nodiscard]] std::string Path(const std::string& below) const { return root_ + "\\" + below; }

    // Both make the folders that lead there, too, and give the full path of what was made.
    std::string MakeFolder(const std::string& below);
    std::string MakeFile(const std::string& below);
    void MakeReadOnly(const std::string& below);
    // Gives the root and everything in it this time as its last-write time.
    void SetTimes(FileTime time);
    // Reads the folders of the tree and those above it until reading leaves their times of last
    // access as they are. Wine's folder chooser takes a folder whose times have changed since it
    // listed them for another one, and does not find it.
    void SettleAccessTimes() const;

    // Everything below the root by its path from there, read anew.
    [[nodiscard]] std::map<std::string, TreeEntry> Entries() const;

  private:
    std::string root_;
};

// A file or folder as the disk has it now.
[[nodiscard]] TreeEntry EntryOf(const std::string& path);

// Keeps a file open for reading and writing, and lets others only read it, or not even that, while
// alive.
class LockedFile {
  public:
    explicit LockedFile(const std::string& path, bool others_may_read = true);
    ~LockedFile();
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;

  private:
    void* handle_;
};

// Whether this process may open the file for writing.
[[nodiscard]] bool CanOpenForWriting(const std::string& path);

}  // namespace tidemark
