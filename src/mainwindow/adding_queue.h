#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "engine/tidemark_item_collection.h"
#include "lists/list_model.h"
#include "platform/platform.h"

namespace tidemark {

class KeyedImageList;

// The paths that were handed to the window and are not listed or counted yet. The queue works in
// slices of about 10 ms, the first inside Append and the others in ticks of its own timer, so that
// neither the window nor the program that the paths came from waits for thousands of them. What the
// user does between two slices acts as if every path queued before it were listed already.
class AddingQueue final : private ITimerObjectSink {
  public:
    // Nothing is owned; all of it must outlive the queue. `on_batch_done` is called when every path
    // of one Append is listed and counting; `stamp_due`, in ticks only, says that StampWhenListed
    // was called for it.
    AddingQueue(const Platform& platform, TidemarkItemCollection& items, ListModel& rows,
                KeyedImageList& images, std::function<void(bool stamp_due)> on_batch_done);
    AddingQueue(const AddingQueue&) = delete;
    AddingQueue& operator=(const AddingQueue&) = delete;
    ~AddingQueue() = default;

    // Queues the paths and works on the queue for one slice. A batch of up to ten paths is done
    // when this returns, unless others wait before it.
    void Append(std::vector<std::string> paths);
    [[nodiscard]] bool Empty() const { return batches_.empty(); }
    // Forgets every path, and the commands that wait for them.
    void Clear();

    // Stamp was pressed. It waits for the paths that are queued now; later ones are not covered.
    void StampWhenListed();
    void CancelStamp();
    [[nodiscard]] bool StampWaits() const;

    // The rows with these keys were removed: the same paths, queued before, are not listed again.
    void LeaveOut(const std::vector<std::string>& keys);

    // Every row was selected. Rows of the paths queued now become selected, too, unless the
    // selection changes before they are listed.
    void SelectWhenListed();
    [[nodiscard]] bool SelectsAll() const;

  private:
    // What one Append queued.
    struct Batch {
        std::vector<std::string> paths;
        std::size_t listed = 0;  // paths dealt with
        std::vector<std::shared_ptr<TidemarkItem>> added{};
        std::size_t counted = 0;                     // of `added`
        std::unordered_set<std::string> left_out{};  // keys
        bool stamp = false;
    };

    enum class Caller { kAppend, kTick };
    void ITimerObjectSink_Timer() override { RunSlice(Caller::kTick); }
    void RunSlice(Caller caller);
    // Lists or counts one path of the batch; false when all is done.
    bool Step(Batch& batch);
    void List(Batch& batch);

    Platform platform_;
    TidemarkItemCollection& items_;
    ListModel& rows_;
    KeyedImageList& images_;
    std::function<void(bool stamp_due)> on_batch_done_;
    std::unique_ptr<TimerObject> timer_;
    std::deque<std::shared_ptr<Batch>> batches_;
    bool in_slice_ = false;
    std::size_t selected_rows_ = 0;  // when SelectWhenListed was called; 0 if it was not
};

}  // namespace tidemark
