#include "support/real_tree.h"

#include <array>
#include <chrono>
#include <exception>
#include <functional>
#include <stdexcept>
#include <vector>

#include "platform/win32/system_message.h"
#include "platform/win32/system_path.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"
#include "support/local_time.h"
#include "support/poll_until.h"

namespace tidemark {
namespace {

[[noreturn]] void Fail(const std::string& operation, const std::string& path) {
    throw std::runtime_error(path + ": " + FailureText(operation, ::GetLastError()));
}

std::string TemporaryFolder() {
    std::array<wchar_t, MAX_PATH + 1> folder{};
    ::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    // The environment may have it with short names, and the shell answers with long ones.
    std::array<wchar_t, MAX_PATH + 1> full{};
    const DWORD length =
        ::GetLongPathNameW(folder.data(), full.data(), static_cast<DWORD>(full.size()));
    return Utf8FromWide(length == 0 || length > full.size() ? folder.data() : full.data());
}

// Of either record in which the system tells of an entry.
template <typename FoundData>
TreeEntry ToEntry(const FoundData& data) {
    return {.folder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
            .read_only = (data.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0,
            .written = FromSystem(data.ftLastWriteTime),
            .created = FromSystem(data.ftCreationTime),
            .accessed = FromSystem(data.ftLastAccessTime)};
}

// Calls `each` for everything in a folder and below, what is in a folder before the folder.
void Walk(const std::string& folder,
          const std::function<void(const std::string& path, const TreeEntry& entry)>& each) {
    WIN32_FIND_DATAW data{};
    const HANDLE search = ::FindFirstFileW(SystemPath(folder + "\\*").c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        Fail("listing", folder);
    }
    do {
        const std::string name = Utf8FromWide(data.cFileName);
        if (name == "." || name == "..") {
            continue;
        }
        const TreeEntry entry = ToEntry(data);
        if (entry.folder) {
            Walk(folder + "\\" + name, each);
        }
        each(folder + "\\" + name, entry);
    } while (::FindNextFileW(search, &data));
    ::FindClose(search);
}

void SetTime(const std::string& path, FileTime time) {
    const HANDLE file = ::CreateFileW(SystemPath(path).c_str(), FILE_WRITE_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    const FILETIME written = {static_cast<DWORD>(time.ticks), static_cast<DWORD>(time.ticks >> 32)};
    const bool set =
        file != INVALID_HANDLE_VALUE && ::SetFileTime(file, nullptr, nullptr, &written);
    if (!set) {
        Fail("setting a time", path);
    }
    ::CloseHandle(file);
}

// Reads a folder. Whether the next time leaves its time of last access as it is: file systems note
// reading only once after a change.
bool ReadIsNoted(const std::string& folder) {
    WIN32_FIND_DATAW data{};
    const HANDLE search = ::FindFirstFileW(SystemPath(folder + "\\*").c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        Fail("listing", folder);
    }
    while (::FindNextFileW(search, &data)) {
    }
    ::FindClose(search);

    const HANDLE file = ::CreateFileW(SystemPath(folder).c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    FILE_BASIC_INFO times{};
    const bool told =
        file != INVALID_HANDLE_VALUE &&
        ::GetFileInformationByHandleEx(file, FileBasicInfo, &times, sizeof(times)) != FALSE;
    if (!told) {
        Fail("reading the times", folder);
    }
    ::CloseHandle(file);
    return times.LastAccessTime.QuadPart > times.LastWriteTime.QuadPart &&
           times.LastAccessTime.QuadPart > times.ChangeTime.QuadPart;
}

}  // namespace

RealTree::RealTree() {
    static int made = 0;
    const std::string stem =
        TemporaryFolder() + "tidemark-test-" + std::to_string(::GetCurrentProcessId()) + "-";
    // An earlier process of the same number may have left a folder: files that it held open to its
    // end stay.
    do {
        root_ = stem + std::to_string(++made);
        if (::CreateDirectoryW(SystemPath(root_).c_str(), nullptr)) {
            return;
        }
    } while (::GetLastError() == ERROR_ALREADY_EXISTS);
    Fail("making the folder", root_);
}

RealTree::~RealTree() {
    try {
        Walk(root_, [](const std::string& path, const TreeEntry& entry) {
            const std::wstring wide = SystemPath(path);
            if (entry.read_only) {
                ::SetFileAttributesW(wide.c_str(), FILE_ATTRIBUTE_NORMAL);
            }
            entry.folder ? ::RemoveDirectoryW(wide.c_str()) : ::DeleteFileW(wide.c_str());
        });
    } catch (const std::exception&) {
        // What cannot be listed stays, for whoever looks into it.
    }
    ::RemoveDirectoryW(SystemPath(root_).c_str());
}

std::string RealTree::MakeFolder(const std::string& below) {
    std::string path = Path(below);
    if (::GetFileAttributesW(SystemPath(path).c_str()) != INVALID_FILE_ATTRIBUTES) {
        return path;
    }
    if (const std::size_t end = below.rfind('\\'); end != std::string::npos) {
        MakeFolder(below.substr(0, end));
    }
    if (!::CreateDirectoryW(SystemPath(path).c_str(), nullptr)) {
        Fail("making the folder", path);
    }
    return path;
}

std::string RealTree::MakeFile(const std::string& below) {
    if (const std::size_t end = below.rfind('\\'); end != std::string::npos) {
        MakeFolder(below.substr(0, end));
    }
    std::string path = Path(below);
    const HANDLE file = ::CreateFileW(SystemPath(path).c_str(), GENERIC_WRITE, 0, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        Fail("making the file", path);
    }
    ::CloseHandle(file);
    return path;
}

void RealTree::MakeReadOnly(const std::string& below) {
    if (!::SetFileAttributesW(SystemPath(Path(below)).c_str(), FILE_ATTRIBUTE_READONLY)) {
        Fail("making read-only", Path(below));
    }
}

void RealTree::SetTimes(FileTime time) {
    Walk(root_, [time](const std::string& path, const TreeEntry&) { SetTime(path, time); });
    SetTime(root_, time);
}

void RealTree::SettleAccessTimes() const {
    std::vector<std::string> folders;
    Walk(root_, [&folders](const std::string& path, const TreeEntry& entry) {
        if (entry.folder) {
            folders.push_back(path);
        }
    });
    for (std::string folder = root_; folder.find('\\') != std::string::npos;
         folder.erase(folder.rfind('\\'))) {
        folders.push_back(folder);
    }
    // A system that does not note reading at all changes no time either; it is found out once.
    static bool notes_reading = true;
    notes_reading = notes_reading && PollUntil(std::chrono::seconds(2), [&folders] {
                        std::erase_if(folders, ReadIsNoted);
                        return folders.empty();
                    });
}

std::map<std::string, TreeEntry> RealTree::Entries() const {
    std::map<std::string, TreeEntry> entries;
    Walk(root_, [this, &entries](const std::string& path, const TreeEntry& entry) {
        entries[path.substr(root_.size() + 1)] = entry;
    });
    return entries;
}

TreeEntry EntryOf(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(SystemPath(path).c_str(), GetFileExInfoStandard, &data)) {
        Fail("reading the attributes", path);
    }
    return ToEntry(data);
}

LockedFile::LockedFile(const std::string& path, bool others_may_read)
    : handle_(::CreateFileW(SystemPath(path).c_str(), GENERIC_READ | GENERIC_WRITE,
                            others_may_read ? FILE_SHARE_READ : 0, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (handle_ == INVALID_HANDLE_VALUE) {
        Fail("locking", path);
    }
}

LockedFile::~LockedFile() {
    ::CloseHandle(handle_);
}

bool CanOpenForWriting(const std::string& path) {
    const HANDLE file = ::CreateFileW(SystemPath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    ::CloseHandle(file);
    return true;
}

}  // namespace tidemark
