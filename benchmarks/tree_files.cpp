#include "benchmarks/tree_files.h"

#include "benchmarks/measure.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {
namespace {

void Collect(const std::wstring& folder, std::vector<std::string>& files) {
    WIN32_FIND_DATAW found;
    const HANDLE search = ::FindFirstFileW((folder + L"*.*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::wstring name = found.cFileName;
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            files.push_back(Utf8FromWide(folder + name));
        } else if (name.front() != L'.') {
            Collect(folder + name + L"\\", files);
        }
    } while (::FindNextFileW(search, &found) != FALSE);
    ::FindClose(search);
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

std::string NameOfTree(const std::string& path) {
    return path.substr(path.rfind('\\') + 1);
}

}  // namespace tidemark
