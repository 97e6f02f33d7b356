#include "frame/result_table.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "frame/convert.h"
#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;
using qortest::Outcome;

constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

/// Rows and columns as "a b|c d"; an Empty cell is "-".
std::string Shown(const ResultTable& table) {
  std::string text;
  for (std::int32_t row = table.LowerBound(1); row <= table.UpperBound(1); ++row) {
    if (row > table.LowerBound(1)) text += '|';
    for (std::int32_t column = table.LowerBound(2); column <= table.UpperBound(2); ++column) {
      if (column > table.LowerBound(2)) text += ' ';
      const Value& cell = table.At(row, column);
      text += cell.Is(ValueType::kEmpty) ? "-" : TextOrEmpty(cell);
    }
  }
  return text;
}

std::string Bounds(const ResultTable& table) {
  std::string text;
  for (const int dimension : {1, 2}) {
    text += std::to_string(table.LowerBound(dimension)) + ".." +
            std::to_string(table.UpperBound(dimension)) + " ";
  }
  text.pop_back();
  return text;
}

/// A table of `rows` x `columns` whose cells are numbered 10 * row + column.
ResultTable Numbered(std::int32_t rows, std::int32_t columns) {
  ResultTable table(static_cast<std::size_t>(rows), static_cast<std::size_t>(columns));
  for (std::int32_t row = 0; row < rows; ++row) {
    for (std::int32_t column = 0; column < columns; ++column) {
      table.At(row, column) = 10 * row + column;
    }
  }
  return table;
}

ResultTable OneColumn(std::vector<Value> cells) {
  ResultTable table(cells.size(), 1);
  for (std::size_t row = 0; row < cells.size(); ++row) {
    table.At(static_cast<std::int32_t>(row), 0) = std::move(cells[row]);
  }
  return table;
}

TEST(ResultTableTest, StartsAsAnEmptyResult) {
  const ResultTable table;
  EXPECT_EQ(Bounds(table), "0..0 0..0");
  EXPECT_EQ(table.At(0, 0), Value(""));
}

TEST(ResultTableTest, StartsWithEmptyCellsOfAGivenSize) {
  EXPECT_EQ(Shown(ResultTable(2, 3)), "- - -|- - -");
  EXPECT_EQ(Bounds(ResultTable(2, 3)), "0..1 0..2");
  EXPECT_EQ(Bounds(ResultTable(0, 3)), "0..-1 0..2");
  EXPECT_EQ(Bounds(ResultTable(3, 0)), "0..2 0..-1");
}

TEST(ResultTableTest, KnowsTwoDimensionsOnly) {
  const ResultTable table;
  for (const int dimension : {kLowest, -1, 0, 3, kHighest}) {
    SCOPED_TRACE(dimension);
    EXPECT_EQ(Outcome([&] { return table.LowerBound(dimension); }), "error 9");
    EXPECT_EQ(Outcome([&] { return table.UpperBound(dimension); }), "error 9");
  }
}

TEST(ResultTableTest, CellsAreCheckedOnEverySide) {
  ResultTable table(1, 1);
  table.ReDim(2, 4, -1, 1);
  const struct {
    const char* name;
    std::int32_t row;
    std::int32_t column;
    const char* expected;
  } rows[] = {
      {"FirstCell", 2, -1, "done"},
      {"LastCell", 4, 1, "done"},
      {"RowBelow", 1, 0, "error 9"},
      {"RowAbove", 5, 0, "error 9"},
      {"ColumnBelow", 2, -2, "error 9"},
      {"ColumnAbove", 2, 2, "error 9"},
      {"LowestRow", kLowest, 0, "error 9"},
      {"HighestRow", kHighest, 0, "error 9"},
      {"LowestColumn", 2, kLowest, "error 9"},
      {"HighestColumn", 2, kHighest, "error 9"},
  };
  ForEachRow(rows, [&](const auto& row) {
    EXPECT_EQ(Outcome([&] { table.At(row.row, row.column) = 1; }), row.expected);
    const ResultTable& reader = table;
    EXPECT_EQ(Outcome([&] { static_cast<void>(reader.At(row.row, row.column)); }), row.expected);
  });
}

