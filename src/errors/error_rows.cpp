#include "errors/error_rows.h"

#include <charconv>
#include <utility>
#include <vector>

#include "engine/numbers.h"
#include "lists/icon_keys.h"
#include "lists/list_helpers.h"

namespace tidemark {

namespace {

std::size_t Index(ErrorColumn column) {
    return static_cast<std::size_t>(column);
}

// Sub-items count from the second column.
constexpr std::size_t kErrorCell = 0;
constexpr std::size_t kDescriptionCell = 1;

std::int64_t NumberIn(const std::string& text) {
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::string PlainNumber(std::int64_t number) {
    return std::to_string(number);
}

}  // namespace

// Keeps the list from drawing while alive.
class ErrorRows::RedrawOff {
  public:
    explicit RedrawOff(ErrorRows& rows) : rows_(rows) { rows_.display_.SetListRedraw(false); }
    RedrawOff(const RedrawOff&) = delete;
    RedrawOff& operator=(const RedrawOff&) = delete;
    ~RedrawOff() {
        if (!rows_.detached_) {
            rows_.display_.SetListRedraw(true);
        }
    }

  private:
    ErrorRows& rows_;
};

// One run over a collection. Everything in it may end up on the stack below a later run.
class ErrorRows::Fill {
  public:
    explicit Fill(ErrorRows& rows)
        : rows_(rows),
          errors_(rows.errors_),
          collection_(rows.collections_),
          keys_(rows.platform_.file_system, rows.platform_.locale) {}

    void Run() {
        if (errors_ == nullptr || errors_->empty()) {
            return;
        }
        rows_.list_.Clear();
        AddKeys();
        AttachIcons();
        rows_.platform_.pump.RunPendingMessagesNow();
        if (!Superseded()) {
            FillIn();
        }
    }

  private:
    // Another collection was handed over, or the window is gone: the rows are not this run's.
    [[nodiscard]] bool Superseded() const {
        return rows_.detached_ || rows_.collections_ != collection_;
    }

    void AddKeys() {
        for (const auto& error : *errors_) {
            rows_.list_.Add(error->ItemName, "");
        }
        rows_.list_.SetText(rows_.list_.At(0), "Adding items");
    }

    void AttachIcons() {
        const std::string& first = errors_->front()->ItemName;
        AddIcon(rows_.images_, keys_.Of(first, ""), first);
        rows_.list_.AttachSmallIcons(rows_.images_);
    }

    void FillIn() {
        {
            const RedrawOff redraw_off(rows_);
            rows_.platform_.pump.RunPendingMessagesNow();
            if (!Superseded()) {
                FillCells();
            }
            if (!Superseded()) {
                ChooseIcons();
            }
        }
        if (!Superseded()) {
            rows_.display_.SetStatusText(
                "  " +
                FormatWholeNumber(rows_.platform_.locale,
                                  static_cast<std::int64_t>(errors_->size())) +
                " items had errors.");
        }
    }

    void FillCells() {
        for (const auto& error : *errors_) {
            const ListRow& row = FindOrAddRow(rows_.list_, error->ItemName, error->ItemName);
            rows_.list_.SetText(row, error->ItemName);
            rows_.list_.SetSubItem(row, kErrorCell, PlainNumber(error->ErrorNumber));
            rows_.list_.SetSubItem(row, kDescriptionCell, error->ErrorDescription);
            rows_.list_.SetItemNumber(row, icon_keys_.size() + 1);
            AddPicture(error->ItemName);
            rows_.platform_.pump.LetPendingMessagesRun();
            if (rows_.cancelled_ || Superseded()) {
                return;
            }
        }
    }

    // The key is kept for the last pass: finding it takes the shell, and that pass lets no messages
    // run. A path that is gone has none: a picture of it, which the shell rarely has and takes long
    // to look for, would stand for no row.
    void AddPicture(const std::string& path) {
        const std::string& key = keys_.Of(path, "");
        if (!key.empty()) {
            AddIcon(rows_.images_, key, path);
        }
        icon_keys_.push_back(&key);
    }

