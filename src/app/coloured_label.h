#pragma once

#include <optional>

#include "ui/gdi.h"
#include "ui/label.h"

namespace tidemark {

// A label in colours of its own, to stand on a picture.
class ColouredLabel final : public Label {
  public:
    ColouredLabel(COLORREF text, COLORREF background)
        : text_(text), background_(background), brush_(::CreateSolidBrush(background)) {}

    std::optional<LRESULT> OnControlColour(UINT /*message*/, HDC dc) override {
        ::SetTextColor(dc, text_);
        ::SetBkColor(dc, background_);
        return reinterpret_cast<LRESULT>(brush_.Get());
    }

  private:
    COLORREF text_;
    COLORREF background_;
    UniqueBrush brush_;
};

}  // namespace tidemark
