// Every trapped operation with every one of its calls failing: nothing escapes, the result is what
// it was by then, and nothing is kept. What raises is swept with its own tests.
#include <algorithm>
#include <array>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "frame/result_table.h"
#include "host/screens/list_model.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::FromCivil;
using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::ResultTable;

/// Both controllers on one recording host.
struct Desk {
  Desk() : codes(host.host()), credentials(host.host()) {
    codes.set_gfrmTxFilter(host.screen());
    codes.set_mlngUnitKey(kUnit);
    codes.set_gstrRIDsForDeletion("17,18");
    credentials.set_gfrmTxFilter(host.screen());
    credentials.set_gstrRIDsForDeletion("17,18");
    credentials.pbPopulateArrOperators();
  }
  RecordingHost host{ScreenKind::kReportFilter};
  UnderTest<qorcred::clsDirCodeReport> codes;
  UnderTest<qorcred::clsCredentialReport> credentials;
};

/// One use of a controller; results are told as texts.
struct Scenario {
  std::string_view name;
  std::string_view operation;
  std::function<void(Desk&)> arrange;
  std::function<std::string(Desk&)> act;
  std::string expected;
  /// The result after the failure of that call.
  std::function<std::string(std::string_view failed)> afterFailure;
  /// The results when the first, the second, ... statement fails in the manager.
  std::vector<std::string> afterFailedStatement;
  /// An operation inside whose failures it does not see.
  std::string_view nested = {};
};

std::ostream& operator<<(std::ostream& out, const Scenario& scenario) {
  return out << scenario.name;
}

std::function<std::string(std::string_view)> Always(std::string result) {
  return [result = std::move(result)](std::string_view /*failed*/) { return result; };
}

template <typename Report>
std::string DeleteWith(Desk& desk, Report& report) {
  std::int32_t deleted = 99;
  const bool done = report.pbDelete(desk.host.connection(), kUnit, deleted);
  return (done ? "True " : "False ") + std::to_string(deleted);
}

void NoArrangement(Desk& /*desk*/) {}

void FillFilterRows(Desk& desk) {
  RecordingHost& host = desk.host;
  ChooseFieldAt(host, 0, 0);
  ChooseOperator(host, 0, 0, "equal");
  auto& types = RowControl<qorhost::ListModel>(host, "cboType", 0);
  types.AddItem("Transmitter");
  types.Select(0);
  ChooseFieldAt(host, 2, 1);
  ChooseOperator(host, 2, 6, "between");
  EnterValues(host, 2, "5", "9");
  ChooseFieldAt(host, 6, 3);
  ChooseOperator(host, 6, 0, "equal");
  EnterValues(host, 6, "Doe");
}

void StoreReport(Desk& desk) {
  DatabaseScript& database = desk.host.database();
  desk.host.ReplaceGrid(6);
  database.Select("SELECT FieldNameDisplay, DisplayWidth", {{"Directory Code", 900, "a"},
                                                            {"Directory Status", 900, "b"},
                                                            {"DND Schedule", 900, "c"},
                                                            {"Directory End Date", 900, "d"},
                                                            {"Call Forwarding", 900, "e"}});
  database.Select("FROM Schedules", {{5, "Day"}});
  database.Select("SELECT MaxDigitsDirectoryCode", {{4}});
  database.Select("SELECT rows", {{12, -1, 5, FromCivil({2024, 3, 5, 14, 30, 0}), 0},
                                  {Null{}, 0, Null{}, Null{}, Null{}}});
}

/// What the grid shows of the first row after the report, "nothing" when it shows no report.
std::string ShowReport(Desk& desk) {
  ObjectRef layout;
  desk.codes.pvDirCodeReportResult(kUnit, desk.host.connection(), desk.host.grid(), "SELECT rows",
                                   layout);
  const qorhost::GridModel& grid = desk.host.shownGrid();
  const Lines lines = desk.host.transcript().Read(Detail::kEffects);
  if (std::find(lines.begin(), lines.end(), "objGrid.Refresh") == lines.end()) return "nothing";
  std::string shown;
  for (std::size_t column = 0; column < grid.columns().size(); ++column) {
    shown += grid.Shown(0, column) + ";";
  }
  return shown;
}

