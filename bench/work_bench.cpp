// What an operator does as one unit of work: an operation of one row against its statements by hand
// in one transaction, and a range with its audit entry against the range without.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <memory>
#include <string>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "bench/hand_written.h"
#include "bench/save_screen.h"
#include "credentials/cls_credential.h"
#include "host/store/store_connection.h"

namespace qorbench {

namespace {

constexpr const char* kRange = "work/range";
constexpr const char* kPrepared = "issue/prepared";
constexpr const char* kWithout = "issue/ours";
constexpr const char* kRow = "work/row";
constexpr const char* kRowByHand = "work/row-by-hand";

constexpr std::int32_t kUnit = 1;
constexpr std::int32_t kRows =
    20;  // few: looking for the number would count for more than the rest
constexpr std::int32_t kTimes = 50;

/// An open store with the credential screen of a unit on it.
struct Setting {
  Setting() { controller.set_gmobjCredentialScreen(screen); }

  BenchStore store;
  std::shared_ptr<qorhost::StoreConnection> connection =
      std::make_shared<qorhost::StoreConnection>(store.Open(), qorhost::SystemClock());
  std::unique_ptr<qorhost::StoreHost> host = StrictHost();
  std::shared_ptr<qorhost::ScreenModel> screen = RangeScreen();
  qorcred::clsCredential controller{*host};

  [[nodiscard]] qorhost::UnitOfWork& work() const { return connection->session().work(); }
  [[nodiscard]] qorhost::WorkOrder Order(std::int32_t unit, const char* what) const {
    // As a desk has it: what its last operation left, else what the store says.
    const auto committed = work().Committed(unit);
    return {{unit}, what, committed ? *committed : work().VersionOf(unit)};
  }
};

void IssueAsWork(benchmark::State& state) {
  Setting setting;
  std::int32_t lastRid = 0;
  for ([[maybe_unused]] auto iteration : state) {
    for (const RangeSave& save : kEveryNumber) {
      EnterRange(*setting.screen, save.start, save.end);
      qorhost::WorkGuard guard(setting.work(), setting.Order(save.unit, "issue"));
      Check(setting.controller.pbSave(setting.connection, save.unit, false, false, &lastRid),
            "the save is done");
      Check(guard.Commit(), "the save is stored");
    }
  }
  qorhost::sqlite::Database& database = qorhost::sqlite::DatabaseOf(setting.connection->store());
  CheckCredentials(database, kEveryNumber);
  Check(setting.connection->session().audit().After(0, kUnit).size() == 1,
        "the save has its audit entry");
  state.counters[kItems] = CountOf(kEveryNumber);
}

/// Puts the credentials 1 to kRows into the unit.
void PutCredentials(qorhost::sqlite::Database& database) {
  (void)by_hand::IssuePrepared(database.handle(), std::array{RangeSave{kUnit, 1, kRows}});
}

void CheckRaised(qorhost::sqlite::Database& database) {
  Check(database.Number(fmt::format("SELECT count(*) FROM CredentialBank WHERE PINNo=RID+{}",
                                    kTimes * kRows)) == kRows,
        "each credential has its new number");
}

void RenumberAsWork(benchmark::State& state) {
  Setting setting;
  qorhost::sqlite::Database& database = qorhost::sqlite::DatabaseOf(setting.connection->store());
  PutCredentials(database);
  setting.controller.pbRetrieveCredentials(setting.connection, kUnit, qorcred::kAllCredentials);
  qorhost::ListModel& list = setting.screen->List("cboCredentials");
  for ([[maybe_unused]] auto iteration : state) {
    for (std::int32_t time = 1; time <= kTimes; ++time) {
      for (std::int32_t rid = 1; rid <= kRows; ++rid) {
        list.Select(list.FindData(rid));
        qorhost::WorkGuard guard(setting.work(), setting.Order(kUnit, "renumber"));
        Check(setting.controller.pbUpdatePinNo(setting.connection, rid + time * kRows, kUnit),
              "the number is given");
        Check(guard.Commit(), "the number is stored");
      }
    }
  }
  CheckRaised(database);
  state.counters[kItems] = kRows * kTimes;
}

void RenumberByHand(benchmark::State& state) {
  const BenchStore store;
  qorhost::sqlite::Database database = store.OpenDatabase();
  PutCredentials(database);
  for ([[maybe_unused]] auto iteration : state) {
    by_hand::Renumber(database.handle(), kUnit, kRows, kTimes);
  }
  CheckRaised(database);
  state.counters[kItems] = kRows * kTimes;
}

}  // namespace

std::vector<Comparison> AddWorkBenchmarks(Size /*size*/) {
  benchmark::RegisterBenchmark(kRange, IssueAsWork)->Iterations(1);
  benchmark::RegisterBenchmark(kRow, RenumberAsWork)->Iterations(1);
  benchmark::RegisterBenchmark(kRowByHand, RenumberByHand)->Iterations(1);
  constexpr double kRangeGoal = 0.9;
  constexpr double kAuditGoal = 1.05;
  constexpr double kRowGoal = 1.5;
  return {{"work-range", kRange, kPrepared, kRangeGoal},
          {"work-range-audit", kRange, kWithout, kAuditGoal},
          {"work-row", kRow, kRowByHand, kRowGoal}};
}

}  // namespace qorbench
