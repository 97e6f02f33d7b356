// The reports from the filter rows to the rows shown, against stepping the same query by hand; and
// the merge of two results, for ten times the rows.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "bench/hand_written.h"
#include "bench/save_screen.h"
#include "frame/convert.h"
#include "frame/date.h"
#include "frame/result_table.h"
#include "host/screens/grid_model.h"
#include "host/screens/report_filter_screen.h"
#include "host/store/store_connection.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"
#include "reports/dir_code_fragments.h"

namespace qorbench {

namespace {

constexpr const char* kCredentialsOurs = "reports/credentials-ours";
constexpr const char* kCredentialsByHand = "reports/credentials-by-hand";
constexpr std::int32_t kUnit = 1;
constexpr std::int32_t kReportedCredentials = 10000;
constexpr int kCredentialTimes = 4;
constexpr std::int32_t kSchedules = 20;

// In each round every report of codes, and every merge, deals with that many rows.
constexpr std::int32_t kCodesOfRound = 60000;
constexpr std::int32_t kMergedRowsOfRound = 240000;

// Every code is active and has texts, dates and schedules in all its columns.
void PutReportedCodes(qorhost::sqlite::Database& database, std::int32_t count) {
  PutDirCodes(database, count);
  database.Run(fmt::format(
      "UPDATE DirectoryCode SET EXTENSION='12', CFPHONENUMBER='5550199', CFEXTENSION='34', "
      "ISCFCHECKED=-1, DNDSCHEDULEID=DIRECTORYCODE % {0} + 2, CFSCHEDULEID=2, "
      "STARTDATE=datetime('2026-01-15 09:30:00', DIRECTORYCODE || ' minutes'), "
      "ENDDATE='2026-12-31 23:59:59';"
      "UPDATE UnitSettings SET MaxDigitsDirectoryCode=6 WHERE UnitKey={1};"
      "WITH RECURSIVE numbers(n) AS (VALUES (2) UNION ALL SELECT n + 1 FROM numbers WHERE n <= {0})"
      "INSERT INTO Schedules (ScheduleID, ScheduleName, UnitKey) SELECT n, 'Schedule ' || n, {1} "
      "FROM numbers",
      kSchedules, kUnit));
}

// Credentials of all four types. Every second one is held by a tenant, by turns as the first and as
// the second credential.
void PutReportedCredentials(qorhost::sqlite::Database& database) {
  database.Run(fmt::format(
      "WITH RECURSIVE numbers(n) AS (VALUES (1) UNION ALL SELECT n + 1 FROM numbers WHERE n < {0}) "
      "INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo, FacilityCode, IDCode, "
      "SequenceNumber, ButtonNumber) SELECT {1}, n / 4 % 4, n, {2}, n % 7, n % 9, 1 FROM numbers;"
      "INSERT INTO Tenants (UnitKey, LastName, FirstName, CREDENTIALID1, CREDENTIALID2) "
      "SELECT {1}, 'Name ' || PINNo, 'First', iif(PINNo % 4 = 1, RID, NULL), "
      "iif(PINNo % 4 = 3, RID, NULL) FROM CredentialBank WHERE PINNo % 2 = 1 ORDER BY RID",
      kReportedCredentials, kUnit, kFacilityCode));
}

// The filter screen as an operator fills it in.
class FilterScreen {
 public:
  template <typename Kind>
  [[nodiscard]] Kind& At(std::string_view name, std::size_t row) const {
    return dynamic_cast<Kind&>(*screen_->Get<qorhost::ControlArrayModel>(name).at(row));
  }

  [[nodiscard]] const std::shared_ptr<qorhost::ScreenModel>& screen() const { return screen_; }

  // Chooses a field by its identity and the operator at a place.
  void Choose(std::size_t row, std::int32_t fieldId, std::int32_t operation) const {
    auto& fields = At<qorhost::ListModel>("cboField", row);
    for (std::int32_t index = 0; index < fields.count(); ++index) {
      if (fields.ItemData(index) == fieldId) {
        fields.Select(index);
      }
    }
    Check(fields.selected() != qorhost::ListModel::kNone, "the screen offers the field");
    ChooseOperator(row, operation);
  }

  void ChooseOperator(std::size_t row, std::int32_t operation) const {
    auto& operators = At<qorhost::ListModel>("cboFilter", row);
    for (const char* word : {"equal", "does not equal", "begins with"}) {
      operators.AddItem(word);
    }
    operators.Select(operation);
  }

