// The rows of the report: codes with their zeros, dates, the empty result and failed statements.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "frame/result_table.h"
#include "frame/runtime_error.h"
#include "tests/reports/grid_fixture.h"

namespace qortest {
namespace {

using qorcred::FromCivil;
using qorcred::Get;
using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::ResultTable;
using qorcred::Value;

class ReportRows : public ReportGridTest {
 protected:
  /// The cell of a report with one column of that caption.
  Value CellAfter(std::string_view caption, Value cell) {
    const auto table = std::make_shared<ResultTable>(1, 2);
    table->At(0, 0) = "first";
    table->At(0, 1) = std::move(cell);
    StoreLayout({"Display Name", std::string(caption)});
    Database().Replace("SELECT rows", {.table = table});
    Show();
    EXPECT_EQ(Host().shownGrid().bound(), ObjectRef(table));
    return table->At(0, 1);
  }
};

TEST_F(ReportRows, CodesGetTheZerosOfTheUnit) {
  const struct {
    const char* name;
    Value digits;
    Value cell;
    Value expected;
  } rows[] = {
      {"Short", 4, 12, "0012"},          {"Exact", 4, 1234, "1234"},
      {"Longer", 4, 12345, "12345"},     {"Zero", 4, 0, "0000"},
      {"OneDigit", 1, 12, "12"},         {"Text", 4, "12", "0012"},
      {"PaddedText", 4, "0012", "0012"}, {"Double", 6, 12.0, "000012"},
      {"NoNumber", 4, "front", "front"}, {"EmptyText", 4, "", ""},
      {"Null", 4, Null{}, Null{}},       {"Empty", 4, Value(), Value()},
      {"DigitsAsText", "4", 12, "0012"}, {"TenDigits", 10, 2147483647, "2147483647"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    SetCodeLength(row.digits);
    EXPECT_EQ(CellAfter("Directory Code", row.cell), row.expected);
  }
}

TEST_F(ReportRows, CodesOfAUnitWithoutLengthStayAsTheyAre) {
  for (const Value& digits : {Value(""), Value(0), Value(-3), Value(Null{}), Value("many")}) {
    SetCodeLength(digits);
    EXPECT_EQ(qorcred::TextOrEmpty(CellAfter("Directory Code", 12)), "12");
  }
}

TEST_F(ReportRows, TheLengthIsThatOfTheUnitOfTheReport) {
  StoreLayout({"Directory Code"});
  AnswerRows({{12}});
  Controller().set_mlngUnitKey(99);
  Show();
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"SELECT MaxDigits"),
            Lines{"ExecuteSelect \"SELECT MaxDigitsDirectoryCode FROM UnitSettings WHERE UnitKey "
                  "= 99\" -> no rows"});
}

TEST_F(ReportRows, TheLengthIsNotAskedForWithoutACodeColumn) {
  StoreLayout({"Display Name"});
  AnswerRows({{"Front desk"}});
  Show();
  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteSelect \"SELECT MaxDigits").empty());
}

TEST_F(ReportRows, AnAbsurdLengthDoesNoHarm) {
  SetCodeLength(2147483647);
  const std::string text = qorcred::TextOrEmpty(CellAfter("Directory Code", 12));
  EXPECT_TRUE(text.ends_with("012"));
  EXPECT_LT(text.size(), 1000U);
}

