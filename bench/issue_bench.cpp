// Issuing every number on the store, against the same rows by hand.
#include <benchmark/benchmark.h>

#include <memory>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "bench/hand_written.h"
#include "bench/save_screen.h"
#include "credentials/cls_credential.h"
#include "host/store/store_connection.h"

namespace qorbench {

namespace {

constexpr const char* kOurs = "issue/ours";
constexpr const char* kTexts = "issue/texts";
constexpr const char* kPrepared = "issue/prepared";

void Finish(benchmark::State& state, qorhost::sqlite::Database& database, std::int64_t lastRid) {
  CheckCredentials(database, kEveryNumber);
  Check(lastRid == CountOf(kEveryNumber), "the last identity is the number of rows");
  state.counters[kItems] = CountOf(kEveryNumber);
}

void IssueOurs(benchmark::State& state) {
  const BenchStore store;
  const auto connection =
      std::make_shared<qorhost::StoreConnection>(store.Open(), qorhost::SystemClock());
  const auto host = StrictHost();
  const auto screen = RangeScreen();
  qorcred::clsCredential controller(*host);
  controller.set_gmobjCredentialScreen(screen);
  std::int32_t lastRid = 0;
  for ([[maybe_unused]] auto iteration : state) {
    for (const RangeSave& save : kEveryNumber) {
      EnterRange(*screen, save.start, save.end);
      Check(controller.pbSave(connection, save.unit, false, false, &lastRid), "the save is done");
    }
  }
  Finish(state, qorhost::sqlite::DatabaseOf(connection->store()), lastRid);
}

template <std::int64_t (*issue)(sqlite3*, std::span<const RangeSave>)>
void IssueByHand(benchmark::State& state) {
  const BenchStore store;
  qorhost::sqlite::Database database = store.OpenDatabase();
  std::int64_t lastRid = 0;
  for ([[maybe_unused]] auto iteration : state) {
    lastRid = issue(database.handle(), kEveryNumber);
  }
  Finish(state, database, lastRid);
}

}  // namespace

std::vector<Comparison> AddIssueBenchmarks(Size /*size*/) {
  benchmark::RegisterBenchmark(kOurs, IssueOurs)->Iterations(1);
  benchmark::RegisterBenchmark(kTexts, IssueByHand<by_hand::IssueWithTexts>)->Iterations(1);
  benchmark::RegisterBenchmark(kPrepared, IssueByHand<by_hand::IssuePrepared>)->Iterations(1);
  constexpr double kTextsGoal = 0.15;
  constexpr double kPreparedGoal = 0.9;
  return {{"issue-range-text", kOurs, kTexts, kTextsGoal},
          {"issue-range-prepared", kOurs, kPrepared, kPreparedGoal}};
}

}  // namespace qorbench