    void ChooseIcons() {
        for (std::size_t i = 0; i < rows_.list_.Count(); ++i) {
            const ListRow& row = rows_.list_.At(i);
            if (row.item_number != 0) {
                const auto record = static_cast<std::size_t>(row.item_number - 1);
                rows_.list_.SetSmallIcon(row, RowIcon(rows_.images_, *icon_keys_[record]));
            }
        }
        ChooseIconsOfTheRest();
    }

    // Of the rows that a cancelled run did not reach. Their keys are still to be found, and the
    // user, who closed the window, is not to wait for that.
    void ChooseIconsOfTheRest() {
        for (std::size_t i = icon_keys_.size(); i < errors_->size() && !Superseded(); ++i) {
            const std::string& path = (*errors_)[i]->ItemName;
            if (const ListRow* const row = FindRow(rows_.list_, path)) {
                rows_.list_.SetSmallIcon(*row, RowIcon(rows_.images_, keys_.Of(path, "")));
            }
            rows_.platform_.pump.LetPendingMessagesRun();
        }
    }

    ErrorRows& rows_;
    const std::shared_ptr<const StampErrorList> errors_;
    const std::uint64_t collection_;
    IconKeys keys_;
    std::vector<const std::string*> icon_keys_;  // a row's number is its position here, from 1
};

std::shared_ptr<ErrorRows> ErrorRows::Create(const Platform& platform, KeyedImageList& images,
                                             ErrorsDisplay& display) {
    return std::shared_ptr<ErrorRows>(new ErrorRows(platform, images, display));
}

ErrorRows::ErrorRows(const Platform& platform, KeyedImageList& images, ErrorsDisplay& display)
    : platform_(platform),
      images_(images),
      display_(display),
      list_(platform.locale),
      Timer1(platform.timers.NewTimer(TickKind::kLong)) {
    Timer1->SetInterval(kFillDelay);
    Timer1->SetSink(this);
}

void ErrorRows::AddFromCollection(StampErrorList errors) {
    list_.Clear();
    ++collections_;
    Timer1->SetEnabled(false);
    errors_ = std::make_shared<const StampErrorList>(std::move(errors));
    if (errors_->empty()) {
        return;
    }
    cancelled_ = false;
    display_.SetStatusText("  Collecting error data...");
    Timer1->SetEnabled(true);
}

void ErrorRows::Cancel() {
    cancelled_ = true;
    Timer1->SetEnabled(false);
}

void ErrorRows::Attach() {
    list_.Clear();
    ++collections_;  // a fill of the window before may still be on the stack
    detached_ = false;
}

void ErrorRows::Detach() {
    Cancel();
    detached_ = true;
}

void ErrorRows::ITimerObjectSink_Timer() {
    Timer1->SetEnabled(false);
    if (!cancelled_) {
        // Messages run in there, which may be the end of the window that holds this.
        const std::shared_ptr<ErrorRows> self = shared_from_this();
        Fill(*self).Run();
    }
}

void ErrorRows::ColumnClick(ErrorColumn column) {
    const RedrawOff redraw_off(*this);
    sort_.Click(Index(column));
    const bool by_number = column == ErrorColumn::kError;
    if (by_number) {
        RewriteNumbers(SortableNumber);
    }
    list_.Sort(sort_.Column(), sort_.Descending());
    if (by_number) {
        RewriteNumbers(PlainNumber);
    }
}

void ErrorRows::RewriteNumbers(std::string (*form)(std::int64_t)) {
    for (std::size_t i = 0; i < list_.Count(); ++i) {
        const ListRow& row = list_.At(i);
        list_.SetSubItem(row, kErrorCell, form(NumberIn(row.sub_items[kErrorCell])));
    }
}

}  // namespace tidemark
