#include "ui/image_list.h"

#include <shellapi.h>

#include <utility>

#include "platform/win32/system_message.h"
#include "platform/win32/system_path.h"

namespace tidemark {

namespace {

UniqueIcon AskShell(const std::wstring& path, DWORD attributes, UINT flags) {
    SHFILEINFOW info{};
    const DWORD_PTR answered = ::SHGetFileInfoW(path.c_str(), attributes, &info, sizeof info,
                                                SHGFI_ICON | SHGFI_SMALLICON | flags);
    return UniqueIcon(answered == 0 ? nullptr : info.hIcon);
}

}  // namespace

UniqueIcon ShellSmallIcon(const std::string& path) {
    std::wstring wide;
    if (!AssignSystemPath(wide, path)) {
        // Without the flag that would take the attributes from the call: a missing path has none.
        return AskShell(wide, /*attributes=*/0, /*flags=*/0);
    }
    // The shell does not read extended paths: what is there lends its attributes to the name.
    const DWORD attributes = ::GetFileAttributesW(wide.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return {};
    }
    const std::size_t end = wide.find_last_not_of(L'\\') + 1;
    const std::size_t start = wide.find_last_of(L'\\', end - 1) + 1;
    return AskShell(wide.substr(start, end - start), attributes, SHGFI_USEFILEATTRIBUTES);
}

ImageList::ImageList(IconSource source)
    : source_(std::move(source)),
      images_(::ImageList_Create(::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON),
                                 ILC_COLOR32 | ILC_MASK, /*cInitial=*/0, /*cGrow=*/16)) {
    if (!images_) {
        ThrowSystemError(::GetLastError(), "Creating an image list");
    }
}

bool ImageList::AddSmallIcon(const std::string& path) {
    const UniqueIcon icon = source_(path);
    return icon && ::ImageList_ReplaceIcon(images_.Get(), /*i=*/-1, icon.Get()) != -1;
}

}  // namespace tidemark
