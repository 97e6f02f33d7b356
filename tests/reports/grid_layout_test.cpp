// Laying the columns of the report's grid out, and the whole course of showing a report.
#include <gmock/gmock.h>

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "frame/runtime_error.h"
#include "tests/reports/grid_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::FromCivil;
using qorcred::Get;
using qorcred::Null;
using qorcred::Value;

constexpr std::string_view kLayoutQuery =
    R"~(ExecuteSelect "SELECT FieldNameDisplay, DisplayWidth, FieldName FROM TenantSelectionFields WHERE FieldName LIKE 'DirectoryCode._%'  AND Display = 1 ORDER BY DisplaySeq")~";
constexpr std::string_view kScheduleQuery =
    R"~(ExecuteSelect "SELECT ScheduleID, ScheduleName FROM Schedules WHERE UnitKey = 7 ORDER BY UnitKey, ScheduleID")~";

class ReportLayout : public ReportGridTest {};

/// The lines of one pair of value items.
std::string PairLines(std::string_view column, std::string_view yes, std::string_view no) {
  const std::string items = "objGrid.Columns(" + std::string(column) + ").ValueItems";
  return "colValueItem.Value = -1\ncolValueItem.DisplayValue = \"" + std::string(yes) + "\"\n" +
         items + ".Add\ncolValueItem.Value = 0\ncolValueItem.DisplayValue = \"" + std::string(no) +
         "\"\n" + items + ".Add\n" + items + ".Presentation = 1\n" + items + ".Translate = True\n";
}

TEST_F(ReportLayout, OfStoredFieldsShowsTheReportInThisOrder) {
  Host().ReplaceGrid(5);
  Database().Select("SELECT FieldNameDisplay, DisplayWidth",
                    {{"Directory Code", 900, "DirectoryCode.DirectoryCode"},
                     {"Directory Status", 1500.5, "DirectoryCode.Active"},
                     {"DND Schedule", "1800", "DirectoryCode.DNDScheduleID"},
                     {"Directory Start Date", Null{}, "DirectoryCode.StartDate"}});
  Database().Select("FROM Schedules", {{5, "Day"}, {9, "Night"}});
  AnswerRows({{12, true, 9, FromCivil({2024, 3, 5, 14, 30, 0})}, {7, false, Null{}, Null{}}});
  SetCodeLength(4);

  Show();

  EXPECT_TRUE(TranscriptIs("CreateObject \"qorDBI.clsDBManager\"\n" + std::string(kLayoutQuery) +
                           R"~( -> 4 rows
    objGrid.Columns.Count -> 5
    objGrid.Columns(0).Caption = "Directory Code"
    objGrid.Columns(0).Width = 900
    objGrid.Columns(0).Visible = True
    objGrid.Columns(1).Caption = "Directory Status"
    objGrid.Columns(1).Width = 1500.5
    objGrid.Columns(1).Visible = True
    objGrid.Columns(2).Caption = "DND Schedule"
    objGrid.Columns(2).Width = "1800"
    objGrid.Columns(2).Visible = True
    objGrid.Columns(3).Caption = "Directory Start Date"
    objGrid.Columns(3).Visible = True
    objGrid.Columns.Remove 4
    ExecuteSelect "SELECT rows FROM DirectoryCode" -> 2 rows
    objGrid.Columns.Count -> 4
    objGrid.Columns(0).Caption -> "Directory Code"
    objGrid.Columns(1).Caption -> "Directory Status"
    )~" + PairLines("1", "Active", "Inactive") +
                           R"~(
    objGrid.Columns(2).Caption -> "DND Schedule"
    )~" + std::string(kScheduleQuery) +
                           R"~( -> 2 rows
    colValueItem.Value = 5
    colValueItem.DisplayValue = "Day"
    objGrid.Columns(2).ValueItems.Add
    colValueItem.Value = 9
    colValueItem.DisplayValue = "Night"
    objGrid.Columns(2).ValueItems.Add
    colValueItem.Value = ""
    colValueItem.DisplayValue = "<None>"
    objGrid.Columns(2).ValueItems.Add
    objGrid.Columns(2).ValueItems.Translate = True
    objGrid.Columns(3).Caption -> "Directory Start Date"
    CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "SELECT MaxDigitsDirectoryCode FROM UnitSettings WHERE UnitKey = 7" -> 1 row
    Release "qorDBI.clsDBManager"
    objGrid.Array = <object>
    objGrid.ReBind
    objGrid.Refresh
    Release "qorDBI.clsDBManager"
  )~"));
  EXPECT_EQ(Shown(0), (std::vector<std::string>{"0012", "Active", "Night", "05 Mar 2024 14:30"}));
  EXPECT_EQ(Shown(1), (std::vector<std::string>{"0007", "Inactive", "<None>", ""}));
  EXPECT_EQ(Host().shownGrid().rowCount(), 2U);
}

