#include "bench/table.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "bench/check.h"

namespace qorbench {

namespace {

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2.0;
}

double RoundedTo(double value, double stepsOfOne) {
  return std::round(value * stepsOfOne) / stepsOfOne;
}

/// "<= 2", or "+50 ms" where a difference is meant.
std::string GoalText(const Row& row) {
  constexpr double kNanosecondsOfMs = 1e6;
  return row.mostMoreNs > 0.0 ? fmt::format("+{} ms", row.mostMoreNs / kNanosecondsOfMs)
                              : fmt::format("<= {}", row.goal);
}

}  // namespace

Row Compare(const Comparison& comparison, const Measurements& measurements) {
  const std::vector<double> ours = measurements.TimesOf(comparison.ours);
  const std::vector<double> floor = measurements.TimesOf(comparison.floor);
  Check(!ours.empty() && ours.size() == floor.size(), "a figure and its floor run in every round");
  std::vector<double> ratios;
  std::transform(ours.begin(), ours.end(), floor.begin(), std::back_inserter(ratios),
                 [](double one, double other) { return one / other; });
  const auto [lowest, highest] = std::minmax_element(ratios.begin(), ratios.end());

  Row row;
  row.name = comparison.name;
  row.oursNs = Median(ours);
  row.floorNs = Median(floor);
  row.ratio = row.oursNs / row.floorNs;
  row.goal = comparison.goal;
  row.mostMoreNs = comparison.mostMoreNs;
  row.lowestRatio = *lowest;
  row.highestRatio = *highest;
  return row;
}

std::string TableText(const std::vector<Row>& rows) {
  std::string text = fmt::format("{:<24}  {:>10}  {:>10}  {:>6}  {:>7}  {:<3}  {}\n", "name",
                                 "ours", "floor", "ratio", "goal", "met", "spread of the ratio");
  for (const Row& row : rows) {
    text +=
        fmt::format("{:<24}  {:>7.0f} ns  {:>7.0f} ns  {:>6.2f}  {:>7}  {:<3}  {:.2f} to {:.2f}\n",
                    row.name, row.oursNs, row.floorNs, row.ratio, GoalText(row),
                    row.IsMet() ? "yes" : "no", row.lowestRatio, row.highestRatio);
  }
  return text;
}

void WriteJson(const std::vector<Row>& rows, const std::filesystem::path& file) {
  constexpr double kNanosecondSteps = 10.0;
  constexpr double kRatioSteps = 10000.0;
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Row& row : rows) {
    list.push_back({{"name", row.name},
                    {"ours_ns", RoundedTo(row.oursNs, kNanosecondSteps)},
                    {"floor_ns", RoundedTo(row.floorNs, kNanosecondSteps)},
                    {"ratio", RoundedTo(row.ratio, kRatioSteps)},
                    {"goal", row.goal},
                    {"most_more_ns", row.mostMoreNs}});
  }
  std::ofstream out(file);
  out << list.dump(2) << '\n';
  out.close();
  if (!out) {
    throw std::runtime_error(fmt::format("'{}' cannot be written", file.string()));
  }
}

}  // namespace qorbench
