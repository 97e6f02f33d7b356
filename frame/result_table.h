// XArrayDB: the two-dimensional array of values in which every query result comes back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "frame/object.h"

namespace qorcred {

/// Rows in the first dimension, columns in the second, each with its own bounds; an empty result
/// is one cell (0, 0) that holds the empty string. Cells start as Empty.
/// Late-bound members: Value(row, column) get/put (also the default member), LowerBound(dimension),
/// UpperBound(dimension), ReDim, InsertRows(row[, count]), DeleteRows(row[, count]), QuickSort.
/// Every index outside the bounds raises kIndexOutOfRange and changes nothing.
/// More than 25 million cells raise kOutOfMemory.
class ResultTable final : public Object {
 public:
  /// One cell (0, 0) that holds "".
  ResultTable();
  /// `rows` x `columns` Empty cells, counted from 0.
  ResultTable(std::size_t rows, std::size_t columns);

  /// Makes room for that many rows without changing the table.
  void Reserve(std::size_t rows);

  [[nodiscard]] std::int32_t LowerBound(int dimension) const;
  [[nodiscard]] std::int32_t UpperBound(int dimension) const;

  [[nodiscard]] const Value& At(std::int32_t row, std::int32_t column) const;
  [[nodiscard]] Value& At(std::int32_t row, std::int32_t column);

  /// Gives the table new bounds; cells inside both the old and the new bounds keep their content.
  /// A dimension of no length (high = low - 1) is allowed; anything less raises kIndexOutOfRange.
  void ReDim(std::int32_t lowRow, std::int32_t highRow, std::int32_t lowColumn,
             std::int32_t highColumn);
  /// Inserts empty rows before `row` (or after the last one, row = upper bound + 1).
  void InsertRows(std::int32_t row, std::int32_t count = 1);
  void DeleteRows(std::int32_t row, std::int32_t count = 1);
  /// Sorts the rows stably by one column. Order 0 ascending, 1 descending; type 9 compares texts
  /// without regard to case, any other type compares numbers before texts.
  void QuickSort(std::int32_t lowRow, std::int32_t highRow, std::int32_t column, int order,
                 int type);

  /// Appends one row of Empty cells in amortised constant time and returns them, to be filled
  /// before the next change of the table.
  std::span<Value> AppendRow();

  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override;

 private:
  [[nodiscard]] std::size_t Position(std::int32_t row, std::int32_t column) const;

  std::int32_t lowRow_ = 0;
  std::int32_t lowColumn_ = 0;
  std::size_t rows_ = 1;
  std::size_t columns_ = 1;
  std::vector<Value> cells_;  // row by row
};

}  // namespace qorcred
