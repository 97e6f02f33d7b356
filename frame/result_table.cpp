#include "frame/result_table.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <numeric>
#include <string>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "frame/text.h"

namespace qorcred {
namespace {

constexpr int kRows = 1;
constexpr int kColumns = 2;
constexpr int kAscending = 0;
constexpr int kDescending = 1;
constexpr int kTextIgnoringCase = 9;

// About a gigabyte. A caller that asks for more has mistaken its bounds.
constexpr std::size_t kMostCells = 25'000'000;

[[noreturn]] void RaiseOutOfRange() {
  throw RuntimeError(ErrorNumber::kIndexOutOfRange);
}

/// The number of places from `low` to `high`, which may be none. The lowest number of all is no
/// bound, because a dimension that is emptied later ends one below its first place.
std::size_t LengthOf(std::int32_t low, std::int32_t high) {
  const std::int64_t length = std::int64_t{high} - low + 1;
  if (length < 0 || low == std::numeric_limits<std::int32_t>::min()) RaiseOutOfRange();
  return static_cast<std::size_t>(length);
}

/// Raises for a table that memory or the range of an index cannot hold.
void CheckSize(std::int32_t lowRow, std::uint64_t rows, std::uint64_t columns) {
  if (columns > 0 && rows > kMostCells / columns) throw RuntimeError(ErrorNumber::kOutOfMemory);
  constexpr std::int64_t kLastIndex = std::numeric_limits<std::int32_t>::max();
  const auto room = static_cast<std::uint64_t>(kLastIndex - lowRow + 1);
  if (rows > room || columns > static_cast<std::uint64_t>(kLastIndex)) {
    throw RuntimeError(ErrorNumber::kOutOfMemory);
  }
}

/// What a cell is sorted by when texts are not asked for: nothing comes first, then numbers by
/// value, then texts by their bytes.
struct SortKey {
  enum class Group : std::uint8_t { kNothing, kNumber, kText };
  Group group = Group::kNothing;
  double number = 0.0;
  std::string text;

  explicit SortKey(const Value& cell) {
    if (const std::string* content = cell.As<std::string>()) {
      group = Group::kText;
      text = *content;
    } else if (!cell.Is(ValueType::kEmpty) && !cell.Is(ValueType::kNull)) {
      group = Group::kNumber;
      number = ToDouble(cell);
    }
  }

  friend bool operator<(const SortKey& one, const SortKey& other) {
    if (one.group != other.group) return one.group < other.group;
    return one.group == Group::kText ? one.text < other.text : one.number < other.number;
  }
};

struct FoldedKey {
  std::string text;

  explicit FoldedKey(const Value& cell) : text(TextOrEmpty(cell)) {}

  friend bool operator<(const FoldedKey& one, const FoldedKey& other) {
    return CompareIgnoringCase(one.text, other.text) < 0;
  }
};

/// The order in which rows come out: positions within the sorted range.
template <typename Key>
std::vector<std::size_t> SortedOrder(const std::vector<Key>& keys, bool descending) {
  std::vector<std::size_t> order(keys.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
    return descending ? keys[other] < keys[one] : keys[one] < keys[other];
  });
  return order;
}

enum class Member : std::uint8_t {
  kValue,
  kLowerBound,
  kUpperBound,
  kReDim,
  kInsertRows,
  kDeleteRows,
  kQuickSort,
};

struct MemberRow {
  std::string_view name;
  Member member;
  std::size_t fewest;
  std::size_t most;
};

constexpr std::array kMembers = {
    MemberRow{"Value", Member::kValue, 2, 2},
    MemberRow{"LowerBound", Member::kLowerBound, 1, 1},
    MemberRow{"UpperBound", Member::kUpperBound, 1, 1},
    MemberRow{"ReDim", Member::kReDim, 4, 4},
    MemberRow{"InsertRows", Member::kInsertRows, 1, 2},
    MemberRow{"DeleteRows", Member::kDeleteRows, 1, 2},
    MemberRow{"QuickSort", Member::kQuickSort, 5, 5},
};

const MemberRow& FindMember(std::string_view name) {
  const auto found = std::find_if(kMembers.begin(), kMembers.end(), [name](const MemberRow& row) {
    return SameMember(row.name, name);
  });
  if (found == kMembers.end()) {
    throw RuntimeError(ErrorNumber::kUnknownMember,
                       "A result table has no member \"" + std::string(name) + "\"");
  }
  return *found;
}

void CheckCount(const Arguments& arguments, std::size_t fewest, std::size_t most) {
  if (arguments.size() < fewest || arguments.size() > most) {
    throw RuntimeError(ErrorNumber::kWrongArgumentCount);
  }
}

/// The optional row count of InsertRows and DeleteRows.
std::int32_t CountArgument(const Arguments& arguments) {
  if (arguments.size() < 2 || arguments[1].Is(ValueType::kMissing)) return 1;
  return ToLong(arguments[1]);
}

}  // namespace

