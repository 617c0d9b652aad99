#pragma once

#include <cstdint>
#include <string>

#include "platform/user_locale.h"
#include "ui/taskbar_progress.h"

namespace tidemark {

// What the poll reads from the collection.
struct WorkState {
    bool stamping = false;
    bool counting = false;
    bool stamp_complete = false;  // every item is, and there is at least one
    std::int32_t counted = 0;     // entries counted and stamped, over all items
    std::int32_t stamped = 0;
};

// What the status bar and the progress bar show for it.
struct StatusDisplay {
    bool shows_progress = false;  // panels with the progress bar, or one simple text
    std::string text;
    std::int32_t progress_maximum = 0;
    std::int32_t progress_value = 0;
};

[[nodiscard]] StatusDisplay DisplayOf(const WorkState& work, UserLocale& locale);

// What the window's button in the taskbar shows along with it.
[[nodiscard]] TaskbarProgress TaskbarProgressOf(const StatusDisplay& display);

// The widest text that the first panel is made for.
inline constexpr const char* kWidestStatusText = "  Stamping (888,888,888 items remaining)";

}  // namespace tidemark
