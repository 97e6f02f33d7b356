// Going through the rows of a result, one after the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ranges>

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

/// The numbers of a table's rows, by its own bounds, each of which is asked once. Raises
/// TableFailure.
[[nodiscard]] inline auto RowNumbersOf(const qorcred::TableView& table) {
  const std::int64_t last = table.UpperRow();
  const std::int64_t first = table.LowerRow();
  return std::views::iota(first, std::max(first, last + 1)) |
         std::views::transform([](std::int64_t row) { return static_cast<std::int32_t>(row); });
}

}  // namespace qorhost