ResultTable::ResultTable() {
  cells_.emplace_back("");
}

ResultTable::ResultTable(std::size_t rows, std::size_t columns) : rows_(rows), columns_(columns) {
  CheckSize(lowRow_, rows, columns);
  cells_.resize(rows * columns);
}

void ResultTable::Reserve(std::size_t rows) {
  CheckSize(lowRow_, rows, columns_);
  cells_.reserve(rows * columns_);
}

std::int32_t ResultTable::LowerBound(int dimension) const {
  if (dimension == kRows) return lowRow_;
  if (dimension == kColumns) return lowColumn_;
  RaiseOutOfRange();
}

std::int32_t ResultTable::UpperBound(int dimension) const {
  const auto length = static_cast<std::int64_t>(dimension == kRows ? rows_ : columns_);
  return static_cast<std::int32_t>(LowerBound(dimension) + length - 1);
}

std::size_t ResultTable::Position(std::int32_t row, std::int32_t column) const {
  const std::int64_t rowOffset = std::int64_t{row} - lowRow_;
  const std::int64_t columnOffset = std::int64_t{column} - lowColumn_;
  if (rowOffset < 0 || static_cast<std::size_t>(rowOffset) >= rows_ || columnOffset < 0 ||
      static_cast<std::size_t>(columnOffset) >= columns_) {
    RaiseOutOfRange();
  }
  return static_cast<std::size_t>(rowOffset) * columns_ + static_cast<std::size_t>(columnOffset);
}

const Value& ResultTable::At(std::int32_t row, std::int32_t column) const {
  return cells_[Position(row, column)];
}

Value& ResultTable::At(std::int32_t row, std::int32_t column) {
  return cells_[Position(row, column)];
}

void ResultTable::ReDim(std::int32_t lowRow, std::int32_t highRow, std::int32_t lowColumn,
                        std::int32_t highColumn) {
  const std::size_t rows = LengthOf(lowRow, highRow);
  const std::size_t columns = LengthOf(lowColumn, highColumn);
  CheckSize(lowRow, rows, columns);
  const std::size_t size = rows * columns;

  if (lowRow == lowRow_ && lowColumn == lowColumn_ && columns == columns_) {
    // Hosts add rows one at a time: room grows by doubling, so that each costs the same.
    if (size > cells_.capacity()) cells_.reserve(std::max(size, cells_.capacity() * 2));
    cells_.resize(size);
    rows_ = rows;
    return;
  }

  std::vector<Value> cells(size);
  const std::int64_t firstRow = std::max(lowRow, lowRow_);
  const std::int64_t lastRow = std::min(highRow, UpperBound(kRows));
  const std::int32_t firstColumn = std::max(lowColumn, lowColumn_);
  const std::int32_t lastColumn = std::min(highColumn, UpperBound(kColumns));
  if (firstColumn <= lastColumn) {
    const std::size_t kept = LengthOf(firstColumn, lastColumn);
    for (std::int64_t row = firstRow; row <= lastRow; ++row) {
      const auto from =
          static_cast<std::ptrdiff_t>(Position(static_cast<std::int32_t>(row), firstColumn));
      const auto to = static_cast<std::ptrdiff_t>(
          static_cast<std::size_t>(row - lowRow) * columns +
          static_cast<std::size_t>(std::int64_t{firstColumn} - lowColumn));
      std::move(cells_.begin() + from, cells_.begin() + from + static_cast<std::ptrdiff_t>(kept),
                cells.begin() + to);
    }
  }
  cells_ = std::move(cells);
  lowRow_ = lowRow;
  lowColumn_ = lowColumn;
  rows_ = rows;
  columns_ = columns;
}

