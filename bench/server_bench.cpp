// Work on a PostgreSQL server of the bench's own, against the same by hand with libpq. The times
// are those that pass: most of the work is the server's, in processes of its own.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "bench/save_screen.h"
#include "bench/server_hand_written.h"
#include "bench/server_store.h"
#include "credentials/cls_credential.h"
#include "frame/convert.h"
#include "host/dialect/translator.h"
#include "host/store/postgres/printer.h"

namespace qorbench {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr std::int32_t kUnit = 1;
constexpr std::int32_t kRows = 20;
constexpr std::int32_t kListTimes = 3;
constexpr std::int32_t kOperationsOfSeat = 100;
// Before them: the server has read the statements then, and has settled on how to run them.
constexpr std::int32_t kWarmUp = 10;

/// The seconds that pass while something is done.
template <typename Work>
double SecondsOf(Work&& work) {
  const auto started = std::chrono::steady_clock::now();
  work();
  return Seconds(std::chrono::steady_clock::now() - started).count();
}

/// Who works at a screen of a store on the server.
class ServerSeat {
 public:
  explicit ServerSeat(const ServerStore& store, bool withTenants = false)
      : connection_(store.Open()), screen_(withTenants ? TenantRangeScreen() : RangeScreen()) {
    controller_.set_gmobjCredentialScreen(screen_);
  }

  void IssueRange(bool withTenants) {
    EnterRange(*screen_, 1, kServerRange);
    AsWork(kUnit, "issue",
           [&] { Check(controller_.pbSave(connection_, kUnit, withTenants), "the save is done"); });
  }

  void FillList() { controller_.pbRetrieveCredentials(connection_, kUnit, kAll); }
  void FillListOf(std::int32_t unit) { controller_.pbRetrieveCredentials(connection_, unit, kAll); }

  void Renumber(std::int32_t unit, std::int32_t rid, std::int32_t number) {
    qorhost::ListModel& list = screen_->List("cboCredentials");
    list.Select(list.FindData(rid));
    AsWork(unit, "renumber", [&] {
      Check(controller_.pbUpdatePinNo(connection_, number, unit), "the number is given");
    });
  }

  [[nodiscard]] const qorhost::ListModel& list() const { return screen_->List("cboCredentials"); }
  [[nodiscard]] qorhost::SqlSession& session() const { return connection_->session(); }

 private:
  static constexpr std::int32_t kAll = -1;

  /// Takes the right to write first, as an operation does that is run again.
  template <typename Operation>
  void AsWork(std::int32_t unit, const char* what, Operation&& operation) {
    qorhost::WorkGuard guard(connection_->session().work(), {{unit}, what, std::nullopt});
    operation();
    Check(guard.Commit(), "the operation is stored");
  }

