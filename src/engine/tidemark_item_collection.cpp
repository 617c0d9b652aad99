#include "engine/tidemark_item_collection.h"

#include <algorithm>
#include <utility>

#include "lists/list_helpers.h"
#include "platform/checked_arithmetic.h"

namespace tidemark {
namespace {

std::int32_t CountedBy(const TidemarkItem& item) {
    return CheckedAdd(item.FileCount(), item.FolderCount());
}

std::int32_t StampedBy(const TidemarkItem& item) {
    return CheckedAdd(item.StampedFileCount(), item.StampedFolderCount());
}

}  // namespace

std::size_t TidemarkItemCollection::Slots::Seek(std::size_t position, std::uint64_t number) const {
    // Slots only ever move towards the front, so the guess is right or too far back.
    const bool guess_right = position <= in_order.size() &&
                             (position == 0 || in_order[position - 1].number < number) &&
                             (position == in_order.size() || in_order[position].number >= number);
    if (!guess_right) {
        const auto found = std::lower_bound(
            in_order.begin(), in_order.end(), number,
            [](const Slot& slot, std::uint64_t wanted) { return slot.number < wanted; });
        position = static_cast<std::size_t>(found - in_order.begin());
    }
    while (position < in_order.size() && in_order[position].item == nullptr) {
        ++position;
    }
    return position;
}

std::size_t TidemarkItemCollection::Slots::PositionOf(std::uint64_t number) const {
    if (in_order.empty() || number < in_order.front().number) {
        return in_order.size();
    }
    // Where it is as long as none before it was removed.
    const std::size_t position =
        Seek(static_cast<std::size_t>(number - in_order.front().number), number);
    return position < in_order.size() && in_order[position].number == number ? position
                                                                             : in_order.size();
}

TidemarkItemCollection::Slot& TidemarkItemCollection::Slots::At(std::uint64_t number) {
    return in_order[PositionOf(number)];
}

TidemarkItem* TidemarkItemCollection::Slots::Find(std::uint64_t number) {
    const std::size_t position = PositionOf(number);
    return position < in_order.size() ? in_order[position].item.get() : nullptr;
}

TidemarkItemCollection::Iterator::Iterator(std::shared_ptr<const Slots> slots,
                                           std::uint64_t end_number)
    : slots_(std::move(slots)), end_number_(end_number) {
    Seek(0);
}

TidemarkItemCollection::Iterator& TidemarkItemCollection::Iterator::operator++() {
    ++position_;
    Seek(number_ + 1);
    return *this;
}

void TidemarkItemCollection::Iterator::Seek(std::uint64_t number) {
    position_ = slots_->Seek(position_, number);
    if (position_ == slots_->in_order.size() || slots_->in_order[position_].number >= end_number_) {
        item_ = nullptr;
        return;
    }
    number_ = slots_->in_order[position_].number;
    item_ = slots_->in_order[position_].item;
}

TidemarkItemCollection::TidemarkItemCollection(const Platform& platform)
    : platform_(platform),
      slots_(std::make_shared<Slots>()),
      icon_keys_(platform.file_system, platform.locale) {}

TidemarkItemCollection::~TidemarkItemCollection() {
    Clear(nullptr);
}

template <typename Predicate>
bool TidemarkItemCollection::Any(Predicate predicate) const {
    return std::any_of(
        slots_->in_order.begin(), slots_->in_order.end(),
        [&predicate](const Slot& slot) { return slot.item != nullptr && predicate(*slot.item); });
}

bool TidemarkItemCollection::Busy() const {
    return Any(
        [](const TidemarkItem& item) { return item.CountInProgress() || item.StampInProgress(); });
}

bool TidemarkItemCollection::BusyCounting() const {
    return Any([](const TidemarkItem& item) { return item.CountInProgress(); });
}

bool TidemarkItemCollection::BusyStamping() const {
    return Any([](const TidemarkItem& item) { return item.StampInProgress(); });
}

std::int32_t TidemarkItemCollection::CountedItems() const {
    std::int32_t sum = 0;
    for (const Slot& slot : slots_->in_order) {
        if (slot.item != nullptr) {
            sum = CheckedAdd(sum, CountedBy(*slot.item));
        }
    }
    return sum;
}

std::int32_t TidemarkItemCollection::StampedItems() const {
    std::int32_t sum = 0;
    for (const Slot& slot : slots_->in_order) {
        if (slot.item != nullptr) {
            sum = CheckedAdd(sum, StampedBy(*slot.item));
        }
    }
    return sum;
}

TidemarkItemCollection::Totals TidemarkItemCollection::TotalsOfWork() const {
    Totals totals;
    totals.stamp_complete = Count() > 0;
    for (const Slot& slot : slots_->in_order) {
        if (slot.item == nullptr) {
            continue;
        }
        const TidemarkItem& item = *slot.item;
        totals.counting = totals.counting || item.CountInProgress();
        totals.stamping = totals.stamping || item.StampInProgress();
        totals.stamp_complete = totals.stamp_complete && item.StampComplete();
        totals.counted = CheckedAdd(totals.counted, CountedBy(item));
        totals.stamped = CheckedAdd(totals.stamped, StampedBy(item));
    }
    return totals;
}

bool TidemarkItemCollection::AnyCountComplete() const {
    return Any([](const TidemarkItem& item) { return item.CountComplete(); });
}

bool TidemarkItemCollection::AnyStampCompleteWithNoErrors() const {
    return Any([](const TidemarkItem& item) { return item.StampComplete() && !item.HasErrors(); });
}

bool TidemarkItemCollection::StampComplete() const {
    return Count() > 0 && !Any([](const TidemarkItem& item) { return !item.StampComplete(); });
}

bool TidemarkItemCollection::ErrorsExist() const {
    return Any([](const TidemarkItem& item) { return item.HasErrors(); });
}

StampErrorList TidemarkItemCollection::ErrorList() const {
    // Records that name the same path are kept: whoever shows the list relies on seeing each one.
    StampErrorList errors;
    for (const Slot& slot : slots_->in_order) {
        if (slot.item != nullptr && slot.item->HasErrors()) {
            const auto records = slot.item->StampErrors();
            errors.insert(errors.end(), records->begin(), records->end());
        }
    }
    return errors;
}

std::shared_ptr<TidemarkItem> TidemarkItemCollection::Add(const std::string& path, ListModel* list,
                                                          KeyedImageList* images) {
    if (!PathExists(platform_.file_system, path)) {
        return nullptr;
    }
    std::shared_ptr<TidemarkItem> item = TidemarkItem::Create(platform_);
    item->SetRootItem(path);
    if (item->RootItem().empty()) {
        return nullptr;  // gone since it was looked at
    }
    if (std::shared_ptr<TidemarkItem> held = Item(item->RootItem())) {
        item = std::move(held);
    } else {
        Append(platform_.locale.LowerCase(item->RootItem()), item);
    }
    ShowItemRow(*item, list, images);
    return item;
}

void TidemarkItemCollection::Append(std::string key, std::shared_ptr<TidemarkItem> item) {
    slots_->in_order.push_back({next_number_, std::move(item)});
    numbers_by_key_.emplace(std::move(key), next_number_);
    ++next_number_;
}

void TidemarkItemCollection::ShowItemRow(TidemarkItem& item, ListModel* list,
                                         KeyedImageList* images) {
    if (list == nullptr) {
        return;
    }
    const std::string& path = item.RootItem();
    const ListRow& row = FindOrAddRow(*list, path, path);
    list->SetItemNumber(row, NumberOf(path));
    list->SetSubItem(row, 0, item.CountString());
    list->SetSubItem(row, 1, item.StatusString());
    list->SetHoldsItems(true);
    if (images == nullptr) {
        return;
    }
    const std::string& icon_key = icon_keys_.Of(path, "");
    AddIcon(*images, icon_key, path);
    // A list takes no image list that is still without a picture.
    if (list->SmallIcons() == nullptr && images->Count() > 0) {
        list->AttachSmallIcons(*images);
    }
    // Asking the shell may let messages run, and the row may be gone.
    if (const ListRow* still_there = FindRow(*list, path)) {
        list->SetSmallIcon(*still_there, RowIcon(*images, icon_key));
    }
}

void TidemarkItemCollection::RemoveItemRow(const TidemarkItem& item, ListModel* list) {
    if (list == nullptr) {
        return;
    }
    list->Remove(item.RootItem());
    if (list->Count() == 0) {
        list->SetHoldsItems(false);
    }
}

// To look up each row by its text and to take it out by itself would be the larger part of emptying
// a list.
void TidemarkItemCollection::RemoveItemRows(ListModel& list) {
    std::size_t position = 0;
    while (position < list.Count() && ItemOf(list.At(position)) != nullptr) {
        ++position;
    }
    if (position == list.Count()) {
        list.Clear();
        list.SetHoldsItems(false);
        return;
    }
    for (const std::shared_ptr<TidemarkItem>& item : *this) {
        RemoveItemRow(*item, &list);
    }
}

void TidemarkItemCollection::Remove(const std::string& key, ListModel* list) {
    const std::shared_ptr<TidemarkItem> item = Item(key);
    if (item == nullptr) {
        return;
    }
    // Now: the key may be the row's own, which goes with it.
    const std::string lower_key = platform_.locale.LowerCase(key);
    item->CancelCount();
    item->CancelStamp();
    RemoveItemRow(*item, list);
    Take(lower_key);
}

// Takes the item under the key out of the slots. Closing the gaps only when they are half of all
// makes many removals cost one pass in all.
void TidemarkItemCollection::Take(const std::string& key) {
    const auto number = numbers_by_key_.find(key);
    if (number == numbers_by_key_.end()) {
        return;
    }
    std::vector<Slot>& in_order = slots_->in_order;
    // The caller holds the item, so nothing is destroyed in here.
    slots_->At(number->second).item = nullptr;
    numbers_by_key_.erase(number);
    if (in_order.size() >= 2 * (numbers_by_key_.size() + 1)) {
        std::erase_if(in_order, [](const Slot& slot) { return slot.item == nullptr; });
    }
}

void TidemarkItemCollection::Clear(ListModel* list) {
    for (const std::shared_ptr<TidemarkItem>& item : *this) {
        item->CancelCount();
        item->CancelStamp();
    }
    if (list != nullptr && Count() != 0) {
        RemoveItemRows(*list);
    }
    numbers_by_key_.clear();
    // Destroyed last, when the collection is whole again.
    const std::vector<Slot> released = std::exchange(slots_->in_order, {});
}

std::shared_ptr<TidemarkItem> TidemarkItemCollection::Item(const std::string& key) const {
    const std::uint64_t number = NumberOf(key);
    return number == 0 ? nullptr : slots_->At(number).item;
}

// Mostly a row's own key is asked for, which is in lower case already.
std::uint64_t TidemarkItemCollection::NumberOf(const std::string& key) const {
    auto number = numbers_by_key_.find(key);
    if (number == numbers_by_key_.end()) {
        number = numbers_by_key_.find(platform_.locale.LowerCase(key));
    }
    return number == numbers_by_key_.end() ? 0 : number->second;
}

TidemarkItem* TidemarkItemCollection::ItemOf(const ListRow& row) const {
    if (TidemarkItem* const item = slots_->Find(row.item_number)) {
        return item;
    }
    return Item(row.key).get();
}

bool TidemarkItemCollection::Exists(const std::string& key) const {
    return Item(key) != nullptr;
}

}  // namespace tidemark