const std::array kScenarios{
    Scenario{
        .name = "UnitName",
        .operation = "pbGetUnitName",
        .arrange = [](Desk& desk) { desk.host.database().Select("FROM Units", {{"North"}}); },
        .act = [](Desk& desk) { return desk.codes.pbGetUnitName(desk.host.connection(), kUnit); },
        .expected = "North",
        .afterFailure = Always(""),
        .afterFailedStatement = {""}},
    Scenario{.name = "EntryLength",
             .operation = "pbGetEntryLength",
             .arrange = [](Desk& desk) { desk.host.database().Select("MaxDigits", {{4}}); },
             .act =
                 [](Desk& desk) {
                   return std::to_string(desk.codes.pbGetEntryLength(desk.host.connection()));
                 },
             .expected = "4",
             .afterFailure = Always("0"),
             .afterFailedStatement = {"0"}},
    Scenario{.name = "FieldChoices",
             .operation = "pbComboData",
             .arrange =
                 [](Desk& desk) {
                   desk.host.database().Select("SELECT RID", {{51, "Code"}, {52, "Phone"}});
                 },
             .act = [](Desk& desk) { return desk.codes.pbComboData(desk.host.connection()); },
             .expected = "Code|Phone",
             .afterFailure = Always(""),
             .afterFailedStatement = {""}},
    Scenario{.name = "DeletionByTheCodesReport",
             .operation = "pbDelete",
             .arrange = NoArrangement,
             .act = [](Desk& desk) { return DeleteWith(desk, desk.codes); },
             .expected = "True 1",
             .afterFailure = Always("False 99"),
             .afterFailedStatement = {"True 1", "False 0"},
             .nested = "pbValidate"},
    Scenario{.name = "DeletionByTheCredentialReport",
             .operation = "pbDelete",
             .arrange = NoArrangement,
             .act = [](Desk& desk) { return DeleteWith(desk, desk.credentials); },
             .expected = "True 1",
             .afterFailure = Always("False 99"),
             .afterFailedStatement = {"True 1", "False 0"},
             .nested = "pbValidate"},
    Scenario{
        .name = "DeletionOfNothing",
        .operation = "pbDelete",
        .arrange = [](Desk& desk) { desk.host.database().Number("Delete From", 0); },
        .act = [](Desk& desk) { return DeleteWith(desk, desk.credentials); },
        .expected = "False 0",
        .afterFailure =
            [](std::string_view failed) { return failed == "MsgBox" ? "False 0" : "False 99"; },
        .afterFailedStatement = {"False 0", "False 0"},
        .nested = "pbValidate"},
    Scenario{.name = "DeletionOfHeldCredentials",
             .operation = "pbDelete",
             .arrange = [](Desk& desk) { desk.host.database().Select("from Tenants", {{55}}); },
             .act = [](Desk& desk) { return DeleteWith(desk, desk.codes); },
             .expected = "False 99",
             .afterFailure = Always("False 99"),
             // Without an answer nobody holds them.
             .afterFailedStatement = {"True 1"},
             .nested = "pbValidate"},
    Scenario{
        .name = "CredentialRows",
        .operation = "pbGenSql",
        .arrange = FillFilterRows,
        .act = [](Desk& desk) -> std::string {
          ObjectRef rows = desk.host.Watched("arrXDBTx", std::make_shared<ResultTable>(3, 3));
          std::string statement;
          const bool done =
              desk.credentials.pbGenSql(desk.host.connection(), kUnit, rows, statement);
          return (done ? "True" : "False") + std::string(statement.empty() ? "" : " +");
        },
        .expected = "True +",
        .afterFailure =
            [](std::string_view failed) { return failed == "ExecuteSelect" ? "False +" : "False"; },
        .afterFailedStatement = {"False +"}},
    Scenario{.name = "Report",
             .operation = "pvDirCodeReportResult",
             .arrange = StoreReport,
             .act = ShowReport,
             .expected = "0012;Active;Day;05 Mar 2024 14:30;False;",
             .afterFailure = nullptr,  // see ReportFaults.OfTheGridKeepWhatTheyCan
             .afterFailedStatement = {"", "nothing", "0012;Active;5;05 Mar 2024 14:30;False;",
                                      "12;Active;Day;05 Mar 2024 14:30;False;"},
             .nested = "pbGetEntryLength"},
};

