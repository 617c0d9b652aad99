#pragma once

namespace tidemark {

enum class WindowState { kNormal, kMinimised, kMaximised };

// Place and outer size of a top-level window on the screen, in twips (see Screen).
struct TwipsBounds {
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
    friend bool operator==(const TwipsBounds&, const TwipsBounds&) = default;
};

// A top-level window whose place and size are kept.
class PlacedWindow {
  public:
    virtual ~PlacedWindow() = default;

    [[nodiscard]] virtual WindowState State() const = 0;
    // Throws ProgramError when the system cannot tell.
    [[nodiscard]] virtual TwipsBounds Placement() const = 0;
    // Moves and sizes the window in one operation; a minimum size of its own may enlarge it. Throws
    // ProgramError when the window is minimised or maximised, when a number is beyond what pixels
    // can express, or when the system refuses.
    virtual void MoveTo(const TwipsBounds& bounds) = 0;
};

}  // namespace tidemark
