#pragma once

#include <cstdint>
#include <string>

namespace tidemark {

// The system's error codes by name. The program tells kNoMoreFiles apart and reports kInvalidName
// itself; the in-memory system answers with the others, and tests expect them.
namespace system_error {
inline constexpr std::uint32_t kSuccess = 0;
inline constexpr std::uint32_t kFileNotFound = 2;
inline constexpr std::uint32_t kPathNotFound = 3;
inline constexpr std::uint32_t kAccessDenied = 5;
inline constexpr std::uint32_t kInvalidHandle = 6;
inline constexpr std::uint32_t kNoMoreFiles = 18;
inline constexpr std::uint32_t kSharingViolation = 32;
inline constexpr std::uint32_t kNotSupported = 50;
inline constexpr std::uint32_t kInvalidParameter = 87;
inline constexpr std::uint32_t kInvalidName = 123;
inline constexpr std::uint32_t kDirectory = 267;
inline constexpr std::uint32_t kMessageNotFound = 317;
inline constexpr std::uint32_t kCantResolveName = 1921;
}  // namespace system_error

namespace file_attribute {
inline constexpr std::uint32_t kReadOnly = 0x1;
inline constexpr std::uint32_t kHidden = 0x2;
inline constexpr std::uint32_t kSystem = 0x4;
inline constexpr std::uint32_t kDirectory = 0x10;
inline constexpr std::uint32_t kArchive = 0x20;
inline constexpr std::uint32_t kNormal = 0x80;
inline constexpr std::uint32_t kReparsePoint = 0x400;
// What reading attributes returns when it fails: every bit set.
inline constexpr std::uint32_t kInvalid = 0xFFFFFFFF;
}  // namespace file_attribute

// 100-nanosecond units since 1 January 1601. Whether it is local or system (UTC) time is said
// where it is used.
struct FileTime {
    std::int64_t ticks = 0;
    friend bool operator==(const FileTime&, const FileTime&) = default;
};

// One entry of a folder, as a search returns it.
struct FoundEntry {
    std::uint32_t attributes = 0;
    std::string name;
};

// Which file or folder something is: equal for every path that leads to it while it exists.
struct FileIdentity {
    std::uint32_t volume = 0;
    std::uint64_t index = 0;  // on the volume
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

enum class SearchHandle : std::uintptr_t {};
enum class FileHandle : std::uintptr_t {};
inline constexpr SearchHandle kInvalidSearch{UINTPTR_MAX};
inline constexpr FileHandle kInvalidFile{UINTPTR_MAX};

// Flags and attributes of an open.
inline constexpr std::uint32_t kOpenNormal = 0x80;
inline constexpr std::uint32_t kOpenBackupSemantics = 0x02000000;

// The kernel's file calls, as the stamping engine needs them.
//
// Paths and names are UTF-8; a name that has no UTF-8 form (a lone surrogate) is kept round-trip
// safe (WTF-8, see text.h). Paths are given as the user knows them: an implementation adds the
// extended-length prefix itself where one is needed.
//
// The calls that return bool return false on failure; what they would have filled in is then as it
// was.
//
// Every call replaces the last error: 0 when the call left none, else the system's code. LastError
// is to be read on the very next line, before any other call can replace it.
class KernelFiles {
  public:
    virtual ~KernelFiles() = default;

    // Starts a search for `pattern` (a folder, a backslash and "*.*", or the path of one file or
    // folder) and fetches the first entry into `entry`, its name as the folder lists it. The order
    // is the system's. Returns kInvalidSearch on failure.
    [[nodiscard]] virtual SearchHandle SearchFirst(const std::string& pattern,
                                                   FoundEntry& entry) = 0;
    // Fetches the next entry. False when there is none (last error kNoMoreFiles) or when this entry
    // could not be fetched (any other code; the search may go on).
    [[nodiscard]] virtual bool SearchNext(SearchHandle search, FoundEntry& entry) = 0;
    // Ends a search. False for kInvalidSearch, with last error kInvalidHandle.
    virtual bool SearchClose(SearchHandle search) = 0;

    // Attribute bits of a file or folder; file_attribute::kInvalid on failure.
    [[nodiscard]] virtual std::uint32_t ReadAttributes(const std::string& path) = 0;
    virtual bool WriteAttributes(const std::string& path, std::uint32_t attributes) = 0;

    // Tells which file or folder stands at the path or, for a link, where it leads. Asks for no
    // right to write and keeps nobody from anything. Fails with kNotSupported where the file system
    // does not number what it holds.
    virtual bool ReadIdentity(const std::string& path, FileIdentity& identity) = 0;

    // Opens an existing file or folder for writing, letting others read: desired access 0x40000000,
    // share mode 1, disposition 3 (open existing), and the given flags. Returns kInvalidFile on
    // failure. The caller closes the handle with CloseFile.
    [[nodiscard]] virtual FileHandle OpenForTimes(const std::string& path,
                                                  std::uint32_t flags_and_attributes) = 0;
    // Attribute bits of what was opened, which is where a link leads to; file_attribute::kInvalid
    // on failure. On Wine this costs a small part of what ReadAttributes does.
    [[nodiscard]] virtual std::uint32_t ReadAttributesOf(FileHandle file) = 0;
    // Each sets one time, in system time, and leaves the other two as they are. The times 0 and -1
    // ask for no change and leave this one as it is, too; earlier ones are refused
    // (kInvalidParameter).
    virtual bool SetLastWriteTime(FileHandle file, FileTime time) = 0;
    virtual bool SetCreationTime(FileHandle file, FileTime time) = 0;
    virtual bool CloseFile(FileHandle file) = 0;

    // Converts a local file time to system time by the difference that holds now, summer time
    // included, whatever half of the year the time is in.
    virtual bool LocalToSystemTime(FileTime local, FileTime& system) = 0;

    // Text of a system error code in the user's language, as the system has it (it usually ends in
    // a line break); empty when the system has none or it does not fit 256 characters.
    [[nodiscard]] virtual std::string MessageText(std::uint32_t code) = 0;

    // Whether the system is of the NT family.
    [[nodiscard]] virtual bool IsNtFamily() = 0;

    // The code that the most recent call on this object left.
    [[nodiscard]] virtual std::uint32_t LastError() const = 0;
};

}  // namespace tidemark
