#pragma once

#include <utility>

#include "platform/win32/windows.h"

namespace tidemark {

// Holds one reference to a COM object and gives it back. Copies take references of their own.
template <typename Interface>
class ComPtr {
  public:
    ComPtr() noexcept = default;
    // Takes a reference of its own to `object`, which may be null.
    explicit ComPtr(Interface* object) noexcept : object_(object) {
        if (object_ != nullptr) {
            object_->AddRef();
        }
    }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.object_) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPtr() { Reset(); }

    // Takes over a reference that the caller owns.
    [[nodiscard]] static ComPtr Adopt(Interface* object) noexcept {
        ComPtr pointer;
        pointer.object_ = object;
        return pointer;
    }

    [[nodiscard]] Interface* Get() const noexcept { return object_; }
    [[nodiscard]] Interface* operator->() const noexcept { return object_; }
    [[nodiscard]] explicit operator bool() const noexcept { return object_ != nullptr; }

    void Reset() noexcept {
        if (Interface* old = std::exchange(object_, nullptr)) {
            old->Release();
        }
    }

    // For calls that hand out a reference: lets go of the held one and gives the place for the new.
    [[nodiscard]] Interface** Put() noexcept {
        Reset();
        return &object_;
    }
    [[nodiscard]] void** PutVoid() noexcept { return reinterpret_cast<void**>(Put()); }

    // The same object's other interface; empty when it has none.
    template <typename Other>
    [[nodiscard]] ComPtr<Other> As() const noexcept {
        ComPtr<Other> other;
        if (object_ != nullptr &&
            FAILED(object_->QueryInterface(__uuidof(Other), other.PutVoid()))) {
            return {};
        }
        return other;
    }

  private:
    Interface* object_ = nullptr;
};

}  // namespace tidemark
