// Appending one result table to another: the same in both reports.
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "frame/result_table.h"
#include "frame/runtime_error.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::ResultTable;
using qorcred::Value;

using Cells = std::vector<Row>;

std::shared_ptr<ResultTable> TableOf(const Cells& cells) {
  auto table = std::make_shared<ResultTable>(cells.size(), cells.front().size());
  for (std::size_t row = 0; row < cells.size(); ++row) {
    for (std::size_t column = 0; column < cells[row].size(); ++column) {
      table->At(static_cast<std::int32_t>(row), static_cast<std::int32_t>(column)) =
          cells[row][column];
    }
  }
  return table;
}

Cells CellsOf(const ResultTable& table) {
  Cells cells;
  for (std::int32_t row = table.LowerBound(1); row <= table.UpperBound(1); ++row) {
    Row& added = cells.emplace_back();
    for (std::int32_t column = table.LowerBound(2); column <= table.UpperBound(2); ++column) {
      added.push_back(table.At(row, column));
    }
  }
  return cells;
}

template <typename Report>
class TableMerge : public ReportTest<Report> {
 protected:
  bool Merge(const ObjectRef& target, const ObjectRef& source) {
    return this->Controller().pbMergeXArrayDBObjects(target, source);
  }
  ObjectRef Watched(std::string name, ObjectRef table) {
    return this->Host().Watched(std::move(name), std::move(table));
  }
};
TYPED_TEST_SUITE(TableMerge, BothReports, ReportNames);

TYPED_TEST(TableMerge, AppendsAllButTheLastRowAndTheLastColumn) {
  const auto target = TableOf({{"a", "b", "c"}});
  const auto source = TableOf({{1, 2, 3}, {4, Null{}, 6}, {7, 8, 9}});

  EXPECT_TRUE(this->Merge(target, source));

  EXPECT_EQ(CellsOf(*target), (Cells{{"a", "b", "c"}, {1, 2, Value()}, {4, Null{}, Value()}}));
  EXPECT_EQ(CellsOf(*source), (Cells{{1, 2, 3}, {4, Null{}, 6}, {7, 8, 9}}));
}

TYPED_TEST(TableMerge, GrowsRowByRowAndCopiesCellByCell) {
  const ObjectRef target = this->Watched("arrXDBObj1", TableOf({{"a", "b"}, {"c", "d"}}));
  const ObjectRef source = this->Watched("arrXDBObj2", TableOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}));

  EXPECT_TRUE(this->Merge(target, source));

  EXPECT_TRUE(this->TranscriptIs(R"~(
    arrXDBObj2.UpperBound(1) -> 2
    arrXDBObj1.UpperBound(1) -> 1
    arrXDBObj1.LowerBound(2) -> 0
    arrXDBObj1.UpperBound(2) -> 1
    arrXDBObj1.ReDim 0 2 0 1
    arrXDBObj2.UpperBound(2) -> 2
    arrXDBObj2(0, 0) -> 1
    arrXDBObj1(2, 0) = 1
    arrXDBObj2(0, 1) -> 2
    arrXDBObj1(2, 1) = 2
    arrXDBObj1.UpperBound(1) -> 2
    arrXDBObj1.LowerBound(2) -> 0
    arrXDBObj1.UpperBound(2) -> 1
    arrXDBObj1.ReDim 0 3 0 1
    arrXDBObj2.UpperBound(2) -> 2
    arrXDBObj2(1, 0) -> 4
    arrXDBObj1(3, 0) = 4
    arrXDBObj2(1, 1) -> 5
    arrXDBObj1(3, 1) = 5
  )~"));
}

TYPED_TEST(TableMerge, OfASingleRowAddsNothing) {
  const auto inner = TableOf({{"a", "b"}});
  const ObjectRef target = this->Watched("arrXDBObj1", inner);

  EXPECT_TRUE(this->Merge(target, this->Watched("arrXDBObj2", TableOf({{1, 2}}))));

  EXPECT_EQ(CellsOf(*inner), (Cells{{"a", "b"}}));
  EXPECT_TRUE(this->TranscriptIs("arrXDBObj2.UpperBound(1) -> 0"));
}

TYPED_TEST(TableMerge, OfASingleColumnAddsEmptyRows) {
  const auto target = TableOf({{"a", "b"}});

  EXPECT_TRUE(this->Merge(target, TableOf({{1}, {2}, {3}})));

  EXPECT_EQ(CellsOf(*target), (Cells{{"a", "b"}, {Value(), Value()}, {Value(), Value()}}));
}

TYPED_TEST(TableMerge, OfAnEmptyResultAddsNothing) {
  const auto target = TableOf({{"a"}});
  EXPECT_TRUE(this->Merge(target, std::make_shared<ResultTable>()));
  EXPECT_EQ(CellsOf(*target), (Cells{{"a"}}));
}

TYPED_TEST(TableMerge, OfATableWithoutRowsAddsNothing) {
  const auto target = TableOf({{"a"}});
  const auto source = std::make_shared<ResultTable>();
  source->ReDim(0, -1, 0, 0);
  EXPECT_TRUE(this->Merge(target, source));
  EXPECT_EQ(CellsOf(*target), (Cells{{"a"}}));
}