 private:
  std::shared_ptr<qorhost::ScreenModel> screen_ = qorhost::MakeReportFilterScreen(
      qorhost::kFewestFilterRows, qorcred::FromCivil({2026, 1, 15, 0, 0, 0}));
};

constexpr std::int32_t kEqual = 0;
constexpr std::int32_t kBeginsWith = 2;

// The names 1 to `count` in the order of their letters.
std::vector<std::int32_t> NumbersByName(std::int32_t count) {
  std::vector<std::pair<std::string, std::int32_t>> names;
  for (std::int32_t number = 1; number <= count; ++number) {
    names.emplace_back(std::to_string(number), number);
  }
  std::sort(names.begin(), names.end());
  std::vector<std::int32_t> numbers;
  numbers.reserve(names.size());
  for (const auto& [name, number] : names) {
    numbers.push_back(number);
  }
  return numbers;
}

// 09:30 on 15 January and one minute for each code.
std::string ShownStart(std::int32_t code) {
  constexpr std::int32_t kFirstMinute = 9 * 60 + 30;
  constexpr std::int32_t kMinutesOfDay = 24 * 60;
  constexpr std::int32_t kFirstDay = 15;
  const std::int32_t minutes = kFirstMinute + code;
  const std::int32_t day = kFirstDay + minutes / kMinutesOfDay;
  constexpr std::int32_t kDaysOfJanuary = 31;
  const std::int32_t minute = minutes % kMinutesOfDay;
  return fmt::format("{:02} {} 2026 {:02}:{:02}", day > kDaysOfJanuary ? day - kDaysOfJanuary : day,
                     day > kDaysOfJanuary ? "Feb" : "Jan", minute / 60, minute % 60);
}

void CheckGrid(const qorhost::GridModel& grid, std::int32_t count) {
  Check(grid.rowCount() == static_cast<std::size_t>(count), "the grid has a row for each code");
  std::size_t row = 0;
  for (const std::int32_t code : NumbersByName(count)) {
    const std::vector<std::string> expected{fmt::format("{:06}", code),
                                            "5550100",
                                            "12",
                                            "2",
                                            fmt::format("Name {}", code),
                                            "Active",
                                            ShownStart(code),
                                            "31 Dec 2026 23:59",
                                            "False",
                                            fmt::format("Schedule {}", code % kSchedules + 2),
                                            "True",
                                            "Schedule 2",
                                            "5550199",
                                            "34",
                                            "2"};
    Check(grid.columns().size() == expected.size(), "the grid shows the displayed fields");
    for (std::size_t column = 0; column < expected.size(); ++column) {
      const std::string shown = grid.Shown(row, column);
      Check(shown == expected[column], fmt::format("row {}, column {} shows '{}' instead of '{}'",
                                                   row, column, shown, expected[column]));
    }
    ++row;
  }
}

// The statement is composed, its rows are shown in a new grid.
void ReportCodesOurs(benchmark::State& state, std::int32_t count) {
  const BenchStore store;
  const auto connection =
      std::make_shared<qorhost::StoreConnection>(store.Open(), qorhost::SystemClock());
  PutReportedCodes(qorhost::sqlite::DatabaseOf(connection->store()), count);
  const auto host = StrictHost();
  const FilterScreen filter;
  qorcred::clsDirCodeReport controller(*host);
  controller.set_gfrmTxFilter(filter.screen());
  controller.set_mlngUnitKey(kUnit);
  controller.pbPopulateArrOperators();
  controller.pbComboData(connection);
  filter.Choose(0, qorcred::report_field::kDisplayName, kBeginsWith);
  filter.At<qorhost::TextModel>("txtFrom", 0).SetText("Name");
  filter.Choose(1, qorcred::report_field::kActive, kEqual);
  filter.At<qorhost::CheckModel>("chkBoolean", 1).SetState(1);

  const int times = kCodesOfRound / count;
  std::shared_ptr<qorhost::GridModel> grid;
  for ([[maybe_unused]] auto iteration : state) {
    for (int time = 0; time < times; ++time) {
      grid = std::make_shared<qorhost::GridModel>();
      qorcred::ObjectRef layout;
      controller.pvDirCodeReportResult(kUnit, connection, grid,
                                       controller.pbGenSql(connection, kUnit), layout);
    }
  }

  CheckGrid(*grid, count);
  state.counters[kItems] = static_cast<double>(times) * count;
}

void ReportCodesByHand(benchmark::State& state, std::int32_t count) {
  const BenchStore store;
  qorhost::sqlite::Database database = store.OpenDatabase();
  PutReportedCodes(database, count);
  const int times = kCodesOfRound / count;
  std::vector<by_hand::ReportedCode> rows;
  for ([[maybe_unused]] auto iteration : state) {
    for (int time = 0; time < times; ++time) {
      rows = by_hand::ReportCodes(database.handle(), kUnit);
    }
  }

  Check(rows.size() == static_cast<std::size_t>(count), "every code is reported");
  auto row = rows.begin();
  for (const std::int32_t code : NumbersByName(count)) {
    constexpr std::size_t kName = 2;
    constexpr std::size_t kDoNotDisturb = 3;
    Check(static_cast<std::int32_t>(row->code) == code &&
              row->texts.at(kName) == fmt::format("Name {}", code) && row->texts.back() == "34" &&
              row->numbers.at(kDoNotDisturb) == code % kSchedules + 2,
          "the rows are in the order of their names");
    ++row;
  }
  state.counters[kItems] = static_cast<double>(times) * count;
}

constexpr const char* kTypeNames[] = {"Corvin 30 Bit card", "Standard 26 Bit card", "Transmitter",
                                      "Corporate 1000 35-Bit Card"};
constexpr std::int32_t kTransmitter = 2;

std::int32_t TypeOf(std::int32_t number) {
  return number / 4 % 4;
}

std::string HolderOf(std::int32_t number) {
  return number % 2 == 1 ? fmt::format("Name {} First ", number) : "Unassigned";
}

std::int32_t TenantOf(std::int32_t number) {
  return number % 2 == 1 ? (number + 1) / 2 : -1;
}

void CheckCredentialTable(const qorcred::ObjectRef& table) {
  const qorcred::TableView rows(table);
  Check(rows.UpperRow() == kReportedCredentials - 1, "every credential is reported");
  std::vector<bool> seen(kReportedCredentials + 1);
  for (std::int32_t row = 0; row < kReportedCredentials; ++row) {
    std::int32_t column = 0;
    const auto next = [&] { return qorcred::TextOrEmpty(rows.Cell(row, column++)); };
    const std::string type = next();
    const std::int32_t number = std::stoi(next());
    Check(!seen.at(static_cast<std::size_t>(number)), "no credential is reported twice");
    seen.at(static_cast<std::size_t>(number)) = true;
    const bool isTransmitter = TypeOf(number) == kTransmitter;
    const auto ifTransmitter = [&](std::int32_t value) {
      return isTransmitter ? std::to_string(value) : std::string();
    };
    Check(type == kTypeNames[TypeOf(number)] && next() == std::to_string(kFacilityCode) &&
              next() == ifTransmitter(number % 7) && next() == ifTransmitter(number % 9) &&
              next() == ifTransmitter(1) && next() == HolderOf(number) &&
              next() == std::to_string(TypeOf(number)) && next() == std::to_string(number) &&
              next() == std::to_string(TenantOf(number)),
          "each credential is reported with its holder");
  }
}

void ReportCredentialsOurs(benchmark::State& state) {
  const BenchStore store;
  const auto connection =
      std::make_shared<qorhost::StoreConnection>(store.Open(), qorhost::SystemClock());
  PutReportedCredentials(qorhost::sqlite::DatabaseOf(connection->store()));
  const auto host = StrictHost();
  const FilterScreen filter;
  for (const char* field : {"Credential Type", "Card Number", "Facility Code", "Tenant Name"}) {
    filter.At<qorhost::ListModel>("cboField", 0).AddItem(field);
  }
  constexpr std::int32_t kFacility = 2;
  filter.At<qorhost::ListModel>("cboField", 0).Select(kFacility);
  filter.ChooseOperator(0, kEqual);
  filter.At<qorhost::TextModel>("txtFrom", 0).SetText(std::to_string(kFacilityCode));
  qorcred::clsCredentialReport controller(*host);
  controller.set_gfrmTxFilter(filter.screen());
  controller.pbPopulateArrOperators();

  qorcred::ObjectRef rows = std::make_shared<qorcred::ResultTable>();
  for ([[maybe_unused]] auto iteration : state) {
    for (int time = 0; time < kCredentialTimes; ++time) {
      std::string statement;
      Check(controller.pbGenSql(connection, kUnit, rows, statement), "the statement is run");
    }
  }

  CheckCredentialTable(rows);
  state.counters[kItems] = kCredentialTimes * kReportedCredentials;
}

void ReportCredentialsByHand(benchmark::State& state) {
  const BenchStore store;
  qorhost::sqlite::Database database = store.OpenDatabase();
  PutReportedCredentials(database);
  std::vector<by_hand::ReportedCredential> rows;
  for ([[maybe_unused]] auto iteration : state) {
    for (int time = 0; time < kCredentialTimes; ++time) {
      rows = by_hand::ReportCredentials(database.handle(), kUnit, kFacilityCode);
    }
  }

  Check(rows.size() == static_cast<std::size_t>(kReportedCredentials), "every one is reported");
  for (const by_hand::ReportedCredential& row : rows) {
    const std::int32_t number = row.numbers.front();
    Check(row.type == kTypeNames[TypeOf(number)] && row.holder == HolderOf(number) &&
              row.numbers.back() == TenantOf(number),
          "each credential is reported with its holder");
  }
  state.counters[kItems] = kCredentialTimes * kReportedCredentials;
}

// A result like the credential report's, with one row and one column more than a merge takes.
constexpr std::int32_t kMergedColumns = 10;

qorcred::ObjectRef MergeSource(std::int32_t count) {
  auto table = std::make_shared<qorcred::ResultTable>(static_cast<std::size_t>(count) + 1,
                                                      std::size_t{kMergedColumns} + 1);
  for (std::int32_t row = 0; row <= count; ++row) {
    for (std::int32_t column = 0; column <= kMergedColumns; ++column) {
      table->At(row, column) = row + column;
    }
    constexpr std::int32_t kHolder = 6;
    table->At(row, 0) = kTypeNames[0];
    table->At(row, kHolder) = HolderOf(row);
  }
  return table;
}

// `count` rows of ten columns are appended to a table of one row. Once before the measurement: the
// process gets its memory then, and a merge that is done once would pay for it with every row.
void Merge(benchmark::State& state, std::int32_t count) {
  const auto host = StrictHost();
  qorcred::clsCredentialReport controller(*host);
  const qorcred::ObjectRef source = MergeSource(count);
  std::shared_ptr<qorcred::ResultTable> target;
  const auto merge = [&] {
    target = std::make_shared<qorcred::ResultTable>(std::size_t{1}, std::size_t{kMergedColumns});
    Check(controller.pbMergeXArrayDBObjects(target, source), "the tables are merged");
  };
  merge();
  const int times = kMergedRowsOfRound / count;
  for ([[maybe_unused]] auto iteration : state) {
    for (int time = 0; time < times; ++time) {
      merge();
    }
  }

  Check(target->UpperBound(1) == count && target->UpperBound(2) == kMergedColumns - 1,
        "a row is appended for each but the last");
  const qorcred::TableView from(source);
  for (std::int32_t row = 0; row < count; ++row) {
    for (std::int32_t column = 0; column < kMergedColumns; ++column) {
      Check(qorcred::Equals(target->At(row + 1, column), from.Cell(row, column)),
            "the rows are appended in their order");
    }
  }
  state.counters[kItems] = static_cast<double>(times) * count;
}

constexpr double kGoal = 3.0;

Comparison AddCodes(const char* name, const char* ours, const char* byHand, std::int32_t count) {
  benchmark::RegisterBenchmark(ours, ReportCodesOurs, count)->Iterations(1);
  benchmark::RegisterBenchmark(byHand, ReportCodesByHand, count)->Iterations(1);
  return {name, ours, byHand, kGoal};
}

Comparison AddMerge(const char* name, const char* large, std::int32_t manyRows, const char* small,
                    std::int32_t fewRows) {
  benchmark::RegisterBenchmark(large, Merge, manyRows)->Iterations(1);
  benchmark::RegisterBenchmark(small, Merge, fewRows)->Iterations(1);
  constexpr double kGrowthGoal = 1.2;  // ten times the rows take at most twelve times as long
  return {name, large, small, kGrowthGoal};
}

}  // namespace

std::vector<Comparison> AddReportBenchmarks(Size /*size*/) {
  std::vector<Comparison> comparisons{AddCodes("report-dircodes-10000", "reports/codes-10000-ours",
                                               "reports/codes-10000-by-hand", 10000),
                                      AddCodes("report-dircodes-60000", "reports/codes-60000-ours",
                                               "reports/codes-60000-by-hand", 60000)};
  benchmark::RegisterBenchmark(kCredentialsOurs, ReportCredentialsOurs)->Iterations(1);
  benchmark::RegisterBenchmark(kCredentialsByHand, ReportCredentialsByHand)->Iterations(1);
  comparisons.push_back({"report-credentials", kCredentialsOurs, kCredentialsByHand, kGoal});
  comparisons.push_back(
      AddMerge("report-merge-10000", "reports/merge-10000", 10000, "reports/merge-1000", 1000));
  comparisons.push_back(
      AddMerge("report-merge-60000", "reports/merge-60000", 60000, "reports/merge-6000", 6000));
  return comparisons;
}

}  // namespace qorbench