class ReportFaultSweep : public ::testing::TestWithParam<Scenario> {
 protected:
  static void ExpectNothingKept(Desk& desk, long screens, long connections) {
    EXPECT_EQ(desk.host.services().LiveComponents(), 0);
    EXPECT_EQ(desk.host.screen().use_count(), screens);
    EXPECT_EQ(desk.host.connection().use_count(), connections);
    EXPECT_EQ(desk.host.grid().use_count(), 1);
    desk.host.ReplaceGrid(0);  // the grid itself keeps its rows
    EXPECT_EQ(desk.host.database().LiveTables(), 0);
    EXPECT_EQ(desk.host.transactions().begun(), 0);
  }
};

TEST_P(ReportFaultSweep, EndsInTheOperation) {
  const Scenario& scenario = GetParam();
  for (std::size_t n = 1;; ++n) {
    Desk desk;
    RecordingHost& host = desk.host;
    scenario.arrange(desk);
    host.StartOver();
    const auto screens = host.screen().use_count();
    const auto connections = host.connection().use_count();
    host.gate().FailAt(n);

    const std::string result = scenario.act(desk);

    const std::string failed = host.gate().failed();
    if (failed.empty()) {
      EXPECT_EQ(result, scenario.expected);
      EXPECT_TRUE(host.services().trapped().empty());
      EXPECT_GT(n, 2U);
      ExpectNothingKept(desk, screens, connections);
      break;
    }
    const ::testing::ScopedTrace trace(__FILE__, __LINE__,
                                       "call " + std::to_string(n) + " failed: " + failed);
    ASSERT_EQ(host.services().trapped().size(), 1U);
    const auto& [trappedIn, number] = host.services().trapped().front();
    EXPECT_EQ(number, qorcred::ErrorNumber::kApplicationDefined);
    EXPECT_TRUE(trappedIn == scenario.operation || trappedIn == scenario.nested) << trappedIn;
    if (scenario.afterFailure) {
      EXPECT_EQ(result, scenario.afterFailure(failed));
    }
    ExpectNothingKept(desk, screens, connections);
  }
}

// The manager raises nothing when a statement fails: it answers as if there were no rows.
TEST_P(ReportFaultSweep, BearsAFailedStatement) {
  const Scenario& scenario = GetParam();
  const std::vector<std::string>& results = scenario.afterFailedStatement;
  for (std::size_t n = 1;; ++n) {
    Desk desk;
    RecordingHost& host = desk.host;
    scenario.arrange(desk);
    host.StartOver();
    const auto screens = host.screen().use_count();
    const auto connections = host.connection().use_count();
    host.database().FailAt(n);

    const std::string result = scenario.act(desk);

    const std::string failed = host.database().failed();
    EXPECT_TRUE(host.services().trapped().empty());
    if (failed.empty()) {
      EXPECT_EQ(result, scenario.expected);
      EXPECT_EQ(n - 1, results.size());
      break;
    }
    const ::testing::ScopedTrace trace(__FILE__, __LINE__, failed);
    ASSERT_LE(n, results.size());
    // Without a layout the columns are the fixed ones: what they show is another test's matter.
    if (failed.find("DisplayWidth") == std::string::npos) {
      EXPECT_EQ(result, results[n - 1]);
    } else {
      EXPECT_NE(result, "nothing");
    }
    ExpectNothingKept(desk, screens, connections);
  }
}

INSTANTIATE_TEST_SUITE_P(Of, ReportFaultSweep, ::testing::ValuesIn(kScenarios),
                         [](const auto& one) { return std::string(one.param.name); });

