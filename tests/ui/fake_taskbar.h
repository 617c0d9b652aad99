#pragma once

#include <shobjidl.h>

#include <string>
#include <vector>

#include "platform/win32/com_object.h"

namespace tidemark {

// Writes down what it is told about the progress of windows.
class FakeTaskbar final : public ComObject<ITaskbarList3> {
  public:
    std::vector<std::string> told;
    std::vector<HWND> windows;
    HRESULT answer = S_OK;

    HRESULT STDMETHODCALLTYPE SetProgressValue(HWND window, ULONGLONG done,
                                               ULONGLONG total) override {
        return Note(window, std::to_string(done) + " of " + std::to_string(total));
    }
    HRESULT STDMETHODCALLTYPE SetProgressState(HWND window, TBPFLAG state) override {
        return Note(window, state == TBPF_NOPROGRESS      ? "none"
                            : state == TBPF_INDETERMINATE ? "unknown"
                            : state == TBPF_NORMAL        ? "normal"
                                                          : "other");
    }

    HRESULT STDMETHODCALLTYPE HrInit() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE AddTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeleteTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ActivateTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetActiveAlt(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE MarkFullscreenWindow(HWND, WINBOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RegisterTab(HWND, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnregisterTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetTabOrder(HWND, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetTabActive(HWND, HWND, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ThumbBarAddButtons(HWND, UINT, LPTHUMBBUTTON) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ThumbBarUpdateButtons(HWND, UINT, LPTHUMBBUTTON) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ThumbBarSetImageList(HWND, HIMAGELIST) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetOverlayIcon(HWND, HICON, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetThumbnailTooltip(HWND, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetThumbnailClip(HWND, RECT*) override { return E_NOTIMPL; }

  private:
    ~FakeTaskbar() override = default;
    HRESULT Note(HWND window, const std::string& what) {
        told.push_back(what);
        windows.push_back(window);
        return answer;
    }
};

}  // namespace tidemark
