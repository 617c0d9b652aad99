#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tidemark {

// Drag and drop as the windows see it: plain data and six notifications. The shims that speak OLE
// (DropTarget, DragFiles) stand behind it, so what a window decides is testable without OLE.

// Clipboard formats have 16-bit numbers; this one is the list of files.
inline constexpr std::int16_t kFileListFormat = 15;

// Drop effects are bits; a target answers with one of them, a source allows several.
inline constexpr std::int32_t kDropEffectNone = 0;
inline constexpr std::int32_t kDropEffectCopy = 1;
inline constexpr std::int32_t kDropEffectMove = 2;
inline constexpr std::int32_t kDropEffectLink = 4;

// What is dragged. It lives for one notification; nothing of it may be kept.
class DragData {
  public:
    DragData() = default;
    DragData(const DragData&) = delete;
    DragData& operator=(const DragData&) = delete;
    virtual ~DragData() = default;

    // True when the data can be had in this clipboard format.
    [[nodiscard]] virtual bool GetFormat(std::int16_t format) = 0;

    // The dragged files and folders, in the source's order; empty when the data holds none or what
    // it holds cannot be trusted.
    [[nodiscard]] virtual const std::vector<std::string>& Files() = 0;
};

// The data of a drag that starts here, to be filled by whoever starts it.
class DragSourceData : public DragData {
  public:
    virtual void SetFiles(std::vector<std::string> paths) = 0;

    // Offers `format` without data yet: OLESetData is raised when a target asks for it.
    virtual void OfferFormat(std::int16_t format) = 0;

    // Withdraws every format and its data.
    virtual void Clear() = 0;
};

// Where a drag-over stands.
namespace drag_state {
inline constexpr std::int16_t kEnter = 0;
inline constexpr std::int16_t kLeave = 1;
inline constexpr std::int16_t kOver = 2;
}  // namespace drag_state

// The notifications, in the order of the events below. What they do not override is ignored; a
// drag-over or a drop that nobody answers is refused.
//
// Button holds the bits of the buttons that are down and Shift those of the shift keys (see
// platform/input_bits.h). X and Y are pixels in the window that is notified.
class OleDragDropSink {
  public:
    OleDragDropSink() = default;
    OleDragDropSink(const OleDragDropSink&) = delete;
    OleDragDropSink& operator=(const OleDragDropSink&) = delete;
    virtual ~OleDragDropSink() = default;

    // The drag that started here has ended with this effect.
    virtual void CompleteDrag(std::int32_t& effect);
    // Files were dropped; `effect` comes as what the source allows and goes back to the source.
    virtual void DragDrop(DragData& data, std::int32_t& effect, std::int16_t button,
                          std::int16_t shift, float& x, float& y);
    // The pointer came in, moved or left; `effect` comes as what the source allows.
    virtual void DragOver(DragData& data, std::int32_t& effect, std::int16_t button,
                          std::int16_t shift, float& x, float& y, std::int16_t state);
    // The target under the pointer chose this effect; the source may show cursors of its own.
    virtual void GiveFeedback(std::int32_t& effect, bool& default_cursors);
    // A target asks for a format that was offered without data.
    virtual void SetData(DragSourceData& data, std::int16_t format);
    // A drag starts here: fill `data`, say what is allowed. Allowing nothing ends it at once.
    virtual void StartDrag(DragSourceData& data, std::int32_t& allowed_effects);
};

// The same notifications as events for a host to answer. An event without a handler is not raised,
// and what comes with it stays as it is.
struct OleDragDropEvents {
    std::function<void(std::int32_t& Effect)> OLECompleteDrag;
    std::function<void(DragData& Data, std::int32_t& Effect, std::int16_t Button,
                       std::int16_t Shift, float& X, float& Y)>
        OLEDragDrop;
    std::function<void(DragData& Data, std::int32_t& Effect, std::int16_t Button,
                       std::int16_t Shift, float& X, float& Y, std::int16_t State)>
        OLEDragOver;
    std::function<void(std::int32_t& Effect, bool& DefaultCursors)> OLEGiveFeedback;
    std::function<void(DragSourceData& Data, std::int16_t DataFormat)> OLESetData;
    std::function<void(DragSourceData& Data, std::int32_t& AllowedEffects)> OLEStartDrag;
};

// Raises the events of a host for the notifications of one of its windows.
class OleDragDropForwarder final : public OleDragDropSink {
  public:
    // `events` is not owned and outlives the forwarder.
    explicit OleDragDropForwarder(const OleDragDropEvents& events) : events_(events) {}

    // Where the notified window lies in the host; added to every position (single precision).
    void SetOrigin(float left, float top);

    void CompleteDrag(std::int32_t& effect) override;
    void DragDrop(DragData& data, std::int32_t& effect, std::int16_t button, std::int16_t shift,
                  float& x, float& y) override;
    void DragOver(DragData& data, std::int32_t& effect, std::int16_t button, std::int16_t shift,
                  float& x, float& y, std::int16_t state) override;
    void GiveFeedback(std::int32_t& effect, bool& default_cursors) override;
    void SetData(DragSourceData& data, std::int16_t format) override;
    void StartDrag(DragSourceData& data, std::int32_t& allowed_effects) override;

  private:
    const OleDragDropEvents& events_;
    float left_ = 0;
    float top_ = 0;
};

// The decision of every window that takes files, while they are over it: true, with an effect the
// source allows, when the data holds at least one file; else false with no effect. A move only from
// a source that allows nothing else.
bool AcceptFiles(DragData& data, std::int32_t& effect);
// The same decision when they are dropped. A move becomes no effect: a source that hears of a move
// deletes its files.
bool AcceptDroppedFiles(DragData& data, std::int32_t& effect);

// Button and Shift from the key state that OLE hands to targets.
[[nodiscard]] std::int16_t ButtonFromKeyState(std::uint32_t key_state);
[[nodiscard]] std::int16_t ShiftFromKeyState(std::uint32_t key_state);

// What a drag does next, seen from its source.
enum class DragStep { kContinue, kDrop, kCancel };

// A drag drops when every button that started it (`drag_buttons`, as in Button) is up, and is
// cancelled by Esc or by pressing another button.
[[nodiscard]] DragStep NextDragStep(bool escape_pressed, std::uint32_t key_state,
                                    std::int16_t drag_buttons);

}  // namespace tidemark
