// Bringing a large building in from a desktop database file, against its tables read to nowhere by
// another program and the same rows inserted by hand.
#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <sys/resource.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "host/desks/moving_in/moving_in.h"
#include "host/files/desktop_file/desktop_file.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/schema.h"

namespace qorbench {

namespace {

namespace fs = std::filesystem;

using qorhost::MovingOrder;
using qorhost::MovingPlan;
using qorhost::StagedRow;
using qorhost::StagedTable;
using qorhost::sqlite::Database;
using qorhost::sqlite::Statement;
using qorhost::sqlite::StatementUse;

constexpr const char* kOurs = "moving-in/30000";
constexpr const char* kByHand = "moving-in/by-hand";
constexpr std::int32_t kCredentials = 30000;
constexpr std::int32_t kTenants = 8000;

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// The processor time of this process and of all that it has started and that have ended.
double SecondsOfAll() {
  double seconds = 0;
  for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
    rusage usage{};
    getrusage(who, &usage);
    seconds += Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
  }
  return seconds;
}

/// A new store without units, in a folder that goes with it.
class EmptyStore {
 public:
  EmptyStore() : file_(beside_.File().replace_filename("moved.db")) {
    (void)qorhost::OpenStore(file_, qorhost::OpenMode::kCreate);
  }
  [[nodiscard]] const fs::path& file() const { return file_; }

 private:
  BenchStore beside_;
  fs::path file_;
};

MovingOrder Order() {
  MovingOrder order;
  order.file = QORBENCH_BUILDING;
  order.reading.reader = QORBENCH_DESKTOP_READER;
  return order;
}

void CheckBuilding(const fs::path& file) {
  Database database = qorhost::sqlite::OpenDatabase(file, qorhost::OpenMode::kReadWrite);
  const auto check = [&](const char* query, std::int64_t expected) {
    Check(database.Number(query) == expected, query);
  };
  check("SELECT count(*) FROM CredentialBank", kCredentials);
  check("SELECT count(*) FROM Tenants", kTenants);
  check("SELECT count(*) FROM DirectoryCode", 3000);
  check(
      "SELECT count(*) FROM Tenants t JOIN CredentialBank c ON c.RID=t.CREDENTIALID1 AND "
      "c.UnitKey=t.UnitKey",
      database.Number("SELECT count(CREDENTIALID1) FROM Tenants"));
}

void MoveIn(benchmark::State& state) {
  const EmptyStore store;
  for ([[maybe_unused]] auto iteration : state) {
    const double before = SecondsOfAll();
    const MovingPlan plan = qorhost::PlanMoving(Order());
    const std::unique_ptr<qorhost::Store> opened =
        qorhost::OpenStore(store.file(), qorhost::OpenMode::kReadWrite);
    qorhost::BringIn(*opened->StartSession(qorhost::SystemClock()), plan, "building.accdb");
    state.counters[kSecondsElsewhere] = SecondsOfAll() - before;
    Check(plan.refusedRows() == 0, "every row is brought in");
  }
  CheckBuilding(store.file());
  state.counters[kItems] = kCredentials + kTenants;
}

void InsertRows(Database& database, const StagedTable& table) {
  const auto& layout = qorhost::LayoutOf(table.known());
  std::vector<std::size_t> places;
  std::string columns;
  std::string values;
  for (std::size_t at = 0; at < layout.columns.size(); ++at) {
    if (layout.columns[at].generated) continue;
    places.push_back(at);
    columns += (columns.empty() ? "" : ",") + std::string(layout.columns[at].name);
    values += values.empty() ? "?" : ",?";
  }
  Statement insert(database,
                   fmt::format("INSERT INTO {} ({}) VALUES ({})", layout.name, columns, values));
  for (const StagedRow& row : table.rows()) {
    const StatementUse use(insert);
    int parameter = 0;
    for (const std::size_t at : places) use->Bind(++parameter, row.cells[at]);
    use->Step();
  }
}

/// The commands by which another reader on the same library reads the tables to nowhere. It asks
/// for their names in the letter case of the file.
std::vector<std::string> ReadingCommands() {
  qorhost::DesktopReading reading = Order().reading;
  std::vector<std::string> commands;
  for (const qorhost::DesktopTable& table :
       qorhost::ReadDesktopFile(QORBENCH_BUILDING, reading).tables) {
    if (qorhost::FindKnownTable(table.name) != nullptr) {
      commands.push_back(fmt::format("{} '{}' '{}' > /dev/null", QORBENCH_MDB_EXPORT,
                                     QORBENCH_BUILDING, table.name));
    }
  }
  return commands;
}

void MoveInByHand(benchmark::State& state) {
  const MovingPlan plan = qorhost::PlanMoving(Order());
  const std::vector<std::string> commands = ReadingCommands();
  const EmptyStore store;
  for ([[maybe_unused]] auto iteration : state) {
    const double before = SecondsOfAll();
    for (const std::string& command : commands) {
      Check(std::system(command.c_str()) == 0, "the other reader reads every table");
    }
    Database database = qorhost::sqlite::OpenDatabase(store.file(), qorhost::OpenMode::kReadWrite);
    database.Run("BEGIN IMMEDIATE");
    database.Run("DELETE FROM TenantSelectionFields");
    for (const StagedTable& table : plan.tables()) InsertRows(database, table);
    database.Run("COMMIT");
    state.counters[kSecondsElsewhere] = SecondsOfAll() - before;
  }
  CheckBuilding(store.file());
  state.counters[kItems] = kCredentials + kTenants;
}

}  // namespace

std::vector<Comparison> AddMovingBenchmarks(Size /*size*/) {
  const bool canRead = !std::string_view(QORBENCH_DESKTOP_READER).empty() &&
                       !std::string_view(QORBENCH_MDB_EXPORT).empty();
  if (!canRead) {
    return {};
  }
  benchmark::RegisterBenchmark(kOurs, MoveIn)->Iterations(1);
  benchmark::RegisterBenchmark(kByHand, MoveInByHand)->Iterations(1);
  constexpr double kGoal = 2.0;
  return {{"moving-in-30000", kOurs, kByHand, kGoal}};
}

}  // namespace qorbench
