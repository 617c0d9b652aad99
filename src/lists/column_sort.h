#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tidemark {

// By which column a list was sorted last, and which way.
class ColumnSort {
  public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // The user clicked a column's header: the same column turns round, another one ascends.
    void Click(std::size_t column) {
        descending_ = column == column_ && !descending_;
        column_ = column;
    }
    [[nodiscard]] std::size_t Column() const { return column_; }
    [[nodiscard]] bool Descending() const { return descending_; }

  private:
    std::size_t column_ = kNone;
    bool descending_ = false;
};

// The number as a text that sorts by value among others of its kind: twelve digits at least, with
// leading zeros. A negative number sorts by that text, before the others.
[[nodiscard]] std::string SortableNumber(std::int64_t number);

}  // namespace tidemark
