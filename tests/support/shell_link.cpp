#include "support/shell_link.h"

#include "platform/win32/windows.h"

// Need the system's main header before them.
#include <objbase.h>
#include <shlobj.h>

#include <array>

#include "platform/win32/com_ptr.h"
#include "platform/win32/wide_text.h"

namespace tidemark {

std::optional<ShellLink> ReadShellLink(const std::string& path) {
    ComPtr<IShellLinkW> link;
    ComPtr<IPersistFile> file;
    if (FAILED(::CoCreateInstance(CLSID_ShellLink, /*pUnkOuter=*/nullptr, CLSCTX_INPROC_SERVER,
                                  IID_IShellLinkW, link.PutVoid())) ||
        FAILED(link->QueryInterface(IID_IPersistFile, file.PutVoid())) ||
        FAILED(file->Load(WideFromUtf8(path).c_str(), STGM_READ))) {
        return std::nullopt;
    }
    std::array<wchar_t, 1024> text{};
    const int size = static_cast<int>(text.size());
    ShellLink read;
    link->GetPath(text.data(), size, nullptr, SLGP_RAWPATH);
    read.target = Utf8FromWide(text.data());
    link->GetDescription(text.data(), size);
    read.description = Utf8FromWide(text.data());
    link->GetArguments(text.data(), size);
    read.arguments = Utf8FromWide(text.data());
    link->GetWorkingDirectory(text.data(), size);
    read.working_folder = Utf8FromWide(text.data());
    return read;
}

}  // namespace tidemark
