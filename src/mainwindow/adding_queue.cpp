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
      timer_(platform.timers.NewTimer(TickKind::kBrief)),
      stamp_timer_(platform.timers.NewTimer(TickKind::kLong)) {
    timer_->SetSink(this);
    stamp_timer_->SetSink(&stamp_tick_);
}

void AddingQueue::Append(std::vector<std::string> paths) {
    batches_.push_back(std::make_shared<Batch>(Batch{.paths = std::move(paths)}));
    RunSlice(kLeastStepsOfAppend);
}

void AddingQueue::Clear() {
    batches_.clear();
    last_selected_ = nullptr;
    timer_->SetEnabled(false);
    stamp_timer_->SetEnabled(false);
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
    last_selected_ = batches_.empty() ? nullptr : batches_.back();
    selection_version_ = rows_.SelectionVersion();
}

bool AddingQueue::SelectsAll() const {
    return last_selected_ != nullptr && rows_.SelectionVersion() == selection_version_;
}

void AddingQueue::ForgetSelected() {
    const auto last = std::find(batches_.begin(), batches_.end(), last_selected_);
    if (last != batches_.end()) {
        batches_.erase(batches_.begin(), last + 1);
        stamp_timer_->SetEnabled(false);
        timer_->SetEnabled(!batches_.empty());
    }
    last_selected_ = nullptr;
}

void AddingQueue::RunSlice(std::size_t least_steps) {
    // Asking the shell for an icon can let messages run, and a tick or a drop come in here.
    if (in_slice_ || stamp_timer_->Enabled()) {
        return;
    }
    struct InSlice {
        explicit InSlice(AddingQueue& queue) : queue_(queue) { queue_.in_slice_ = true; }
        InSlice(const InSlice&) = delete;
        InSlice& operator=(const InSlice&) = delete;
        ~InSlice() {
            queue_.in_slice_ = false;
            queue_.timer_->SetEnabled(!queue_.batches_.empty() && !queue_.stamp_timer_->Enabled());
        }

      private:
        AddingQueue& queue_;
    };
    bool batch_done = false;
    {
        const InSlice in_slice(*this);
        platform_.pump.StartSlice();
        for (std::size_t steps = 0; !batches_.empty(); ++steps) {
            if (steps >= least_steps && platform_.pump.SliceIsOver()) {
                break;
            }
            // Held here: a message can clear the queue.
            const std::shared_ptr<Batch> batch = batches_.front();
            if (Step(*batch) || batches_.empty() || batches_.front() != batch) {
                continue;
            }
            if (batch == last_selected_) {
                if (SelectsAll()) {
                    rows_.SelectAll();
                }
                last_selected_ = nullptr;
            }
            if (batch->stamp) {
                stamp_timer_->SetEnabled(true);
                break;
            }
            batches_.pop_front();
            batch_done = true;
        }
    }
    if (batch_done) {
        on_batch_done_(/*stamp_due=*/false);
    }
}

void AddingQueue::StartStamp() {
    stamp_timer_->SetEnabled(false);
    if (batches_.empty()) {
        return;
    }
    const bool stamp = batches_.front()->stamp;  // unless it was cancelled since
    batches_.pop_front();
    timer_->SetEnabled(!batches_.empty());
    on_batch_done_(stamp);
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
    std::shared_ptr<TidemarkItem> item;
    try {
        item = items_.Add(path, &rows_, &images_);
    } catch (...) {
        // What goes wrong with one path goes wrong with the next: one report is enough. The rows
        // there are get counted.
        batch.paths.resize(batch.listed);
        throw;
    }
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
