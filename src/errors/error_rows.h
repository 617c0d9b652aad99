#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "engine/stamp_error.h"
#include "lists/column_sort.h"
#include "lists/keyed_image_list.h"
#include "lists/list_model.h"
#include "platform/platform.h"
#include "platform/timer_object.h"

namespace tidemark {

// What the errors window shows beside its rows.
class ErrorsDisplay {
  public:
    virtual void SetStatusText(const std::string& text) = 0;
    // Whether the list draws what changes. Switching it on repaints the list.
    virtual void SetListRedraw(bool on) = 0;

  protected:
    ~ErrorsDisplay() = default;
};

// The columns of the errors window's list.
enum class ErrorColumn : std::size_t { kName = 0, kError = 1, kDescription = 2 };

// The rows of the errors window: one for each record of a collection of errors, keyed by its path.
// They are filled in by a tick of a timer, after the window had its chance to paint, and pending
// messages run between records. Anything may be called in there; a fill that is no longer wanted
// leaves at the next record.
//
// A path may be in a collection once only: a repeated one, whatever its letter case, throws
// ProgramError (duplicate key) out of the tick. A first path without an icon throws ProgramError
// (image list not initialised), as long as no other path gave one. The rows shown so far stay, and
// the next collection starts clean.
class ErrorRows final : public std::enable_shared_from_this<ErrorRows>, private ITimerObjectSink {
  public:
    static constexpr std::uint32_t kFillDelay = 100;  // milliseconds

    // The parts, images and display outlive the object or its Detach.
    [[nodiscard]] static std::shared_ptr<ErrorRows> Create(const Platform& platform,
                                                           KeyedImageList& images,
                                                           ErrorsDisplay& display);
    ErrorRows(const ErrorRows&) = delete;
    ErrorRows& operator=(const ErrorRows&) = delete;

    [[nodiscard]] ListModel& List() { return list_; }

    // Clears the rows and, when there are records, has them filled in soon. The collection is kept
    // until the next call.
    void AddFromCollection(StampErrorList errors);
    // Drops a fill that waits; one that runs ends after its current record. The rows stay.
    void Cancel();
    // The window is there, for the first time or again. The rows before are gone.
    void Attach();
    // The window goes: nothing it lent is used any more, also by a fill on the stack.
    void Detach();

    // Sorts the rows by a column whose header was clicked.
    void ColumnClick(ErrorColumn column);
    [[nodiscard]] const ColumnSort& Sorting() const { return sort_; }

  private:
    class Fill;
    class RedrawOff;

    ErrorRows(const Platform& platform, KeyedImageList& images, ErrorsDisplay& display);

    void ITimerObjectSink_Timer() override;
    void RewriteNumbers(std::string (*form)(std::int64_t));

    Platform platform_;
    KeyedImageList& images_;
    ErrorsDisplay& display_;
    ListModel list_;
    std::shared_ptr<const StampErrorList> errors_;
    ColumnSort sort_;
    std::unique_ptr<TimerObject> Timer1;
    bool cancelled_ = false;
    bool detached_ = false;
    std::uint64_t collections_ = 0;  // handed over so far: tells a fill that a newer one came
};

}  // namespace tidemark
