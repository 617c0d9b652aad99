#pragma once

#include <utility>

#include "platform/win32/windows.h"

namespace tidemark {

// Owns one system resource. Traits name its type (Type), the value that means "none" (None()) and
// the call that gives it back (Close(Type)). Move-only; giving back never changes the thread's last
// error, so that an error can be read after an early return.
template <typename Traits>
class UniqueHandle {
  public:
    using Type = typename Traits::Type;

    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Type handle) noexcept : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) {
            Reset(other.Release());
        }
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { Reset(); }

    [[nodiscard]] Type Get() const noexcept { return handle_; }
    [[nodiscard]] explicit operator bool() const noexcept { return handle_ != Traits::None(); }

    // Hands the resource over to the caller.
    [[nodiscard]] Type Release() noexcept { return std::exchange(handle_, Traits::None()); }

    // Gives the held resource back and holds the new one.
    void Reset(Type handle = Traits::None()) noexcept {
        const Type old = std::exchange(handle_, handle);
        if (old != Traits::None()) {
            const DWORD error = ::GetLastError();
            Traits::Close(old);
            ::SetLastError(error);
        }
    }

  private:
    Type handle_ = Traits::None();
};

}  // namespace tidemark
