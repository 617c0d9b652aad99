#include "mainwindow/adding_queue.h"

#include <algorithm>
#include <utility>

#include "lists/keyed_image_list.h"

namespace tidemark {
namespace {

// A few paths appear at once, however slow the disk is. Each takes two steps.
constexpr std::size_t kLeastStepsOfAppend = 20;

}  // namespace

AddingQueue::AddingQueue(const Platform& platform, TidemarkItemCollection& items, ListModel& rows,
                         KeyedImageList& images, std::function<void(bool stamp_due)> on_batch_done)
    : platform_(platform),
      items_(items),
      rows_(rows),
      images_(images),
      on_batch_done_(std::move(on_batch_done)),
      timer_(platform.timers.NewTimer(TickKind::kBrief)) {
    timer_->SetSink(this);
}

void AddingQueue::Append(std::vector<std::string> paths) {
    batches_.push_back(std::make_shared<Batch>(Batch{.paths = std::move(paths)}));
    RunSlice(Caller::kAppend);
}

void AddingQueue::Clear() {
    batches_.clear();
    selected_rows_ = 0;
    timer_->SetEnabled(false);
}

void AddingQueue::StampWhenListed() {
    if (!batches_.empty()) {
        batches_.back()->stamp = true;
    }
}

void AddingQueue::CancelStamp() {
    for (const std::shared_ptr<Batch>& batch : batches_) {
        batch->stamp = false;
    }
}

bool AddingQueue::StampWaits() const {
    return std::any_of(batches_.begin(), batches_.end(),
                       [](const std::shared_ptr<Batch>& batch) { return batch->stamp; });
}

void AddingQueue::LeaveOut(const std::vector<std::string>& keys) {
    for (const std::shared_ptr<Batch>& batch : batches_) {
        batch->left_out.insert(keys.begin(), keys.end());
    }
}

void AddingQueue::SelectWhenListed() {
    selected_rows_ = batches_.empty() ? 0 : rows_.Count();
}

bool AddingQueue::SelectsAll() const {
    return selected_rows_ != 0 && rows_.SelectedCount() == selected_rows_;
}

void AddingQueue::RunSlice(Caller caller) {
    // Asking the shell for an icon can let messages run, and a tick or a drop come in here.
    if (in_slice_) {
        return;
    }
    struct InSlice {
        explicit InSlice(AddingQueue& queue) : queue_(queue) { queue_.in_slice_ = true; }
        InSlice(const InSlice&) = delete;
        InSlice& operator=(const InSlice&) = delete;
        ~InSlice() {
            queue_.in_slice_ = false;
            queue_.timer_->SetEnabled(!queue_.batches_.empty());
        }

      private:
        AddingQueue& queue_;
    };
    const std::size_t least = caller == Caller::kAppend ? kLeastStepsOfAppend : 1;
    bool stamp_due = false;
    bool batch_done = false;
    {
        const InSlice in_slice(*this);
        platform_.pump.StartSlice();
        for (std::size_t steps = 0; !batches_.empty() && !stamp_due; ++steps) {
            if (steps >= least && platform_.pump.SliceIsOver()) {
                break;
            }
            // Held here: a message can clear the queue.
            const std::shared_ptr<Batch> batch = batches_.front();
            bool more = false;
            try {
                more = Step(*batch);
            } catch (...) {
                // What goes wrong with one path goes wrong with the next: one report is enough. The
                // rows there are get counted.
                if (batch->listed == batch->paths.size()) {
                    std::erase(batches_, batch);
                }
                batch->paths.resize(batch->listed);
                throw;
            }
            if (!more && batch->stamp && caller == Caller::kAppend) {
                break;  // a stamp takes long, and who called Append waits
            }
            if (!more && std::erase(batches_, batch) != 0) {
                batch_done = true;
                stamp_due = batch->stamp;
            }
        }
        if (batches_.empty() && SelectsAll()) {
            rows_.SelectAll();
        }
        selected_rows_ = batches_.empty() ? 0 : selected_rows_;
    }
    if (batch_done) {
        on_batch_done_(stamp_due);
    }
}

bool AddingQueue::Step(Batch& batch) {
    if (batch.listed < batch.paths.size()) {
        List(batch);
        return true;
    }
    if (batch.counted < batch.added.size()) {
        const std::shared_ptr<TidemarkItem> item = std::move(batch.added[batch.counted++]);
        // The user may have removed it, or Stamp or Recount counted it.
        if (items_.Item(item->RootItem()) == item && !item->CountInProgress() &&
            !item->CountComplete()) {
            item->Count();
        }
        return true;
    }
    return false;
}

void AddingQueue::List(Batch& batch) {
    const std::string path = std::move(batch.paths[batch.listed++]);
    std::shared_ptr<TidemarkItem> item = items_.Add(path, &rows_, &images_);
    if (item == nullptr) {
        return;
    }
    const std::string& listed_as = item->RootItem();
    if (!batch.left_out.empty() && batch.left_out.contains(platform_.locale.LowerCase(listed_as))) {
        items_.Remove(listed_as, &rows_);
        return;
    }
    batch.added.push_back(std::move(item));
}

}  // namespace tidemark
