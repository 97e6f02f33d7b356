// Issuing credentials with a tenant for each on the store, against the same statements by hand.
#include <benchmark/benchmark.h>

#include <array>
#include <memory>
#include <span>
#include <string>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "bench/hand_written.h"
#include "bench/save_screen.h"
#include "credentials/cls_credential.h"
#include "frame/convert.h"
#include "host/store/store_connection.h"

namespace qorbench {

namespace {

constexpr const char* kOurs = "tenants/ours";
constexpr const char* kTexts = "tenants/texts";
constexpr const char* kPrepared = "tenants/prepared";
constexpr const char* kOursUnit = "tenants/ours-unit";
constexpr const char* kOursTenth = "tenants/ours-tenth-of-unit";

// One save that fills a unit, and one of a tenth of it.
constexpr std::array kUnit{RangeSave{1, 1, 32760}};
constexpr std::array kTenthOfUnit{RangeSave{1, 1, 3276}};

using Saves = std::span<const RangeSave>;

std::string IdsOf(Saves saves) {
  std::string ids;
  for (std::int32_t id = 1; id <= CountOf(saves); ++id) {
    ids += std::to_string(id) + ",";
  }
  return ids;
}

void Finish(benchmark::State& state, qorhost::sqlite::Database& database,
            const std::string& tenantIds, Saves saves) {
  CheckTenants(database, saves);
  Check(tenantIds == IdsOf(saves), "the ids of the new tenants are listed");
  state.counters[kItems] = CountOf(saves);
}

void IssueOurs(benchmark::State& state, Saves saves) {
  const BenchStore store;
  const auto connection =
      std::make_shared<qorhost::StoreConnection>(store.Open(), qorhost::SystemClock());
  const auto host = StrictHost();
  const auto screen = TenantRangeScreen();
  qorcred::clsCredential controller(*host);
  controller.set_gmobjCredentialScreen(screen);
  std::string tenantIds;
  for ([[maybe_unused]] auto iteration : state) {
    for (const RangeSave& save : saves) {
      EnterRange(*screen, save.start, save.end);
      Check(controller.pbSave(connection, save.unit, true), "the save is done");
      tenantIds += qorcred::ToText(screen->Variable("gstrNewTenantIDs"));
    }
  }
  Finish(state, qorhost::sqlite::DatabaseOf(connection->store()), tenantIds, saves);
}

template <std::string (*issue)(sqlite3*, Saves)>
void IssueByHand(benchmark::State& state, Saves saves) {
  const BenchStore store;
  qorhost::sqlite::Database database = store.OpenDatabase();
  std::string tenantIds;
  for ([[maybe_unused]] auto iteration : state) {
    tenantIds = issue(database.handle(), saves);
  }
  Finish(state, database, tenantIds, saves);
}

}  // namespace

std::vector<Comparison> AddTenantsBenchmarks(Size size) {
  const Saves saves = size == Size::kFull ? Saves(kEveryNumber) : Saves(kTenthOfNumbers);
  benchmark::RegisterBenchmark(kOurs, IssueOurs, saves)->Iterations(1);
  benchmark::RegisterBenchmark(kTexts, IssueByHand<by_hand::IssueTenantsWithTexts>, saves)
      ->Iterations(1);
  benchmark::RegisterBenchmark(kPrepared, IssueByHand<by_hand::IssueTenantsPrepared>, saves)
      ->Iterations(1);
  benchmark::RegisterBenchmark(kOursUnit, IssueOurs, Saves(kUnit))->Iterations(1);
  benchmark::RegisterBenchmark(kOursTenth, IssueOurs, Saves(kTenthOfUnit))->Iterations(1);
  constexpr double kTextsGoal = 0.75;
  constexpr double kPreparedGoal = 0.9;
  constexpr double kGrowthGoal = 1.5;
  return {{"issue-tenants-text", kOurs, kTexts, kTextsGoal},
          {"issue-tenants-prepared", kOurs, kPrepared, kPreparedGoal},
          {"issue-tenants-growth", kOursUnit, kOursTenth, kGrowthGoal}};
}

}  // namespace qorbench
