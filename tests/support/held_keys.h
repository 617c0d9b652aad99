#pragma once

#include <initializer_list>

#include "platform/win32/windows.h"

namespace tidemark {

// Holds keys down for this thread while alive, as GetKeyState sees it.
class HeldKeys {
  public:
    explicit HeldKeys(std::initializer_list<int> keys) {
        ::GetKeyboardState(before_);
        BYTE state[256];
        ::GetKeyboardState(state);
        for (const int key : keys) {
            state[key] = 0x80;
        }
        ::SetKeyboardState(state);
    }
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;
    ~HeldKeys() { ::SetKeyboardState(before_); }

  private:
    BYTE before_[256]{};
};

}  // namespace tidemark
