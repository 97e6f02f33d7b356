// Bringing the store's directory codes to what a unit holds, for ten times the codes.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <fstream>
#include <sstream>
#include <string>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "host/cli/console.h"
#include "host/cli/dir_code_exchange.h"
#include "host/unit/unit_generator.h"

namespace qorbench {

namespace {

constexpr std::int32_t kUnit = 1;
constexpr std::uint32_t kSeed = 20260115;

// Of the codes 1 to `count` the first half stays to be updated, a quarter has got another number
// and is found by its previous one, and a quarter is not in the unit. Every code has a tenant and a
// waiting step.
void PutStored(qorhost::sqlite::Database& database, std::int32_t count) {
  PutDirCodes(database, count);
  database.Run(fmt::format(
      "UPDATE DirectoryCode SET OLDDIRECTORYCODE=DIRECTORYCODE, DIRECTORYCODE=DIRECTORYCODE+{0} "
      "WHERE DIRECTORYCODE BETWEEN {1}+1 AND {2};"
      "UPDATE DirectoryCode SET OLDDIRECTORYCODE=NULL, DIRECTORYCODE=DIRECTORYCODE+2*{0} "
      "WHERE DIRECTORYCODE BETWEEN {2}+1 AND {0};"
      "INSERT INTO Tenants (UnitKey, LastName, DIRECTORYCODE) "
      "SELECT {3}, 'Name ' || RID, RID FROM DirectoryCode;"
      "INSERT INTO ProgramSteps (UnitKey, Kind, SubjectRID, Sent) "
      "SELECT {3}, 'change directory code', RID, 0 FROM DirectoryCode",
      count, count / 2, count / 4 * 3, kUnit));
}

// The command line's streams.
class Streams {
 public:
  qorhost::Console& console() { return console_; }
  [[nodiscard]] std::string TakeOut() {
    Check(err_.view().empty(), fmt::format("nothing to report instead of \"{}\"", err_.view()));
    std::string text = out_.str();
    out_.str("");
    return text;
  }

 private:
  std::istringstream in_;
  std::ostringstream out_;
  std::ostringstream err_;
  qorhost::Environment environment_;
  qorhost::Console console_{in_, out_, err_, environment_};
};

// The unit file is read, compared with the store, and each difference written, in one transaction.
void Sync(benchmark::State& state, std::int32_t count) {
  const BenchStore store;
  {
    qorhost::sqlite::Database database = store.OpenDatabase();
    PutStored(database, count);
  }
  std::ostringstream unit;
  qorhost::WriteUnitFile(unit, qorhost::GenerateUnit(count, kSeed));
  qorhost::SyncOptions sync;
  sync.from = store.File().replace_filename("unit.txt").string();
  std::ofstream(sync.from, std::ios::binary) << unit.str();

  qorhost::GlobalOptions global;
  global.file = store.File();
  global.unit = kUnit;
  Streams streams;
  for ([[maybe_unused]] auto iteration : state) {
    qorhost::RunCodeSync(global, sync, streams.console());
  }

  const std::int32_t quarter = count / 4;
  Check(
      streams.TakeOut() == fmt::format("{0} inserted, {1} updated, {0} deleted, 0 unchanged.\n"
                                       "{0} tenants are without a directory code now.\n"
                                       "{2} waiting steps were withdrawn: the unit's codes hold.\n",
                                       quarter, 3 * quarter, count),
      "the differences are written");
  qorhost::ExportOptions stored;
  stored.to = "-";
  qorhost::RunCodeExport(global, stored, streams.console());
  Check(streams.TakeOut() == unit.str(), "the store holds what the unit holds");
  state.counters[kItems] = count;
}

Comparison AddGrowth(const char* name, const char* large, std::int32_t manyCodes, const char* small,
                     std::int32_t fewCodes) {
  benchmark::RegisterBenchmark(large, Sync, manyCodes)->Iterations(1);
  benchmark::RegisterBenchmark(small, Sync, fewCodes)->Iterations(1);
  constexpr double kGoal = 1.2;  // ten times the codes take at most twelve times as long
  return {name, large, small, kGoal};
}

}  // namespace

std::vector<Comparison> AddSyncBenchmarks(Size size) {
  std::vector<Comparison> comparisons{
      AddGrowth("sync-growth-10000", "sync/10000", 10000, "sync/1000", 1000)};
  if (size == Size::kFull) {
    comparisons.push_back(AddGrowth("sync-growth-60000", "sync/60000", 60000, "sync/6000", 6000));
  }
  return comparisons;
}

}  // namespace qorbench
