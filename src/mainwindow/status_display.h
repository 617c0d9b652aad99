#pragma once

#include <cstdint>
#include <string>

#include "engine/tidemark_item_collection.h"
#include "platform/user_locale.h"
#include "ui/taskbar_progress.h"

namespace tidemark {

// What the status bar and the progress bar show for the work of all items.
struct StatusDisplay {
    bool shows_progress = false;  // panels with the progress bar, or one simple text
    std::string text;
    std::int32_t progress_maximum = 0;
    std::int32_t progress_value = 0;
};

[[nodiscard]] StatusDisplay DisplayOf(const TidemarkItemCollection::Totals& work,
                                      UserLocale& locale);

// What the window's button in the taskbar shows along with it.
[[nodiscard]] TaskbarProgress TaskbarProgressOf(const StatusDisplay& display);

// The widest text that the first panel is made for.
inline constexpr const char* kWidestStatusText = "  Stamping (888,888,888 items remaining)";

}  // namespace tidemark