TEST_F(ReportLayout, WithoutStoredFieldsHasTheFixedColumns) {
  Database().Select("FROM Schedules", {{5, "Day"}});
  SetCodeLength(3);
  AnswerRows({{12, "555", "7", 3, "Front desk", -1, FromCivil({2024, 3, 5, 0, 0, 0}),
               FromCivil({2024, 12, 31, 23, 59, 59}), -1, 5, 0, Null{}, "556", "8", 4, 0, -1}});

  Show();

  std::string lines = "CreateObject \"qorDBI.clsDBManager\"\n" + std::string(kLayoutQuery) +
                      " -> no rows\nobjGrid.Columns.Count -> 17\n";
  for (std::size_t at = 0; at < std::size(kFixedCaptions); ++at) {
    const std::string column = "objGrid.Columns(" + std::to_string(at) + ")";
    lines += column + ".Caption = \"" + std::string(kFixedCaptions[at]) + "\"\n" + column +
             ".Visible = True\n";
  }
  lines += "ExecuteSelect \"SELECT rows FROM DirectoryCode\" -> 1 row\n";
  lines += "objGrid.Columns.Count -> 17\n";
  const std::string schedules = std::string(kScheduleQuery) + " -> 1 row\n";
  for (std::size_t at = 0; at < std::size(kFixedCaptions); ++at) {
    const std::string number = std::to_string(at);
    const std::string items = "objGrid.Columns(" + number + ").ValueItems";
    lines +=
        "objGrid.Columns(" + number + ").Caption -> \"" + std::string(kFixedCaptions[at]) + "\"\n";
    if (at == 5) {
      lines += PairLines(number, "Active", "Inactive");
    } else if (at == 8 || at == 10 || at == 15 || at == 16) {
      lines += PairLines(number, "True", "False");
    } else if (at == 9 || at == 11) {
      lines += schedules + "colValueItem.Value = 5\ncolValueItem.DisplayValue = \"Day\"\n" + items +
               ".Add\ncolValueItem.Value = \"\"\ncolValueItem.DisplayValue = \"<None>\"\n" + items +
               ".Add\n" + items + ".Translate = True\n";
    }
  }
  lines += R"~(CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "SELECT MaxDigitsDirectoryCode FROM UnitSettings WHERE UnitKey = 7" -> 1 row
    Release "qorDBI.clsDBManager"
    objGrid.Array = <object>
    objGrid.ReBind
    objGrid.Refresh
    Release "qorDBI.clsDBManager")~";
  EXPECT_TRUE(TranscriptIs(lines));
  EXPECT_EQ(Shown(),
            (std::vector<std::string>{"012", "555", "7", "3", "Front desk", "Active",
                                      "05 Mar 2024 00:00", "31 Dec 2024 23:59", "True", "Day",
                                      "False", "<None>", "556", "8", "4", "False", "True"}));
}

TEST_F(ReportLayout, RemovesTheColumnsBeyondItFromTheEnd) {
  StoreLayout({"Directory Code"});
  Host().ReplaceGrid(4);

  Show();

  EXPECT_EQ(Captions(), std::vector<std::string>{"Directory Code"});
  EXPECT_EQ(
      Host().transcript().StartingWith("objGrid.Columns.Remove"),
      (Lines{"objGrid.Columns.Remove 3", "objGrid.Columns.Remove 2", "objGrid.Columns.Remove 1"}));
}

