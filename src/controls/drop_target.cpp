#include "controls/drop_target.h"

#include <oleidl.h>
#include <shlobj.h>

#include <memory>
#include <utility>

#include "controls/file_drop_data.h"
#include "platform/win32/com_object.h"
#include "platform/win32/system_message.h"
#include "ui/last_resort.h"

namespace tidemark {

// What OLE talks to. OLE may hold it longer than the window lives; once disconnected it refuses.
class DropTarget::Shim final : public ComObject<IDropTarget> {
  public:
    Shim(HWND window, OleDragDropSink& sink) : window_(window), sink_(&sink) {}

    void Disconnect() {
        sink_ = nullptr;
        EndDrag();
    }

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD key_state, POINTL point,
                                        DWORD* effect) override {
        if (data == nullptr || effect == nullptr) {
            return E_INVALIDARG;
        }
        const ComPtr<Shim> self(this);  // the sink may end the registration
        EndDrag();
        // Without it the sink is not asked, and the drag refused.
        Guarded(window_, [&] { data_ = std::make_shared<ReceivedDragData>(*data); });
        Notify(key_state, point, *effect, drag_state::kEnter);
        if (IDropTargetHelper* helper = Helper()) {
            POINT screen{point.x, point.y};
            helper->DragEnter(window_, data, &screen, *effect);
        }
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE DragOver(DWORD key_state, POINTL point, DWORD* effect) override {
        if (effect == nullptr) {
            return E_INVALIDARG;
        }
        const ComPtr<Shim> self(this);
        Notify(key_state, point, *effect, drag_state::kOver);
        if (helper_) {
            POINT screen{point.x, point.y};
            helper_->DragOver(&screen, *effect);
        }
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE DragLeave() override {
        const ComPtr<Shim> self(this);
        if (helper_) {
            helper_->DragLeave();
        }
        DWORD effect = DROPEFFECT_NONE;
        Notify(last_key_state_, last_point_, effect, drag_state::kLeave);
        EndDrag();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD key_state, POINTL point,
                                   DWORD* effect) override {
        if (data == nullptr || effect == nullptr) {
            return E_INVALIDARG;
        }
        const ComPtr<Shim> self(this);
        if (helper_) {
            POINT screen{point.x, point.y};
            helper_->Drop(data, &screen, *effect);
        }
        auto answer = static_cast<std::int32_t>(*effect);
        EndDrag();
        *effect = DROPEFFECT_NONE;
        if (sink_ != nullptr) {
            // Read anew: a source may make its data only when it is dropped.
            ReceivedDragData dropped(*data);
            const bool answered = Guarded(window_, false, [&] {
                auto [x, y] = ToClient(point);
                sink_->DragDrop(dropped, answer, ButtonFromKeyState(key_state),
                                ShiftFromKeyState(key_state), x, y);
                return true;
            });
            *effect = answered ? static_cast<DWORD>(answer) : DROPEFFECT_NONE;
        }
        return S_OK;
    }

  private:
    ~Shim() override = default;

    [[nodiscard]] std::pair<float, float> ToClient(POINTL point) const {
        POINT client{point.x, point.y};
        ::ScreenToClient(window_, &client);
        return {static_cast<float>(client.x), static_cast<float>(client.y)};
    }

    // Asks the sink; `effect` is the offer on the way in and the answer on the way out.
    void Notify(DWORD key_state, POINTL point, DWORD& effect, std::int16_t state) {
        last_key_state_ = key_state;
        last_point_ = point;
        std::int32_t answer = kDropEffectNone;
        if (sink_ != nullptr && data_) {
            // Held here: the sink may destroy the window, which ends the drag.
            const std::shared_ptr<ReceivedDragData> data = data_;
            answer = Guarded(window_, kDropEffectNone, [&] {
                auto [x, y] = ToClient(point);
                auto value = static_cast<std::int32_t>(effect);
                sink_->DragOver(*data, value, ButtonFromKeyState(key_state),
                                ShiftFromKeyState(key_state), x, y, state);
                return value;
            });
        }
        effect = static_cast<DWORD>(answer);
    }

    // The shell's helper draws the picture that some sources attach to the pointer; without it the
    // picture would vanish over this window.
    IDropTargetHelper* Helper() {
        if (!helper_) {
            static_cast<void>(::CoCreateInstance(CLSID_DragDropHelper, nullptr,
                                                 CLSCTX_INPROC_SERVER, __uuidof(IDropTargetHelper),
                                                 helper_.PutVoid()));
        }
        return helper_.Get();
    }

    void EndDrag() {
        data_.reset();
        helper_.Reset();
    }

    HWND window_;
    OleDragDropSink* sink_;
    std::shared_ptr<ReceivedDragData> data_;  // of the drag over the window, else empty
    ComPtr<IDropTargetHelper> helper_;
    DWORD last_key_state_ = 0;
    POINTL last_point_{};
};

DropTarget::DropTarget(HWND window, OleDragDropSink& sink)
    : window_(window), shim_(ComPtr<Shim>::Adopt(new Shim(window, sink))) {
    watch_.WndProc = [this](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        Revoke();
        return std::nullopt;
    };
    watch_.RegisterMessages(window, {WM_DESTROY});
    const HRESULT result = ::RegisterDragDrop(window, shim_.Get());
    if (FAILED(result)) {
        ThrowSystemError(static_cast<DWORD>(result), "Registering a drop target");
    }
}

DropTarget::~DropTarget() {
    Revoke();
}

void DropTarget::Revoke() {
    if (const HWND window = std::exchange(window_, nullptr)) {
        ::RevokeDragDrop(window);
        shim_->Disconnect();
    }
}

}  // namespace tidemark
