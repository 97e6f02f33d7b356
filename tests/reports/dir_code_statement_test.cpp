// The statement of the directory-code report: its select list, its filter rows and the calls that
// composing it takes.
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/date.h"
#include "frame/runtime_error.h"
#include "host/screens/list_model.h"
#include "host/screens/picker_model.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::FromCivil;
using qorcred::Null;

constexpr std::string_view kFixedList =
    "DirectoryCode.DirectoryCode, DirectoryCode.PhoneNumber, DirectoryCode.Extension, "
    "DirectoryCode.TimeDelay, DirectoryCode.DisplayName, DirectoryCode.Active, "
    "DirectoryCode.StartDate, DirectoryCode.EndDate, DirectoryCode.IsDNDChecked, "
    "DirectoryCode.DNDScheduleID, DirectoryCode.IsCFChecked, DirectoryCode.CFScheduleID, "
    "DirectoryCode.CFPhoneNumber, DirectoryCode.CFExtension, DirectoryCode.CFTimeDelay, "
    "DirectoryCode.ShowDisplayName, DirectoryCode.ShowDirectoryCode";

constexpr std::string_view kListQuery =
    "ExecuteSelect \"SELECT FieldName FROM TenantSelectionFields WHERE FieldName LIKE "
    "'DirectoryCode._%' ORDER BY DisplaySeq\"";

/// The statement for the unit kUnit with that select list and those conditions.
std::string Statement(std::string_view list, std::string_view conditions = "") {
  return "SELECT " + std::string(list) +
         " FROM DirectoryCode WHERE DirectoryCode.UnitKey = 7 AND DirectoryCode.DirectoryCode >= "
         "0" +
         std::string(conditions) + " Order By UCase(DirectoryCode.DisplayName)";
}

/// The lines of rows `first` to `last` in which nothing is chosen.
std::string SkippedRows(int first, int last) {
  std::string lines;
  for (int row = first; row <= last; ++row) {
    const std::string at = std::to_string(row);
    lines += "cboField(" + at + ").ListIndex -> -1\ncboFilter(" + at + ").ListIndex -> -1\n";
  }
  return lines;
}

class DirCodeStatement : public DirCodeReportTest {
 protected:
  void SetUp() override {
    for (std::int32_t row = 0; row < kFilterRows; ++row) {
      ChooseDates(Host(), row, FromCivil({2024, 3, 5, 14, 30, 15}),
                  FromCivil({2024, 3, 7, 8, 0, 0}));
    }
    for (const auto& [field, column] :
         {std::pair{"51", "DirectoryCode.DirectoryCode"},
          std::pair{"52", "DirectoryCode.PhoneNumber"}, std::pair{"62", "DirectoryCode.Active"},
          std::pair{"63", "DirectoryCode.StartDate"},
          std::pair{"65", "DirectoryCode.DisplayName"}}) {
      Database().Select(std::string("AND RID = ") + field, {{column}});
    }
  }
  void FillRow(std::int32_t row, std::int32_t field, std::int32_t place, std::string_view value) {
    ChooseField(Host(), row, field);
    ChooseOperator(Host(), row, place);
    EnterValues(Host(), row, value);
  }
  std::string Compose() { return Controller().pbGenSql(Connection(), kUnit); }
};

TEST_F(DirCodeStatement, WithoutFilterAndStoredFieldsHasTheFixedList) {
  EXPECT_EQ(Compose(), Statement(kFixedList));
  EXPECT_TRUE(TranscriptIs("CreateObject \"qorDBI.clsDBManager\"\n" + std::string(kListQuery) +
                           " -> no rows\n" + SkippedRows(0, 4) +
                           "Release \"qorDBI.clsDBManager\""));
}

TEST_F(DirCodeStatement, WithStoredFieldsKeepsTheLastComma) {
  Database().Select("ORDER BY DisplaySeq",
                    {{"DirectoryCode.DirectoryCode"}, {"DirectoryCode.Active"}, {"Third"}});
  EXPECT_EQ(Compose(), Statement("DirectoryCode.DirectoryCode, DirectoryCode.Active, Third,"));
}

TEST_F(DirCodeStatement, WithOneStoredFieldEndsInACommaToo) {
  Database().Select("ORDER BY DisplaySeq", {{"DirectoryCode.EndDate"}});
  EXPECT_EQ(Compose(), Statement("DirectoryCode.EndDate,"));
}