TEST(ResultTableTest, ATableWithoutRowsHasNoCells) {
  ResultTable table(0, 2);
  EXPECT_EQ(Outcome([&] { static_cast<void>(table.At(0, 0)); }), "error 9");
  table.AppendRow()[1] = "x";
  EXPECT_EQ(Shown(table), "- x");
}

TEST(ResultTableTest, ReDimKeepsTheCellsInsideBothBounds) {
  const struct {
    const char* name;
    std::int32_t lowRow, highRow, lowColumn, highColumn;
    const char* bounds;
    const char* cells;
  } rows[] = {
      {"Same", 0, 1, 0, 1, "0..1 0..1", "0 1|10 11"},
      {"MoreRows", 0, 2, 0, 1, "0..2 0..1", "0 1|10 11|- -"},
      {"FewerRows", 0, 0, 0, 1, "0..0 0..1", "0 1"},
      {"MoreColumns", 0, 1, 0, 2, "0..1 0..2", "0 1 -|10 11 -"},
      {"FewerColumns", 0, 1, 0, 0, "0..1 0..0", "0|10"},
      {"RowsInFront", -1, 1, 0, 1, "-1..1 0..1", "- -|0 1|10 11"},
      {"ColumnsInFront", 0, 1, -1, 1, "0..1 -1..1", "- 0 1|- 10 11"},
      {"FirstRowLost", 1, 2, 0, 1, "1..2 0..1", "10 11|- -"},
      {"FirstColumnLost", 0, 1, 1, 2, "0..1 1..2", "1 -|11 -"},
      {"NothingInCommon", 5, 6, 5, 6, "5..6 5..6", "- -|- -"},
      {"RowsInCommonOnly", 0, 1, 7, 7, "0..1 7..7", "-|-"},
      {"NoRows", 0, -1, 0, 1, "0..-1 0..1", ""},
      {"NoColumns", 0, 1, 0, -1, "0..1 0..-1", "|"},
      {"FarAway", kHighest, kHighest, -kHighest, -kHighest,
       "2147483647..2147483647 -2147483647..-2147483647", "-"},
  };
  ForEachRow(rows, [](const auto& row) {
    ResultTable table = Numbered(2, 2);
    table.ReDim(row.lowRow, row.highRow, row.lowColumn, row.highColumn);
    EXPECT_EQ(Bounds(table), row.bounds);
    if (table.UpperBound(1) < kHighest) {
      EXPECT_EQ(Shown(table), row.cells);
    }
  });
}

TEST(ResultTableTest, ReDimRefusesImpossibleBoundsAndChangesNothing) {
  const struct {
    const char* name;
    std::int32_t lowRow, highRow, lowColumn, highColumn;
    const char* expected;
  } rows[] = {
      {"RowsBackwards", 0, -2, 0, 1, "error 9"},
      {"ColumnsBackwards", 0, 1, 0, -2, "error 9"},
      {"LowestRow", kLowest, kLowest, 0, 0, "error 9"},
      {"LowestColumn", 0, 0, kLowest, kLowest, "error 9"},
      {"TooManyRows", 0, 25'000'000, 0, 0, "error 7"},
      {"TooManyCells", 0, 12'499'999, 0, 2, "error 7"},
      {"AllRows", -kHighest, kHighest, 0, 0, "error 7"},
      {"AllCells", -kHighest, kHighest, -kHighest, kHighest, "error 7"},
      {"MoreColumnsThanIndexes", 0, -1, -kHighest, kHighest, "error 7"},
  };
  ForEachRow(rows, [](const auto& row) {
    ResultTable table = Numbered(2, 2);
    EXPECT_EQ(Outcome([&] { table.ReDim(row.lowRow, row.highRow, row.lowColumn, row.highColumn); }),
              row.expected);
    EXPECT_EQ(Shown(table), "0 1|10 11");
  });
}

