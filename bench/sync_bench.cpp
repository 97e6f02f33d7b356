// Bringing the store's directory codes to what a unit holds, for ten times the codes.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "host/desks/session.h"
#include "host/desks/store_file.h"
#include "host/desks/unit_export.h"
#include "host/desks/unit_merge.h"
#include "host/files/input_file.h"
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

qorhost::MergeReport MergeFile(const std::filesystem::path& store,
                               const std::filesystem::path& unitFile) {
  qorhost::InputFile file(unitFile);
  const qorhost::UnitReading reading = qorhost::ReadUnitFile(file);
  Check(reading.faults.empty(), "every line of the unit file is good");
  qorhost::DeskSession session(qorhost::OpenStoreFile(store, qorhost::Access::kChange), {});
  return qorhost::UnitMerge(session, kUnit, reading, qorhost::BadLines::kRefused,
                            qorhost::Deletions::kAll)
      .Apply(nullptr);
}

std::string ExportedText(const std::filesystem::path& store) {
  qorhost::DeskSession session(qorhost::OpenStoreFile(store, qorhost::Access::kRead), {});
  const qorhost::ExportedUnit exported =
      qorhost::ExportUnit(session, kUnit, "", qorhost::Unholdable::kRefused);
  Check(exported.obstacles.empty(), "the unit can hold every code");
  std::ostringstream text;
  qorhost::WriteUnitFile(text, exported.file);
  return text.str();
}

// The unit file is read, compared with the store, and each difference written, in one transaction.
void Sync(benchmark::State& state, std::int32_t count) {
  const BenchStore store;
  {
    qorhost::sqlite::Database database = store.OpenDatabase();
    PutStored(database, count);
  }
  std::ostringstream unit;
  qorhost::WriteUnitFile(unit, qorhost::GenerateUnit(count, kSeed));
  const std::filesystem::path unitFile = store.File().replace_filename("unit.txt");
  std::ofstream(unitFile, std::ios::binary) << unit.str();

  qorhost::MergeReport report;
  for ([[maybe_unused]] auto iteration : state) {
    report = MergeFile(store.File(), unitFile);
  }

  const auto quarter = static_cast<std::size_t>(count / 4);
  Check(report.done() && report.inserted == quarter && report.updated == 3 * quarter &&
            report.deleted == quarter && report.unchanged == 0 &&
            report.aftermath.tenantsReleased == quarter &&
            report.aftermath.stepsWithdrawn == static_cast<std::size_t>(count),
        "the differences are written");
  Check(ExportedText(store.File()) == unit.str(), "the store holds what the unit holds");
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
    comparisons.push_back(AddGrowth("sync-growth-30000", "sync/30000", 30000, "sync/3000", 3000));
  }
  return comparisons;
}

}  // namespace qorbench