TEST_F(DirCodeStatement, LooksAtTheFirstStoredFieldAlone) {
  Database().Select("ORDER BY DisplaySeq", {{""}, {"DirectoryCode.Active"}});
  EXPECT_EQ(Compose(), Statement(kFixedList));
  Database().Replace("ORDER BY DisplaySeq", {.rows = {{"DirectoryCode.Active"}, {""}, {Null{}}}});
  EXPECT_EQ(Compose(), Statement("DirectoryCode.Active, , ,"));
}

TEST_F(DirCodeStatement, ReadsACompleteRowInThisOrder) {
  FillRow(1, 52, 2, " 555 ");

  EXPECT_EQ(Compose(), Statement(kFixedList, " AND DirectoryCode.PhoneNumber LIKE '555%' "));

  EXPECT_TRUE(TranscriptIs("CreateObject \"qorDBI.clsDBManager\"\n" + std::string(kListQuery) +
                           " -> no rows\n" + SkippedRows(0, 0) + R"~(
    cboField(1).ListIndex -> 0
    cboFilter(1).ListIndex -> 2
    cboField(1).ListIndex -> 0
    cboField(1).ItemData(0) -> 52
    cboFilter(1).ListIndex -> 2
    ExecuteSelect "SELECT FieldName FROM TenantSelectionFields WHERE FieldName LIKE 'DirectoryCode._%' AND RID = 52" -> 1 row
    chkBoolean(1).Value -> 0
    dtpDateFrom(1).Minute = 0
    dtpDateFrom(1).Hour = 0
    dtpDateFrom(1).Second = 0
    dtpDateTo(1).Minute = 59
    dtpDateTo(1).Hour = 23
    dtpDateTo(1).Second = 59
    dtpDateFrom(1).Value -> #3/5/2024#
    dtpDateTo(1).Value -> #3/7/2024 11:59:59 PM#
    txtFrom(1).Text -> " 555 "
    txtTo(1).Text -> ""
    )~" + SkippedRows(2, 4) +
                           "Release \"qorDBI.clsDBManager\""));
}

TEST_F(DirCodeStatement, SkipsARowThatLacksOneOfItsChoices) {
  ChooseField(Host(), 0, 52);
  ChooseOperator(Host(), 1, 0);
  RowControl<qorhost::ListModel>(Host(), "cboField", 1).AddItem("not chosen");

  EXPECT_EQ(Compose(), Statement(kFixedList));

  EXPECT_TRUE(TranscriptIs("CreateObject \"qorDBI.clsDBManager\"\n" + std::string(kListQuery) +
                           R"~( -> no rows
    cboField(0).ListIndex -> 0
    cboFilter(0).ListIndex -> -1
    cboField(1).ListIndex -> -1
    cboFilter(1).ListIndex -> 0
    )~" + SkippedRows(2, 4) +
                           "Release \"qorDBI.clsDBManager\""));
}

TEST_F(DirCodeStatement, JoinsFiveRowsInTheirOrder) {
  FillRow(0, 51, 3, "100");
  FillRow(1, 52, 0, "O'Brien");
  FillRow(2, 62, 0, "");
  FillRow(3, 63, 3, "");
  FillRow(4, 65, 6, "desk");

  EXPECT_EQ(Compose(), Statement(kFixedList,
                                 " AND DirectoryCode.DirectoryCode >= (100) "
                                 " AND DirectoryCode.PhoneNumber IN ('O'Brien')"
                                 " AND DirectoryCode.Active = No "
                                 " AND DirectoryCode.StartDate >= #3/5/2024# "
                                 " AND DirectoryCode.DisplayName LIKE '%desk%' "));
}

TEST_F(DirCodeStatement, LeavesOutTheRowsBehindTheFifth) {
  FillRow(5, 52, 0, "x");
  FillRow(6, 52, 0, "y");
  EXPECT_EQ(Compose(), Statement(kFixedList));
  EXPECT_TRUE(Host().transcript().StartingWith("cboField(5)").empty());
}

TEST_F(DirCodeStatement, TheSameFieldMayStandInEveryRow) {
  for (std::int32_t row = 0; row < 5; ++row) FillRow(row, 51, 2, std::to_string(row));
  std::string conditions;
  for (int row = 0; row < 5; ++row) {
    conditions += " AND DirectoryCode.DirectoryCode > (" + std::to_string(row) + ") ";
  }
  EXPECT_EQ(Compose(), Statement(kFixedList, conditions));
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect").size(), 6U);
}