TEST_F(ReportRows, DatesAreWrittenWithDayMonthYearAndTime) {
  const struct {
    const char* name;
    Value cell;
    Value expected;
  } rows[] = {
      {"Afternoon", FromCivil({2024, 3, 5, 14, 30, 0}), "05 Mar 2024 14:30"},
      {"Midnight", FromCivil({2024, 12, 31, 0, 0, 0}), "31 Dec 2024 00:00"},
      {"SecondsAreLeftOut", FromCivil({2026, 1, 9, 9, 5, 59}), "09 Jan 2026 09:05"},
      {"Text", "3/5/2024 2:30:00 PM", "05 Mar 2024 14:30"},
      {"NoDate", "someday", "someday"},
      {"EmptyText", "", ""},
      {"Null", Null{}, Null{}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(CellAfter("Directory Start Date", row.cell), row.expected);
    EXPECT_EQ(CellAfter("Directory End Date", row.cell), row.expected);
  }
}

TEST_F(ReportRows, OtherColumnsStayAsTheyAre) {
  const Value date = FromCivil({2024, 3, 5, 14, 30, 0});
  for (const std::string_view caption :
       {"Phone No.", "Phone No. Extension", "Phone No. Delay", "Directory Status", "CF Schedule",
        "Do Not Disturb", "CF Time Delay", "directory code", "Directory Code "}) {
    EXPECT_EQ(CellAfter(caption, 12), Value(12)) << caption;
    EXPECT_EQ(CellAfter(caption, date), date) << caption;
  }
}

TEST_F(ReportRows, EveryRowIsFormatted) {
  StoreLayout({"Directory Code", "Directory Start Date", "Directory End Date"});
  SetCodeLength(5);
  std::vector<Row> rows;
  for (std::int32_t at = 0; at < 300; ++at) {
    rows.push_back({at, FromCivil({2024, 3, 5, 0, 0, 0}), FromCivil({2024, 3, 6, 1, 2, 3})});
  }
  AnswerRows(rows);
  Show();
  ASSERT_EQ(Host().shownGrid().rowCount(), 300U);
  for (const std::size_t row : {0U, 1U, 150U, 299U}) {
    const std::string number = std::to_string(row);
    EXPECT_EQ(Shown(row), (std::vector<std::string>{std::string(5 - number.size(), '0') + number,
                                                    "05 Mar 2024 00:00", "06 Mar 2024 01:02"}));
  }
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect").size(), 3U);
}

TEST_F(ReportRows, OfTwoCodeColumnsTheLastCounts) {
  StoreLayout({"Directory Code", "Directory Code"});
  SetCodeLength(3);
  AnswerRows({{1, 2}});
  Show();
  EXPECT_EQ(Shown(), (std::vector<std::string>{"1", "002"}));
}

TEST_F(ReportRows, ColumnsThatTheResultLacksAreNotFormatted) {
  StoreLayout({"Display Name", "Directory Code", "Directory Start Date", "Directory End Date"});
  SetCodeLength(3);
  AnswerRows({{"Front desk", 7}});
  Show();
  EXPECT_EQ(Shown(), (std::vector<std::string>{"Front desk", "007", "", ""}));
  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(ReportRows, AnEmptyResultShowsNoRow) {
  StoreLayout({"Directory Code", "Directory Start Date", "Directory Status"});
  SetCodeLength(4);

  Show();

  EXPECT_EQ(Host().shownGrid().rowCount(), 0U);
  ASSERT_NE(Host().shownGrid().bound(), nullptr);
  EXPECT_EQ(Get(*Host().shownGrid().bound(), "UpperBound", 1), Value(std::int32_t{-1}));
  Lines ending = Host().transcript().StartingWith("objGrid.");
  ASSERT_GE(ending.size(), 3U);
  ending.erase(ending.begin(), ending.end() - 3);
  EXPECT_EQ(ending, (Lines{"objGrid.Array = <object>", "objGrid.ReBind", "objGrid.Refresh"}));
  EXPECT_TRUE(Host().services().trapped().empty());
}

// The table is bound before its blank row goes, and bound anew behind that.
TEST_F(ReportRows, TheBlankRowIsRemovedBetweenBindingAndRebinding) {
  StoreLayout({"Display Name"});
  const auto inner = std::make_shared<ResultTable>();
  Database().Replace("SELECT rows", {.table = Host().Watched("rows", inner)});
  Show();
  const Lines lines = Host().transcript().Read(Detail::kEffects);
  const auto at = std::find(lines.begin(), lines.end(), "objGrid.Array = <object>");
  ASSERT_NE(at, lines.end());
  EXPECT_EQ(Lines(at, lines.end()),
            (Lines{"objGrid.Array = <object>", "rows(0, 0) -> \"\"", "rows.DeleteRows 0",
                   "objGrid.ReBind", "objGrid.Refresh"}));
}

TEST_F(ReportRows, ARowThatStartsWithANullIsNoBlankRow) {
  StoreLayout({"Display Name", "Phone No."});
  AnswerRows({{Null{}, "555"}});
  Show();
  EXPECT_EQ(Host().shownGrid().rowCount(), 1U);
  EXPECT_EQ(Shown(), (std::vector<std::string>{"", "555"}));
}

// The first cell alone tells; hosts let the report begin with a column that every row fills.
TEST_F(ReportRows, ARowThatStartsWithAnEmptyTextIsTakenForTheBlankOne) {
  StoreLayout({"Display Name", "Phone No."});
  AnswerRows({{"", "555"}, {"", "556"}});
  Show();
  EXPECT_EQ(Host().shownGrid().rowCount(), 1U);
  EXPECT_EQ(Shown(), (std::vector<std::string>{"", "556"}));
}

// A failed report leaves the grid as it was, but for its columns.
TEST_F(ReportRows, AFailedStatementStopsBeforeAnythingIsShown) {
  StoreLayout({"Directory Code", "Directory Status"});
  AnswerRows({{12, -1}});
  Show();
  Host().StartOver();
  Database().Replace("SELECT rows", {.error = "syntax error"});

  Show();

  EXPECT_TRUE(TranscriptIs(R"~(
    CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "SELECT FieldNameDisplay, DisplayWidth, FieldName FROM TenantSelectionFields WHERE FieldName LIKE 'DirectoryCode._%'  AND Display = 1 ORDER BY DisplaySeq" -> 2 rows
    objGrid.Columns.Count -> 2
    objGrid.Columns(0).Caption = "Directory Code"
    objGrid.Columns(0).Width = 1200
    objGrid.Columns(0).Visible = True
    objGrid.Columns(1).Caption = "Directory Status"
    objGrid.Columns(1).Width = 1200
    objGrid.Columns(1).Visible = True
    ExecuteSelect "SELECT rows FROM DirectoryCode" -> no rows ! "syntax error"
    Release "qorDBI.clsDBManager"
  )~"));
  EXPECT_EQ(Host().shownGrid().rowCount(), 1U);
}

TEST_F(ReportRows, FlagOrTextAloneIsAnError) {
  StoreLayout({"Display Name"});
  for (const Answer& answer : {Answer{.rows = {{"x"}}, .flag = true},
                               Answer{.rows = {{"x"}}, .error = "warning", .flag = false}}) {
    Database().Replace("SELECT rows", answer);
    Show();
    EXPECT_TRUE(Host().transcript().StartingWith("objGrid.Array").empty());
  }
}

TEST_F(ReportRows, AnErrorOfAnEarlierStatementDoesNotStopIt) {
  StoreLayout({"Display Name"});
  Database().Error("FROM Units", "locked");
  EXPECT_EQ(Controller().pbGetUnitName(Connection(), kUnit), "");
  Database().Replace(
      "SELECT FieldNameDisplay, DisplayWidth",
      {.rows = {{"Display Name", 1200, "DirectoryCode.DisplayName"}}, .leavesVerdict = true});
  Database().Replace("SELECT rows", {.rows = {{"Front desk"}}, .leavesVerdict = true});

  Show();

  EXPECT_EQ(Host().transcript().StartingWith("objGrid.Array").size(), 1U);
  EXPECT_EQ(Host().shownGrid().rowCount(), 1U);
}

TEST_F(ReportRows, TakesTheStatementAsItIs) {
  const std::string sql = "SELECT 'it''s' -- \"x\"\n";
  ObjectRef layout;
  Controller().pvDirCodeReportResult(kUnit, Connection(), Host().grid(), sql, layout, Item());
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"SELECT 'it"),
            Lines{"ExecuteSelect \"SELECT 'it''s' -- \"\"x\"\"\\n\" -> no rows"});
}

TEST_F(ReportRows, AnAnswerThatIsNoTableEndsTheOperation) {
  StoreLayout({"Display Name"});
  Database().On("SELECT rows", {.nothing = true});
  Show();
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_TRUE(Host().transcript().StartingWith("objGrid.Array").empty());
}

TEST_F(ReportRows, ACellThatCannotBeFormattedEndsTheOperation) {
  StoreLayout({"Directory Start Date"});
  AnswerRows({{1e12}});
  Show();
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().first, "pvDirCodeReportResult");
  EXPECT_TRUE(Host().transcript().StartingWith("objGrid.Array").empty());
}

TEST_F(ReportRows, NeedsNoFilterScreen) {
  StoreLayout({"Display Name"});
  AnswerRows({{"Front desk"}});
  Controller().set_gfrmTxFilter(nullptr);
  Show();
  EXPECT_EQ(Shown(), std::vector<std::string>{"Front desk"});
}

}  // namespace
}  // namespace qortest
