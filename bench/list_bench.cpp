// Filling the list of credentials, against stepping the same query by hand.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <memory>
#include <vector>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "bench/hand_written.h"
#include "bench/save_screen.h"
#include "credentials/cls_credential.h"
#include "host/store/store_connection.h"

namespace qorbench {

namespace {

constexpr const char* kOurs = "list/ours";
constexpr const char* kByHand = "list/by-hand";
constexpr std::int32_t kUnit = 1;
constexpr std::int32_t kCredentials = 65535;
constexpr int kTimes = 4;  // in each round: once is over too soon

// Rows put in past every check: more than a save would let a unit have. The numbers run down, so
// that the list is in another order than the table.
void PutCredentials(qorhost::sqlite::Database& database) {
  database.Run(
      fmt::format("WITH RECURSIVE numbers(n) AS (VALUES ({0}) UNION ALL SELECT n - 1 FROM numbers "
                  "WHERE n > 1) INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo, "
                  "FacilityCode, IDCode, SequenceNumber, ButtonNumber, DOORCODE, "
                  "LASTMODIFIEDDATE) SELECT {1}, {2}, n, {3}, 0, 0, 1, 0, "
                  "datetime('2026-01-15 09:30:00', (n % 86400) || ' seconds') FROM numbers",
                  kCredentials, kUnit, kCardType, kFacilityCode));
}

// The identity of the credential with that number.
constexpr std::int32_t RidOf(std::int32_t number) {
  return kCredentials - number + 1;
}

void FillOurs(benchmark::State& state) {
  const BenchStore store;
  const auto connection =
      std::make_shared<qorhost::StoreConnection>(store.Open(), qorhost::SystemClock());
  PutCredentials(qorhost::sqlite::DatabaseOf(connection->store()));
  const auto host = StrictHost();
  const auto screen = RangeScreen();
  qorcred::clsCredential controller(*host);
  controller.set_gmobjCredentialScreen(screen);
  constexpr std::int32_t kAll = -1;
  constexpr std::int32_t kChosen = 40000;
  for ([[maybe_unused]] auto iteration : state) {
    for (int time = 0; time < kTimes; ++time) {
      controller.pbRetrieveCredentials(connection, kUnit, kAll, RidOf(kChosen));
    }
  }

  const qorhost::ListModel& list = screen->List("cboCredentials");
  Check(list.count() == kCredentials + 1, "the list has an entry for each credential");
  Check(list.selected() == kChosen, "the credential shown before is selected");
  for (std::int32_t number = 1; number <= kCredentials; ++number) {
    Check(list.Text(number) == fmt::format("Corvin 30-Bit Card-{}", number) &&
              list.ItemData(number) == RidOf(number),
          "the entries are in the order of their numbers");
  }
  state.counters[kItems] = kTimes * kCredentials;
}

void FillByHand(benchmark::State& state) {
  const BenchStore store;
  qorhost::sqlite::Database database = store.OpenDatabase();
  PutCredentials(database);
  std::vector<by_hand::ListedCredential> rows;
  for ([[maybe_unused]] auto iteration : state) {
    for (int time = 0; time < kTimes; ++time) {
      rows = by_hand::ListCredentials(database.handle(), kUnit);
    }
  }

  Check(rows.size() == static_cast<std::size_t>(kCredentials), "every credential is listed");
  std::int32_t number = 0;
  for (const by_hand::ListedCredential& row : rows) {
    ++number;
    Check(row.number == number && row.rid == RidOf(number) && row.unit == kUnit &&
              row.lastModified.size() == std::string_view("2026-01-15 09:30:00").size(),
          "the rows are in the order of their numbers");
  }
  state.counters[kItems] = kTimes * kCredentials;
}

}  // namespace

std::vector<Comparison> AddListBenchmarks(Size /*size*/) {
  benchmark::RegisterBenchmark(kOurs, FillOurs)->Iterations(1);
  benchmark::RegisterBenchmark(kByHand, FillByHand)->Iterations(1);
  constexpr double kGoal = 3.0;
  return {{"fill-list", kOurs, kByHand, kGoal}};
}

}  // namespace qorbench
