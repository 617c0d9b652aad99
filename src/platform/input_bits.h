#pragma once

namespace tidemark {

// Shift keys as bits of a number.
inline constexpr int kShiftKey = 1;
inline constexpr int kControlKey = 2;
inline constexpr int kAltKey = 4;

// Mouse buttons as bits of a number.
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kMiddleButton = 4;

}  // namespace tidemark