void ResultTable::InsertRows(std::int32_t row, std::int32_t count) {
  const std::int64_t offset = std::int64_t{row} - lowRow_;
  if (offset < 0 || static_cast<std::size_t>(offset) > rows_ || count < 0) RaiseOutOfRange();
  const auto added = static_cast<std::size_t>(count);
  CheckSize(lowRow_, std::uint64_t{rows_} + added, columns_);
  cells_.insert(
      cells_.begin() + static_cast<std::ptrdiff_t>(offset) * static_cast<std::ptrdiff_t>(columns_),
      added * columns_, Value());
  rows_ += added;
}

void ResultTable::DeleteRows(std::int32_t row, std::int32_t count) {
  const std::int64_t offset = std::int64_t{row} - lowRow_;
  if (offset < 0 || count < 0 || static_cast<std::size_t>(offset) >= rows_ ||
      static_cast<std::size_t>(count) > rows_ - static_cast<std::size_t>(offset)) {
    RaiseOutOfRange();
  }
  const auto columns = static_cast<std::ptrdiff_t>(columns_);
  const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(offset) * columns;
  cells_.erase(first, first + count * columns);
  rows_ -= static_cast<std::size_t>(count);
}

void ResultTable::QuickSort(std::int32_t lowRow, std::int32_t highRow, std::int32_t column,
                            int order, int type) {
  if (order != kAscending && order != kDescending) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall,
                       "The sort order of a result table is 0 (ascending) or 1 (descending)");
  }
  const std::size_t count = LengthOf(lowRow, highRow);
  if (count == 0) return;
  const std::size_t first = Position(lowRow, column);
  static_cast<void>(Position(highRow, column));

  const auto keysOf = [&]<typename Key>(std::vector<Key> keys) {
    keys.reserve(count);
    for (std::size_t i = 0; i < count; ++i) keys.emplace_back(cells_[first + i * columns_]);
    return SortedOrder(keys, order == kDescending);
  };
  const std::vector<std::size_t> sorted =
      type == kTextIgnoringCase ? keysOf(std::vector<FoldedKey>()) : keysOf(std::vector<SortKey>());

  const auto columns = static_cast<std::ptrdiff_t>(columns_);
  const auto rangeStart =
      cells_.begin() + static_cast<std::ptrdiff_t>(Position(lowRow, lowColumn_));
  std::vector<Value> rows;
  rows.reserve(count * columns_);
  for (const std::size_t position : sorted) {
    const auto row = rangeStart + static_cast<std::ptrdiff_t>(position) * columns;
    rows.insert(rows.end(), std::make_move_iterator(row), std::make_move_iterator(row + columns));
  }
  std::move(rows.begin(), rows.end(), rangeStart);
}

std::span<Value> ResultTable::AppendRow() {
  CheckSize(lowRow_, std::uint64_t{rows_} + 1, columns_);
  const std::size_t size = cells_.size() + columns_;
  if (size > cells_.capacity()) cells_.reserve(std::max(size, cells_.capacity() * 2));
  cells_.resize(size);
  ++rows_;
  return std::span(cells_).last(columns_);
}

Value ResultTable::Invoke(std::string_view member, InvokeKind kind, Arguments arguments) {
  // Cells are what callers read by the thousand; they nearly always use the default member.
  const MemberRow& row = member.empty() ? kMembers.front() : FindMember(member);
  if (kind == InvokeKind::kPut) {
    if (row.member != Member::kValue) throw RuntimeError(ErrorNumber::kUnknownMember);
    CheckCount(arguments, 3, 3);
    At(ToLong(arguments[0]), ToLong(arguments[1])) = arguments[2];
    return {};
  }
  CheckCount(arguments, row.fewest, row.most);
  switch (row.member) {
    case Member::kValue:
      return At(ToLong(arguments[0]), ToLong(arguments[1]));
    case Member::kLowerBound:
      return LowerBound(ToLong(arguments[0]));
    case Member::kUpperBound:
      return UpperBound(ToLong(arguments[0]));
    case Member::kReDim:
      ReDim(ToLong(arguments[0]), ToLong(arguments[1]), ToLong(arguments[2]), ToLong(arguments[3]));
      break;
    case Member::kInsertRows:
      InsertRows(ToLong(arguments[0]), CountArgument(arguments));
      break;
    case Member::kDeleteRows:
      DeleteRows(ToLong(arguments[0]), CountArgument(arguments));
      break;
    case Member::kQuickSort:
      QuickSort(ToLong(arguments[0]), ToLong(arguments[1]), ToLong(arguments[2]),
                ToLong(arguments[3]), ToLong(arguments[4]));
      break;
  }
  return {};
}

}  // namespace qorcred