// A value that looks like a placeholder or like another row's fragment stays what it is.
TEST_F(DirCodeStatement, ValuesOfOneRowDoNotReachAnother) {
  FillRow(0, 52, 0, "{V}");
  FillRow(1, 52, 0, "^1 {C} ^2");
  FillRow(2, 52, 0, "%");
  EXPECT_EQ(Compose(), Statement(kFixedList,
                                 " AND DirectoryCode.PhoneNumber IN ('{V}')"
                                 " AND DirectoryCode.PhoneNumber IN ('^1 {C} ^2')"
                                 " AND DirectoryCode.PhoneNumber IN ('%')"));
}

TEST_F(DirCodeStatement, SpellsTheUnitInDecimal) {
  FillRow(0, 52, 3, "5");
  for (const std::int32_t unit : {0, -1, 2147483647, std::int32_t{-2147483647} - 1}) {
    const std::string u = std::to_string(unit);
    const std::string statement = Controller().pbGenSql(Connection(), unit);
    EXPECT_NE(statement.find("DirectoryCode.UnitKey = " + u + " AND"), std::string::npos);
    EXPECT_NE(statement.find("WHERE UnitKey = " + u + " AND"), std::string::npos);
  }
}

TEST_F(DirCodeStatement, TakesTheUnitOfTheCallAndNotThatOfTheReport) {
  Controller().set_mlngUnitKey(99);
  EXPECT_EQ(Compose(), Statement(kFixedList));
}

TEST_F(DirCodeStatement, NeedsNoOperatorTables) {
  FillRow(0, 52, 0, "x");
  const std::string before = Compose();
  EXPECT_TRUE(Controller().pbPopulateArrOperators());
  EXPECT_EQ(Compose(), before);
}

// Every complete row moves its pickers' times, whatever comes of it; an incomplete one does not.
TEST_F(DirCodeStatement, SetsTheTimesOfThePickers) {
  FillRow(0, 52, 8, "x");
  EXPECT_EQ(Compose(), Statement(kFixedList)) << "there is no such operator";
  EXPECT_EQ(RowControl<qorhost::PickerModel>(Host(), "dtpDateFrom", 0).shown(),
            FromCivil({2024, 3, 5, 0, 0, 0}));
  EXPECT_EQ(RowControl<qorhost::PickerModel>(Host(), "dtpDateTo", 0).shown(),
            FromCivil({2024, 3, 7, 23, 59, 59}));
  EXPECT_EQ(RowControl<qorhost::PickerModel>(Host(), "dtpDateFrom", 1).shown(),
            FromCivil({2024, 3, 5, 14, 30, 15}));
  EXPECT_EQ(RowControl<qorhost::PickerModel>(Host(), "dtpDateTo", 1).shown(),
            FromCivil({2024, 3, 7, 8, 0, 0}));
}

TEST_F(DirCodeStatement, BearsPickersWithoutADate) {
  RowControl<qorhost::PickerModel>(Host(), "dtpDateFrom", 0).Choose(std::nullopt);
  RowControl<qorhost::PickerModel>(Host(), "dtpDateTo", 0).Choose(std::nullopt);
  FillRow(0, 52, 0, "x");
  EXPECT_EQ(Compose(), Statement(kFixedList, " AND DirectoryCode.PhoneNumber IN ('x')"));
  FillRow(0, 63, 6, "");
  EXPECT_EQ(Compose(), Statement(kFixedList,
                                 " AND ( (DirectoryCode.StartDate >= ##) AND ( "
                                 "DirectoryCode.StartDate <= ## ))"));
  FillRow(0, 63, 0, "");
  EXPECT_EQ(Compose(),
            Statement(kFixedList, " AND Format(DirectoryCode.StartDate, 'DD MM YYYY')  = '' "));
}

