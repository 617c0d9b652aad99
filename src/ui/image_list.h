#pragma once

#include "platform/win32/windows.h"

#include <commctrl.h>

#include <functional>
#include <string>

#include "lists/keyed_image_list.h"
#include "platform/win32/unique_handle.h"
#include "ui/gdi.h"

namespace tidemark {

struct ImageListTraits {
    using Type = HIMAGELIST;
    static Type None() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { ::ImageList_Destroy(handle); }
};
using UniqueImageList = UniqueHandle<ImageListTraits>;

// The shell's small icon of an existing file or folder; empty when there is none.
[[nodiscard]] UniqueIcon ShellSmallIcon(const std::string& path);

// An image list of the system that holds small icons, with the keys its pictures are found by.
// Empty until the first picture is added; pictures are only ever added.
class ImageList : private PictureStore {
  public:
    using IconSource = std::function<UniqueIcon(const std::string& path)>;

    // Icons come from `source`.
    explicit ImageList(IconSource source = ShellSmallIcon);
    ImageList(const ImageList&) = delete;
    ImageList& operator=(const ImageList&) = delete;

    [[nodiscard]] KeyedImageList& Keyed() { return keyed_; }
    // Stays the same for the object's life and goes with it.
    [[nodiscard]] HIMAGELIST Handle() const { return images_.Get(); }

  private:
    bool AddSmallIcon(const std::string& path) override;

    IconSource source_;
    UniqueImageList images_;
    KeyedImageList keyed_{*this};
};

}  // namespace tidemark
