#include "ui/image_list.h"

#include <shellapi.h>

#include <utility>

#include "platform/win32/wide_text.h"
#include "ui/hosted_window.h"

namespace tidemark {

UniqueIcon ShellSmallIcon(const std::string& path) {
    SHFILEINFOW info{};
    // Without the flag that would take the attributes from the call: a missing path has no icon.
    const DWORD_PTR answered = ::SHGetFileInfoW(WideFromUtf8(path).c_str(), /*dwFileAttributes=*/0,
                                                &info, sizeof info, SHGFI_ICON | SHGFI_SMALLICON);
    return UniqueIcon(answered == 0 ? nullptr : info.hIcon);
}

ImageList::ImageList(IconSource source)
    : source_(std::move(source)),
      images_(::ImageList_Create(::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON),
                                 ILC_COLOR32 | ILC_MASK, /*cInitial=*/0, /*cGrow=*/16)) {
    if (!images_) {
        ThrowSystemError(::GetLastError(), "Create image list");
    }
}

bool ImageList::AddSmallIcon(const std::string& path) {
    const UniqueIcon icon = source_(path);
    return icon && ::ImageList_ReplaceIcon(images_.Get(), /*i=*/-1, icon.Get()) != -1;
}

}  // namespace tidemark
