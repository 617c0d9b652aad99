#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/stamp_error.h"
#include "engine/tidemark_item.h"
#include "lists/icon_keys.h"
#include "platform/platform.h"

namespace tidemark {

class KeyedImageList;
class ListModel;
struct ListRow;

// The user's list: items in the order they were added, each under its lower-cased path, and the
// sums and questions that a window polls. Starts no work itself.
//
// Lists and image lists handed to its operations may be null; then only the collection changes.
// Look-ups and removals by key take constant time on average, an aggregate one pass.
class TidemarkItemCollection {
    // The items in order. A removed one leaves a gap until half of them are gaps.
    struct Slot {
        std::uint64_t number = 0;  // ascending, never used twice
        std::shared_ptr<TidemarkItem> item;
    };
    struct Slots {
        std::vector<Slot> in_order;
        // The first slot from `position` on (a guess) that is numbered `number` or later and holds
        // an item; in_order.size() when there is none.
        [[nodiscard]] std::size_t Seek(std::size_t position, std::uint64_t number) const;
        // Where the item under this number is; in_order.size() when there is none any more.
        [[nodiscard]] std::size_t PositionOf(std::uint64_t number) const;
        // The slot with this number, which is there.
        [[nodiscard]] Slot& At(std::uint64_t number);
        // The item under this number; null when there is none any more.
        [[nodiscard]] TidemarkItem* Find(std::uint64_t number);
    };

  public:
    // Walks over the items in order. Whatever happens to the collection meanwhile, it stays good:
    // items removed are not met any more, items added are, and the one at hand lives on.
    class Iterator {
      public:
        using iterator_category = std::input_iterator_tag;
        using value_type = std::shared_ptr<TidemarkItem>;
        using difference_type = std::ptrdiff_t;
        using pointer = const value_type*;
        using reference = const value_type&;

        reference operator*() const { return item_; }
        pointer operator->() const { return &item_; }
        Iterator& operator++();
        void operator++(int) { ++*this; }
        friend bool operator==(const Iterator& at, std::default_sentinel_t /*end*/) {
            return at.item_ == nullptr;
        }

      private:
        friend class TidemarkItemCollection;
        Iterator(std::shared_ptr<const Slots> slots, std::uint64_t end_number);
        void Seek(std::uint64_t number);

        std::shared_ptr<const Slots> slots_;
        std::uint64_t end_number_;  // items numbered so or higher are not met
        std::size_t position_ = 0;
        std::uint64_t number_ = 0;
        std::shared_ptr<TidemarkItem> item_;
    };
    struct Range {
        Iterator first;
        [[nodiscard]] Iterator begin() const { return first; }
        [[nodiscard]] std::default_sentinel_t end() const { return {}; }
    };

    // The platform's parts outlive the collection and its items.
    explicit TidemarkItemCollection(const Platform& platform);
    // Cancels the work of all items first.
    ~TidemarkItemCollection();
    TidemarkItemCollection(const TidemarkItemCollection&) = delete;
    TidemarkItemCollection& operator=(const TidemarkItemCollection&) = delete;

    // Whether any item counts or stamps, has it pending included.
    [[nodiscard]] bool Busy() const;
    [[nodiscard]] bool BusyCounting() const;
    [[nodiscard]] bool BusyStamping() const;

    // Files and folders counted and stamped by all items. Throw ProgramError (overflow) when 32
    // bits cannot hold the sum.
    [[nodiscard]] std::int32_t CountedItems() const;
    [[nodiscard]] std::int32_t StampedItems() const;

    // The five of them that a display needs, in one pass over all items. TotalsOfWork throws as the
    // sums do.
    struct Totals {
        bool stamping = false;
        bool counting = false;
        bool stamp_complete = false;
        std::int32_t counted = 0;
        std::int32_t stamped = 0;
    };
    [[nodiscard]] Totals TotalsOfWork() const;

    [[nodiscard]] bool AnyCountComplete() const;
    [[nodiscard]] bool AnyStampCompleteWithNoErrors() const;
    // Whether every item's stamp is complete; false without items.
    [[nodiscard]] bool StampComplete() const;
    [[nodiscard]] bool ErrorsExist() const;
    // Every record of every item, in item order and then as they happened; records that name the
    // same path are all there. The records are shared with the items.
    [[nodiscard]] StampErrorList ErrorList() const;

    // Adds an item for an existing file or folder, or finds the one there is, and brings its row
    // and icon into the lists. Null for a path that does not exist.
    std::shared_ptr<TidemarkItem> Add(const std::string& path, ListModel* list,
                                      KeyedImageList* images);
    // Cancels an item's work and removes it and its row. An unknown key is ignored.
    void Remove(const std::string& key, ListModel* list);
    // Removes every item and its row, with its work cancelled first.
    void Clear(ListModel* list);

    // The item under the lower-cased key; null when there is none.
    [[nodiscard]] std::shared_ptr<TidemarkItem> Item(const std::string& key) const;
    // What Item finds under the row's key, without a look-up by text for rows that the collection
    // made. Null when there is none; valid until messages run.
    [[nodiscard]] TidemarkItem* ItemOf(const ListRow& row) const;
    [[nodiscard]] bool Exists(const std::string& key) const;
    [[nodiscard]] std::size_t Count() const { return numbers_by_key_.size(); }

    // Enumeration in the order of adding.
    [[nodiscard]] Range NewEnum() const { return {begin()}; }
    [[nodiscard]] Iterator begin() const { return {slots_, kNoEnd}; }
    [[nodiscard]] std::default_sentinel_t end() const { return {}; }
    // The same for the items that are there now: those added later are not met.
    [[nodiscard]] Range ItemsNow() const { return {{slots_, next_number_}}; }

    // The interface's events. No operation raises any of them: observers poll.
    struct {
        std::function<void()> CountStarted;
        std::function<void()> CountProgress;
        std::function<void()> StampStarted;
        std::function<void()> StampProgress;
        std::function<void()> Cancelled;
    } events;

  private:
    static constexpr std::uint64_t kNoEnd = std::numeric_limits<std::uint64_t>::max();

    template <typename Predicate>
    [[nodiscard]] bool Any(Predicate predicate) const;
    [[nodiscard]] std::uint64_t NumberOf(const std::string& key) const;  // 0 when it is unknown
    void Append(std::string key, std::shared_ptr<TidemarkItem> item);
    void Take(const std::string& key);
    void ShowItemRow(TidemarkItem& item, ListModel* list, KeyedImageList* images);
    void RemoveItemRow(const TidemarkItem& item, ListModel* list);
    void RemoveItemRows(ListModel& list);  // of all items

    Platform platform_;
    // Shared with the iterators under way.
    std::shared_ptr<Slots> slots_;
    std::unordered_map<std::string, std::uint64_t> numbers_by_key_;
    std::uint64_t next_number_ = 1;
    IconKeys icon_keys_;
};

}  // namespace tidemark