  std::shared_ptr<qorhost::StoreConnection> connection_;
  std::unique_ptr<qorhost::StoreHost> host_ = StrictHost();
  std::shared_ptr<qorhost::ScreenModel> screen_;
  qorcred::clsCredential controller_{*host_};
};

void RangeOurs(benchmark::State& state, bool withTenants) {
  const ServerStore store;
  ServerSeat seat(store, withTenants);
  double seconds = 0;
  for ([[maybe_unused]] auto iteration : state) {
    seconds = SecondsOf([&] { seat.IssueRange(withTenants); });
  }
  CheckServerRange(store.name(), withTenants);
  state.counters[kItems] = kServerRange;
  state.counters[kSecondsElsewhere] = seconds;
}

void RangeByHand(benchmark::State& state, bool withTenants) {
  const ServerStore store;
  HandConnection connection(store.name());
  connection.DropTriggers();
  double seconds = 0;
  for ([[maybe_unused]] auto iteration : state) {
    seconds = SecondsOf([&] { by_hand::IssueOnServer(connection, withTenants); });
  }
  CheckServerRange(store.name(), withTenants);
  state.counters[kItems] = kServerRange;
  state.counters[kSecondsElsewhere] = seconds;
}

/// Credentials of each unit, kRows of them with the numbers from 1; the identity of the first one
/// of a unit is (unit - 1) * kRows + 1.
void PutFew(const ServerStore& store) {
  HandConnection connection(store.name());
  connection.Run(fmt::format(
      R"(INSERT INTO "CredentialBank" ("UnitKey", "CredentialType", "PINNo", "FacilityCode", )"
      R"("IDCode", "SequenceNumber", "ButtonNumber", "LASTMODIFIEDDATE") SELECT u, {}, n, {}, 0, )"
      R"(0, 1, '2026-01-15 09:30:00' FROM generate_series(1, {}) u, generate_series(1, {}) n )"
      R"(ORDER BY u, n)",
      kCardType, kFacilityCode, kServerUnits, kRows));
}

/// The unit and the row of a seat's nth operation, and the row's next number.
struct Turn {
  std::int32_t unit;
  std::int32_t rid;
  std::int32_t number;
};

Turn TurnOf(std::int32_t seat, std::int32_t nth, bool sameUnit, std::int32_t seats) {
  const std::int32_t unit = sameUnit ? kUnit : seat + 1;
  const std::int32_t row = sameUnit ? seat : nth % kRows;
  const std::int32_t used = sameUnit ? nth * seats + seat : nth;
  return {unit, (unit - 1) * kRows + row + 1, 1000 + used};
}

struct Together {
  double seconds = 0;
  /// How much of the fastest seat's speed the slowest has.
  double slowestOfFastest = 0;
};

/// Runs every seat's operations at the same time.
Together RunTogether(std::int32_t seats, const std::function<void(std::int32_t)>& workOf) {
  std::vector<double> own(static_cast<std::size_t>(seats));
  const double seconds = SecondsOf([&] {
    std::vector<std::thread> threads;
    for (std::int32_t seat = 0; seat < seats; ++seat) {
      threads.emplace_back(
          [&, seat] { own[static_cast<std::size_t>(seat)] = SecondsOf([&] { workOf(seat); }); });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
  });
  const auto [fastest, slowest] = std::minmax_element(own.begin(), own.end());
  return {seconds, *fastest / *slowest};
}

/// Measures how long all seats' operations take together, each at its own of `open`, behind some
/// that do not count; `renumber` does one operation.
template <typename Seat, typename Renumber>
Together MeasureSeats(benchmark::State& state, const std::vector<std::unique_ptr<Seat>>& open,
                      bool sameUnit, const Renumber& renumber) {
  const auto seats = static_cast<std::int32_t>(open.size());
  const auto operate = [&](std::int32_t seat, std::int32_t first, std::int32_t end) {
    for (std::int32_t nth = first; nth < end; ++nth) {
      renumber(*open[static_cast<std::size_t>(seat)], TurnOf(seat, nth, sameUnit, seats));
    }
  };
  for (std::int32_t seat = 0; seat < seats; ++seat) {
    operate(seat, 0, kWarmUp);
  }
  Together together;
  for ([[maybe_unused]] auto iteration : state) {
    together = RunTogether(
        seats, [&](std::int32_t seat) { operate(seat, kWarmUp, kWarmUp + kOperationsOfSeat); });
  }
  state.counters[kItems] = seats * kOperationsOfSeat;
  state.counters[kSecondsElsewhere] = together.seconds;
  return together;
}

void SeatsOurs(benchmark::State& state, std::int32_t seats, bool sameUnit) {
  const ServerStore store;
  PutFew(store);
  std::vector<std::unique_ptr<ServerSeat>> open;
  for (std::int32_t seat = 0; seat < seats; ++seat) {
    open.push_back(std::make_unique<ServerSeat>(store));
    open.back()->FillListOf(TurnOf(seat, 0, sameUnit, seats).unit);
  }
  const Together together = MeasureSeats(
      state, open, sameUnit,
      [](ServerSeat& seat, const Turn& turn) { seat.Renumber(turn.unit, turn.rid, turn.number); });
  // The operations run one after the other on one unit, so that every seat ends at about the same
  // time unless one is left waiting.
  constexpr double kLeastShare = 0.1;
  Check(together.slowestOfFastest >= kLeastShare,
        "the slowest seat has a tenth of the fastest one's speed");
  HandConnection connection(store.name());
  Check(connection.Number(R"(SELECT count(*) FROM "AuditEntries")") ==
            std::int64_t{seats} * (kWarmUp + kOperationsOfSeat),
        "every operation is stored");
}

void SeatsByHand(benchmark::State& state, std::int32_t seats, bool sameUnit) {
  const ServerStore store;
  PutFew(store);
  HandConnection(store.name()).DropTriggers();
  HandConnection(store.name())
      .Run(fmt::format(R"(INSERT INTO "UnitVersions" SELECT n, 0, 0 FROM generate_series(1, {}) n)",
                       kServerUnits));
  std::vector<std::unique_ptr<by_hand::ServerRenumbering>> open;
  for (std::int32_t seat = 0; seat < seats; ++seat) {
    open.push_back(std::make_unique<by_hand::ServerRenumbering>(store.name()));
  }
  (void)MeasureSeats(state, open, sameUnit, [](by_hand::ServerRenumbering& seat, const Turn& turn) {
    seat.Renumber(turn.unit, turn.rid, turn.number);
  });
}

void PutMany(const ServerStore& store) {
  HandConnection connection(store.name());
  connection.Run(fmt::format(
      R"(INSERT INTO "CredentialBank" ("UnitKey", "CredentialType", "PINNo", "FacilityCode", )"
      R"("IDCode", "SequenceNumber", "ButtonNumber", "DOORCODE", "LASTMODIFIEDDATE") SELECT 1, )"
      R"({}, n, {}, 0, 0, 1, 0, '2026-01-15 09:30:00' FROM generate_series({}, 1, -1) n)",
      kCardType, kFacilityCode, kServerRange));
  connection.Run("ANALYZE");
}

// As the screen's list is filled, and as the report of credentials is asked for.
constexpr const char* kListQuery =
    "Select UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,"
    "LASTMODIFIEDDATE,DOORCODE from CredentialBank where UnitKey=1 order by CredentialType,PINNo,"
    "FacilityCode,IDCode,ButtonNumber,SequenceNumber";
const std::string& ReportQuery() {
  static const std::string query = fmt::format(
      "SELECT IIF(CredentialType=0,'Corvin 30 Bit card','Transmitter') AS Type,PINNo,FacilityCode,"
      "'Unassigned',CredentialType,RID FROM CredentialBank WHERE UnitKey=1 AND RID NOT IN (SELECT "
      "CREDENTIALID1 FROM Tenants WHERE UnitKey=1 AND CREDENTIALID1 IS NOT NULL) AND "
      "FacilityCode={} "
      "UNION SELECT 'None',0,0,'Unassigned',0,0 FROM Units WHERE UnitKey=99",
      int{kFacilityCode});
  return query;
}

void QueryOurs(benchmark::State& state, const std::string& sql) {
  const ServerStore store;
  PutMany(store);
  const ServerSeat seat(store);
  std::size_t rows = 0;
  double seconds = 0;
  for ([[maybe_unused]] auto iteration : state) {
    seconds = SecondsOf([&] {
      for (int time = 0; time < kListTimes; ++time) {
        rows = seat.session().Select(sql).rowCount;
      }
    });
  }
  Check(rows == static_cast<std::size_t>(kServerRange), "every credential is reported");
  state.counters[kItems] = kListTimes * kServerRange;
  state.counters[kSecondsElsewhere] = seconds;
}

void QueryByHand(benchmark::State& state, const std::string& sql) {
  const ServerStore store;
  PutMany(store);
  HandConnection connection(store.name());
  qorhost::dialect::Translator translator(&qorhost::postgres::Print);
  const qorhost::dialect::Translation translation = translator.Translate(sql, "");
  std::vector<std::optional<std::string>> values;
  for (const qorcred::Value& value : translation.parameters) {
    values.emplace_back(qorcred::ToText(value));
  }
  connection.Run("SET max_parallel_workers_per_gather = 0");
  double seconds = 0;
  std::size_t rows = 0;
  for ([[maybe_unused]] auto iteration : state) {
    seconds = SecondsOf([&] {
      for (int time = 0; time < kListTimes; ++time) {
        rows = by_hand::StepQuery(connection, translation.shape->sql, values);
      }
    });
  }
  Check(rows == static_cast<std::size_t>(kServerRange), "every row was stepped");
  state.counters[kItems] = kListTimes * kServerRange;
  state.counters[kSecondsElsewhere] = seconds;
}

void ListOurs(benchmark::State& state) {
  const ServerStore store;
  PutMany(store);
  ServerSeat seat(store);
  double seconds = 0;
  for ([[maybe_unused]] auto iteration : state) {
    seconds = SecondsOf([&] {
      for (int time = 0; time < kListTimes; ++time) {
        seat.FillList();
      }
    });
  }
  Check(seat.list().count() == kServerRange + 1, "every credential is listed");
  state.counters[kItems] = kListTimes * kServerRange;
  state.counters[kSecondsElsewhere] = seconds;
}

template <typename Body, typename... Arguments>
void Add(const char* name, Body body, Arguments... arguments) {
  benchmark::RegisterBenchmark(name, body, arguments...)->Iterations(1);
}

}  // namespace

std::vector<Comparison> AddServerBenchmarks(Size /*size*/) {
  if (!HasServer()) {
    return {};
  }
  Add("server/range", RangeOurs, false);
  Add("server/range-by-hand", RangeByHand, false);
  Add("server/tenants", RangeOurs, true);
  Add("server/tenants-by-hand", RangeByHand, true);
  Add("server/list", ListOurs);
  Add("server/list-by-hand", QueryByHand, std::string(kListQuery));
  Add("server/report", QueryOurs, ReportQuery());
  Add("server/report-by-hand", QueryByHand, ReportQuery());
  Add("server/seat", SeatsOurs, 1, false);
  Add("server/seat-by-hand", SeatsByHand, 1, false);
  Add("server/seats-4", SeatsOurs, 4, false);
  Add("server/seats-4-by-hand", SeatsByHand, 4, false);
  Add("server/seats-16", SeatsOurs, 16, false);
  Add("server/seats-16-by-hand", SeatsByHand, 16, false);
  Add("server/one-unit-1", SeatsOurs, 1, true);
  Add("server/one-unit-16", SeatsOurs, 16, true);
  constexpr double kRangeGoal = 1.3;
  constexpr double kTenantsGoal = 1.5;
  constexpr double kReadGoal = 1.5;
  constexpr double kOperationGoal = 1.3;
  constexpr double kTogetherGoal = 2.0;
  return {{"server-range", "server/range", "server/range-by-hand", kRangeGoal},
          {"server-tenants", "server/tenants", "server/tenants-by-hand", kTenantsGoal},
          {"server-list", "server/list", "server/list-by-hand", kReadGoal},
          {"server-report", "server/report", "server/report-by-hand", kReadGoal},
          {"server-row", "server/seat", "server/seat-by-hand", kOperationGoal},
          {"server-seats-4", "server/seats-4", "server/seats-4-by-hand", kOperationGoal},
          {"server-seats-16", "server/seats-16", "server/seats-16-by-hand", kOperationGoal},
          {"server-one-unit", "server/one-unit-16", "server/one-unit-1", kTogetherGoal}};
}

}  // namespace qorbench
