// The directory-code report worked at a desk: its rows, its columns, faults of conditions.
#include "host/desks/dir_code_report.h"

#include <gmock/gmock.h>

#include <optional>

#include "host/desks/report_title.h"
#include "tests/host/desks/report_fixture.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class DirCodeReports : public ReportFixture {
 protected:
  /// The directory codes that the report shows under the conditions, in its order.
  [[nodiscard]] std::vector<std::string> CodesWhere(const std::vector<std::string>& conditions) {
    return ColumnOf(Codes(conditions), "Directory Code");
  }
  /// A statement of the dialect.
  void Change(const std::string& statement) {
    (void)session().sql().Change(statement, std::nullopt);
  }
};

TEST_F(DirCodeReports, ShowTheVisibleColumnsAndKnowAll) {
  DirCodeReport report(session(), kUnit);
  EXPECT_TRUE(report.Compose().done());
  EXPECT_TRUE(report.Run().done());
  const std::vector<std::string> visible = TitlesOf(report.Visible());
  EXPECT_THAT(visible,
              ElementsAre("Directory Code", "Phone No.", "Phone No. Extension", "Phone No. Delay",
                          "Display Name", "Directory Status", "Directory Start Date",
                          "Directory End Date", "Do Not Disturb", "DND Schedule", "Call Forwarding",
                          "CF Schedule", "CF Phone No.", "CF Extension", "CF Time Delay"));
  std::vector<std::string> all = visible;
  all.insert(all.end(), {"Show Display Name", "Show Directory Code"});
  EXPECT_EQ(TitlesOf(ForPeople(WithExtras(report.Rows()))), all);
  EXPECT_EQ(report.Visible().rows.size(), 6U);
  EXPECT_EQ(ColumnOf(report.Visible(), "Directory Code").front(), "0101");
}

TEST_F(DirCodeReports, ShowEveryCellAsTheGridDoes) {
  Change(
      "UPDATE DIRECTORYCODE SET STARTDATE=#2024-03-05 14:30:00#, ACTIVE=False WHERE UNITKEY=2 AND "
      "DIRECTORYCODE=104");
  using qorcred::Null;
  using qorcred::Value;
  const std::vector<Value> expected{Value("0104"),
                                    Value("555-0103"),
                                    Value(Null{}),
                                    Value(std::int32_t{2}),
                                    Value("Apartment 104"),
                                    Value("Inactive"),
                                    Value("2024-03-05 14:30"),
                                    Value(Null{}),
                                    Value("yes"),
                                    Value("Night Shift"),
                                    Value("no"),
                                    Value("<None>"),
                                    Value(Null{}),
                                    Value(Null{}),
                                    Value(std::int32_t{2}),
                                    Value("yes"),
                                    Value("yes")};
  EXPECT_EQ(Codes().rows.at(3), expected);
}

TEST_F(DirCodeReports, ConditionsNarrowTheCodes) {
  Change(
      "UPDATE DIRECTORYCODE SET STARTDATE=#2026-05-01 08:00:00#, SHOWDISPLAYNAME=False, "
      "CFTIMEDELAY=7 WHERE UNITKEY=2 AND DIRECTORYCODE=105");
  EXPECT_THAT(CodesWhere({"Directory Code = 103"}), ElementsAre("0103"));
  EXPECT_THAT(CodesWhere({"directory code >= 102", "Directory Code < 104"}),
              ElementsAre("0102", "0103"));
  EXPECT_THAT(CodesWhere({"Phone No. ends with 05"}), ElementsAre("0106"));
  EXPECT_THAT(CodesWhere({"Phone No. Extension = 15"}), ElementsAre("0106"));
  EXPECT_THAT(CodesWhere({"Phone No. Delay > 2"}), ElementsAre("0102", "0106"));
  EXPECT_THAT(CodesWhere({"Do Not Disturb = yes"}), ElementsAre("0104"));
  EXPECT_THAT(CodesWhere({"DND Schedule begins with night"}), ElementsAre("0104"));
  EXPECT_THAT(CodesWhere({"Call Forwarding <> no", "CF Phone No. contains 0205"}),
              ElementsAre("0106"));
  EXPECT_THAT(CodesWhere({"Directory Start Date between 2026-05-01 AND 2026-05-01"}),
              ElementsAre("0105"));
  EXPECT_THAT(CodesWhere({"Directory Start Date > 2026-05-01"}), IsEmpty());
  EXPECT_THAT(CodesWhere({"Show Display Name = no"}), ElementsAre("0105"));
  EXPECT_THAT(CodesWhere({"CF Time Delay = 7"}), ElementsAre("0105"));
  EXPECT_THAT(CodesWhere({"Directory Status = no"}), IsEmpty());
}

