#include "platform/win32/win32_kernel_files.h"

#include <array>
#include <limits>

#include "platform/text.h"
#include "platform/win32/system_path.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {
namespace {

// As the calls expect them: a definition of the build that changed one would show at run time only.
static_assert(sizeof(FILETIME) == 8);
static_assert(sizeof(OSVERSIONINFOA) == 148);

template <typename Handle>
HANDLE AsSystemHandle(Handle handle) {
    return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(handle));
}

template <typename Handle>
Handle FromSystemHandle(HANDLE handle) {
    return Handle{reinterpret_cast<std::uintptr_t>(handle)};
}

FILETIME AsSystemFileTime(FileTime time) {
    const auto ticks = static_cast<std::uint64_t>(time.ticks);
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

void TakeEntry(const WIN32_FIND_DATAW& found, FoundEntry& entry) {
    entry.attributes = found.dwFileAttributes;
    AssignUtf8(entry.name, std::wstring_view(found.cFileName));
}

struct OpenedTraits {
    using Type = HANDLE;
    static Type None() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Type opened) noexcept { ::CloseHandle(opened); }
};

bool AskIsNtFamily() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    // Deprecated because it understates versions to programs whose manifest names none of them.
    // Only the family is asked for, which it tells every program.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    return ::GetVersionExA(&version) != FALSE && version.dwPlatformId == VER_PLATFORM_WIN32_NT;
#pragma GCC diagnostic pop
}

}  // namespace

template <typename Call>
auto Win32KernelFiles::Captured(Call call) {
    ::SetLastError(ERROR_SUCCESS);
    const auto result = call();
    last_error_ = ::GetLastError();
    return result;
}

const wchar_t* Win32KernelFiles::ForCall(const std::string& path) {
    AssignSystemPath(wide_path_, path);
    return wide_path_.c_str();
}

SearchHandle Win32KernelFiles::SearchFirst(const std::string& pattern, FoundEntry& entry) {
    WIN32_FIND_DATAW found;
    const wchar_t* const wide = ForCall(pattern);
    const HANDLE search = Captured([&] { return ::FindFirstFileW(wide, &found); });
    if (search == INVALID_HANDLE_VALUE) {
        return kInvalidSearch;
    }
    TakeEntry(found, entry);
    return FromSystemHandle<SearchHandle>(search);
}

bool Win32KernelFiles::SearchNext(SearchHandle search, FoundEntry& entry) {
    WIN32_FIND_DATAW found;
    if (!Captured([&] { return ::FindNextFileW(AsSystemHandle(search), &found); })) {
        return false;
    }
    TakeEntry(found, entry);
    return true;
}

bool Win32KernelFiles::SearchClose(SearchHandle search) {
    return Captured([&] { return ::FindClose(AsSystemHandle(search)); }) != FALSE;
}

std::uint32_t Win32KernelFiles::ReadAttributes(const std::string& path) {
    const wchar_t* const wide = ForCall(path);
    return Captured([&] { return ::GetFileAttributesW(wide); });
}

bool Win32KernelFiles::WriteAttributes(const std::string& path, std::uint32_t attributes) {
    const wchar_t* const wide = ForCall(path);
    return Captured([&] { return ::SetFileAttributesW(wide, attributes); }) != FALSE;
}

bool Win32KernelFiles::ReadIdentity(const std::string& path, FileIdentity& identity) {
    const wchar_t* const wide = ForCall(path);
    const UniqueHandle<OpenedTraits> opened(Captured([&] {
        return ::CreateFileW(wide, FILE_READ_ATTRIBUTES,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                             /*lpSecurityAttributes=*/nullptr, OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS, /*hTemplateFile=*/nullptr);
    }));
    BY_HANDLE_FILE_INFORMATION info{};
    if (!opened || !Captured([&] { return ::GetFileInformationByHandle(opened.Get(), &info); })) {
        return false;
    }
    const std::uint64_t index = (std::uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow;
    // A file system without numbers answers 0, one whose numbers do not fit all ones.
    if (index == 0 || index == std::numeric_limits<std::uint64_t>::max()) {
        last_error_ = ERROR_NOT_SUPPORTED;
        return false;
    }
    identity = {info.dwVolumeSerialNumber, index};
    return true;
}

FileHandle Win32KernelFiles::OpenForTimes(const std::string& path,
                                          std::uint32_t flags_and_attributes) {
    const wchar_t* const wide = ForCall(path);
    const HANDLE file = Captured([&] {
        return ::CreateFileW(wide, GENERIC_WRITE, FILE_SHARE_READ,
                             /*lpSecurityAttributes=*/nullptr, OPEN_EXISTING, flags_and_attributes,
                             /*hTemplateFile=*/nullptr);
    });
    return file == INVALID_HANDLE_VALUE ? kInvalidFile : FromSystemHandle<FileHandle>(file);
}

std::uint32_t Win32KernelFiles::ReadAttributesOf(FileHandle file) {
    FILE_BASIC_INFO info{};
    const bool read = Captured([&] {
                          return ::GetFileInformationByHandleEx(AsSystemHandle(file), FileBasicInfo,
                                                                &info, sizeof info);
                      }) != FALSE;
    return read ? info.FileAttributes : file_attribute::kInvalid;
}

bool Win32KernelFiles::SetLastWriteTime(FileHandle file, FileTime time) {
    const FILETIME write = AsSystemFileTime(time);
    return Captured([&] {
               return ::SetFileTime(AsSystemHandle(file), /*lpCreationTime=*/nullptr,
                                    /*lpLastAccessTime=*/nullptr, &write);
           }) != FALSE;
}

bool Win32KernelFiles::SetCreationTime(FileHandle file, FileTime time) {
    const FILETIME creation = AsSystemFileTime(time);
    return Captured([&] {
               return ::SetFileTime(AsSystemHandle(file), &creation,
                                    /*lpLastAccessTime=*/nullptr, /*lpLastWriteTime=*/nullptr);
           }) != FALSE;
}

bool Win32KernelFiles::CloseFile(FileHandle file) {
    return Captured([&] { return ::CloseHandle(AsSystemHandle(file)); }) != FALSE;
}

bool Win32KernelFiles::LocalToSystemTime(FileTime local, FileTime& system) {
    const FILETIME from = AsSystemFileTime(local);
    FILETIME to{};
    if (!Captured([&] { return ::LocalFileTimeToFileTime(&from, &to); })) {
        return false;
    }
    const std::uint64_t ticks = (std::uint64_t{to.dwHighDateTime} << 32) | to.dwLowDateTime;
    system.ticks = static_cast<std::int64_t>(ticks);
    return true;
}

std::string Win32KernelFiles::MessageText(std::uint32_t code) {
    std::array<wchar_t, 256> buffer{};
    const DWORD length = Captured([&] {
        return ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                /*lpSource=*/nullptr, code, /*dwLanguageId=*/0, buffer.data(),
                                static_cast<DWORD>(buffer.size()), /*Arguments=*/nullptr);
    });
    return Utf8FromWide({buffer.data(), length});
}

// Asked before every open, and the same all the time.
bool Win32KernelFiles::IsNtFamily() {
    last_error_ = ERROR_SUCCESS;
    if (!is_nt_family_) {
        is_nt_family_ = Captured(AskIsNtFamily);
    }
    return *is_nt_family_;
}

}  // namespace tidemark
