#pragma once

#include <gtest/gtest.h>
#include <ole2.h>

#include <cstring>
#include <span>
#include <vector>

#include "platform/win32/com_object.h"
#include "platform/win32/com_ptr.h"

namespace tidemark {

// The references that are held to `object`.
inline ULONG References(IUnknown& object) {
    object.AddRef();
    return object.Release();
}

inline HGLOBAL GlobalBytes(std::span<const std::byte> bytes) {
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    if (!bytes.empty()) {
        std::memcpy(::GlobalLock(memory), bytes.data(), bytes.size());
        ::GlobalUnlock(memory);
    }
    return memory;
}

// Another program's data: one format with whatever a test puts behind it.
class FakeDataObject final : public ComObject<IDataObject> {
  public:
    CLIPFORMAT format = CF_HDROP;
    DWORD tymed = TYMED_HGLOBAL;   // what GetData says it hands out
    bool without_handle = false;   // success, but nothing in the medium
    std::vector<std::byte> bytes;  // the memory
    ComPtr<IStream> stream;        // for TYMED_ISTREAM
    int get_data_calls = 0;

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* wanted, STGMEDIUM* medium) override {
        ++get_data_calls;
        if (wanted->cfFormat != format) {
            return DV_E_FORMATETC;
        }
        *medium = {};
        medium->tymed = tymed;
        if (without_handle) {
            return S_OK;
        }
        if (tymed == TYMED_HGLOBAL) {
            medium->hGlobal = GlobalBytes(bytes);
        } else if (tymed == TYMED_ISTREAM) {
            medium->pstm = stream.Get();
            medium->pstm->AddRef();
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* wanted) override {
        return wanted->cfFormat == format ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

  private:
    ~FakeDataObject() override = default;
};

// The drop target registered for a window of this process, null when there is none. Not owned.
inline IDropTarget* RegisteredTarget(HWND window) {
    // The property in which OLE keeps a target for its own process.
    return static_cast<IDropTarget*>(::GetPropW(window, L"OleDropTargetInterface"));
}

// Drags data to a place on the screen over a window's registered target and drops it there, as the
// system does for a drag that allows these effects; the effect of the drop.
inline DWORD DragAndDrop(HWND window, IDataObject& data, POINTL at = {},
                         DWORD allowed = DROPEFFECT_COPY) {
    const ComPtr<IDropTarget> target(RegisteredTarget(window));
    if (!target) {
        ADD_FAILURE() << "no drop target";
        return DROPEFFECT_NONE;
    }
    DWORD effect = allowed;
    target->DragEnter(&data, MK_LBUTTON, at, &effect);
    effect = allowed;
    target->DragOver(MK_LBUTTON, at, &effect);
    effect = allowed;
    target->Drop(&data, 0, at, &effect);
    return effect;
}

}  // namespace tidemark