TEST_F(DirCodeReports, TakeAFieldByYesAndNo) {
  EXPECT_THAT(ColumnOf(Codes({"Call Forwarding = yes"}), "Call Forwarding"), Each("yes"));
  EXPECT_THAT(CodesWhere({"Call Forwarding = yes"}), testing::Contains("0103"));
}

TEST_F(DirCodeReports, KeepTheirStatementWhichTheStoreRuns) {
  DirCodeReport report(session(), kUnit);
  EXPECT_EQ(report.statement(), "");
  report.Narrow({"Display Name begins with Apartment 10"});
  EXPECT_TRUE(report.Compose().done());
  EXPECT_THAT(report.statement(),
              AllOf(StartsWith("SELECT DirectoryCode.DirectoryCode, DirectoryCode.PhoneNumber, "),
                    HasSubstr(" AND DirectoryCode.DisplayName LIKE 'Apartment 10%'  Order By ")));
  EXPECT_EQ(CountOf(report.statement()), 6U);
}

TEST_F(DirCodeReports, MayHaveNoRows) {
  const Table none = Codes({"Directory Code = 9999"});
  EXPECT_THAT(none.rows, IsEmpty());
  EXPECT_EQ(none.columns.size(), 17U);
}

TEST_F(DirCodeReports, TakeFiveConditions) {
  std::vector<std::string> conditions;
  for (int number = 1; number <= 5; ++number) {
    conditions.push_back("Directory Code <> " + std::to_string(100 + number));
  }
  EXPECT_THAT(CodesWhere(conditions), ElementsAre("0106"));
  conditions.emplace_back("Directory Code <> 106");
  DirCodeReport report(session(), kUnit);
  try {
    report.Narrow(conditions);
    ADD_FAILURE() << "six were taken";
  } catch (const InputFault& fault) {
    EXPECT_EQ(fault.field(), report_input::kCondition);
    EXPECT_EQ(fault.value(), "Directory Code <> 106") << "the first that is too many";
    EXPECT_THAT(fault.what(), HasSubstr("at most 5 conditions, not 6"));
  }
}

TEST_F(DirCodeReports, NameAConditionThatIsNone) {
  for (const auto& [condition, answer] : std::vector<std::pair<std::string, std::string>>{
           {"Floor = 5", "CF Time Delay, Show Display Name, Show Directory Code"},
           {"Tenant = Abel", "CF Time Delay, Show Display Name, Show Directory Code"},
           {"Display Name > 5", "begins with"},
           {"Directory End Date like 2026", "between, not between"},
           {"Directory Code between 101 AND 103", "for a range give two conditions"},
           {"Phone No. Delay not between 1 AND 3", "for a range give two conditions"},
           {"Directory Code =", "ends without a value"},
           {"Phone No. Delay >", "ends without a value"},
           {"Directory Code = 101a", "takes a number, and '101a' is none"},
           {"Do Not Disturb = maybe", "neither yes nor no"},
           {"Directory Start Date = soon", "is no date"},
           {"Directory Start Date = 1500-01-01", "outside the years"},
           {"Directory Code = 1e-5", "a whole number from 0 to 999999999999999"},
           {"Directory Code > -1", "a whole number from 0 to 999999999999999"},
           {"Phone No. Delay = 1.5", "a whole number from 0 to 2147483647"},
           {"CF Time Delay contains x", "takes a number, and 'x' is none"},
           {"DND Schedule = nosuch schedule",
            "'nosuch schedule' is none of the unit's schedules: No Access, Full Access, Early "
            "Shift, "},
           {"CF Schedule <> Siesta", "is none of the unit's schedules"},
           {"Display Name contains", "ends without a text to look for"},
           {"Display Name does not contain Apartment", "has no operator that goes with"},
           {"Directory End Date between 2026-12-31 AND 2026-01-01", "must not be above"},
           {"Display Name = a\nb", "cannot be typed into a box"}}) {
    DirCodeReport report(session(), kUnit);
    try {
      report.Narrow({condition});
      ADD_FAILURE() << condition;
    } catch (const InputFault& fault) {
      EXPECT_EQ(fault.field(), report_input::kCondition) << condition;
      EXPECT_NE(fault.value(), "") << condition;
      EXPECT_THAT(fault.what(), HasSubstr(answer)) << condition;
    }
  }
}

