// The library alone: saves on a host that does nothing.
#include <benchmark/benchmark.h>

#include <charconv>
#include <string>

#include "bench/allocations.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "bench/idle_host.h"
#include "bench/save_screen.h"
#include "credentials/cls_credential.h"

namespace qorbench {

namespace {

constexpr const char* kShort = "library/short-ranges";
constexpr const char* kTexts = "library/texts";
constexpr std::int32_t kRange = 64000;
constexpr std::int32_t kShortRange = 1000;
constexpr std::int32_t kUnit = 1;

// What a save writes for the numbers up to kRange; the same from ours and from the floor.
std::uint64_t StatementBytes() {
  std::uint64_t bytes = 0;
  const std::string around =
      "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,"
      "SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(1,_ROWID_,0,,12,0,0,1,'_LMDATE_')";
  for (std::int32_t number = 1; number <= kRange; ++number) {
    bytes += around.size() + std::to_string(number).size();
  }
  return bytes;
}

void CheckWork(const IdleCounts& counts) {
  Check(counts.inserts == kRange, "every credential is inserted");
  Check(counts.statementBytes == StatementBytes(), "the statements have their full length");
}

// The numbers 1 to kRange in saves of `length` numbers.
void SaveRanges(benchmark::State& state, std::int32_t length) {
  IdleHost host;
  const qorcred::ObjectRef connection = IdleConnection();
  const auto screen = RangeScreen();
  qorcred::clsCredential controller(host);
  controller.set_gmobjCredentialScreen(screen);
  std::int32_t lastRid = 0;
  const std::uint64_t before = AllocationCount();
  for ([[maybe_unused]] auto iteration : state) {
    for (std::int32_t start = 1; start <= kRange; start += length) {
      EnterRange(*screen, start, start + length - 1);
      Check(controller.pbSave(connection, kUnit, false, false, &lastRid), "the save is done");
    }
  }
  const std::uint64_t allocations = AllocationCount() - before;
  Check(lastRid == kRange, "the last identity is the number of rows");
  CheckWork(host.counts());
  state.counters[kItems] = kRange;
  state.counters[kAllocations] = static_cast<double>(allocations) / kRange;
}

void SaveOneRange(benchmark::State& state) {
  SaveRanges(state, kRange);
}

void SaveShortRanges(benchmark::State& state) {
  SaveRanges(state, kShortRange);
}

// The floor: the same texts put together by hand and handed to the same manager, each in one call.
void WriteTexts(benchmark::State& state) {
  IdleHost host;
  const qorcred::ObjectRef manager = host.CreateComponent("qorDBI.clsDBManager");
  const qorcred::ObjectRef connection = IdleConnection();
  for ([[maybe_unused]] auto iteration : state) {
    for (std::int32_t number = 1; number <= kRange; ++number) {
      constexpr std::size_t kLongestStatement = 192;
      std::array<char, 8> digits{};
      const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
      std::string text;
      text.reserve(kLongestStatement);
      text.append(
          "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,"
          "SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(1,_ROWID_,0,");
      text.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
      text.append(",12,0,0,1,'_LMDATE_')");
      benchmark::DoNotOptimize(qorcred::Call(*manager, "ExecuteInsert", connection, std::move(text),
                                             "", "CREDENTIALBANK", false, ""));
    }
  }
  CheckWork(host.counts());
  state.counters[kItems] = kRange;
}

}  // namespace

std::vector<Comparison> AddLibraryBenchmarks(Size /*size*/) {
  benchmark::RegisterBenchmark(kLibraryBenchmark, SaveOneRange)->Iterations(1);
  benchmark::RegisterBenchmark(kShort, SaveShortRanges)->Iterations(1);
  benchmark::RegisterBenchmark(kTexts, WriteTexts)->Iterations(1);
  constexpr double kGoal = 4.0;
  constexpr double kGrowthGoal = 1.2;
  return {{"library-alone", kLibraryBenchmark, kTexts, kGoal},
          {"library-growth", kLibraryBenchmark, kShort, kGrowthGoal}};
}

}  // namespace qorbench
