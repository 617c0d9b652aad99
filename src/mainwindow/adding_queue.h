#pragma once

#include <cstddef>
#include <cstdint>
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
    // of one Append is listed and counting. `stamp_due` says that StampWhenListed was called for
    // the batch; the call then comes from a long tick.
    AddingQueue(const Platform& platform, TidemarkItemCollection& items, ListModel& rows,
                KeyedImageList& images, std::function<void(bool stamp_due)> on_batch_done);
    AddingQueue(const AddingQueue&) = delete;
    AddingQueue& operator=(const AddingQueue&) = delete;
    ~AddingQueue() = default;

    // Queues the paths and works on the queue for one slice. A batch of up to ten paths is done
    // when this returns, unless other batches are queued before it.
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
    // Forgets the paths that would become selected.
    void ForgetSelected();

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

    // Stamping takes long, so it has a tick of that kind.
    struct StampTick final : ITimerObjectSink {
        explicit StampTick(AddingQueue& owner) : queue(owner) {}
        void ITimerObjectSink_Timer() override { queue.StartStamp(); }
        AddingQueue& queue;
    };

    void ITimerObjectSink_Timer() override { RunSlice(/*least_steps=*/1); }
    void RunSlice(std::size_t least_steps);
    void StartStamp();
    // Lists or counts one path of the batch; false when all is done.
    bool Step(Batch& batch);
    void List(Batch& batch);

    Platform platform_;
    TidemarkItemCollection& items_;
    ListModel& rows_;
    KeyedImageList& images_;
    std::function<void(bool stamp_due)> on_batch_done_;
    std::unique_ptr<TimerObject> timer_;
    StampTick stamp_tick_{*this};
    std::unique_ptr<TimerObject> stamp_timer_;  // enabled once the first batch waits for its stamp
    std::deque<std::shared_ptr<Batch>> batches_;
    bool in_slice_ = false;
    // The last batch that SelectWhenListed covers, and the selection that it found.
    std::shared_ptr<const Batch> last_selected_;
    std::uint64_t selection_version_ = 0;
};

}  // namespace tidemark