TEST_F(DirCodeReports, FailWithAValueThatBreaksTheStatement) {
  replays_ = false;  // what such a statement names no description has
  Open(false);
  for (const char* condition :
       {"Display Name contains O'Brien", "Display Name = '; DELETE FROM Tenants"}) {
    DirCodeReport report(session(), kUnit);
    report.Narrow({condition});
    EXPECT_TRUE(report.Compose().done()) << condition;
    const Outcome ran = report.Run();
    EXPECT_EQ(ran.ending, Ending::kFailed) << condition;
    ASSERT_FALSE(ran.failures.empty()) << condition;
    EXPECT_THAT(ran.failures[0], HasSubstr("line 1, column")) << condition;
  }
  EXPECT_GT(CountOf("SELECT RID FROM Tenants"), 150U);
}

TEST_F(DirCodeReports, AQuoteWrittenTwiceIsFound) {
  Change("UPDATE DIRECTORYCODE SET DISPLAYNAME='O''Brien' WHERE UNITKEY=2 AND DIRECTORYCODE=102");
  EXPECT_THAT(CodesWhere({"Display Name contains O''B"}), ElementsAre("0102"));
}

TEST_F(DirCodeReports, HaveAColumnThatTheStoreHidesAmongAllOfThemAlone) {
  Change("UPDATE TenantSelectionFields SET Display=0, DisplaySeq=18 WHERE RID=52");
  DirCodeReport report(session(), kUnit);
  EXPECT_TRUE(report.Compose().done());
  EXPECT_TRUE(report.Run().done());
  const std::vector<std::string> visible = TitlesOf(report.Visible());
  ASSERT_GE(visible.size(), 3U);
  EXPECT_EQ(visible[0], "Directory Code");
  EXPECT_EQ(visible[1], "Phone No. Extension");
  EXPECT_EQ(visible[2], "Phone No. Delay");
  const Table all = ForPeople(WithExtras(report.Rows()));
  EXPECT_EQ(all.columns.back().title, "Phone No.");
  EXPECT_THAT(CsvOf(all), AllOf(HasSubstr("\r\n0101,,2,Apartment 101,Active,"),
                                HasSubstr(",yes,yes,555-0100\r\n")));
}

TEST_F(DirCodeReports, HaveTheFixedColumnsInAStoreWithoutFields) {
  Change("DELETE FROM TenantSelectionFields WHERE RID > 0");
  const Table codes = Codes();
  ASSERT_EQ(codes.rows.size(), 6U);
  EXPECT_EQ(codes.columns.size(), 17U);
  EXPECT_EQ(ColumnOf(codes, "Directory Code")[2], "0103");
  EXPECT_EQ(ColumnOf(codes, "CF Schedule")[2], "Early Shift");
  // What a field is, is known by the fields alone: such a column is shown as it is stored.
  EXPECT_EQ(ColumnOf(codes, "Show Directory Code")[2], "True");
}

TEST_F(DirCodeReports, NameTheSchedulesOfEveryUnitEvenWithoutRows) {
  Change("DELETE FROM Schedules WHERE UnitKey=2 AND ScheduleID < 2");
  Change("UPDATE DIRECTORYCODE SET DNDSCHEDULEID=0, CFSCHEDULEID=1 WHERE UNITKEY=2");
  const Table codes = Codes();
  EXPECT_THAT(ColumnOf(codes, "DND Schedule"), Each("No Access"));
  EXPECT_THAT(ColumnOf(codes, "CF Schedule"), Each("Full Access"));
}

TEST_F(DirCodeReports, AreHeadedByTheUnitsNameOrItsKey) {
  EXPECT_EQ(ReportTitle(session(), kUnit), "Linden Park");
  Change("UPDATE Units SET UnitName='' WHERE UnitKey=2");
  EXPECT_EQ(ReportTitle(session(), kUnit), "Unit 2");
}

}  // namespace
}  // namespace qorhost::test
