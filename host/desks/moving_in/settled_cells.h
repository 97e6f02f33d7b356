// All that became of what is odd in a file that is brought in.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/moving_in/settled_cell.h"

namespace qorhost {

class SpilledCells;

/// All that was settled: so much of it in memory as a person reads, for a hostile file may have
/// millions of odd cells, and the others in a file, from which the report takes them. Copies that
/// are made before Sort() must not be added to.
class SettledCells {
 public:
  static constexpr std::size_t kMostNamed = 50'000;  ///< of each settlement

  /// Raises FileError where there is no room for the others.
  void Add(SettledCell cell);
  /// To be called behind the last Add(): in the order of tables, and in each of them in that of
  /// rows. Raises FileError.
  void Sort(const std::vector<std::string_view>& tables);

  /// Those in memory.
  [[nodiscard]] const std::vector<SettledCell>& named() const { return named_; }
  [[nodiscard]] std::size_t CountOf(Settlement settlement) const;
  /// How many there are beside the named ones.
  [[nodiscard]] std::size_t UnnamedOf(Settlement settlement) const;
  /// Hands out every one, or those of one settlement. Raises FileError.
  void Each(const std::function<void(const SettledCell&)>& take,
            std::optional<Settlement> only = std::nullopt) const;

 private:
  /// Whether the first stands before the second, of another table or row.
  [[nodiscard]] bool IsBefore(const SettledCell& one, const SettledCell& other) const;

  std::vector<SettledCell> named_;
  std::shared_ptr<SpilledCells> spilled_;  // none as long as all are named
  std::array<std::size_t, 3> counts_{};
  std::vector<std::string> order_;  // of the tables
};

}  // namespace qorhost