TEST_F(ReportLayout, FillsAsManyColumnsAsTheGridHas) {
  StoreLayout({"Directory Code", "Display Name", "Phone No."});
  Host().ReplaceGrid(2);

  Show();

  EXPECT_EQ(Captions(), (std::vector<std::string>{"Directory Code", "Display Name"}));
  EXPECT_TRUE(Host().transcript().StartingWith("objGrid.Columns.Remove").empty());
  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(ReportLayout, BearsAGridWithoutColumns) {
  Host().ReplaceGrid(0);
  AnswerRows({{12}});
  Show();
  EXPECT_EQ(GridWrites(), (Lines{"objGrid.Array = <object>", "objGrid.ReBind", "objGrid.Refresh"}));
  EXPECT_EQ(Host().shownGrid().rowCount(), 1U);
}

TEST_F(ReportLayout, ShowsColumnsThatWereHidden) {
  StoreLayout({"Display Name"});
  qorcred::Put(Host().shownGrid().columns().at(0), "Visible", false);
  Show();
  EXPECT_TRUE(Host().shownGrid().columns().at(0).visible());
}

// The result does not tell the fields apart: its columns match the grid's by position.
TEST_F(ReportLayout, MatchesColumnsByPosition) {
  StoreLayout({"Display Name", "Directory Code"});
  SetCodeLength(4);
  AnswerRows({{12, "Front desk"}, {"x", 7}});
  Show();
  EXPECT_EQ(Shown(0), (std::vector<std::string>{"12", "Front desk"}));
  EXPECT_EQ(Shown(1), (std::vector<std::string>{"x", "0007"}));
}

TEST_F(ReportLayout, ComesBackAsATable) {
  StoreLayout({"Directory Code", "Display Name"});
  Show();
  ASSERT_NE(Layout(), nullptr);
  EXPECT_EQ(Get(*Layout(), "UpperBound", 1), Value(std::int32_t{1}));
  EXPECT_EQ(Get(*Layout(), "Value", 1, 0), Value("Display Name"));
  EXPECT_EQ(Get(*Layout(), "Value", 1, 1), Value(1200));
  EXPECT_EQ(Get(*Layout(), "Value", 1, 2), Value("DirectoryCode.Display Name"));
}

TEST_F(ReportLayout, OfFixedColumnsComesBackAsATableWithoutWidths) {
  Show();
  ASSERT_NE(Layout(), nullptr);
  EXPECT_EQ(Get(*Layout(), "LowerBound", 1), Value(std::int32_t{0}));
  EXPECT_EQ(Get(*Layout(), "UpperBound", 1), Value(std::int32_t{16}));
  EXPECT_EQ(Get(*Layout(), "LowerBound", 2), Value(std::int32_t{0}));
  EXPECT_EQ(Get(*Layout(), "UpperBound", 2), Value(std::int32_t{2}));
  for (std::int32_t row = 0; row < 17; ++row) {
    EXPECT_EQ(Get(*Layout(), "Value", row, 0), Value(kFixedCaptions[row]));
    EXPECT_EQ(Get(*Layout(), "Value", row, 1), Value());
    EXPECT_EQ(Get(*Layout(), "Value", row, 2), Value());
  }
}

TEST_F(ReportLayout, ThatCannotBeReadIsTheFixedOne) {
  Database().Error("SELECT FieldNameDisplay, DisplayWidth", "no such table");
  AnswerRows({{12}});
  Show();
  EXPECT_EQ(Captions(),
            std::vector<std::string>(std::begin(kFixedCaptions), std::end(kFixedCaptions)));
  EXPECT_EQ(Host().shownGrid().rowCount(), 1U);
}

TEST(GridLayoutPage, HasTheFixedCaptionsInTheirOrder) {
  std::ifstream page(QORCRED_DOCS_DIR "/host-reports.md");
  std::string text;
  // In one line, however the page is broken.
  for (std::string word; page >> word;) text += word + " ";
  std::string captions = "the fixed 17 captions:";
  for (const std::string_view caption : kFixedCaptions) {
    captions += std::string(caption == kFixedCaptions[0] ? " " : ", ") + std::string(caption);
  }
  EXPECT_THAT(text, testing::HasSubstr(captions + ". "));
}

TEST_F(ReportLayout, ThatCannotBeAppliedEndsTheOperation) {
  StoreLayout({"Directory Code", "Display Name"});
  Host().gate().FailOn("objGrid.Columns..Width=");
  Show();
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front(),
            std::pair(std::string("pvDirCodeReportResult"), ErrorNumber::kApplicationDefined));
  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteSelect \"SELECT rows").empty());
  EXPECT_NE(Layout(), nullptr) << "the table was read by then";
}

TEST_F(ReportLayout, WithoutAGridEndsTheOperation) {
  qorcred::ObjectRef layout;
  Controller().pvDirCodeReportResult(kUnit, Connection(), nullptr, kReportSql, layout);
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().second, ErrorNumber::kObjectNotSet);
  EXPECT_EQ(Host().services().LiveComponents(), 0);
}

TEST_F(ReportLayout, OfTheSameGridTwiceIsTheSame) {
  StoreLayout({"Directory Code", "Directory Status"});
  SetCodeLength(4);
  AnswerRows({{12, -1}});
  Show();
  const std::vector<std::string> once = Shown();
  Show();
  EXPECT_EQ(Shown(), once);
  EXPECT_EQ(once, (std::vector<std::string>{"0012", "Active"}));
}

}  // namespace
}  // namespace qortest
