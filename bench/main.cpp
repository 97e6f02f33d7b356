// Runs the benchmarks and prints each figure beside its floor.
#include <fmt/format.h>
#include <sqlite3.h>

#include <CLI/CLI.hpp>
#include <array>
#include <cstdio>
#include <ctime>
#include <exception>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bench/benchmarks.h"
#include "bench/measurements.h"
#include "bench/table.h"

namespace qorbench {

namespace {

constexpr int kRounds = 7;
constexpr int kQuickRounds = 3;

struct Options {
  bool quick = false;
  std::string only = ".";
  std::string jsonFile;

  [[nodiscard]] int Rounds() const { return quick ? kQuickRounds : kRounds; }
};

std::vector<Comparison> AddBenchmarks(Size size) {
  std::vector<Comparison> comparisons;
  for (auto* add :
       {&AddIssueBenchmarks, &AddWorkBenchmarks, &AddTenantsBenchmarks, &AddServerBenchmarks,
        &AddOperatorBenchmarks, &AddListBenchmarks, &AddDirCodeBenchmarks, &AddSyncBenchmarks,
        &AddImportBenchmarks, &AddMovingBenchmarks, &AddReportBenchmarks, &AddLibraryBenchmarks,
        &AddTranslateBenchmarks, &AddDesktopBenchmarks}) {
    const std::vector<Comparison> added = add(size);
    comparisons.insert(comparisons.end(), added.begin(), added.end());
  }
  return comparisons;
}

// All benchmarks once in each round: a figure and its floor meet the machine in the same state.
Measurements Measure(const Options& options) {
  Measurements measurements;
  for (int round = 1; round <= options.Rounds(); ++round) {
    fmt::print(stderr, "Round {} of {}\n", round, options.Rounds());
    benchmark::RunSpecifiedBenchmarks(&measurements, options.only);
  }
  return measurements;
}

std::string Today() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  std::array<char, 16> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", &parts)};
}

std::string CompilerName() {
#if defined(__clang__)
  return fmt::format("Clang {}.{}.{}", __clang_major__, __clang_minor__, __clang_patchlevel__);
#elif defined(__GNUC__)
  return fmt::format("GCC {}.{}.{}", __GNUC__, __GNUC_MINOR__, __GNUC_PATCHLEVEL__);
#else
  return "another compiler";
#endif
}

void Report(const Options& options, const std::vector<Row>& rows,
            const Measurements& measurements) {
  fmt::print("{}, {} cores, {}, SQLite {}; medians of {} rounds, processor time for one item\n\n{}",
             Today(), std::thread::hardware_concurrency(), CompilerName(), sqlite3_libversion(),
             options.Rounds(), TableText(rows));
  if (const auto allocations = measurements.AllocationsOf(kLibraryBenchmark)) {
    fmt::print("\nThe library alone allocates {:.2f} times for each credential.\n", *allocations);
  }
}

int Main(int argumentCount, char** arguments) {
  CLI::App app("Measures the library and its reference host against floors in the same run.");
  Options options;
  app.add_flag(
      "--quick", options.quick,
      fmt::format("{} rounds instead of {}, a tenth of the credentials with tenants, and no "
                  "merge of 60000 codes",
                  kQuickRounds, kRounds));
  app.add_option("--only", options.only,
                 "Only the benchmarks whose names match this pattern, for example ^issue/");
  app.add_option("--json", options.jsonFile, "Write the rows to this file as well");
  CLI11_PARSE(app, argumentCount, arguments);

  const std::shared_ptr<void> desktop = StartDesktop();
  const std::vector<Comparison> comparisons =
      AddBenchmarks(options.quick ? Size::kQuick : Size::kFull);
  const Measurements measurements = Measure(options);
  std::vector<Row> rows;
  for (const Comparison& comparison : comparisons) {
    if (measurements.Has(comparison.ours) && measurements.Has(comparison.floor)) {
      rows.push_back(Compare(comparison, measurements));
    }
  }
  Report(options, rows, measurements);
  if (!options.jsonFile.empty()) {
    WriteJson(rows, options.jsonFile);
  }
  return 0;
}

}  // namespace

}  // namespace qorbench

int main(int argumentCount, char** arguments) {
  try {
    return qorbench::Main(argumentCount, arguments);
  } catch (const std::exception& failure) {
    fmt::print(stderr, "qorbench: {}\n", failure.what());
    return 1;
  }
}
