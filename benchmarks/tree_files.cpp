#include "benchmarks/tree_files.h"

#include "benchmarks/measure.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {
namespace {

// Whether an entry is a folder, and its full path, for each entry of the folder ("\" at its end).
template <typename Visit>
void EachEntry(const std::wstring& folder, Visit visit) {
    WIN32_FIND_DATAW found;
    const HANDLE search = ::FindFirstFileW((folder + L"*.*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::wstring name = found.cFileName;
        const bool is_folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (!is_folder || name.front() != L'.') {
            visit(is_folder, folder + name);
        }
    } while (::FindNextFileW(search, &found) != FALSE);
    ::FindClose(search);
}

void Collect(const std::wstring& folder, std::vector<std::string>& files) {
    EachEntry(folder, [&files](bool is_folder, const std::wstring& path) {
        if (is_folder) {
            Collect(path + L"\\", files);
        } else {
            files.push_back(Utf8FromWide(path));
        }
    });
}

}  // namespace

std::vector<std::string> FilesIn(const std::string& folder) {
    std::vector<std::string> files;
    Collect(WideFromUtf8(folder) + L"\\", files);
    if (files.empty()) {
        GiveUp("there are no files in " + folder);
    }
    return files;
}

std::vector<std::string> FoldersIn(const std::string& folder) {
    std::vector<std::string> folders;
    EachEntry(WideFromUtf8(folder) + L"\\", [&folders](bool is_folder, const std::wstring& path) {
        if (is_folder) {
            folders.push_back(Utf8FromWide(path));
        }
    });
    if (folders.empty()) {
        GiveUp("there are no folders in " + folder);
    }
    return folders;
}

std::string NameOfTree(const std::string& path) {
    return path.substr(path.rfind('\\') + 1);
}

}  // namespace tidemark
