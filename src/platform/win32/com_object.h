#pragma once

#include <unknwn.h>

#include "platform/win32/windows.h"

namespace tidemark {

// Reference counting and interface look-up for an object that implements `Interfaces`. It starts
// with one reference, which belongs to whoever creates it with `new` (see ComPtr::Adopt), and
// deletes itself with the last one.
//
// The interfaces have no virtual destructors by design: nothing is ever deleted through them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
template <typename First, typename... Others>
class ComObject : public First, public Others... {
  public:
    ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    ULONG STDMETHODCALLTYPE AddRef() final {
        return static_cast<ULONG>(::InterlockedIncrement(&references_));
    }

    ULONG STDMETHODCALLTYPE Release() final {
        const LONG left = ::InterlockedDecrement(&references_);
        if (left == 0) {
            delete this;
        }
        return static_cast<ULONG>(left);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = nullptr;
        if (IsEqualIID(iid, __uuidof(IUnknown)) || IsEqualIID(iid, __uuidof(First))) {
            *object = static_cast<First*>(this);
        } else {
            // The expression also compiles, and does nothing, without other interfaces.
            static_cast<void>(
                ((IsEqualIID(iid, __uuidof(Others)) && (*object = static_cast<Others*>(this))) ||
                 ...));
        }
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }

  protected:
    virtual ~ComObject() = default;

  private:
    LONG references_ = 1;
};
#pragma GCC diagnostic pop

}  // namespace tidemark
