#pragma once

#include <ostream>
#include <vector>

#include "platform/placed_window.h"
#include "platform/program_error.h"

namespace tidemark {

// A window without a window. Moves may be refused; a minimum size enlarges what it is given.
class FakePlacedWindow : public PlacedWindow {
  public:
    [[nodiscard]] WindowState State() const override { return state; }
    [[nodiscard]] TwipsBounds Placement() const override { return bounds; }
    void MoveTo(const TwipsBounds& target) override {
        tried.push_back(target);
        if (refusals > 0 || state != WindowState::kNormal) {
            --refusals;
            throw ProgramError(error_number::kMoveOfMinimisedOrMaximised, "cannot be moved");
        }
        bounds = target;
        bounds.width = bounds.width < minimum_width ? minimum_width : bounds.width;
        bounds.height = bounds.height < minimum_height ? minimum_height : bounds.height;
    }

    WindowState state = WindowState::kNormal;
    TwipsBounds bounds{150, 300, 6000, 4500};
    float minimum_width = 0;
    float minimum_height = 0;
    int refusals = 0;  // how many of the next moves fail
    std::vector<TwipsBounds> tried;
};

// Makes failures of a comparison readable.
inline void PrintTo(const TwipsBounds& bounds, std::ostream* out) {
    *out << '(' << bounds.left << ", " << bounds.top << ", " << bounds.width << ", "
         << bounds.height << ')';
}

}  // namespace tidemark
