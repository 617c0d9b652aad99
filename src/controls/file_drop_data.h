#pragma once

#include <objidl.h>

#include <optional>
#include <string>
#include <vector>

#include "controls/ole_drag_drop.h"
#include "platform/win32/com_ptr.h"

namespace tidemark {

// The files that another program's data names, in its order; empty when it offers no file list, or
// one that cannot be trusted (see ParseDropFiles). Never throws for what the data does.
[[nodiscard]] std::vector<std::string> ReadFileDrop(IDataObject& data);

// True when the data can be had in the clipboard format.
[[nodiscard]] bool OffersFormat(IDataObject& data, std::int16_t format);

// Another program's data as the windows see it. The file list is read once, when it is first asked
// for: a drag asks at every move of the pointer, and the list may be long and far away.
class ReceivedDragData final : public DragData {
  public:
    explicit ReceivedDragData(IDataObject& data) : data_(&data) {}

    bool GetFormat(std::int16_t format) override;
    const std::vector<std::string>& Files() override;

  private:
    ComPtr<IDataObject> data_;
    std::optional<std::vector<std::string>> files_;
};

}  // namespace tidemark