TYPED_TEST(TableMerge, IntoAnEmptyResultKeepsItsRow) {
  const auto target = std::make_shared<ResultTable>();
  EXPECT_TRUE(this->Merge(target, TableOf({{1, 2}, {3, 4}})));
  EXPECT_EQ(CellsOf(*target), (Cells{{""}, {1}}));
}

TYPED_TEST(TableMerge, LosesTheLastRowOfEveryTableInTurn) {
  const auto target = TableOf({{"a", "b"}});
  EXPECT_TRUE(this->Merge(target, TableOf({{1, 2}, {3, 4}})));
  EXPECT_TRUE(this->Merge(target, TableOf({{5, 6}, {7, 8}})));
  EXPECT_EQ(CellsOf(*target), (Cells{{"a", "b"}, {1, Value()}, {5, Value()}}));
}

// The rows to copy are counted once, before the table grows.
TYPED_TEST(TableMerge, OfATableWithItselfEnds) {
  const auto table = TableOf({{1, 2}, {3, 4}, {5, 6}});
  EXPECT_TRUE(this->Merge(table, table));
  EXPECT_EQ(CellsOf(*table), (Cells{{1, 2}, {3, 4}, {5, 6}, {1, Value()}, {3, Value()}}));
}

TYPED_TEST(TableMerge, KeepsTheColumnsOfTheTarget) {
  const auto target = std::make_shared<ResultTable>();
  target->ReDim(0, 0, 0, 2);
  target->At(0, 2) = "x";
  EXPECT_TRUE(this->Merge(target, TableOf({{1, 2}, {3, 4}})));
  EXPECT_EQ(CellsOf(*target), (Cells{{"", Value(), "x"}, {1, Value(), Value()}}));
}

TYPED_TEST(TableMerge, ThatDoesNotFitKeepsWhatWasAppended) {
  const auto target = TableOf({{"a"}});

  EXPECT_FALSE(this->Merge(target, TableOf({{1, 2, 3}, {4, 5, 6}})));

  EXPECT_EQ(CellsOf(*target), (Cells{{"a"}, {1}}));
  EXPECT_TRUE(this->TranscriptIs(R"~(
    Trapped pbMergeXArrayDBObjects 9 "Subscript out of range"
  )~"));
}

TYPED_TEST(TableMerge, NeedsBothTables) {
  const auto table = TableOf({{1, 2}, {3, 4}});
  EXPECT_FALSE(this->Merge(nullptr, table));
  EXPECT_FALSE(this->Merge(table, nullptr));
  EXPECT_EQ(CellsOf(*table), (Cells{{1, 2}, {3, 4}}));
  ASSERT_EQ(this->Host().services().trapped().size(), 2U);
  for (const auto& trapped : this->Host().services().trapped()) {
    EXPECT_EQ(trapped,
              std::pair(std::string("pbMergeXArrayDBObjects"), ErrorNumber::kObjectNotSet));
  }
}

TYPED_TEST(TableMerge, ShowsNoMessageAndKeepsNoTable) {
  const auto target = TableOf({{"a"}});
  const auto source = TableOf({{1, 2}, {3, 4}});
  EXPECT_TRUE(this->Merge(target, source));
  EXPECT_EQ(target.use_count(), 1);
  EXPECT_EQ(source.use_count(), 1);
  EXPECT_TRUE(this->Host().transcript().Read(Detail::kEverything).empty());
}

// Whichever call fails, the rows before it stay and nothing else happens.
TYPED_TEST(TableMerge, EndsAtTheFailingCall) {
  const Cells source{{1, 2}, {3, 4}, {5, 6}};
  std::size_t calls = 0;
  for (std::size_t n = 1;; ++n) {
    const auto inner = TableOf({{"a", "b"}});
    const ObjectRef target = this->Watched("arrXDBObj1", inner);
    const ObjectRef from = this->Watched("arrXDBObj2", TableOf(source));
    this->Host().StartOver();
    this->Host().gate().FailAt(n);
    const bool merged = this->Merge(target, from);
    if (this->Host().gate().failed().empty()) {
      EXPECT_TRUE(merged);
      EXPECT_EQ(CellsOf(*inner), (Cells{{"a", "b"}, {1, Value()}, {3, Value()}}));
      calls = n - 1;
      break;
    }
    SCOPED_TRACE(this->Host().gate().failed());
    EXPECT_FALSE(merged);
    EXPECT_EQ(this->Host().gate().calls(), n);
    EXPECT_EQ(this->Host().services().trapped().size(), 1U);
    // One call counts the rows; each row takes seven: four to grow, one for the columns, two to
    // copy its cell.
    const std::size_t done = n - 1;
    Cells expected{{"a", "b"}};
    if (done >= 5) expected.push_back({done >= 8 ? Value(1) : Value(), Value()});
    if (done >= 12) expected.push_back({Value(), Value()});
    EXPECT_EQ(CellsOf(*inner), expected);
    EXPECT_EQ(inner.use_count(), 2);
  }
  EXPECT_EQ(calls, 15U);
}

}  // namespace
}  // namespace qortest
