// Translating the statements of a long range, of which all but the first are known by their shape.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <functional>
#include <string>
#include <vector>

#include "bench/benchmarks.h"
#include "bench/check.h"
#include "host/dialect/translator.h"
#include "host/store/sqlite/printer.h"

namespace qorbench {

namespace {

constexpr const char* kOurs = "translate/ours";
constexpr const char* kHash = "translate/hash";
constexpr std::int32_t kStatements = 65535;

std::vector<std::string> Statements() {
  std::vector<std::string> statements;
  statements.reserve(kStatements);
  for (std::int32_t number = 1; number <= kStatements; ++number) {
    statements.push_back(
        fmt::format("INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,"
                    "IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(1,_ROWID_,0,{},12,"
                    "0,0,1,'_LMDATE_')",
                    number));
  }
  return statements;
}

void Translate(benchmark::State& state) {
  const std::vector<std::string> statements = Statements();
  qorhost::dialect::Translator translator(&qorhost::sqlite::Print);
  std::int64_t sum = 0;
  for ([[maybe_unused]] auto iteration : state) {
    for (const std::string& statement : statements) {
      constexpr std::size_t kNumberParameter = 2;
      const auto translation = translator.Translate(statement, "2026-01-15 09:30:00");
      sum += *translation.parameters[kNumberParameter].As<std::int32_t>();
    }
  }
  Check(sum == std::int64_t{kStatements} * (kStatements + 1) / 2, "each number is a parameter");
  Check(translator.parsed() == 1, "one statement is parsed, the others are known by their shape");
  state.counters[kItems] = kStatements;
}

// The floor: reading each text once, as any look-up must.
void Hash(benchmark::State& state) {
  const std::vector<std::string> statements = Statements();
  for ([[maybe_unused]] auto iteration : state) {
    for (const std::string& statement : statements) {
      benchmark::DoNotOptimize(std::hash<std::string>{}(statement));
    }
  }
  state.counters[kItems] = kStatements;
}

}  // namespace

std::vector<Comparison> AddTranslateBenchmarks(Size /*size*/) {
  benchmark::RegisterBenchmark(kOurs, Translate)->Iterations(1);
  benchmark::RegisterBenchmark(kHash, Hash)->Iterations(1);
  constexpr double kGoal = 10.0;
  return {{"translate", kOurs, kHash, kGoal}};
}

}  // namespace qorbench
