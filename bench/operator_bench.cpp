// What an operator does to many tenants at once, and a search among many, against what it takes by
// hand.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <memory>
#include <string>
#include <vector>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "bench/hand_written.h"
#include "host/desks/finder.h"
#include "host/desks/session.h"
#include "host/desks/tenant_desk.h"
#include "host/store/step_queue.h"

namespace qorbench {

namespace {

constexpr const char* kEdit = "operator/edit";
constexpr const char* kEditByHand = "operator/edit-by-hand";
constexpr const char* kFind = "operator/find";
constexpr const char* kFindNothing = "operator/find-nothing";
constexpr const char* kLookUp = "operator/look-up";

constexpr std::int32_t kUnit = 1;
constexpr std::int32_t kEdited = 10'000;
constexpr std::int32_t kSearched = 100'000;
constexpr double kMostMoreMs = 50.0;

/// Tenants with names of their own, two letters of some beyond ASCII, and waiting steps of none.
void PutTenants(qorhost::sqlite::Database& database, std::int32_t count) {
  database.Run(fmt::format(
      "WITH N(I) AS (SELECT 1 UNION ALL SELECT I+1 FROM N WHERE I<{}) "
      "INSERT INTO Tenants (UnitKey, LastName, FirstName, NameAtUnit, Resident, GROUPID, LINKCODE, "
      "ACTIVETENANT, DOORSCHEDULE1, DOORSCHEDULE2, DOORSCHEDULE3, DOORSCHEDULE4, MODIFIED, "
      "LASTMODIFIEDDATE) SELECT {}, iif(I%10=0, 'Öztürk', 'Lindqvist') || I, 'Person' || (I%97), "
      "'Person ' || I, 0, 1, I, 0, 1, 1, 1, 0, 0, '2026-01-15 09:30:00' FROM N",
      count, kUnit));
}

void CheckEdited(qorhost::sqlite::Database& database) {
  Check(database.Number("SELECT count(*) FROM Tenants WHERE DOORSCHEDULE3=0 AND "
                        "LASTMODIFIEDDATE>'2026-01-15 09:30:00'") == kEdited,
        "every tenant is changed");
  Check(database.Number("SELECT count(DISTINCT SubjectRID) FROM ProgramSteps WHERE Sent=0") ==
            kEdited,
        "every tenant has a step");
}

void EditOurs(benchmark::State& state) {
  const BenchStore store;
  {
    qorhost::sqlite::Database database = store.OpenDatabase();
    PutTenants(database, kEdited);
  }
  qorhost::DeskSession session(store.Open(), {});
  qorhost::TenantEntry entry;
  entry.schedules[2] = "0";
  for ([[maybe_unused]] auto iteration : state) {
    qorhost::TenantDesk desk(session, kUnit);
    desk.ChooseWhere({"schedule3 = Full Access"});
    Check(desk.Edit(entry, qorhost::Trial::kNo).tenants == kEdited, "all of them are changed");
  }
  Check(session.sql().audit().After(0, kUnit).size() == 1, "the edit has its audit entry");
  qorhost::sqlite::Database database = store.OpenDatabase();
  CheckEdited(database);
  state.counters[kItems] = kEdited;
}

void EditByHand(benchmark::State& state) {
  const BenchStore store;
  qorhost::sqlite::Database database = store.OpenDatabase();
  PutTenants(database, kEdited);
  for ([[maybe_unused]] auto iteration : state) {
    by_hand::EditTenants(database.handle(), kUnit);
  }
  CheckEdited(database);
  state.counters[kItems] = kEdited;
}

/// A store that is searched again in every round.
template <typename Search>
void SearchIn(benchmark::State& state, const Search& search) {
  const BenchStore store;
  {
    qorhost::sqlite::Database database = store.OpenDatabase();
    PutTenants(database, kSearched);
  }
  for ([[maybe_unused]] auto iteration : state) {
    search(store);
  }
  state.counters[kItems] = 1;
}

void FindOurs(benchmark::State& state) {
  SearchIn(state, [](const BenchStore& store) {
    qorhost::DeskSession session(store.Open(), {});
    const qorhost::Found found =
        qorhost::FindText(session, {{kUnit, "Court"}}, "ozturk50000 person45", 50);
    Check(found.total == 1, fmt::format("the one tenant is found, not {}", found.total));
  });
}

/// The names that are near have to be looked for, too.
void FindNothing(benchmark::State& state) {
  SearchIn(state, [](const BenchStore& store) {
    qorhost::DeskSession session(store.Open(), {});
    const qorhost::Found found =
        qorhost::FindText(session, {{kUnit, "Court"}}, "ozturk50000 persona45x", 50);
    Check(found.total == 0, fmt::format("nobody is found, not {}", found.total));
  });
}

void LookUpByHand(benchmark::State& state) {
  SearchIn(state, [](const BenchStore& store) {
    qorhost::sqlite::Database database = store.OpenDatabase();
    Check(database.Number(fmt::format("SELECT RID FROM Tenants WHERE UnitKey={} AND Resident=0 AND "
                                      "LastName='Öztürk50000'",
                                      kUnit)) == kSearched / 2,
          "the one tenant is found");
  });
}

}  // namespace

std::vector<Comparison> AddOperatorBenchmarks(Size /*size*/) {
  benchmark::RegisterBenchmark(kEdit, EditOurs)->Iterations(1);
  benchmark::RegisterBenchmark(kEditByHand, EditByHand)->Iterations(1);
  benchmark::RegisterBenchmark(kFind, FindOurs)->Iterations(1);
  benchmark::RegisterBenchmark(kFindNothing, FindNothing)->Iterations(1);
  benchmark::RegisterBenchmark(kLookUp, LookUpByHand)->Iterations(1);
  constexpr double kEditGoal = 3.0;
  constexpr double kNanosecondsOfMs = 1e6;
  return {{"tenants-edit-10000", kEdit, kEditByHand, kEditGoal},
          {"find-100000", kFind, kLookUp, 0.0, kMostMoreMs * kNanosecondsOfMs},
          {"find-nothing-100000", kFindNothing, kLookUp, 0.0, kMostMoreMs * kNanosecondsOfMs}};
}

}  // namespace qorbench