TEST(ResultTableTest, SizesBeyondMemoryAreRefused) {
  constexpr std::size_t kHuge = std::numeric_limits<std::size_t>::max();
  EXPECT_EQ(Outcome([] { ResultTable(kHuge, kHuge); }), "error 7");
  EXPECT_EQ(Outcome([] { ResultTable(kHuge, 0); }), "error 7");
  EXPECT_EQ(Outcome([] { ResultTable(0, kHuge); }), "error 7");
  ResultTable table(1, 3);
  EXPECT_EQ(Outcome([&] { table.Reserve(kHuge); }), "error 7");
  table.Reserve(100);
  EXPECT_EQ(Shown(table), "- - -");
}

TEST(ResultTableTest, ReDimGrowsRowByRow) {
  // A table that were copied at every step would not come to an end here.
  constexpr std::int32_t kRowCount = 60'000;
  ResultTable table(1, 8);
  for (std::int32_t row = 0; row < kRowCount; ++row) {
    table.ReDim(0, row, 0, 7);
    table.At(row, 7) = row;
  }
  EXPECT_EQ(Bounds(table), "0..59999 0..7");
  EXPECT_EQ(table.At(0, 7), Value(0));
  EXPECT_EQ(table.At(kRowCount - 1, 7), Value(kRowCount - 1));
  EXPECT_EQ(table.At(kRowCount - 1, 0), Value());
}

TEST(ResultTableTest, ReDimClearsWhatItTookAway) {
  ResultTable table = Numbered(2, 1);
  table.ReDim(0, 0, 0, 0);
  table.ReDim(0, 1, 0, 0);
  EXPECT_EQ(Shown(table), "0|-");
}

TEST(ResultTableTest, InsertRowsMakesRoomBeforeARow) {
  const struct {
    const char* name;
    std::int32_t row;
    std::int32_t count;
    const char* result;
    const char* cells;
  } rows[] = {
      {"First", 0, 1, "done", "- -|0 1|10 11"},
      {"Middle", 1, 1, "done", "0 1|- -|10 11"},
      {"AfterTheLast", 2, 1, "done", "0 1|10 11|- -"},
      {"Several", 1, 2, "done", "0 1|- -|- -|10 11"},
      {"None", 1, 0, "done", "0 1|10 11"},
      {"Below", -1, 1, "error 9", "0 1|10 11"},
      {"TooFar", 3, 1, "error 9", "0 1|10 11"},
      {"NegativeCount", 1, -1, "error 9", "0 1|10 11"},
      {"TooMany", 1, kHighest, "error 7", "0 1|10 11"},
  };
  ForEachRow(rows, [](const auto& row) {
    ResultTable table = Numbered(2, 2);
    EXPECT_EQ(Outcome([&] { table.InsertRows(row.row, row.count); }), row.result);
    EXPECT_EQ(Shown(table), row.cells);
  });
}

TEST(ResultTableTest, DeleteRowsClosesTheGap) {
  const struct {
    const char* name;
    std::int32_t row;
    std::int32_t count;
    const char* result;
    const char* cells;
  } rows[] = {
      {"First", 0, 1, "done", "10|20"},
      {"Middle", 1, 1, "done", "0|20"},
      {"Last", 2, 1, "done", "0|10"},
      {"Several", 1, 2, "done", "0"},
      {"All", 0, 3, "done", ""},
      {"None", 1, 0, "done", "0|10|20"},
      {"Below", -1, 1, "error 9", "0|10|20"},
      {"Above", 3, 1, "error 9", "0|10|20"},
      {"PastTheEnd", 1, 3, "error 9", "0|10|20"},
      {"NegativeCount", 1, -1, "error 9", "0|10|20"},
      {"HighestCount", 0, kHighest, "error 9", "0|10|20"},
  };
  ForEachRow(rows, [](const auto& row) {
    ResultTable table = Numbered(3, 1);
    EXPECT_EQ(Outcome([&] { table.DeleteRows(row.row, row.count); }), row.result);
    EXPECT_EQ(Shown(table), row.cells);
  });
}

