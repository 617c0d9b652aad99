#include "benchmarks/floor.h"

#include "benchmarks/measure.h"
#include "platform/win32/windows.h"

namespace tidemark {
namespace {

constexpr FILETIME kStamp{static_cast<DWORD>(kFloorStampTime & 0xFFFFFFFF),
                          static_cast<DWORD>(kFloorStampTime >> 32)};

void Stamp(const std::wstring& path, const FILETIME& time) {
    const HANDLE file =
        ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                      FILE_FLAG_BACKUP_SEMANTICS | FILE_ATTRIBUTE_NORMAL, nullptr);
    const bool stamped =
        file != INVALID_HANDLE_VALUE && ::SetFileTime(file, nullptr, nullptr, &time) != FALSE &&
        ::SetFileTime(file, &time, nullptr, nullptr) != FALSE && ::CloseHandle(file) != FALSE;
    if (!stamped) {
        GiveUp("the floor could not stamp an entry");
    }
}

class FloorWalk {
  public:
    FloorWalk(const std::wstring& folder, const FILETIME* time) : path_(folder), time_(time) {
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
            GiveUp("the floor could not list a folder");
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
                Stamp(path_, *time_);
            }
            if (folder) {
                Folder();
            }
            path_.resize(length);
        } while (::FindNextFileW(search, &found) != FALSE);
        ::FindClose(search);
    }

    std::wstring path_;
    const FILETIME* time_;
    std::int64_t entries_ = 0;
};

}  // namespace

std::int64_t FloorCount(const std::wstring& folder) {
    return FloorWalk(folder, nullptr).Run();
}

std::int64_t FloorStamp(const std::wstring& folder) {
    return FloorWalk(folder, &kStamp).Run();
}

void FloorStampFiles(const std::vector<std::wstring>& paths) {
    for (const std::wstring& path : paths) {
        Stamp(path, kStamp);
    }
}

}  // namespace tidemark
