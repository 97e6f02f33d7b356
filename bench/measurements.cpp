#include "bench/measurements.h"

#include "bench/check.h"

namespace qorbench {

bool Measurements::ReportContext(const Context& /*context*/) {
  return true;
}

void Measurements::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    const auto items = run.counters.find(kItems);
    Check(!run.error_occurred && items != run.counters.end() && items->second.value > 0,
          "every benchmark says how many items it dealt with");
    const auto told = run.counters.find(kSeconds);
    const double seconds = told != run.counters.end()
                               ? told->second.value
                               : run.cpu_accumulated_time / static_cast<double>(run.iterations);
    times_[run.run_name.function_name].push_back(seconds * 1e9 / items->second.value);
    if (const auto counted = run.counters.find(kAllocations); counted != run.counters.end()) {
      allocations_[run.run_name.function_name] = counted->second.value;
    }
  }
}

std::vector<double> Measurements::TimesOf(std::string_view benchmark) const {
  const auto found = times_.find(benchmark);
  return found == times_.end() ? std::vector<double>() : found->second;
}

std::optional<double> Measurements::AllocationsOf(std::string_view benchmark) const {
  const auto found = allocations_.find(benchmark);
  return found == allocations_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace qorbench
