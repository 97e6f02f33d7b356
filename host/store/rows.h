// Going through the rows of a result, one after the other.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "frame/data_services.h"
#include "frame/result_table.h"

namespace qorhost {

/// One row of a result table; valid as long as the table is unchanged.
class ResultRow {
 public:
  ResultRow(const qorcred::ResultTable& table, std::int32_t number)
      : table_(&table), number_(number) {}

  [[nodiscard]] const qorcred::Value& operator[](std::int32_t column) const {
    return table_->At(number_, column);
  }
  /// Its place in the table, from 0.
  [[nodiscard]] std::int32_t number() const noexcept { return number_; }

 private:
  const qorcred::ResultTable* table_;
  std::int32_t number_;
};

/// The rows of a result in their order; none where there are none, although the table has a cell.
class ResultRows {
 public:
  class Iterator {
   public:
    Iterator(const qorcred::ResultTable& table, std::int32_t number)
        : table_(&table), number_(number) {}

    [[nodiscard]] ResultRow operator*() const { return {*table_, number_}; }
    Iterator& operator++() {
      ++number_;
      return *this;
    }
    friend bool operator==(const Iterator&, const Iterator&) = default;

   private:
    const qorcred::ResultTable* table_;
    std::int32_t number_;
  };

  ResultRows(const qorcred::ResultTable& table, std::size_t count)
      : table_(&table), count_(static_cast<std::int32_t>(count)) {}

  [[nodiscard]] Iterator begin() const { return {*table_, 0}; }
  [[nodiscard]] Iterator end() const { return {*table_, count_}; }

 private:
  const qorcred::ResultTable* table_;
  std::int32_t count_;
};

/// Row numbers from a first to a last one; none when the last is below the first.
class RowNumbers {
 public:
  class Iterator {
   public:
    explicit Iterator(std::int64_t number) : number_(number) {}

    [[nodiscard]] std::int32_t operator*() const { return static_cast<std::int32_t>(number_); }
    Iterator& operator++() {
      ++number_;
      return *this;
    }
    friend bool operator==(const Iterator&, const Iterator&) = default;

   private:
    std::int64_t number_;
  };

  RowNumbers(std::int32_t first, std::int32_t last)
      : first_(first), end_(std::max<std::int64_t>(first, std::int64_t{last} + 1)) {}

  [[nodiscard]] Iterator begin() const { return Iterator(first_); }
  [[nodiscard]] Iterator end() const { return Iterator(end_); }

 private:
  std::int64_t first_;
  std::int64_t end_;
};

/// The rows of a table by its own bounds, each of which is asked once. Raises TableFailure.
[[nodiscard]] inline RowNumbers RowNumbersOf(const qorcred::TableView& table) {
  const std::int32_t last = table.UpperRow();
  return {table.LowerRow(), last};
}

}  // namespace qorhost
