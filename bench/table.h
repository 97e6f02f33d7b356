// The table of results: each figure beside its floor.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "bench/measurements.h"

namespace qorbench {

/// A figure and what it is measured against, by the names of the two benchmarks.
struct Comparison {
  std::string_view name;
  std::string_view ours;
  std::string_view floor;
  double goal;  ///< the ratio that ours over floor should not exceed
  /// Instead of it, when it is not 0: how much longer than the floor ours may take, in nanoseconds.
  double mostMoreNs = 0.0;
};

/// One line of the table: medians over the rounds, in nanoseconds for one item.
struct Row {
  std::string name;
  double oursNs = 0.0;
  double floorNs = 0.0;
  double ratio = 0.0;
  double goal = 0.0;
  double mostMoreNs = 0.0;
  double lowestRatio = 0.0;  ///< of any round
  double highestRatio = 0.0;

  [[nodiscard]] bool IsMet() const {
    return mostMoreNs > 0.0 ? oursNs - floorNs <= mostMoreNs : ratio <= goal;
  }
};

/// Ours and floor of one round are compared with each other for the spread.
[[nodiscard]] Row Compare(const Comparison& comparison, const Measurements& measurements);

/// The rows in aligned columns under a heading, each line ended.
[[nodiscard]] std::string TableText(const std::vector<Row>& rows);

/// Writes the rows as a JSON array. Raises std::runtime_error when the file cannot be written.
void WriteJson(const std::vector<Row>& rows, const std::filesystem::path& file);

}  // namespace qorbench
