#pragma once

#include "platform/geometry.h"
#include "platform/win32/windows.h"

namespace tidemark {

// A picture among the program's resources, painted from where it lies.
class Picture {
  public:
    // Finds the bitmap resource of that name. Throws ProgramError when there is none.
    explicit Picture(const wchar_t* name);

    [[nodiscard]] Size Extent() const;
    // Paints the picture with its upper left corner at the origin.
    void Paint(HDC dc) const;

  private:
    const BITMAPINFO* info_ = nullptr;
    const void* bits_ = nullptr;
};

}  // namespace tidemark
