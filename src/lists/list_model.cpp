#include "lists/list_model.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "lists/keyed_image_list.h"
#include "platform/program_error.h"

namespace tidemark {

namespace {

const std::string& CellText(const ListRow& row, std::size_t column) {
    return column == 0 ? row.text : row.sub_items.at(column - 1);
}

// A row on its way through a sort. Paths of one list mostly begin alike, so the bytes after what
// all keys share are kept at hand: few comparisons have to go to the keys themselves.
struct SortEntry {
    std::uint64_t lead = 0;
    std::size_t slot = 0;
};

// How many bytes all texts begin with alike.
template <typename Text>
std::size_t SharedPrefix(const std::vector<Text>& texts) {
    if (texts.empty()) {
        return 0;
    }
    const std::string_view first = texts.front();
    std::size_t shared = first.size();
    for (const std::string_view text : texts) {
        const std::size_t limit = std::min(shared, text.size());
        shared = 0;
        while (shared < limit && text[shared] == first[shared]) {
            ++shared;
        }
    }
    return shared;
}

std::uint64_t LeadingBytes(const std::string& text, std::size_t from) {
    std::uint64_t lead = 0;
    for (std::size_t i = 0; i < sizeof lead; ++i) {
        const std::size_t at = from + i;
        lead = (lead << 8U) | (at < text.size() ? static_cast<unsigned char>(text[at]) : 0U);
    }
    return lead;
}

}  // namespace

const ListRow& ListModel::At(std::size_t position) const {
    CloseGaps();
    return *slots_.at(position);
}

const ListRow* ListModel::Find(const std::string& key) const {
    const auto found = Look(key);
    return found == rows_by_key_.end() ? nullptr : found->second;
}

// Mostly a row's own key is looked for, which is in lower case already.
ListModel::RowsByKey::const_iterator ListModel::Look(const std::string& key) const {
    const auto found = rows_by_key_.find(key);
    return found != rows_by_key_.end() ? found : rows_by_key_.find(locale_.LowerCase(key));
}

const ListRow& ListModel::Add(const std::string& key, const std::string& text) {
    auto row = std::make_unique<ListRow>();
    row->key = locale_.LowerCase(key);
    row->text = text;
    row->slot_ = slots_.size();
    slots_.push_back(std::move(row));
    if (!rows_by_key_.try_emplace(slots_.back()->key, slots_.back().get()).second) {
        slots_.pop_back();
        throw ProgramError(error_number::kDuplicateKey, "Key is not unique in collection");
    }
    if (observer_ != nullptr) {
        observer_->RowAppended();
    }
    return *slots_.back();
}

bool ListModel::Remove(const std::string& key) {
    const auto found = Look(key);
    if (found == rows_by_key_.end()) {
        return false;
    }
    ListRow& row = *found->second;
    Select(row, false);
    rows_by_key_.erase(found);
    slots_[row.slot_].reset();
    // Nobody may ever ask for a position: gaps must not pile up for that.
    if (slots_.size() >= 2 * (Count() + 1)) {
        CloseGaps();
    }
    if (observer_ != nullptr) {
        observer_->RowsChanged();
    }
    return true;
}

void ListModel::Clear() {
    const bool held_rows = Count() != 0;
    rows_by_key_.clear();
    slots_.clear();
    selected_count_ = 0;
    current_slot_ = kNoPosition;
    if (held_rows && observer_ != nullptr) {
        observer_->RowsChanged();
    }
}

void ListModel::SetText(const ListRow& row, const std::string& text) {
    if (row.text != text) {
        Writable(row).text = text;
        TellCellChanged(row, 0);
    }
}

void ListModel::SetSubItem(const ListRow& row, std::size_t sub_item, const std::string& text) {
    if (row.sub_items.at(sub_item) != text) {
        Writable(row).sub_items[sub_item] = text;
        TellCellChanged(row, sub_item + 1);
    }
}

void ListModel::SetSmallIcon(const ListRow& row, int index) {
    if (row.small_icon != index) {
        Writable(row).small_icon = index;
        TellRowChanged(row);
    }
}

void ListModel::SelectAll() {
    if (selected_count_ == Count()) {
        return;
    }
    CloseGaps();
    NoteSelected(0, slots_.size() - 1, true);
    if (observer_ != nullptr) {
        observer_->SelectionChanged();
    }
}

void ListModel::ClearSelection() {
    if (selected_count_ == 0) {
        return;
    }
    CloseGaps();
    NoteSelected(0, slots_.size() - 1, false);
    if (observer_ != nullptr) {
        observer_->SelectionChanged();
    }
}

void ListModel::NoteSelected(std::size_t first, std::size_t last, bool selected) {
    CloseGaps();
    for (std::size_t i = first; i <= last && i < slots_.size(); ++i) {
        Select(*slots_[i], selected);
    }
}

const ListRow* ListModel::Current() const {
    const std::size_t position = CurrentPosition();
    return position == kNoPosition ? nullptr : slots_[position].get();
}

std::size_t ListModel::CurrentPosition() const {
    CloseGaps();
    return current_slot_ < slots_.size() ? current_slot_ : kNoPosition;
}

void ListModel::NoteCurrent(std::size_t position) {
    CloseGaps();
    current_slot_ = position;
}

std::vector<std::string> ListModel::SortKeys(std::size_t column) const {
    std::vector<std::string_view> texts;
    texts.reserve(slots_.size());
    for (const auto& row : slots_) {
        texts.emplace_back(CellText(*row, column));
    }
    // A folder that all paths begin with decides nothing, and takes longer than the rest of them.
    // It ends with a backslash, which is of no letter in any language.
    const std::size_t shared = SharedPrefix(texts);
    const std::size_t skipped = texts.empty() ? 0 : texts.front().substr(0, shared).rfind('\\') + 1;
    std::vector<std::string> keys(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        // A column of one text over and over is common.
        const bool repeated = i != 0 && texts[i] == texts[i - 1];
        keys[i] = repeated ? keys[i - 1] : locale_.SortKey(std::string(texts[i].substr(skipped)));
    }
    return keys;
}

void ListModel::Sort(std::size_t column, bool descending) {
    CloseGaps();
    const ListRow* const current = Current();
    const std::vector<std::string> keys = SortKeys(column);
    const std::size_t shared = SharedPrefix(keys);
    std::vector<SortEntry> entries(slots_.size());
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        entries[i] = {.lead = LeadingBytes(keys[i], shared), .slot = i};
    }
    const auto before = [&keys, descending](const SortEntry& one, const SortEntry& other) {
        const SortEntry& left = descending ? other : one;
        const SortEntry& right = descending ? one : other;
        return left.lead != right.lead ? left.lead < right.lead
                                       : keys[left.slot] < keys[right.slot];
    };
    // Often there is nothing to do: cells of a column may all be the same.
    const bool moves = !std::is_sorted(entries.begin(), entries.end(), before);
    if (moves) {
        std::stable_sort(entries.begin(), entries.end(), before);
        std::vector<std::unique_ptr<ListRow>> sorted(slots_.size());
        for (std::size_t i = 0; i < slots_.size(); ++i) {
            sorted[i] = std::move(slots_[entries[i].slot]);
            sorted[i]->slot_ = i;
        }
        slots_ = std::move(sorted);
    }
    if (current != nullptr) {
        current_slot_ = current->slot_;
    }
    if (moves && observer_ != nullptr) {
        observer_->RowsChanged();
    }
}

