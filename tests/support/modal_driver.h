#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "platform/win32/windows.h"

namespace tidemark {

// Acts inside a modal loop of this thread (a menu, a dialog, a drag) while a test waits for the
// call that runs it. Each step is tried again and again, from a timer, until it answers true; then
// comes the next one. When a step takes too long the test fails, and `give_up` has to end the loop;
// when it cannot, the whole test program ends.
class ModalDriver {
  public:
    using Step = std::function<bool()>;

    ModalDriver(std::vector<Step> steps, std::function<void()> give_up);
    ModalDriver(const ModalDriver&) = delete;
    ModalDriver& operator=(const ModalDriver&) = delete;
    ~ModalDriver();

    [[nodiscard]] bool Done() const { return next_ == steps_.size(); }

  private:
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD time);
    void TryStep();

    std::vector<Step> steps_;
    std::function<void()> give_up_;
    std::size_t next_ = 0;
    ULONGLONG deadline_;
    bool in_step_ = false;
    int times_given_up_ = 0;
    UINT_PTR timer_;
};

}  // namespace tidemark