TEST(ResultTableTest, RowsCountFromTheLowerBound) {
  ResultTable table = Numbered(3, 1);
  table.ReDim(1, 2, 0, 0);
  table.InsertRows(2);
  EXPECT_EQ(Shown(table), "10|-|20");
  table.DeleteRows(1);
  EXPECT_EQ(Bounds(table), "1..2 0..0");
  EXPECT_EQ(Shown(table), "-|20");
}

TEST(ResultTableTest, NoRowGoesBeyondTheHighestIndex) {
  ResultTable table;
  table.ReDim(kHighest, kHighest, 0, 0);
  EXPECT_EQ(Outcome([&] { table.AppendRow(); }), "error 7");
  EXPECT_EQ(Outcome([&] { table.InsertRows(kHighest); }), "error 7");
  table.DeleteRows(kHighest);
  EXPECT_EQ(Bounds(table), "2147483647..2147483646 0..0");
}

TEST(ResultTableTest, AppendRowGivesTheNewCells) {
  ResultTable table(0, 2);
  for (std::int32_t row = 0; row < 60'000; ++row) {
    const std::span<Value> cells = table.AppendRow();
    ASSERT_EQ(cells.size(), 2U);
    cells[0] = row;
  }
  EXPECT_EQ(Bounds(table), "0..59999 0..1");
  EXPECT_EQ(table.At(59'999, 0), Value(59'999));
  ResultTable narrow(0, 0);
  EXPECT_TRUE(narrow.AppendRow().empty());
  EXPECT_EQ(Bounds(narrow), "0..0 0..-1");
}

TEST(QuickSortTest, SortsTextsWithoutCase) {
  ResultTable table = OneColumn({"b", "C", "a", "\xC3\xA4", "B", Null(), "\xC3\x84", 10, 9});
  table.QuickSort(0, 8, 0, 0, 9);
  EXPECT_EQ(Shown(table), "|10|9|a|b|B|C|\xC3\xA4|\xC3\x84");
  table.QuickSort(0, 8, 0, 1, 9);
  EXPECT_EQ(Shown(table), "\xC3\xA4|\xC3\x84|C|b|B|a|9|10|");
}

TEST(QuickSortTest, SortsNothingThenNumbersThenTexts) {
  ResultTable table =
      OneColumn({"b", 10, Null(), 9.5, "B", true, Date{3.0}, Value(), std::int16_t{-7}, "10"});
  table.QuickSort(0, 9, 0, 0, 0);
  EXPECT_EQ(Shown(table), "|-|-7|True|1/2/1900|9.5|10|10|B|b");
  EXPECT_TRUE(table.At(7, 0).Is(ValueType::kString));
}

TEST(QuickSortTest, KeepsRowsTogetherAndEqualOnesInOrder) {
  ResultTable table(4, 2);
  const char* const names[] = {"Doe", "ash", "DOE", "Ash"};
  for (std::int32_t row = 0; row < 4; ++row) {
    table.At(row, 0) = names[row];
    table.At(row, 1) = row;
  }
  table.QuickSort(0, 3, 0, 0, 9);
  EXPECT_EQ(Shown(table), "ash 1|Ash 3|Doe 0|DOE 2");
  table.QuickSort(0, 3, 0, 1, 9);
  EXPECT_EQ(Shown(table), "Doe 0|DOE 2|ash 1|Ash 3");
}

