#include "mainwindow/send_to_shortcut.h"

#include "platform/win32/windows.h"

#include <objbase.h>
#include <shlobj.h>

#include "engine/paths.h"
#include "platform/win32/com_ptr.h"
#include "platform/win32/wide_text.h"

namespace tidemark {

bool WriteShortcut(const std::string& target_path, const std::string& folder) {
    ComPtr<IShellLinkW> link;
    if (folder.empty() ||
        FAILED(::CoCreateInstance(CLSID_ShellLink, /*pUnkOuter=*/nullptr, CLSCTX_INPROC_SERVER,
                                  IID_IShellLinkW, link.PutVoid()))) {
        return false;
    }
    ComPtr<IPersistFile> file;
    const std::wstring name = WideFromUtf8(AddBackslash(folder) + "Tidemark Clock.lnk");
    return SUCCEEDED(link->SetDescription(L"Sets date/time stamp for files or folders.")) &&
           SUCCEEDED(link->SetPath(WideFromUtf8(target_path).c_str())) &&
           SUCCEEDED(link->QueryInterface(IID_IPersistFile, file.PutVoid())) &&
           SUCCEEDED(file->Save(name.c_str(), /*fRemember=*/FALSE));
}

}  // namespace tidemark
