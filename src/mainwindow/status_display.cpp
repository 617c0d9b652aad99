#include "mainwindow/status_display.h"

#include <algorithm>

#include "engine/numbers.h"

namespace tidemark {

StatusDisplay DisplayOf(const TidemarkItemCollection::Totals& work, UserLocale& locale) {
    StatusDisplay display;
    if (!work.stamping) {
        if (work.counting) {
            display.text = "  Counting";
        } else {
            display.text = work.stamp_complete ? "  Stamp Complete" : "  Ready";
        }
        return display;
    }
    // A tree can hold more than was counted: the count may not have finished, or entries came.
    const std::int32_t done = work.stamped;
    const std::int32_t total = std::max(work.counted, done);
    const std::int64_t remaining = std::int64_t{total} - done;
    display.shows_progress = true;
    display.text = "  Stamping (" +
                   (remaining >= 1 ? FormatWholeNumber(locale, remaining) + " items remaining)"
                                   : FormatWholeNumber(locale, done) + " items stamped)");
    display.progress_maximum = total;
    display.progress_value = done;
    return display;
}

TaskbarProgress TaskbarProgressOf(const StatusDisplay& display) {
    if (!display.shows_progress) {
        return {};
    }
    return {.working = true, .done = display.progress_value, .total = display.progress_maximum};
}

}  // namespace tidemark
