#include "controls/list_popup.h"

#include <cstdint>
#include <utility>

namespace tidemark {
namespace {

constexpr std::int32_t kOpenContainingFolder = 1;  // item data of the popup's own entry

}  // namespace

void FillListPopup(ShellContextMenu& popup, const std::vector<std::string>& paths,
                   std::function<void()> open_containing_folder) {
    popup.AddMenuItem("Open Containing Folder", MFT_STRING, MFS_ENABLED, kOpenContainingFolder);
    popup.AddMenuItem("", MFT_SEPARATOR, MFS_ENABLED, /*ItemData=*/0);
    for (const std::string& path : paths) {
        popup.AddFile(path);
    }
    popup.MenuItemInvoked = [open = std::move(open_containing_folder)](
                                const std::string& /*caption*/, std::int32_t item_data) {
        if (item_data == kOpenContainingFolder) {
            open();
        }
    };
}

}  // namespace tidemark
