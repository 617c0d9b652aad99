#include "support/modal_driver.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <utility>

namespace tidemark {
namespace {

constexpr ULONGLONG kStepLimitMs = 10000;
constexpr int kTimesToGiveUp = 3;

ModalDriver*& Current() {
    static ModalDriver* current = nullptr;
    return current;
}

}  // namespace

ModalDriver::ModalDriver(std::vector<Step> steps, std::function<void()> give_up)
    : steps_(std::move(steps)),
      give_up_(std::move(give_up)),
      deadline_(::GetTickCount64() + kStepLimitMs) {
    Current() = this;
    timer_ = ::SetTimer(nullptr, 0, 10, OnTimer);
}

ModalDriver::~ModalDriver() {
    ::KillTimer(nullptr, timer_);
    Current() = nullptr;
}

void CALLBACK ModalDriver::OnTimer(HWND /*window*/, UINT /*message*/, UINT_PTR /*id*/,
                                   DWORD /*time*/) {
    if (Current() != nullptr) {
        Current()->TryStep();
    }
}

void ModalDriver::TryStep() {
    // A step may send what runs messages itself.
    if (in_step_) {
        return;
    }
    if (::GetTickCount64() >= deadline_) {
        if (!Done()) {
            ADD_FAILURE() << "step " << next_ << " of the modal loop did not come about";
        } else {
            ADD_FAILURE() << "the modal loop did not end after its last step";
        }
        if (++times_given_up_ == kTimesToGiveUp) {
            // Nothing ends this loop: rather a suite cut short than one that hangs.
            std::fputs("a modal loop cannot be ended\n", stderr);
            std::fflush(nullptr);
            ::TerminateProcess(::GetCurrentProcess(), 3);
        }
        deadline_ = ::GetTickCount64() + kStepLimitMs;
        give_up_();
        return;
    }
    if (Done()) {
        return;
    }
    in_step_ = true;
    if (steps_[next_]()) {
        ++next_;
        deadline_ = ::GetTickCount64() + kStepLimitMs;
    }
    in_step_ = false;
}

}  // namespace tidemark
