#pragma once

#include <utility>

namespace tidemark {

// Runs one step of the way out. One that fails leaves the rest to be done all the same: nobody is
// left to be told, because the windows that could show it are going.
template <typename Step>
void Attempt(Step&& step) noexcept {
    try {
        std::forward<Step>(step)();
    } catch (...) {
    }
}

}  // namespace tidemark
