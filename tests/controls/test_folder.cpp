#include "controls/test_folder.h"

#include <array>
#include <filesystem>
#include <stdexcept>

#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

namespace tidemark {

TestFolder::TestFolder() {
    std::array<wchar_t, MAX_PATH> temporary{};
    ::GetTempPathW(MAX_PATH, temporary.data());
    static int number = 0;
    path_ = Utf8FromWide(temporary.data()) + "tidemark controls " +
            std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++number);
    std::filesystem::create_directories(WideFromUtf8(path_));
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(WideFromUtf8(path_), ignored);
}

std::string TestFolder::AddFolder(const std::string& name) const {
    std::string path = path_ + "\\" + name;
    std::filesystem::create_directories(WideFromUtf8(path));
    return path;
}

std::string TestFolder::AddFile(const std::string& name) const {
    std::string path = path_ + "\\" + name;
    const HANDLE file = ::CreateFileW(WideFromUtf8(path).c_str(), GENERIC_WRITE, 0, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        throw std::runtime_error("cannot make " + path);
    }
    ::CloseHandle(file);
    return path;
}

}  // namespace tidemark
