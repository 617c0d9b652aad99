#include "controls/ole_drag_drop.h"

#include <array>

#include "platform/input_bits.h"
#include "platform/raise.h"

namespace tidemark {
namespace {

// Bits of the key state that OLE hands over.
constexpr std::uint32_t kKeyLeftButton = 0x01;
constexpr std::uint32_t kKeyRightButton = 0x02;
constexpr std::uint32_t kKeyShift = 0x04;
constexpr std::uint32_t kKeyControl = 0x08;
constexpr std::uint32_t kKeyMiddleButton = 0x10;
constexpr std::uint32_t kKeyAlt = 0x20;

struct Meaning {
    std::uint32_t of_key_state;
    int bit;
};

std::int16_t Translate(std::uint32_t key_state, const std::array<Meaning, 3>& meanings) {
    int bits = 0;
    for (const Meaning& meaning : meanings) {
        bits |= (key_state & meaning.of_key_state) != 0 ? meaning.bit : 0;
    }
    return static_cast<std::int16_t>(bits);
}

}  // namespace

void OleDragDropSink::CompleteDrag(std::int32_t& /*effect*/) {}

void OleDragDropSink::DragDrop(DragData& /*data*/, std::int32_t& effect, std::int16_t /*button*/,
                               std::int16_t /*shift*/, float& /*x*/, float& /*y*/) {
    effect = kDropEffectNone;
}

void OleDragDropSink::DragOver(DragData& /*data*/, std::int32_t& effect, std::int16_t /*button*/,
                               std::int16_t /*shift*/, float& /*x*/, float& /*y*/,
                               std::int16_t /*state*/) {
    effect = kDropEffectNone;
}

void OleDragDropSink::GiveFeedback(std::int32_t& /*effect*/, bool& /*default_cursors*/) {}

void OleDragDropSink::SetData(DragSourceData& /*data*/, std::int16_t /*format*/) {}

void OleDragDropSink::StartDrag(DragSourceData& /*data*/, std::int32_t& /*allowed_effects*/) {}

void OleDragDropForwarder::SetOrigin(float left, float top) {
    left_ = left;
    top_ = top;
}

void OleDragDropForwarder::CompleteDrag(std::int32_t& effect) {
    Raise(events_.OLECompleteDrag, effect);
}

void OleDragDropForwarder::DragDrop(DragData& data, std::int32_t& effect, std::int16_t button,
                                    std::int16_t shift, float& x, float& y) {
    x += left_;
    y += top_;
    Raise(events_.OLEDragDrop, data, effect, button, shift, x, y);
}

void OleDragDropForwarder::DragOver(DragData& data, std::int32_t& effect, std::int16_t button,
                                    std::int16_t shift, float& x, float& y, std::int16_t state) {
    x += left_;
    y += top_;
    Raise(events_.OLEDragOver, data, effect, button, shift, x, y, state);
}

void OleDragDropForwarder::GiveFeedback(std::int32_t& effect, bool& default_cursors) {
    Raise(events_.OLEGiveFeedback, effect, default_cursors);
}

void OleDragDropForwarder::SetData(DragSourceData& data, std::int16_t format) {
    Raise(events_.OLESetData, data, format);
}

void OleDragDropForwarder::StartDrag(DragSourceData& data, std::int32_t& allowed_effects) {
    Raise(events_.OLEStartDrag, data, allowed_effects);
}

bool AcceptFiles(DragData& data, std::int32_t& effect) {
    const std::int32_t allowed = effect;
    effect = kDropEffectNone;
    if (!data.GetFormat(kFileListFormat) || data.Files().empty()) {
        return false;
    }
    for (const std::int32_t wanted : {kDropEffectCopy, kDropEffectLink, kDropEffectMove}) {
        if ((allowed & wanted) != 0) {
            effect = wanted;
            return true;
        }
    }
    return false;
}

bool AcceptDroppedFiles(DragData& data, std::int32_t& effect) {
    const bool accepted = AcceptFiles(data, effect);
    if (effect == kDropEffectMove) {
        effect = kDropEffectNone;
    }
    return accepted;
}

std::int16_t ButtonFromKeyState(std::uint32_t key_state) {
    return Translate(key_state, {{{kKeyLeftButton, kLeftButton},
                                  {kKeyRightButton, kRightButton},
                                  {kKeyMiddleButton, kMiddleButton}}});
}

std::int16_t ShiftFromKeyState(std::uint32_t key_state) {
    return Translate(key_state,
                     {{{kKeyShift, kShiftKey}, {kKeyControl, kControlKey}, {kKeyAlt, kAltKey}}});
}

DragStep NextDragStep(bool escape_pressed, std::uint32_t key_state, std::int16_t drag_buttons) {
    if (escape_pressed) {
        return DragStep::kCancel;
    }
    const int down = ButtonFromKeyState(key_state);
    if ((down & ~drag_buttons) != 0) {
        return DragStep::kCancel;
    }
    return (down & drag_buttons) == 0 ? DragStep::kDrop : DragStep::kContinue;
}

}  // namespace tidemark