TEST(QuickSortTest, LeavesTheRowsOutsideTheRangeAlone) {
  ResultTable table = OneColumn({5, 4, 3, 2, 1});
  table.QuickSort(1, 3, 0, 0, 3);
  EXPECT_EQ(Shown(table), "5|2|3|4|1");
  table.QuickSort(2, 2, 0, 0, 3);
  EXPECT_EQ(Shown(table), "5|2|3|4|1");
}

TEST(QuickSortTest, WorksWithOtherLowerBounds) {
  ResultTable table = OneColumn({3, 2, 1});
  table.ReDim(1, 2, -1, 0);
  table.QuickSort(1, 2, 0, 0, 3);
  EXPECT_EQ(Shown(table), "- 1|- 2");
}

TEST(QuickSortTest, RefusesImpossibleRequestsAndChangesNothing) {
  const struct {
    const char* name;
    std::int32_t lowRow, highRow, column;
    int order;
    const char* expected;
  } rows[] = {
      {"NoRange", 1, 0, 0, 0, "done"},         {"RowBelow", -1, 2, 0, 0, "error 9"},
      {"RowAbove", 0, 3, 0, 0, "error 9"},     {"Backwards", 2, 0, 0, 0, "error 9"},
      {"ColumnBelow", 0, 2, -1, 0, "error 9"}, {"ColumnAbove", 0, 2, 1, 0, "error 9"},
      {"OrderBelow", 0, 2, 0, -1, "error 5"},  {"OrderAbove", 0, 2, 0, 2, "error 5"},
  };
  ForEachRow(rows, [](const auto& row) {
    ResultTable table = OneColumn({3, 1, 2});
    EXPECT_EQ(Outcome([&] { table.QuickSort(row.lowRow, row.highRow, row.column, row.order, 9); }),
              row.expected);
    EXPECT_EQ(Shown(table), "3|1|2");
  });
}

TEST(QuickSortTest, CellsWithoutAnOrderAreAnErrorAndChangeNothing) {
  const struct {
    const char* name;
    Value cell;
    int type;
    const char* expected;
  } rows[] = {
      {"ObjectAsText", ObjectRef(), 9, "error 13"},
      {"ObjectAsNumber", ObjectRef(), 3, "error 13"},
      {"NotANumber", std::numeric_limits<double>::quiet_NaN(), 3, "error 6"},
  };
  ForEachRow(rows, [](const auto& row) {
    ResultTable table = OneColumn({2, row.cell, 1});
    EXPECT_EQ(Outcome([&] { table.QuickSort(0, 2, 0, 0, row.type); }), row.expected);
    EXPECT_EQ(table.At(0, 0), Value(2));
    EXPECT_EQ(table.At(2, 0), Value(1));
  });
}

TEST(LateBoundTableTest, CellsAreTheDefaultMember) {
  ResultTable table(2, 2);
  Put(table, "", 1, 0, "x");
  EXPECT_EQ(Get(table, "", 1, 0), Value("x"));
  EXPECT_EQ(Get(table, "value", 1, 0), Value("x"));
  EXPECT_EQ(Call(table, "VALUE", 1, 0), Value("x"));
  Put(table, "Value", std::int16_t{0}, "1", Null());
  EXPECT_EQ(table.At(0, 1), Value(Null()));
  EXPECT_EQ(Get(table, "", 0.4, "1"), Value(Null()));
}

TEST(LateBoundTableTest, PutLeavesTheCallersValueAlone) {
  ResultTable table(1, 1);
  std::vector<Value> arguments{0, 0, "kept"};
  table.Invoke("", InvokeKind::kPut, arguments);
  EXPECT_EQ(arguments[2], Value("kept"));
}

