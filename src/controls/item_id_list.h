#pragma once

#include <shtypes.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/win32/unique_handle.h"
#include "platform/win32/windows.h"

namespace tidemark {

// An item-identifier list of the shell, freed with the shell's allocator.
struct ItemIdListTraits {
    using Type = PIDLIST_ABSOLUTE;
    static Type None() noexcept { return nullptr; }
    static void Close(Type list) noexcept;
};
using UniqueItemIdList = UniqueHandle<ItemIdListTraits>;

// The identifier list of a path, as the desktop folder parses it; empty when it cannot. `owner` is
// for questions the shell may have to ask; it may be null.
[[nodiscard]] UniqueItemIdList ItemIdListFromPath(HWND owner, std::string_view path);

// The file-system path of an item of any length, in UTF-8; empty for an item without one, and for
// null.
[[nodiscard]] std::string PathFromItemIdList(PCIDLIST_ABSOLUTE list);

// The path of one of the shell's numbered folders (CSIDL), in UTF-8; empty when the folder is not
// there or has no path.
[[nodiscard]] std::string SpecialFolderPath(std::int32_t special_folder);

}  // namespace tidemark
