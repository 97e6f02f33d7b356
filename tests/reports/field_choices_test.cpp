// Filling the filter rows' lists with the fields of the directory-code report.
#include <string>
#include <string_view>
#include <vector>

#include "frame/runtime_error.h"
#include "host/screens/list_model.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::Null;

constexpr std::string_view kQuery =
    "ExecuteSelect \"SELECT RID, FieldNameDisplay FROM TenantSelectionFields WHERE GridType = 0 "
    "AND FieldName LIKE 'DirectoryCode._%' ORDER BY Display DESC, DisplaySeq ASC \"";

class FieldChoices : public DirCodeReportTest {
 protected:
  std::string Fill() { return Controller().pbComboData(Connection()); }
  void Store(std::vector<Row> rows) {
    Database().Replace("SELECT RID, FieldNameDisplay", {.rows = std::move(rows)});
  }
  /// "text=number" for each item of a row's list.
  std::vector<std::string> ItemsOf(std::int32_t row) {
    const auto& list = RowControl<qorhost::ListModel>(Host(), "cboField", row);
    std::vector<std::string> items;
    for (std::int32_t at = 0; at < list.count(); ++at) {
      items.push_back(list.Text(at) + "=" + std::to_string(list.ItemData(at)));
    }
    return items;
  }
};

TEST_F(FieldChoices, FillEveryListAndTellTheCaptions) {
  Store({{51, "Directory Code"}, {62, "Directory Status"}});

  EXPECT_EQ(Fill(), "Directory Code|Directory Status");

  std::string lines =
      "CreateObject \"qorDBI.clsDBManager\"\n" + std::string(kQuery) + " -> 2 rows\n";
  lines += "cboField.Count -> 7\n";
  for (std::int32_t row = 0; row < kFilterRows; ++row) {
    const std::string list = "cboField(" + std::to_string(row) + ")";
    lines += list + ".Clear\n" + list + ".AddItem \"Directory Code\"\n" + list +
             ".NewIndex -> 0\n" + list + ".ItemData(0) = 51\n" + list +
             ".AddItem \"Directory Status\"\n" + list + ".NewIndex -> 1\n" + list +
             ".ItemData(1) = 62\n";
    EXPECT_EQ(ItemsOf(row), (std::vector<std::string>{"Directory Code=51", "Directory Status=62"}));
    EXPECT_EQ(RowControl<qorhost::ListModel>(Host(), "cboField", row).selected(), -1);
  }
  EXPECT_TRUE(TranscriptIs(lines + "Release \"qorDBI.clsDBManager\""));
}

// Hosts whose tables are objects of their own see when the cells are read.
TEST_F(FieldChoices, ReadEachFieldsIdBeforeItsCaption) {
  Database().Replace("SELECT RID, FieldNameDisplay", Host().WatchedRow({51, "Directory Code"}));
  EXPECT_EQ(Fill(), "Directory Code");
  Lines read;
  for (const std::string& line : Host().transcript().Read(Detail::kEverything)) {
    if (line.starts_with("rows(0, 0)") || line.starts_with("rows(0, 1)")) read.push_back(line);
  }
  // Whether there are rows is asked of the first cell.
  ASSERT_GE(read.size(), 2U);
  EXPECT_EQ(Lines(read.end() - 2, read.end()),
            (Lines{"rows(0, 0) -> 51", "rows(0, 1) -> \"Directory Code\""}));
}

TEST_F(FieldChoices, ReplaceWhatTheListsHeld) {
  ChooseField(Host(), 3, 99);
  Store({{51, "Directory Code"}});
  EXPECT_EQ(Fill(), "Directory Code");
  EXPECT_EQ(Fill(), "Directory Code");
  EXPECT_EQ(ItemsOf(3), std::vector<std::string>{"Directory Code=51"});
}

TEST_F(FieldChoices, OfNoFieldsEmptyTheLists) {
  ChooseField(Host(), 0, 99);
  EXPECT_EQ(Fill(), "");
  for (std::int32_t row = 0; row < kFilterRows; ++row) {
    EXPECT_TRUE(ItemsOf(row).empty());
  }
  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(FieldChoices, TakeCaptionsAsTheyAre) {
  Store({{1, "a|b"}, {2, Null{}}, {3, " \"c\" "}, {4, 5}});
  EXPECT_EQ(Fill(), "a|b|| \"c\" |5");
  EXPECT_EQ(ItemsOf(6), (std::vector<std::string>{"a|b=1", "=2", " \"c\" =3", "5=4"}));
}

TEST_F(FieldChoices, WithAFailedStatementEmptyTheLists) {
  ChooseField(Host(), 0, 99);
  Database().Error("SELECT RID, FieldNameDisplay", "no such table");
  EXPECT_EQ(Fill(), "");
  EXPECT_TRUE(ItemsOf(0).empty());
  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(FieldChoices, ThatCannotBeReadLeaveTheLists) {
  ChooseField(Host(), 0, 99);
  Host().gate().FailOn("ExecuteSelect");
  EXPECT_EQ(Fill(), "");
  EXPECT_EQ(ItemsOf(0), std::vector<std::string>{"field=99"});
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front(),
            std::pair(std::string("pbComboData"), ErrorNumber::kApplicationDefined));
}

TEST_F(FieldChoices, EndAtAListThatFails) {
  Store({{51, "Directory Code"}});
  Host().gate().FailOn("cboField.Count");
  EXPECT_EQ(Fill(), "");
  Host().gate().FailOn("cboField..AddItem");
  EXPECT_EQ(Fill(), "");
  EXPECT_TRUE(ItemsOf(0).empty());
  EXPECT_EQ(Host().services().trapped().size(), 2U);
}

TEST_F(FieldChoices, WithoutAScreenEndTheOperation) {
  Controller().set_gfrmTxFilter(nullptr);
  Store({{51, "Directory Code"}});
  EXPECT_EQ(Fill(), "");
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().second, ErrorNumber::kObjectNotSet);
}

TEST_F(FieldChoices, AreWhatTheStatementIsComposedOf) {
  Store({{52, "Phone No."}, {51, "Directory Code"}});
  Database().Select("AND RID = 51", {{"DirectoryCode.DirectoryCode"}});
  (void)Fill();
  RowControl<qorhost::ListModel>(Host(), "cboField", 0).Select(1);
  ChooseOperator(Host(), 0, 0);
  EnterValues(Host(), 0, "12");
  EXPECT_NE(
      Controller().pbGenSql(Connection(), kUnit).find(" AND DirectoryCode.DirectoryCode IN (12) "),
      std::string::npos);
}

}  // namespace
}  // namespace qortest
