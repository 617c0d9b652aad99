#pragma once

namespace tidemark {

// Positions and sizes in pixels. Window-free, so that layouts can be computed without a window.
struct Point {
    int x = 0;
    int y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    int width = 0;
    int height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Bounds {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] int Right() const { return left + width; }
    [[nodiscard]] int Bottom() const { return top + height; }
    friend bool operator==(const Bounds&, const Bounds&) = default;
};

struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace tidemark
