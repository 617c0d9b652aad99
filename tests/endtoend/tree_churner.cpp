// The other process of the churn tests: changes the folder given on its command line, over and over
// and as fast as it can, until the named event given after it is set or the process that started it
// is gone. Its exit code is the number of rounds it made.
//
//   tree_churner FOLDER EVENT PROCESS-ID

#include <cwchar>
#include <string>

#include "platform/win32/windows.h"

namespace {

std::wstring folder;

std::wstring Name(const wchar_t* kind, int number) {
    return folder + L"\\" + kind + std::to_wstring(number);
}

void Touch(const std::wstring& path) {
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        ::CloseHandle(file);
    }
}

// Any of these may find that another one, or the program under test, came first: that is the point.
void Round(int round) {
    const int number = round % 10;
    const std::wstring comes_and_goes = Name(L"comes and goes ", number);
    const std::wstring file_or_folder = Name(L"file or folder ", number);
    const std::wstring renamed = Name(L"renamed ", number);
    const std::wstring locked = Name(L"locked ", number);
    const std::wstring read_only = Name(L"read-only ", number);
    switch (round / 10 % 4) {
        case 0:
            Touch(comes_and_goes);
            Touch(file_or_folder);
            ::CreateDirectoryW(renamed.c_str(), nullptr);
            Touch(renamed + L"\\inside");
            break;
        case 1:
            ::MoveFileW(renamed.c_str(), (renamed + L" away").c_str());
            ::SetFileAttributesW(read_only.c_str(), FILE_ATTRIBUTE_READONLY);
            ::DeleteFileW(file_or_folder.c_str());
            ::CreateDirectoryW(file_or_folder.c_str(), nullptr);
            break;
        case 2: {
            const HANDLE lock = ::CreateFileW(locked.c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                              nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
            ::DeleteFileW(comes_and_goes.c_str());
            ::Sleep(1);
            if (lock != INVALID_HANDLE_VALUE) {
                ::CloseHandle(lock);
            }
            break;
        }
        default:
            ::MoveFileW((renamed + L" away").c_str(), renamed.c_str());
            ::SetFileAttributesW(read_only.c_str(), FILE_ATTRIBUTE_NORMAL);
            Touch(read_only);
            ::RemoveDirectoryW(file_or_folder.c_str());
            break;
    }
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 4) {
        return -1;
    }
    folder = arguments[1];
    const HANDLE stop[] = {
        ::OpenEventW(SYNCHRONIZE, FALSE, arguments[2]),
        ::OpenProcess(SYNCHRONIZE, FALSE, std::wcstoul(arguments[3], nullptr, 10))};
    if (stop[0] == nullptr || stop[1] == nullptr) {
        return -1;
    }
    int rounds = 0;
    while (::WaitForMultipleObjects(2, stop, FALSE, 0) == WAIT_TIMEOUT) {
        Round(rounds++);
    }
    return rounds;
}