TEST(LateBoundTableTest, EveryOperationIsReachedByName) {
  ResultTable table(1, 1);
  Call(table, "ReDim", 0, 2, 0, 0);
  EXPECT_EQ(Get(table, "LowerBound", 1), Value(0));
  EXPECT_EQ(Get(table, "UpperBound", 1), Value(2));
  EXPECT_EQ(Call(table, "upperbound", 2), Value(0));
  for (std::int32_t row = 0; row < 3; ++row) Put(table, "", row, 0, 3 - row);
  Call(table, "quicksort", 0, 2, 0, 0, 3);
  EXPECT_EQ(Shown(table), "1|2|3");
  Call(table, "InsertRows", 1);
  Call(table, "InsertRows", 0, 2);
  Call(table, "InsertRows", 0, Missing());
  EXPECT_EQ(Shown(table), "-|-|-|1|-|2|3");
  Call(table, "DeleteRows", 0, 3);
  Call(table, "DeleteRows", 1);
  Call(table, "DeleteRows", 0, Missing());
  EXPECT_EQ(Shown(table), "2|3");
}

TEST(LateBoundTableTest, WrongCallsRaiseTheirErrors) {
  ResultTable table(1, 1);
  const struct {
    const char* name;
    const char* member;
    InvokeKind kind;
    std::vector<Value> arguments;
    const char* expected;
  } rows[] = {
      {"UnknownMember", "Rows", InvokeKind::kGet, {}, "error 438"},
      {"UnknownPut", "Rows", InvokeKind::kPut, {1}, "error 438"},
      {"PutToABound", "UpperBound", InvokeKind::kPut, {1, 2}, "error 438"},
      {"PutToAMethod", "ReDim", InvokeKind::kPut, {1}, "error 438"},
      {"CellWithoutColumn", "", InvokeKind::kGet, {0}, "error 450"},
      {"CellWithThreeIndexes", "", InvokeKind::kGet, {0, 0, 0}, "error 450"},
      {"PutWithoutColumn", "", InvokeKind::kPut, {0, 1}, "error 450"},
      {"PutWithThreeIndexes", "", InvokeKind::kPut, {0, 0, 0, 1}, "error 450"},
      {"BoundWithoutDimension", "LowerBound", InvokeKind::kGet, {}, "error 450"},
      {"ReDimOfOneDimension", "ReDim", InvokeKind::kCall, {0, 1}, "error 450"},
      {"InsertWithoutRow", "InsertRows", InvokeKind::kCall, {}, "error 450"},
      {"DeleteWithThree", "DeleteRows", InvokeKind::kCall, {0, 1, 1}, "error 450"},
      {"SortByTwo", "QuickSort", InvokeKind::kCall, {0, 0}, "error 450"},
      {"CellOutOfRange", "", InvokeKind::kGet, {1, 0}, "error 9"},
      {"PutOutOfRange", "", InvokeKind::kPut, {0, 1, "x"}, "error 9"},
      {"IndexIsNoNumber", "", InvokeKind::kGet, {"first", 0}, "error 13"},
      {"IndexIsNull", "", InvokeKind::kGet, {Null(), 0}, "error 94"},
      {"IndexIsLeftOut", "", InvokeKind::kGet, {Missing(), 0}, "error 13"},
      {"IndexTooLarge", "", InvokeKind::kGet, {3E9, 0}, "error 6"},
      {"DimensionOutOfRange", "UpperBound", InvokeKind::kGet, {3}, "error 9"},
  };
  ForEachRow(rows, [&](const auto& row) {
    std::vector<Value> arguments = row.arguments;
    EXPECT_EQ(Outcome([&] { table.Invoke(row.member, row.kind, arguments); }), row.expected);
    EXPECT_EQ(Shown(table), "-");
  });
}

TEST(LateBoundTableTest, AnUnknownMemberIsNamed) {
  ResultTable table;
  try {
    Call(table, "Clear");
    FAIL() << "the call was answered";
  } catch (const RuntimeError& failure) {
    EXPECT_EQ(failure.description(), "A result table has no member \"Clear\"");
  }
}

}  // namespace
}  // namespace qorcred
