// What the benchmarks measured, collected over the rounds of one run.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qorbench {

/// The counter in which a benchmark says how many items (credentials, statements, list entries) one
/// iteration deals with.
inline constexpr const char* kItems = "items";
/// The counter of the processor's seconds that one iteration took, where other processes have a
/// part in it and the benchmark looks at that itself: those of its own thread do not count then. On
/// a server they are the seconds that pass, the waiting among them.
inline constexpr const char* kSecondsElsewhere = "seconds_elsewhere";
/// The counter of operator new's calls for each item, where a benchmark has it.
inline constexpr const char* kAllocations = "allocations";

/// Keeps each benchmark's time for one item, in nanoseconds of the processor's time, one figure for
/// each round in which it ran; and the last figure of its allocations. Nothing is printed.
class Measurements final : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

  [[nodiscard]] bool Has(std::string_view benchmark) const { return times_.contains(benchmark); }
  /// The figures of a benchmark in the order of the rounds; none when it did not run.
  [[nodiscard]] std::vector<double> TimesOf(std::string_view benchmark) const;
  /// Nothing when the benchmark did not run or counts none.
  [[nodiscard]] std::optional<double> AllocationsOf(std::string_view benchmark) const;

 private:
  std::map<std::string, std::vector<double>, std::less<>> times_;
  std::map<std::string, double, std::less<>> allocations_;
};

}  // namespace qorbench