std::size_t ListModel::FindText(const std::string& text, const TextSearch& search) const {
    CloseGaps();
    const std::string wanted = locale_.LowerCase(text);
    const std::size_t count = slots_.size();
    const std::size_t from = std::min(search.start, count);
    const std::size_t steps = search.wrap ? count : count - from;
    for (std::size_t step = 0; step < steps; ++step) {
        const std::size_t position = (from + step) % count;
        const std::string found = locale_.LowerCase(slots_[position]->text);
        if (search.whole ? found == wanted : found.starts_with(wanted)) {
            return position;
        }
    }
    return kNoPosition;
}

void ListModel::AttachSmallIcons(KeyedImageList& images) {
    if (images.Count() == 0) {
        throw ProgramError(error_number::kImageListNotInitialised,
                           "ImageList must be initialized before it can be used");
    }
    if (small_icons_ != &images) {
        small_icons_ = &images;
        if (observer_ != nullptr) {
            observer_->SmallIconsAttached();
        }
    }
}

void ListModel::SetHoldsItems(bool holds_items) {
    if (holds_items_ != holds_items) {
        holds_items_ = holds_items;
        if (observer_ != nullptr) {
            observer_->EmptyStateChanged();
        }
    }
}

void ListModel::CloseGaps() const {
    if (slots_.size() == Count()) {
        return;
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        if (i == current_slot_) {
            current_slot_ = kept;  // itself, or whoever takes its place
        }
        if (slots_[i] != nullptr) {
            slots_[i]->slot_ = kept;
            if (kept != i) {
                slots_[kept] = std::move(slots_[i]);
            }
            ++kept;
        }
    }
    slots_.resize(kept);
    if (current_slot_ != kNoPosition && current_slot_ >= kept) {
        current_slot_ = kept == 0 ? kNoPosition : kept - 1;
    }
}

void ListModel::Select(ListRow& row, bool selected) {
    if (row.selected != selected) {
        row.selected = selected;
        selected_count_ = selected ? selected_count_ + 1 : selected_count_ - 1;
        ++selection_version_;
    }
}

void ListModel::TellCellChanged(const ListRow& row, std::size_t column) const {
    TellRowChanged(row);
    if (observer_ != nullptr) {
        observer_->CellChanged(column);
    }
}

void ListModel::TellRowChanged(const ListRow& row) const {
    if (observer_ == nullptr) {
        return;
    }
    if (slots_.size() == Count()) {
        observer_->RowChanged(row.slot_);
    } else {
        // Positions are unsettled, and settling them for every write would cost a pass each.
        observer_->RowsChanged();
    }
}

}  // namespace tidemark