// While a column gets its value items a failure costs that column its texts; a failed code length
// costs the zeros; any other failure ends the operation where it is.
TEST(ReportFaults, OfTheGridKeepWhatTheyCan) {
  constexpr std::string_view kWhole = "0012;Active;Day;05 Mar 2024 14:30;False;";
  int shown = 0;
  int ended = 0;
  for (std::size_t n = 1;; ++n) {
    Desk desk;
    StoreReport(desk);
    desk.host.StartOver();
    desk.host.gate().FailAt(n);
    const std::string result = ShowReport(desk);
    const std::string failed = desk.host.gate().failed();
    if (failed.empty()) {
      EXPECT_EQ(result, kWhole);
      break;
    }
    SCOPED_TRACE("call " + std::to_string(n) + " failed: " + failed);
    const bool item = failed.starts_with("objGrid.NewValueItem") ||
                      failed.starts_with("objGrid.Columns..ValueItems");
    const bool query = failed == "ExecuteSelect" || failed.starts_with("CreateObject");
    if (item) {
      EXPECT_NE(result, "nothing");
    }
    if (!item && !query) {
      EXPECT_EQ(result, "nothing");
    }
    if (result == "nothing") {
      ++ended;
      continue;
    }
    ++shown;
    // Four of the five columns can lose something, one at a time.
    const std::array damaged{std::string("12;Active;Day;05 Mar 2024 14:30;False;"),
                             std::string("0012;-1;Day;05 Mar 2024 14:30;False;"),
                             std::string("0012;Active;5;05 Mar 2024 14:30;False;"),
                             std::string("0012;Active;Day;05 Mar 2024 14:30;0;")};
    EXPECT_NE(std::find(damaged.begin(), damaged.end(), result), damaged.end()) << result;
  }
  EXPECT_GT(shown, 20);
  EXPECT_GT(ended, 20);
}

TEST(ReportAfterAFault, TheSameReportIsWhole) {
  for (std::size_t n = 1;; ++n) {
    Desk desk;
    StoreReport(desk);
    desk.host.StartOver();
    desk.host.gate().FailAt(n);
    (void)ShowReport(desk);
    if (desk.host.gate().failed().empty()) {
      EXPECT_GT(n, 40U);
      break;
    }
    desk.host.ReplaceGrid(6);
    desk.host.StartOver();
    EXPECT_EQ(ShowReport(desk), "0012;Active;Day;05 Mar 2024 14:30;False;") << n;
  }
}

TEST(ReportAfterAFault, TheSameStatementsAreWhole) {
  for (std::size_t n = 1;; ++n) {
    Desk desk;
    FillFilterRows(desk);
    ObjectRef rows = std::make_shared<ResultTable>();
    std::string expected;
    ASSERT_TRUE(desk.credentials.pbGenSql(desk.host.connection(), kUnit, rows, expected));
    desk.host.StartOver();
    desk.host.gate().FailAt(n);
    std::string statement;
    (void)desk.credentials.pbGenSql(desk.host.connection(), kUnit, rows, statement);
    if (desk.host.gate().failed().empty()) break;
    desk.host.StartOver();
    EXPECT_TRUE(desk.credentials.pbGenSql(desk.host.connection(), kUnit, rows, statement)) << n;
    EXPECT_EQ(statement, expected);
  }
}

// A host's own exceptions do not get out either.
TEST(ReportFaults, OfAnotherKindAreTrappedToo) {
  Desk desk;
  desk.host.gate().FailOn("ExecuteSelect");
  desk.host.gate().Raise(std::make_exception_ptr(std::runtime_error("host's own")));
  EXPECT_EQ(desk.codes.pbGetUnitName(desk.host.connection(), kUnit), "");
  desk.host.gate().FailOn("CreateObject");
  desk.host.gate().Raise(std::make_exception_ptr(std::bad_alloc()));
  EXPECT_EQ(DeleteWith(desk, desk.codes), "False 99");
  ASSERT_EQ(desk.host.services().trapped().size(), 2U);
  EXPECT_EQ(desk.host.services().trapped()[0].second, qorcred::ErrorNumber::kInternal);
  EXPECT_EQ(desk.host.services().trapped()[1].second, qorcred::ErrorNumber::kOutOfMemory);
}

}  // namespace
}  // namespace qortest
