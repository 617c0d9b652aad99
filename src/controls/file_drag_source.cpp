#include "controls/file_drag_source.h"

#include <ole2.h>

#include <optional>
#include <utility>

#include "controls/file_data_object.h"
#include "controls/ole_session.h"
#include "platform/win32/com_object.h"
#include "platform/win32/com_ptr.h"
#include "platform/win32/system_loop.h"
#include "ui/last_resort.h"

namespace tidemark {
namespace {

class DropSource final : public ComObject<IDropSource> {
  public:
    DropSource(OleDragDropSink& source, std::int16_t button) : source_(&source), button_(button) {}

    void Disconnect() {
        source_ = nullptr;
        loop_.reset();
    }

    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape_pressed, DWORD key_state) override {
        const DragStep step = NextDragStep(escape_pressed != FALSE, key_state, button_);
        if (step == DragStep::kContinue) {
            return S_OK;
        }
        loop_.reset();
        return step == DragStep::kDrop ? DRAGDROP_S_DROP : DRAGDROP_S_CANCEL;
    }

    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD effect) override {
        bool default_cursors = true;
        if (source_ != nullptr) {
            Guarded(nullptr, [&] {
                auto value = static_cast<std::int32_t>(effect);
                source_->GiveFeedback(value, default_cursors);
            });
        }
        return default_cursors ? DRAGDROP_S_USEDEFAULTCURSORS : S_OK;
    }

  private:
    ~DropSource() override = default;

    OleDragDropSink* source_;
    std::int16_t button_;
    // Until the button is let go. What the target does with the files then may take long, and
    // waits for no mouse.
    std::optional<SystemLoopScope> loop_{std::in_place};
};

}  // namespace

std::int32_t DragFiles(OleDragDropSink& source, std::int16_t button) {
    const OleSession ole;
    const auto data = ComPtr<FileDataObject>::Adopt(new FileDataObject(source));
    std::int32_t allowed = kDropEffectNone;
    Guarded(nullptr, [&] { source.StartDrag(*data.Get(), allowed); });
    std::int32_t effect = kDropEffectNone;
    if (allowed != kDropEffectNone) {
        const auto drop_source = ComPtr<DropSource>::Adopt(new DropSource(source, button));
        DWORD chosen = DROPEFFECT_NONE;
        const HRESULT result =
            ::DoDragDrop(data.Get(), drop_source.Get(), static_cast<DWORD>(allowed), &chosen);
        drop_source->Disconnect();
        if (result == DRAGDROP_S_DROP) {
            effect = static_cast<std::int32_t>(chosen);
        }
        Guarded(nullptr, [&] { source.CompleteDrag(effect); });
    }
    // A target may keep the data; it must not reach a source that is gone.
    data->Disconnect();
    return effect;
}

}  // namespace tidemark