TEST_F(DirCodeStatement, AFieldBeyondSixteenBitsOverflows) {
  for (const std::int32_t field : {32768, 100000, -32769, 2147483647}) {
    FillRow(0, field, 0, "x");
    EXPECT_EQ(ErrorOf([this] { Compose(); }), static_cast<int>(ErrorNumber::kOverflow)) << field;
  }
  EXPECT_TRUE(Host().services().trapped().empty());
  EXPECT_TRUE(Host().transcript().StartingWith("chkBoolean").empty());
  for (const std::int32_t field : {32767, -32768}) {
    FillRow(0, field, 0, "x");
    EXPECT_EQ(Compose(), Statement(kFixedList, " AND  IN ('x')"));
  }
}

TEST_F(DirCodeStatement, ANumberTooLargeOverflows) {
  FillRow(0, 51, 0, "1E999");
  EXPECT_EQ(ErrorOf([this] { Compose(); }), static_cast<int>(ErrorNumber::kOverflow));
  FillRow(0, 51, 0, "1");
  EnterValues(Host(), 0, "1", "1E999");
  EXPECT_EQ(ErrorOf([this] { Compose(); }), static_cast<int>(ErrorNumber::kOverflow));
}

// The manager that reports an error answers with an empty table: nothing is raised.
TEST_F(DirCodeStatement, GoesOnWhenTheManagerReportsAnError) {
  FillRow(0, 52, 0, "x");
  Database().Error("ORDER BY DisplaySeq", "no such table");
  EXPECT_EQ(Compose(), Statement(kFixedList, " AND DirectoryCode.PhoneNumber IN ('x')"));

  Database().Replace("AND RID = 52", {.error = "no such table"});
  EXPECT_EQ(Compose(), Statement(kFixedList, " AND  IN ('x')"));
  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(DirCodeStatement, RaisesWhatAnyCallRaises) {
  for (std::size_t n = 1;; ++n) {
    FillRow(0, 52, 0, "x");
    FillRow(3, 63, 6, "x");
    Host().StartOver();
    Host().gate().FailAt(n);
    std::string statement;
    const int raised = ErrorOf([&] { statement = Compose(); });
    if (Host().gate().failed().empty()) {
      EXPECT_EQ(raised, 0);
      EXPECT_GT(n, 50U);
      break;
    }
    SCOPED_TRACE(Host().gate().failed());
    EXPECT_EQ(raised, static_cast<int>(ErrorNumber::kApplicationDefined));
    EXPECT_EQ(statement, "");
    EXPECT_EQ(Host().gate().calls(), n);
    EXPECT_TRUE(Host().services().trapped().empty());
    EXPECT_EQ(Host().services().LiveComponents(), 0);
    EXPECT_EQ(Host().database().LiveTables(), 0);
  }
}

TEST_F(DirCodeStatement, RaisesForAnAnswerThatIsNoTable) {
  Database().On("ORDER BY DisplaySeq", {.nothing = true});
  EXPECT_EQ(ErrorOf([this] { Compose(); }), static_cast<int>(ErrorNumber::kObjectRequired));
  EXPECT_EQ(Host().services().LiveComponents(), 0);
}

TEST_F(DirCodeStatement, RaisesWithoutAScreen) {
  Controller().set_gfrmTxFilter(nullptr);
  EXPECT_EQ(ErrorOf([this] { Compose(); }), static_cast<int>(ErrorNumber::kObjectNotSet));
  Controller().set_gfrmTxFilter(std::make_shared<qorhost::ScreenModel>("frmOther"));
  EXPECT_EQ(ErrorOf([this] { Compose(); }), static_cast<int>(ErrorNumber::kUnknownMember));
}

TEST_F(DirCodeStatement, RaisesOnAScreenWithFewerThanFiveRows) {
  auto screen = std::make_shared<qorhost::ScreenModel>("frmTxFilter");
  for (const char* name : {"cboField", "cboFilter"}) {
    screen->Add(name, std::make_shared<qorhost::ControlArrayModel>(
                          std::vector<std::shared_ptr<qorhost::ControlModel>>{
                              std::make_shared<qorhost::ListModel>()}));
  }
  Controller().set_gfrmTxFilter(screen);
  EXPECT_EQ(ErrorOf([this] { Compose(); }), static_cast<int>(ErrorNumber::kIndexOutOfRange));
}

TEST_F(DirCodeStatement, TakesALongValueWhole) {
  const std::string value(100000, '\'');
  FillRow(0, 52, 6, value);
  EXPECT_EQ(Compose(),
            Statement(kFixedList, " AND DirectoryCode.PhoneNumber LIKE '%" + value + "%' "));
}

}  // namespace
}  // namespace qortest
