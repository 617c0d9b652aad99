#include "benchmarks/floor.h"

#include "platform/win32/windows.h"

namespace tidemark {
namespace {

class FloorWalk {
  public:
    FloorWalk(const std::wstring& folder, const FILETIME* time, bool read_attributes)
        : path_(folder), time_(time), read_attributes_(read_attributes) {
        path_.reserve(4096);
    }

    std::int64_t Run() {
        Folder();
        return entries_;
    }

  private:
    // Lists the folder at `path_`, and leaves `path_` as it was.
    void Folder() {
        const std::size_t length = path_.size();
        path_ += L"*.*";
        WIN32_FIND_DATAW found;
        const HANDLE search = ::FindFirstFileW(path_.c_str(), &found);
        path_.resize(length);
        if (search == INVALID_HANDLE_VALUE) {
            return;
        }
        do {
            const bool folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
            if (folder && found.cFileName[0] == L'.') {
                continue;
            }
            ++entries_;
            if (!folder && time_ == nullptr) {
                continue;
            }
            path_ += found.cFileName;
            if (folder) {
                path_ += L'\\';
            }
            if (time_ != nullptr) {
                Stamp();
            }
            if (folder) {
                Folder();
            }
            path_.resize(length);
        } while (::FindNextFileW(search, &found) != FALSE);
        ::FindClose(search);
    }

    void Stamp() {
        if (read_attributes_ &&
            (::GetFileAttributesW(path_.c_str()) & FILE_ATTRIBUTE_READONLY) != 0) {
            return;  // no file of the benchmarks is
        }
        const HANDLE file =
            ::CreateFileW(path_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                          FILE_FLAG_BACKUP_SEMANTICS | FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            return;
        }
        ::SetFileTime(file, nullptr, nullptr, time_);
        ::SetFileTime(file, time_, nullptr, nullptr);
        ::CloseHandle(file);
    }

    std::wstring path_;
    const FILETIME* time_;
    bool read_attributes_;
    std::int64_t entries_ = 0;
};

}  // namespace

std::int64_t FloorCount(const std::wstring& folder) {
    return FloorWalk(folder, nullptr, /*read_attributes=*/false).Run();
}

std::int64_t FloorStamp(const std::wstring& folder, std::int64_t time, bool read_attributes) {
    const FILETIME stamp{static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
    return FloorWalk(folder, &stamp, read_attributes).Run();
}

}  // namespace tidemark
