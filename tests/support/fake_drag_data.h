#pragma once

#include <string>
#include <utility>
#include <vector>

#include "controls/ole_drag_drop.h"

namespace tidemark {

// Dragged data that holds what a test puts in.
class FakeDragData final : public DragSourceData {
  public:
    FakeDragData() = default;
    explicit FakeDragData(std::vector<std::string> paths) { SetFiles(std::move(paths)); }

    bool GetFormat(std::int16_t format) override {
        return offers_files_ && format == kFileListFormat;
    }
    const std::vector<std::string>& Files() override { return files_; }

    void SetFiles(std::vector<std::string> paths) override {
        files_ = std::move(paths);
        offers_files_ = true;
    }
    void OfferFormat(std::int16_t format) override { offers_files_ |= format == kFileListFormat; }
    void Clear() override {
        files_.clear();
        offers_files_ = false;
    }

  private:
    std::vector<std::string> files_;
    bool offers_files_ = false;
};

}  // namespace tidemark
